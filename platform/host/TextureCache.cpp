#include "platform/host/TextureCache.h"

#include "platform/host/FramePainter.h"

#include <QQuickWindow>
#include <QSGTexture>

TextureCache::TextureCache(QQuickWindow& window)
    : m_window(window)
{
}

TextureCache::~TextureCache() = default;

SharedTexture TextureCache::texture(const FrameImage& image)
{
    const bool isTinted = image.tint.isValid();
    const Key key { image.image.cacheKey(), isTinted ? image.tint.rgba() : 0, isTinted };
    if (const auto cached = m_textures.find(key); cached != m_textures.end())
        if (SharedTexture texture = cached->second.lock())
            return texture;
    dropUnused();
    const SharedTexture texture
        = makeTexture(isTinted ? FramePainter::tinted(image.image, image.tint) : image.image);
    m_textures[key] = texture;
    return texture;
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
    std::erase_if(m_textures, [](const auto& entry) { return entry.second.expired(); });
}
