#include "platform/host/TextureCache.h"

#include "platform/host/FramePainter.h"

#include <QQuickWindow>
#include <QSGTexture>

#include <algorithm>
#include <iterator>

namespace {

// The smallest rectangle that holds all pixels that are not transparent.
QRect visiblePixelsOf(const QImage& image)
{
    if (image.format() != QImage::Format_ARGB32_Premultiplied)
        return image.rect();
    int top = image.height();
    int bottom = -1;
    int left = image.width();
    int right = -1;
    for (int y = 0; y < image.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const auto* const end = line + image.width();
        const auto isVisible = [](QRgb pixel) { return pixel != 0; };
        const auto* const first = std::find_if(line, end, isVisible);
        if (first == end)
            continue;
        const auto last = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), isVisible);
        top = std::min(top, y);
        bottom = y;
        left = std::min(left, int(first - line));
        right = std::max(right, int(last.base() - line) - 1);
    }
    return { QPoint(left, top), QPoint(right, bottom) };
}

} // namespace

TextureCache::TextureCache(QQuickWindow& window)
    : m_window(window)
{
}

TextureCache::~TextureCache() = default;

TextureCache::Picture TextureCache::picture(const FrameImage& image)
{
    const bool isTinted = image.tint.isValid();
    const Key key { image.image.cacheKey(), isTinted ? image.tint.rgba() : 0, isTinted };
    if (const auto cached = m_textures.find(key); cached != m_textures.end())
        if (const SharedTexture texture = cached->second.texture.lock())
            return { texture, cached->second.visiblePixels };
    dropUnused();
    const SharedTexture texture
        = makeTexture(isTinted ? FramePainter::tinted(image.image, image.tint) : image.image);
    const QRect visible = visiblePixelsOf(image.image);
    m_textures[key] = { texture, visible };
    return { texture, visible };
}

SharedTexture TextureCache::makeTexture(const QImage& image)
{
    ++m_uploadCount;
    ++*m_textureCount;
    return { m_window.createTextureFromImage(image, QQuickWindow::TextureCanUseAtlas),
        [count = m_textureCount](QSGTexture* texture) {
            delete texture;
            --*count;
        } };
}

void TextureCache::dropUnused()
{
    std::erase_if(m_textures, [](const auto& entry) { return entry.second.texture.expired(); });
}
