#include "platform/layers/CAMediaTimingFunction.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <cmath>

namespace {

// One coordinate of the curve: its ends are 0 and 1.
double coordinate(double first, double second, double parameter)
{
    const double rest = 1 - parameter;
    return parameter * (3 * rest * (rest * first + parameter * second) + parameter * parameter);
}

double slope(double first, double second, double parameter)
{
    const double rest = 1 - parameter;
    return 3
        * (rest * rest * first + 2 * rest * parameter * (second - first)
            + parameter * parameter * (1 - second));
}

bool isFraction(double number) { return number >= 0 && number <= 1; }

CGPoint runningForward(const CGPoint& point)
{
    return { isFraction(point.x()) ? point.x() : point.x() > 1, point.y() };
}

} // namespace

std::shared_ptr<CAMediaTimingFunction> CAMediaTimingFunction::functionWithName(CAMediaTimingFunctionName name)
{
    const auto named = [](double x1, double y1, double x2, double y2) {
        return make<CAMediaTimingFunction>(CGPoint(x1, y1), CGPoint(x2, y2));
    };
    static const auto linear = named(0, 0, 1, 1);
    static const auto easeIn = named(0.42, 0, 1, 1);
    static const auto easeOut = named(0, 0, 0.58, 1);
    static const auto easeInEaseOut = named(0.42, 0, 0.58, 1);
    static const auto standard = named(0.25, 0.1, 0.25, 1);
    switch (name) {
    case kCAMediaTimingFunctionLinear:
        return linear;
    case kCAMediaTimingFunctionEaseIn:
        return easeIn;
    case kCAMediaTimingFunctionEaseOut:
        return easeOut;
    case kCAMediaTimingFunctionEaseInEaseOut:
        return easeInEaseOut;
    case kCAMediaTimingFunctionDefault:
        break;
    }
    return standard;
}

std::shared_ptr<CAMediaTimingFunction> CAMediaTimingFunction::functionWithControlPoints(
    CGPoint first, CGPoint second)
{
    return make<CAMediaTimingFunction>(first, second);
}

CAMediaTimingFunction::CAMediaTimingFunction(CGPoint first, CGPoint second)
    : m_first(runningForward(first))
    , m_second(runningForward(second))
{
    NSParameterAssert(isFraction(first.x()) && isFraction(second.x()), "CAMediaTimingFunction",
        "isFraction(first.x()) && isFraction(second.x())");
}

double CAMediaTimingFunction::valueAt(double time) const
{
    if (!(time > 0))
        return 0;
    if (time >= 1)
        return 1;
    if (m_first.x() == m_first.y() && m_second.x() == m_second.y())
        return time;
    return coordinate(m_first.y(), m_second.y(), parameterAt(time));
}

// Newton's steps, each kept inside the shrinking interval that holds the answer: where the curve is
// steep or flat and a step would leave it, the interval is halved instead.
double CAMediaTimingFunction::parameterAt(double time) const
{
    const double tolerance = 1e-15;
    double low = 0;
    double high = 1;
    double parameter = time;
    for (int step = 0; step < 64; ++step) {
        const double error = coordinate(m_first.x(), m_second.x(), parameter) - time;
        if (std::abs(error) <= tolerance)
            break;
        (error > 0 ? high : low) = parameter;
        const double next = parameter - error / slope(m_first.x(), m_second.x(), parameter);
        parameter = next > low && next < high ? next : (low + high) / 2;
    }
    return parameter;
}
