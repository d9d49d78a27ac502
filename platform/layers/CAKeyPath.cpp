#include "platform/layers/CAKeyPath.h"

#include "platform/layers/AffineParts.h"

#include <array>

namespace {

using Part = CAKeyPath::Part;

struct NamedPart {
    const char* suffix;
    Part part;
};

constexpr NamedPart pointParts[] = { { ".x", Part::X }, { ".y", Part::Y } };
constexpr NamedPart rectParts[] = {
    { ".origin", Part::Origin },
    { ".origin.x", Part::OriginX },
    { ".origin.y", Part::OriginY },
    { ".size", Part::Size },
    { ".size.width", Part::Width },
    { ".size.height", Part::Height },
};
constexpr NamedPart transformParts[] = {
    { ".scale", Part::Scale },
    { ".scale.xy", Part::Scale },
    { ".scale.x", Part::ScaleX },
    { ".scale.y", Part::ScaleY },
    { ".rotation", Part::Rotation },
    { ".rotation.z", Part::Rotation },
    { ".translation", Part::Translation },
    { ".translation.x", Part::TranslationX },
    { ".translation.y", Part::TranslationY },
};

// In the order of CAProperty.
const std::array<NSString, 15>& keys()
{
    static const std::array<NSString, 15> all {
        NSString(),
        QStringLiteral("bounds"),
        QStringLiteral("position"),
        QStringLiteral("anchorPoint"),
        QStringLiteral("transform"),
        QStringLiteral("opacity"),
        QStringLiteral("cornerRadius"),
        QStringLiteral("backgroundColor"),
        QStringLiteral("contentsTintColor"),
        QStringLiteral("strokeStart"),
        QStringLiteral("strokeEnd"),
        QStringLiteral("lineWidth"),
        QStringLiteral("strokeColor"),
        QStringLiteral("fillColor"),
        QStringLiteral("path"),
    };
    return all;
}

template <std::size_t count> Part partNamed(QStringView suffix, const NamedPart (&parts)[count])
{
    for (const NamedPart& named : parts)
        if (suffix == QLatin1StringView(named.suffix))
            return named.part;
    return Part::Whole;
}

Part partOf(CAProperty property, QStringView suffix)
{
    switch (property) {
    case CAProperty::Position:
    case CAProperty::AnchorPoint:
        return partNamed(suffix, pointParts);
    case CAProperty::Bounds:
        return partNamed(suffix, rectParts);
    case CAProperty::Transform:
        return partNamed(suffix, transformParts);
    default:
        return Part::Whole;
    }
}

// Calls the visitor with the member that holds the property; never for None.
template <typename Visitor> void visitMember(CAProperty property, Visitor visitor)
{
    switch (property) {
    case CAProperty::None:
        return;
    case CAProperty::Bounds:
        return visitor(&CALayerValues::bounds);
    case CAProperty::Position:
        return visitor(&CALayerValues::position);
    case CAProperty::AnchorPoint:
        return visitor(&CALayerValues::anchorPoint);
    case CAProperty::Transform:
        return visitor(&CALayerValues::transform);
    case CAProperty::Opacity:
        return visitor(&CALayerValues::opacity);
    case CAProperty::CornerRadius:
        return visitor(&CALayerValues::cornerRadius);
    case CAProperty::BackgroundColor:
        return visitor(&CALayerValues::backgroundColor);
    case CAProperty::ContentsTintColor:
        return visitor(&CALayerValues::contentsTintColor);
    case CAProperty::StrokeStart:
        return visitor(&CALayerValues::strokeStart);
    case CAProperty::StrokeEnd:
        return visitor(&CALayerValues::strokeEnd);
    case CAProperty::LineWidth:
        return visitor(&CALayerValues::lineWidth);
    case CAProperty::StrokeColor:
        return visitor(&CALayerValues::strokeColor);
    case CAProperty::FillColor:
        return visitor(&CALayerValues::fillColor);
    case CAProperty::Path:
        return visitor(&CALayerValues::path);
    }
}

// --- Parts: read() answers what the part is, write() changes it if the value is of its kind -------------

CAValue read(const CGPoint& point, Part part) { return part == Part::X ? point.x() : point.y(); }

CAValue read(const CGRect& rect, Part part)
{
    switch (part) {
    case Part::Origin:
        return rect.topLeft();
    case Part::OriginX:
        return rect.x();
    case Part::OriginY:
        return rect.y();
    case Part::Size:
        return rect.size();
    case Part::Width:
        return rect.width();
    case Part::Height:
        return rect.height();
    default:
        return {};
    }
}

CAValue read(const CGAffineTransform& transform, Part part)
{
    const AffineParts parts = AffineParts::of(transform);
    switch (part) {
    case Part::Scale:
        return (parts.scaleX + parts.scaleY) / 2;
    case Part::ScaleX:
        return parts.scaleX;
    case Part::ScaleY:
        return parts.scaleY;
    case Part::Rotation:
        return parts.rotation;
    case Part::Translation:
        return CGPoint(parts.translationX, parts.translationY);
    case Part::TranslationX:
        return parts.translationX;
    case Part::TranslationY:
        return parts.translationY;
    default:
        return {};
    }
}

void write(CGPoint& point, Part part, const CAValue& value)
{
    if (const double* number = std::get_if<double>(&value))
        (part == Part::X ? point.rx() : point.ry()) = *number;
}

void write(CGRect& rect, Part part, const CAValue& value)
{
    const double* number = std::get_if<double>(&value);
    const CGPoint* point = std::get_if<CGPoint>(&value);
    const CGSize* size = std::get_if<CGSize>(&value);
    if (part == Part::Origin && point)
        rect.moveTopLeft(*point);
    else if (part == Part::OriginX && number)
        rect.moveLeft(*number);
    else if (part == Part::OriginY && number)
        rect.moveTop(*number);
    else if (part == Part::Size && size)
        rect.setSize(*size);
    else if (part == Part::Width && number)
        rect.setWidth(*number);
    else if (part == Part::Height && number)
        rect.setHeight(*number);
}

void write(CGAffineTransform& transform, Part part, const CAValue& value)
{
    AffineParts parts = AffineParts::of(transform);
    const double* number = std::get_if<double>(&value);
    const CGPoint* point = std::get_if<CGPoint>(&value);
    if (part == Part::Translation && point) {
        parts.translationX = point->x();
        parts.translationY = point->y();
    } else if (number) {
        switch (part) {
        case Part::Scale:
            parts.scaleX = parts.scaleY = *number;
            break;
        case Part::ScaleX:
            parts.scaleX = *number;
            break;
        case Part::ScaleY:
            parts.scaleY = *number;
            break;
        case Part::Rotation:
            parts.rotation = *number;
            break;
        case Part::TranslationX:
            parts.translationX = *number;
            break;
        case Part::TranslationY:
            parts.translationY = *number;
            break;
        default:
            return;
        }
    } else {
        return;
    }
    transform = parts.transform();
}

// Numbers, colours and paths have no parts.
template <typename Value> CAValue read(const Value&, Part) { return {}; }
template <typename Value> void write(Value&, Part, const CAValue&) { }

} // namespace

CAKeyPath::CAKeyPath(const NSString& text)
{
    const auto dot = text.indexOf(QLatin1Char('.'));
    const QStringView written = QStringView(text).left(dot < 0 ? text.size() : dot);
    const QStringView suffix = QStringView(text).mid(written.size());
    // What a layer calls its position is a view's centre.
    const QStringView name
        = written == QLatin1StringView("center") ? QStringView(key(CAProperty::Position)) : written;
    for (std::size_t index = 1; index < keys().size(); ++index) {
        if (name != keys()[index])
            continue;
        const auto property = static_cast<CAProperty>(index);
        m_part = partOf(property, suffix);
        if (suffix.isEmpty() || m_part != Part::Whole)
            m_property = property;
        return;
    }
}

const NSString& CAKeyPath::key(CAProperty property) { return keys()[static_cast<std::size_t>(property)]; }

CAValue CAKeyPath::value(const CALayerValues& values) const
{
    CAValue result;
    visitMember(m_property, [&](auto member) {
        if (m_part == Part::Whole)
            result = values.*member;
        else
            result = read(values.*member, m_part);
    });
    return result;
}

void CAKeyPath::setValue(CALayerValues& values, const CAValue& value) const
{
    visitMember(m_property, [&](auto member) {
        using Value = std::decay_t<decltype(values.*member)>;
        if (m_part != Part::Whole)
            write(values.*member, m_part, value);
        else if (const Value* whole = std::get_if<Value>(&value))
            values.*member = *whole;
    });
}
