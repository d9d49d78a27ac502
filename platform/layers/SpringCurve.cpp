#include "platform/layers/SpringCurve.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double restingEnvelope = 0.001;
// Closer to 1 than this a ratio counts as 1, where the other two forms would divide by nearly 0.
constexpr double criticalWidth = 1e-8;

double takenIntoRange(double ratio) { return ratio >= 0.01 ? std::min(ratio, 100.0) : 0.01; }

bool isCritical(double ratio) { return std::abs(ratio - 1) < criticalWidth; }

// The envelope falls steadily with the frequency, so halving an interval finds where it crosses.
double frequencyFor(double ratio)
{
    double low = 0;
    double high = 1;
    while (SpringCurve::envelope(ratio, high, 1) > restingEnvelope)
        high *= 2;
    for (int step = 0; step < 60; ++step) {
        const double middle = (low + high) / 2;
        (SpringCurve::envelope(ratio, middle, 1) > restingEnvelope ? low : high) = middle;
    }
    return high;
}

// The distance from rest of an overdamped spring: two decays, a slow and a fast one.
double overdamped(double ratio, double frequency, double time, double initialVelocity)
{
    const double root = std::sqrt(ratio * ratio - 1);
    const double slow = -frequency / (ratio + root); // −frequency · (ratio − root) without the cancellation
    const double fast = -frequency * (ratio + root);
    const double slowShare = (-initialVelocity - fast) / (slow - fast);
    return slowShare * std::exp(slow * time) + (1 - slowShare) * std::exp(fast * time);
}

} // namespace

SpringCurve::SpringCurve(double dampingRatio)
    : m_dampingRatio(takenIntoRange(dampingRatio))
    , m_frequency(frequencyFor(m_dampingRatio))
{
}

double SpringCurve::envelope(double ratio, double frequency, double time)
{
    if (!isCritical(ratio) && ratio > 1)
        return overdamped(ratio, frequency, time, 0);
    const double decay = ratio * frequency * time;
    const double linearBound = 1 + decay;
    if (isCritical(ratio))
        return linearBound * std::exp(-decay);
    // The amplitude of the swing bounds it too, but grows without limit towards the critical ratio.
    const double amplitude = 1 / std::sqrt(1 - ratio * ratio);
    return std::min(linearBound, amplitude) * std::exp(-decay);
}

double SpringCurve::valueAt(double time, double initialVelocity) const
{
    if (!(time > 0))
        return 0;
    if (time >= 1)
        return 1;
    const double velocity = std::isfinite(initialVelocity) ? initialVelocity : 0;
    const double decayRate = m_dampingRatio * m_frequency;
    if (isCritical(m_dampingRatio))
        return 1 - std::exp(-decayRate * time) * (1 + (decayRate - velocity) * time);
    if (m_dampingRatio > 1)
        return 1 - overdamped(m_dampingRatio, m_frequency, time, velocity);
    const double swing = m_frequency * std::sqrt(1 - m_dampingRatio * m_dampingRatio);
    return 1
        - std::exp(-decayRate * time)
        * (std::cos(swing * time) + (decayRate - velocity) / swing * std::sin(swing * time));
}
