#include "platform/layers/CAValue.h"

#include "platform/graphics/UIColor.h"
#include "platform/layers/AffineParts.h"

namespace {

using Color = std::shared_ptr<UIColor>;

// A missing colour mixes as a clear one. A repeated picture has no components and cannot be mixed.
QColor components(const Color& color) { return color ? color->qColor() : QColor(0, 0, 0, 0); }

template <typename Number> Number mixed(const Number& from, const Number& to, double fraction)
{
    return from + (to - from) * fraction;
}

CGRect mixed(const CGRect& from, const CGRect& to, double fraction)
{
    return { mixed(from.topLeft(), to.topLeft(), fraction), mixed(from.size(), to.size(), fraction) };
}

CGAffineTransform mixed(const CGAffineTransform& from, const CGAffineTransform& to, double fraction)
{
    return AffineParts::interpolate(AffineParts::of(from), AffineParts::of(to), fraction).transform();
}

Color mixed(const Color& from, const Color& to, double fraction)
{
    const QColor first = components(from);
    const QColor second = components(to);
    if (!first.isValid() || !second.isValid())
        return fraction < 0.5 ? from : to;
    const double alpha = mixed(double(first.alphaF()), double(second.alphaF()), fraction);
    if (!(alpha > 0))
        return UIColor::clearColor();
    const auto part = [&](double firstPart, double secondPart) {
        return mixed(firstPart * first.alphaF(), secondPart * second.alphaF(), fraction) / alpha;
    };
    return UIColor::colorWithRed(part(first.redF(), second.redF()), part(first.greenF(), second.greenF()),
        part(first.blueF(), second.blueF()), alpha);
}

CGPathRef mixed(const CGPathRef& from, const CGPathRef& to, double fraction)
{
    if (!from || !to || from->elementCount() != to->elementCount())
        return to;
    auto path = std::make_shared<QPainterPath>(*to);
    for (int index = 0; index < to->elementCount(); ++index) {
        const QPainterPath::Element first = from->elementAt(index);
        const QPainterPath::Element second = to->elementAt(index);
        if (first.type != second.type)
            return to;
        path->setElementPositionAt(
            index, mixed(first.x, second.x, fraction), mixed(first.y, second.y, fraction));
    }
    return path;
}

// The operation on both operands where they are of one kind; otherwise the first one.
template <typename Operation>
CAValue combined(const CAValue& first, const CAValue& second, Operation operation)
{
    return std::visit(
        [&](const auto& value) -> CAValue {
            using Kind = std::decay_t<decltype(value)>;
            const auto* other = std::get_if<Kind>(&second);
            if constexpr (std::is_same_v<Kind, std::monostate>)
                return value;
            else
                return other ? CAValue(operation(value, *other)) : CAValue(value);
        },
        first);
}

struct Sum {
    template <typename Number> Number operator()(const Number& a, const Number& b) const { return a + b; }
    CGRect operator()(const CGRect& a, const CGRect& b) const
    {
        return { a.topLeft() + b.topLeft(), a.size() + b.size() };
    }
    CGAffineTransform operator()(const CGAffineTransform& a, const CGAffineTransform& b) const
    {
        return a * b;
    }
    Color operator()(const Color& a, const Color& b) const
    {
        const QColor first = components(a);
        const QColor second = components(b);
        return UIColor::colorWithRed(first.redF() + second.redF(), first.greenF() + second.greenF(),
            first.blueF() + second.blueF(), first.alphaF() + second.alphaF());
    }
    CGPathRef operator()(const CGPathRef& a, const CGPathRef&) const { return a; } // paths do not add up
};

struct Difference {
    template <typename Number> Number operator()(const Number& a, const Number& b) const { return a - b; }
    CGRect operator()(const CGRect& a, const CGRect& b) const
    {
        return { a.topLeft() - b.topLeft(), a.size() - b.size() };
    }
    // What has to come before b to make a; nothing can undo a transform that leaves no area.
    CGAffineTransform operator()(const CGAffineTransform& a, const CGAffineTransform& b) const
    {
        return a * b.inverted();
    }
    Color operator()(const Color& a, const Color& b) const
    {
        const QColor first = components(a);
        const QColor second = components(b);
        return UIColor::colorWithRed(first.redF() - second.redF(), first.greenF() - second.greenF(),
            first.blueF() - second.blueF(), first.alphaF() - second.alphaF());
    }
    CGPathRef operator()(const CGPathRef& a, const CGPathRef&) const { return a; }
};

} // namespace

namespace CAValues {

bool isSame(const Color& first, const Color& second) { return isEqual(first.get(), second.get()); }

bool isSame(const CAValue& first, const CAValue& second)
{
    return std::visit(
        [&](const auto& value) {
            using Kind = std::decay_t<decltype(value)>;
            const auto* other = std::get_if<Kind>(&second);
            if constexpr (std::is_same_v<Kind, std::monostate>)
                return isMissing(second);
            else
                return other && isSame(value, *other);
        },
        first);
}

CAValue neutral(const CAValue& kind)
{
    return std::visit(
        [](const auto& value) -> CAValue {
            using Kind = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Kind, CGSize>)
                return CGSize(0, 0);
            else if constexpr (std::is_same_v<Kind, Color>)
                return UIColor::clearColor();
            else
                return Kind {};
        },
        kind);
}

CAValue sum(const CAValue& first, const CAValue& second) { return combined(first, second, Sum {}); }

CAValue difference(const CAValue& first, const CAValue& second)
{
    return combined(first, second, Difference {});
}

CAValue interpolate(const CAValue& from, const CAValue& to, double fraction)
{
    // The ends are reached exactly, whatever the arithmetic on the way would make of them.
    if (fraction == 0)
        return from;
    if (fraction == 1 && from.index() == to.index())
        return to;
    return combined(from, to,
        [fraction](const auto& first, const auto& second) { return mixed(first, second, fraction); });
}

} // namespace CAValues
