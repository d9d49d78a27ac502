#include "platform/views/ViewTint.h"

#include "platform/foundation/Messages.h"
#include "platform/graphics/DimmedColor.h"
#include "platform/layers/CAModelChanges.h"
#include "platform/views/MoveUnderWay.h"
#include "platform/views/TintMotion.h"
#include "platform/views/UIView.h"

namespace {

// While somebody is being told, others may wait for it: a change from inside the message reaches everybody.
int messagesUnderWay = 0;

bool isSameColor(const std::shared_ptr<UIColor>& first, const std::shared_ptr<UIColor>& second)
{
    if (!first && !second)
        return true;
    const auto blue = first && second ? nullptr : UIColor::systemBlueColor();
    return (first ? first : blue)->isEqual((second ? second : blue).get());
}

} // namespace

const ViewTint* ViewTint::superviewTint() const
{
    return m_view.m_superview ? &m_view.m_superview->m_tint : nullptr;
}

std::shared_ptr<UIColor> ViewTint::undimmedColor() const
{
    for (const ViewTint* tint = this; tint; tint = tint->superviewTint())
        if (tint->m_color)
            return tint->m_color;
    return nullptr;
}

UIViewTintAdjustmentMode ViewTint::mode() const
{
    for (const ViewTint* tint = this; tint; tint = tint->superviewTint())
        if (tint->m_mode != UIViewTintAdjustmentMode::Automatic)
            return tint->m_mode;
    return UIViewTintAdjustmentMode::Normal;
}

std::shared_ptr<UIColor> ViewTint::color() const
{
    const auto found = undimmedColor();
    const auto color = found ? found : UIColor::systemBlueColor();
    const auto dimmed = mode() == UIViewTintAdjustmentMode::Dimmed ? dimmedColor(*color) : nullptr;
    return dimmed ? dimmed : color;
}

ViewTint::Tint ViewTint::inherited() const
{
    const ViewTint* const outer = superviewTint();
    return outer ? Tint { outer->undimmedColor(), outer->mode() } : Tint {};
}

bool ViewTint::Tint::isSame(const Tint& other) const
{
    return mode == other.mode && isSameColor(color, other.color);
}

void ViewTint::setColor(std::shared_ptr<UIColor> color)
{
    const auto before = std::exchange(m_color, std::move(color));
    if (CAModelChanges* const changes = CAModelChanges::recording())
        changes->note([weakView = m_view.weak_from_this(), before, now = m_color] {
            const auto view = std::static_pointer_cast<UIView>(weakView.lock());
            if (view && view->m_tint.m_color == now)
                view->setTintColor(before);
        });
    tellChanges(MoveUnderWay::isAny() ? Reach::Everybody : Reach::WhereItChanged);
}

void ViewTint::setMode(UIViewTintAdjustmentMode mode)
{
    const auto before = std::exchange(m_mode, mode);
    if (CAModelChanges* const changes = CAModelChanges::recording())
        changes->note([weakView = m_view.weak_from_this(), before, mode] {
            const auto view = std::static_pointer_cast<UIView>(weakView.lock());
            if (view && view->m_tint.m_mode == mode)
                view->setTintAdjustmentMode(before);
        });
    tellChanges(MoveUnderWay::isAny() ? Reach::Everybody : Reach::WhereItChanged);
}

void ViewTint::tellChanges(Reach reach)
{
    const KeepAlive keepAlive(m_view);
    const Tint around = inherited();
    const bool isAutomatic = m_mode == UIViewTintAdjustmentMode::Automatic;
    const Tint own { m_color ? m_color : around.color, isAutomatic ? around.mode : m_mode };
    const bool isOther = !own.isSame(std::exchange(m_told, own));
    const bool isOtherAround = !around.isSame(std::exchange(m_toldAround, around));
    if (isOther || (isOtherAround && m_view.followsInheritedTint()))
        tellView();
    if (isOther || reach == Reach::Everybody || messagesUnderWay > 0)
        tellSubviews(reach);
}

void ViewTint::tellView()
{
    const TintMotion motion;
    ++messagesUnderWay;
    m_view.tintColorDidChange();
    --messagesUnderWay;
}

void ViewTint::tellSubviews(Reach reach)
{
    const auto subviews = m_view.m_subviews;
    for (const auto& view : subviews)
        if (view->m_superview == &m_view)
            view->m_tint.tellChanges(reach);
}
