#include "platform/layers/AffineParts.h"

#include <cmath>
#include <numbers>

AffineParts AffineParts::of(const CGAffineTransform& transform)
{
    AffineParts parts;
    parts.translationX = transform.dx();
    parts.translationY = transform.dy();
    parts.scaleX = std::hypot(transform.m11(), transform.m12());
    // An axis without length has no direction; the other one then tells the rotation.
    parts.rotation = parts.scaleX > 0 ? std::atan2(transform.m12(), transform.m11())
                                      : std::atan2(-transform.m21(), transform.m22());
    const double cosine = std::cos(parts.rotation);
    const double sine = std::sin(parts.rotation);
    parts.shear = transform.m21() * cosine + transform.m22() * sine;
    parts.scaleY = transform.m22() * cosine - transform.m21() * sine;
    return parts;
}

CGAffineTransform AffineParts::transform() const
{
    const double cosine = std::cos(rotation);
    const double sine = std::sin(rotation);
    return { scaleX * cosine, scaleX * sine, shear * cosine - scaleY * sine, shear * sine + scaleY * cosine,
        translationX, translationY };
}

AffineParts AffineParts::interpolate(const AffineParts& from, const AffineParts& to, double fraction)
{
    const auto mix = [fraction](double first, double second) { return first + (second - first) * fraction; };
    const double turn = std::remainder(to.rotation - from.rotation, 2 * std::numbers::pi);
    return { mix(from.scaleX, to.scaleX), mix(from.scaleY, to.scaleY), mix(from.shear, to.shear),
        from.rotation + turn * fraction, mix(from.translationX, to.translationX),
        mix(from.translationY, to.translationY) };
}
