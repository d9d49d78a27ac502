#include "platform/tables/ScrollPhysics.h"

#include <algorithm>
#include <cmath>

namespace ScrollPhysics {

double Range::clamp(double offset) const { return std::clamp(offset, minimum, maximum); }

double rubberBand(double excess, double dimension)
{
    if (dimension <= 0)
        return 0;
    const double pull = std::abs(excess);
    const double shown = dimension * (1 - 1 / (pull * rubberBandStiffness / dimension + 1));
    return std::copysign(shown, excess);
}

double rubberBandPull(double shownExcess, double dimension)
{
    if (dimension <= 0)
        return 0;
    // At the full dimension the pull would be infinite; stop where doubles still tell points apart.
    const double shown = std::min(std::abs(shownExcess), dimension * 0.999);
    const double pull = (1 / (1 - shown / dimension) - 1) * dimension / rubberBandStiffness;
    return std::copysign(pull, shownExcess);
}

double rubberBandOffset(double offset, Range range, double dimension)
{
    const double end = range.clamp(offset);
    return end + rubberBand(offset - end, dimension);
}

} // namespace ScrollPhysics

namespace {

// v(t) = v0·exp(-friction·t)
const double friction = -1000 * std::log(ScrollPhysics::decelerationRatePerMillisecond);

} // namespace

ScrollFlight::ScrollFlight(double offset, double velocity, ScrollPhysics::Range range)
    : m_offset(offset)
    , m_velocity(velocity)
{
    if (!range.contains(offset)) {
        startSpring(0, offset, velocity, range.clamp(offset));
        return;
    }
    const double freeWay = velocity / friction;
    m_destination = offset + freeWay;
    if (range.contains(m_destination)) {
        const double way = std::abs(freeWay);
        m_springStart
            = way > ScrollPhysics::restDistance ? std::log(way / ScrollPhysics::restDistance) / friction : 0;
        return;
    }
    const double end = range.clamp(m_destination);
    const double arrival = -std::log1p(-(end - offset) / freeWay) / friction;
    startSpring(arrival, end, velocity * std::exp(-friction * arrival), end);
}

void ScrollFlight::startSpring(double time, double offset, double velocity, double target)
{
    m_springStart = time;
    m_springOffset = offset - target;
    m_springVelocity = velocity;
    m_destination = target;
    // The envelope (|x| + |v + ω·x|·t)·exp(-ωt) only falls after t = 1/ω; look for its end from there.
    const double omega = ScrollPhysics::springFrequency;
    const double slope = std::abs(m_springVelocity + omega * m_springOffset);
    double left = 1 / omega;
    const auto envelope
        = [&](double t) { return (std::abs(m_springOffset) + slope * t) * std::exp(-omega * t); };
    double right = left;
    while (envelope(right) > ScrollPhysics::restDistance && right < 60)
        right *= 2;
    while (right - left > 1e-4) {
        const double middle = (left + right) / 2;
        (envelope(middle) > ScrollPhysics::restDistance ? left : right) = middle;
    }
    m_springDuration = right;
}

double ScrollFlight::offsetAt(double time) const
{
    if (time >= duration())
        return m_destination;
    if (time < m_springStart)
        return m_offset + m_velocity / friction * -std::expm1(-friction * time);
    const double t = time - m_springStart;
    const double omega = ScrollPhysics::springFrequency;
    return m_destination
        + (m_springOffset + (m_springVelocity + omega * m_springOffset) * t) * std::exp(-omega * t);
}

double ScrollFlight::velocityAt(double time) const
{
    if (time >= duration())
        return 0;
    if (time < m_springStart)
        return m_velocity * std::exp(-friction * time);
    const double t = time - m_springStart;
    const double omega = ScrollPhysics::springFrequency;
    const double slope = m_springVelocity + omega * m_springOffset;
    return (slope - omega * (m_springOffset + slope * t)) * std::exp(-omega * t);
}
