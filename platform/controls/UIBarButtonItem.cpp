#include "platform/controls/UIBarButtonItem.h"

#include "platform/controls/UIButton.h"

namespace {

// The button of a picture item. Who does not see the screen hears of it what the item says, at the moment of
// asking.
class ItemButton final : public UIButton {
public:
    explicit ItemButton(std::weak_ptr<const UIBarButtonItem> item)
        : UIButton(UIButtonType::System)
        , m_item(std::move(item))
    {
    }

    bool isAccessibilityElement() const override
    {
        const auto item = m_item.lock();
        return item ? item->isAccessibilityElement() : UIButton::isAccessibilityElement();
    }
    NSString accessibilityLabel() const override
    {
        const auto item = m_item.lock();
        return item ? item->accessibilityLabel() : UIButton::accessibilityLabel();
    }
    NSString accessibilityHint() const override
    {
        const auto item = m_item.lock();
        return item ? item->accessibilityHint() : UIButton::accessibilityHint();
    }
    NSString accessibilityValue() const override
    {
        const auto item = m_item.lock();
        return item ? item->accessibilityValue() : UIButton::accessibilityValue();
    }

private:
    std::weak_ptr<const UIBarButtonItem> m_item; // the button may outlive it in a view that holds it
};

} // namespace

UIBarButtonItem::UIBarButtonItem(std::shared_ptr<UIImage> image, UIBarButtonItemStyle style, Action action)
    : m_image(std::move(image))
    , m_style(style)
    , m_action(std::move(action))
{
}

UIBarButtonItem::UIBarButtonItem(std::shared_ptr<UIView> customView)
    : m_customView(std::move(customView))
{
}

void UIBarButtonItem::init()
{
    NSObject::init();
    if (m_customView)
        return;
    setIsAccessibilityElement(true);
    m_button = make<ItemButton>(weakSelf(this));
    m_button->setImage(m_image, UIControlState::Normal);
    m_button->addTarget(Action(strongSelf(this), &UIBarButtonItem::pressed), UIControlEvents::TouchUpInside);
}

void UIBarButtonItem::setImage(std::shared_ptr<UIImage> image)
{
    m_image = std::move(image);
    if (m_button)
        m_button->setImage(m_image, UIControlState::Normal);
}

void UIBarButtonItem::pressed()
{
    const Action action = m_action; // it may give the item another one
    action.perform(this);
}

// --- In a bar ----------------------------------------------------------------------------------------

std::shared_ptr<UIView> UIBarButtonItem::view() const
{
    return m_customView ? m_customView : std::static_pointer_cast<UIView>(m_button);
}

// A custom view that was squeezed would like its own size back, unless somebody has given it another.
CGSize UIBarButtonItem::preferredSize() const
{
    const CGSize size = m_customView->bounds().size();
    return size == m_placedSize ? m_ownSize : size;
}

double UIBarButtonItem::preferredWidth() const
{
    if (m_customView)
        return preferredSize().width();
    return std::max(m_button->intrinsicContentSize().width(), minimumTouchWidth);
}

bool UIBarButtonItem::isFlexible() const
{
    return m_customView && hasBits(m_customView->autoresizingMask(), UIViewAutoresizing::FlexibleWidth);
}

void UIBarButtonItem::placeIn(const CGRect& rect)
{
    if (m_button)
        return m_button->setFrame(rect);
    m_ownSize = preferredSize();
    m_placedSize = { rect.width(), std::min(m_ownSize.height(), rect.height()) };
    const double top = rect.top() + std::round((rect.height() - m_placedSize.height()) / 2);
    m_customView->setFrame({ { rect.left(), top }, m_placedSize });
}
