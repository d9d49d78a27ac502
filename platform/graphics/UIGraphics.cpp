#include "platform/graphics/UIGraphics.h"

#include "platform/graphics/ImageLimits.h"
#include "platform/graphics/MainScreenScale.h"

namespace {

// The pixels of a bitmap context and what draws into them.
class Bitmap {
public:
    Bitmap(QImage pixels, const CGSize& size, CGFloat scale)
        : m_pixels(std::move(pixels))
        , m_size(size)
        , m_scale(scale)
        , m_painter(&m_pixels)
        , m_context(m_painter)
    {
        m_context.scale(scale, scale);
    }

    CGContext& context() { return m_context; }
    // A copy of its own: what is drawn later does not show in it.
    std::shared_ptr<UIImage> image() const
    {
        return UIImage::imageWithQImage(m_pixels.copy(), m_scale, m_size);
    }

private:
    QImage m_pixels;
    CGSize m_size;
    CGFloat m_scale;
    QPainter m_painter;
    CGContext m_context;
};

struct CurrentContext {
    CGContext* context = nullptr; // null where nothing can be drawn
    std::unique_ptr<Bitmap> bitmap;
    bool isPushed = false; // by a guard, which alone takes it away
};

std::vector<CurrentContext>& contexts()
{
    static thread_local std::vector<CurrentContext> stack;
    return stack;
}

// Fractions of a pixel count as one, but for rounding errors.
int pixelCount(CGFloat points, CGFloat scale)
{
    const double pixels = std::ceil(points * scale - 1e-6);
    return pixels > 0 && pixels <= UIImage::maximumSide ? static_cast<int>(pixels) : 0;
}

std::unique_ptr<Bitmap> makeBitmap(const CGSize& size, bool opaque, CGFloat scale)
{
    const QSize pixels(pixelCount(size.width(), scale), pixelCount(size.height(), scale));
    if (!ImageLimits::permit(pixels))
        return nullptr;
    QImage image(pixels, opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return nullptr;
    image.fill(opaque ? Qt::black : Qt::transparent);
    return std::make_unique<Bitmap>(std::move(image), size, scale);
}

} // namespace

void UIGraphicsBeginImageContextWithOptions(const CGSize& size, bool opaque, CGFloat scale)
{
    auto bitmap = makeBitmap(size, opaque, scale == 0 ? MainScreenScale::get() : scale);
    CGContext* context = bitmap ? &bitmap->context() : nullptr;
    contexts().push_back({ context, std::move(bitmap) });
}

std::shared_ptr<UIImage> UIGraphicsGetImageFromCurrentImageContext()
{
    const auto& stack = contexts();
    return stack.empty() || !stack.back().bitmap ? nullptr : stack.back().bitmap->image();
}

void UIGraphicsEndImageContext()
{
    auto& stack = contexts();
    if (!stack.empty() && !stack.back().isPushed)
        stack.pop_back();
}

CGContext* UIGraphicsGetCurrentContext()
{
    const auto& stack = contexts();
    return stack.empty() ? nullptr : stack.back().context;
}

CurrentContextGuard::CurrentContextGuard(CGContext& context)
{
    contexts().push_back({ &context, nullptr, /* isPushed */ true });
}

CurrentContextGuard::~CurrentContextGuard()
{
    // Bitmap contexts that were begun inside the block and never ended go with it.
    auto& stack = contexts();
    while (!stack.back().isPushed)
        stack.pop_back();
    stack.pop_back();
}
