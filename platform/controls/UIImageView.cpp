#include "platform/controls/UIImageView.h"

#include "platform/graphics/UIColor.h"

namespace {

CGSize sizeOf(const std::shared_ptr<UIImage>& image) { return image ? image->size() : CGSize(0, 0); }

} // namespace

UIImageView::UIImageView(std::shared_ptr<UIImage> image)
    : UIView(CGRect(CGPoint(), sizeOf(image)))
    , m_image(std::move(image))
{
}

void UIImageView::init()
{
    UIView::init();
    setUserInteractionEnabled(false);
    setImage(std::exchange(m_image, nullptr));
}

void UIImageView::setImage(std::shared_ptr<UIImage> image)
{
    if (image == m_image)
        return;
    const bool resized = sizeOf(image) != sizeOf(m_image);
    m_image = std::move(image);
    layer()->setContents(m_image);
    updateTint();
    if (resized)
        invalidateIntrinsicContentSize();
}

void UIImageView::setTreatsAutomaticAsTemplate(bool treats)
{
    m_treatsAutomaticAsTemplate = treats;
    updateTint();
}

bool UIImageView::isTemplate() const
{
    if (!m_image)
        return false;
    const UIImageRenderingMode mode = m_image->renderingMode();
    return mode == UIImageRenderingMode::AlwaysTemplate
        || (mode == UIImageRenderingMode::Automatic && m_treatsAutomaticAsTemplate);
}

void UIImageView::updateTint() { layer()->setContentsTintColor(isTemplate() ? tintColor() : nullptr); }

void UIImageView::tintColorDidChange()
{
    UIView::tintColorDidChange();
    updateTint();
}

CGSize UIImageView::intrinsicContentSize() const
{
    return m_image ? m_image->size() : UIView::intrinsicContentSize();
}

CGSize UIImageView::sizeThatFits(const CGSize& size) const
{
    return m_image ? m_image->size() : UIView::sizeThatFits(size);
}
