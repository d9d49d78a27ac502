#include "platform/layout/LayoutAttributes.h"

LayoutAttributeTraits traitsOf(NSLayoutAttribute attribute)
{
    using enum LayoutKind;
    constexpr auto horizontal = UILayoutConstraintAxis::Horizontal;
    constexpr auto vertical = UILayoutConstraintAxis::Vertical;
    switch (attribute) {
    case NSLayoutAttribute::NotAnAttribute:
        break;
    case NSLayoutAttribute::Left:
        return { Place, horizontal, false, true, "left" };
    case NSLayoutAttribute::Right:
        return { Place, horizontal, false, true, "right" };
    case NSLayoutAttribute::Top:
        return { Place, vertical, false, false, "top" };
    case NSLayoutAttribute::Bottom:
        return { Place, vertical, false, false, "bottom" };
    case NSLayoutAttribute::Leading:
        return { Place, horizontal, true, false, "leading" };
    case NSLayoutAttribute::Trailing:
        return { Place, horizontal, true, false, "trailing" };
    case NSLayoutAttribute::Width:
        return { Size, horizontal, false, false, "width" };
    case NSLayoutAttribute::Height:
        return { Size, vertical, false, false, "height" };
    case NSLayoutAttribute::CenterX:
        return { Place, horizontal, false, false, "centerX" };
    case NSLayoutAttribute::CenterY:
        return { Place, vertical, false, false, "centerY" };
    case NSLayoutAttribute::LastBaseline:
        return { Place, vertical, false, false, "lastBaseline" };
    case NSLayoutAttribute::FirstBaseline:
        return { Place, vertical, false, false, "firstBaseline" };
    case NSLayoutAttribute::LeftMargin:
        return { Place, horizontal, false, true, "leftMargin" };
    case NSLayoutAttribute::RightMargin:
        return { Place, horizontal, false, true, "rightMargin" };
    case NSLayoutAttribute::TopMargin:
        return { Place, vertical, false, false, "topMargin" };
    case NSLayoutAttribute::BottomMargin:
        return { Place, vertical, false, false, "bottomMargin" };
    case NSLayoutAttribute::LeadingMargin:
        return { Place, horizontal, true, false, "leadingMargin" };
    case NSLayoutAttribute::TrailingMargin:
        return { Place, horizontal, true, false, "trailingMargin" };
    case NSLayoutAttribute::CenterXWithinMargins:
        return { Place, horizontal, false, false, "centerXWithinMargins" };
    case NSLayoutAttribute::CenterYWithinMargins:
        return { Place, vertical, false, false, "centerYWithinMargins" };
    }
    return {};
}

bool areComparable(NSLayoutAttribute first, NSLayoutAttribute second)
{
    const auto firstTraits = traitsOf(first);
    const auto secondTraits = traitsOf(second);
    if (firstTraits.kind == LayoutKind::None)
        return false;
    if (second == NSLayoutAttribute::NotAnAttribute)
        return firstTraits.kind == LayoutKind::Size;
    if (firstTraits.kind != secondTraits.kind)
        return false;
    if (firstTraits.kind == LayoutKind::Size)
        return true; // a width may follow a height
    const bool mixesSides = (firstTraits.followsWriting && secondTraits.isFixedSide)
        || (firstTraits.isFixedSide && secondTraits.followsWriting);
    return firstTraits.axis == secondTraits.axis && !mixesSides;
}
