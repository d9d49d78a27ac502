#include "platform/layers/CAMediaTiming.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
// Counts from the largest single-precision number on mean "for ever".
constexpr double foreverCount = std::numeric_limits<float>::max();
// Sums and products of seconds are not exact: what is as near as this, in seconds or in runs, is the same.
constexpr double rounding = 1e-9;

// The runs until a moment of the active duration. Those until its end are whole if they are meant to be.
double runsUntil(double time, double active, double duration)
{
    const double runs = time / duration;
    const double whole = std::round(runs);
    return time == active && std::abs(runs - whole) <= rounding * whole ? whole : runs;
}

} // namespace

CAMoment CAMediaTiming::local(const CAMoment& parent) const
{
    return { (parent.time - beginTime) * speed + timeOffset, parent.rate * speed };
}

double CAMediaTiming::activeDuration() const
{
    if (!(duration > 0))
        return 0;
    if (repeatDuration > 0)
        return repeatDuration;
    if (repeatCount >= foreverCount)
        return infinity;
    return duration * (autoreverses ? 2 : 1) * (repeatCount > 0 ? repeatCount : 1);
}

CAMediaTiming::Phase CAMediaTiming::phase(const CAMoment& local) const
{
    const double active = activeDuration();
    if (local.rate == 0) {
        if (local.time < -rounding)
            return Phase::Before;
        return local.time <= active + rounding ? Phase::Active : Phase::After;
    }
    if (local.rate < 0) {
        if (local.time > active)
            return Phase::Before;
        return local.time > 0 ? Phase::Active : Phase::After;
    }
    if (local.time < 0)
        return Phase::Before;
    return local.time < active ? Phase::Active : Phase::After; // a NaN counts as after the end
}

std::optional<double> CAMediaTiming::progress(const CAMoment& local) const
{
    const bool both = fillMode == kCAFillModeBoth;
    const Phase now = phase(local);
    if (now == Phase::Before && !both && fillMode != kCAFillModeBackwards)
        return std::nullopt;
    if (now == Phase::After && !both && fillMode != kCAFillModeForwards)
        return std::nullopt;

    const double active = activeDuration();
    if (active == 0)
        return now == Phase::Before || autoreverses ? 0 : 1;
    double time = std::clamp(local.time, 0.0, active);
    if (local.rate == 0 && active - time <= rounding)
        time = active;
    else if (local.rate == 0 && time <= rounding)
        time = 0;
    const double runs = runsUntil(time, active, duration);
    if (!std::isfinite(runs))
        return 0;
    double run = std::floor(runs);
    double fraction = runs - run;
    if (time == active && fraction == 0) { // the end of the last run, not the start of one more
        run -= 1;
        fraction = 1;
    }
    const bool backwards = autoreverses && std::fmod(run, 2) == 1;
    return backwards ? 1 - fraction : fraction;
}

double CAMediaTiming::secondsUntilActive(const CAMoment& local) const
{
    if (local.rate == 0)
        return phase(local) == Phase::Active ? 0 : infinity;
    const double start = local.rate > 0 ? 0 : activeDuration();
    const double seconds = (start - local.time) / local.rate;
    return std::isnan(seconds) ? 0 : seconds;
}

double CAMediaTiming::secondsUntilEnd(const CAMoment& local) const
{
    if (local.rate == 0)
        return infinity;
    const double end = local.rate > 0 ? activeDuration() : 0;
    const double seconds = (end - local.time) / local.rate;
    return std::isnan(seconds) ? 0 : seconds;
}
