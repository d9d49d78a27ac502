// The pace of an animation: a cubic curve from (0, 0) to (1, 1) over the two control points.
//
// Immutable; the named ones are shared.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/graphics/Geometry.h"

enum class CAMediaTimingFunctionName { Linear, EaseIn, EaseOut, EaseInEaseOut, Default };
inline constexpr auto kCAMediaTimingFunctionLinear = CAMediaTimingFunctionName::Linear;
inline constexpr auto kCAMediaTimingFunctionEaseIn = CAMediaTimingFunctionName::EaseIn;
inline constexpr auto kCAMediaTimingFunctionEaseOut = CAMediaTimingFunctionName::EaseOut;
inline constexpr auto kCAMediaTimingFunctionEaseInEaseOut = CAMediaTimingFunctionName::EaseInEaseOut;
inline constexpr auto kCAMediaTimingFunctionDefault = CAMediaTimingFunctionName::Default;

class CAMediaTimingFunction final : public NSObject {
public:
    static std::shared_ptr<CAMediaTimingFunction> functionWithName(CAMediaTimingFunctionName);
    // functionWithControlPoints:::: — the x of both must lie between 0 and 1, so that time does not run back;
    // otherwise it is a programming error and the nearer end is taken.
    static std::shared_ptr<CAMediaTimingFunction> functionWithControlPoints(CGPoint first, CGPoint second);

    CAMediaTimingFunction(CGPoint first, CGPoint second);

    CGPoint firstControlPoint() const { return m_first; }
    CGPoint secondControlPoint() const { return m_second; }

    // The fraction of the way at a fraction of the time. Exactly 0 and 1 at and beyond the ends.
    double valueAt(double time) const;

private:
    double parameterAt(double time) const;

    CGPoint m_first;
    CGPoint m_second;
};
