#include "platform/graphics/UIImage.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSData.h"
#include "platform/graphics/ImageDecoding.h"
#include "platform/graphics/MainScreenScale.h"

#include <mutex>
#include <unordered_map>

namespace {

bool isUsableScale(CGFloat scale) { return std::isfinite(scale) && scale > 0; }

// The decoded files of the main bundle, for as long as somebody holds them.
class NamedImages {
public:
    std::shared_ptr<UIImage> imageAtPath(const NSString& path, int density)
    {
        const std::lock_guard lock(m_mutex);
        std::weak_ptr<UIImage>& held = m_images[path];
        auto image = held.lock();
        if (!image) {
            image = UIImage::imageWithData(dataWithContentsOfURL(NSURL::fromLocalFile(path)), density);
            held = image;
        }
        return image;
    }

private:
    std::mutex m_mutex;
    std::unordered_map<NSString, std::weak_ptr<UIImage>> m_images;
};

std::shared_ptr<UIImage> namedImage(const NSString& name, int density)
{
    static NamedImages images;
    const NSString suffix = density > 1 ? QStringLiteral("@%1x").arg(density) : NSString();
    const NSString path = NSBundle::mainBundle()->pathForResource(name + suffix, QStringLiteral("png"));
    return path.isNull() ? nullptr : images.imageAtPath(path, density);
}

} // namespace

UIImage::UIImage(QImage pixels, CGFloat scale, const CGSize& size, UIImageRenderingMode renderingMode,
    UIImageResizingMode resizingMode)
    : m_pixels(std::move(pixels))
    , m_scale(scale)
    , m_size(size)
    , m_renderingMode(renderingMode)
    , m_resizingMode(resizingMode)
{
}

std::shared_ptr<UIImage> UIImage::imageNamed(const NSString& name)
{
    constexpr int highestDensity = 3;
    const int wanted = std::clamp(qRound(MainScreenScale::get()), 1, highestDensity);
    for (int density = wanted; density >= 1; --density) {
        if (auto image = namedImage(name, density))
            return image;
    }
    for (int density = wanted + 1; density <= highestDensity; ++density) {
        if (auto image = namedImage(name, density))
            return image;
    }
    return nullptr;
}

std::shared_ptr<UIImage> UIImage::imageWithData(const NSData& data, CGFloat scale)
{
    return isUsableScale(scale) ? imageWithQImage(decodedImage(data), scale) : nullptr;
}

std::shared_ptr<UIImage> UIImage::imageWithQImage(
    const QImage& pixels, CGFloat scale, const std::optional<CGSize>& size)
{
    if (pixels.isNull() || !isUsableScale(scale))
        return nullptr;
    return make<UIImage>(inDrawingFormat(pixels), scale, size.value_or(CGSize(pixels.size()) / scale),
        UIImageRenderingMode::Automatic, UIImageResizingMode::Stretch);
}

CGRect UIImage::rectOfPixels(const CGRect& rect) const
{
    const CGSize all = CGSize(m_pixels.size()) / m_scale;
    return { rect.topLeft(),
        CGSize(rect.width() * (all.width() / m_size.width()),
            rect.height() * (all.height() / m_size.height())) };
}

std::shared_ptr<UIImage> UIImage::imageWithRenderingMode(UIImageRenderingMode mode) const
{
    return make<UIImage>(m_pixels, m_scale, m_size, mode, m_resizingMode);
}

std::shared_ptr<UIImage> UIImage::imageWithRenderingMode(
    const std::shared_ptr<UIImage>& image, UIImageRenderingMode mode)
{
    return image ? image->imageWithRenderingMode(mode) : nullptr;
}

std::shared_ptr<UIImage> UIImage::resizableImage(
    const UIEdgeInsets& capInsets, UIImageResizingMode mode) const
{
    NSParameterAssert(capInsets == UIEdgeInsets {}, "UIImage", "capInsets == UIEdgeInsetsZero");
    return make<UIImage>(m_pixels, m_scale, m_size, m_renderingMode, mode);
}

std::shared_ptr<UIImage> UIImage::copy() const
{
    return make<UIImage>(m_pixels, m_scale, m_size, m_renderingMode, m_resizingMode);
}

NSString UIImage::description() const
{
    return NSObject::description()
        + QStringLiteral(" %1 x %2 pixels at %3").arg(m_pixels.width()).arg(m_pixels.height()).arg(m_scale);
}
