#include "platform/media/CMTime.h"

#include "platform/foundation/NumberRange.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace {

// Wide enough for a value times two timescales: nothing below can overflow.
__extension__ using Int128 = __int128;

constexpr std::int32_t finestTimescale = 1'000'000'000; // nanoseconds, finer than any sample

// Without a timescale a value is invalid, except 0, which is 0 in every timescale.
CMTime withDivisor(CMTime time)
{
    if (!time.isNumeric() || time.timescale > 0)
        return time;
    return time.value == 0 ? kCMTimeZero : kCMTimeInvalid;
}

int sign(Int128 number) { return number < 0 ? -1 : (number > 0 ? 1 : 0); }

// The order of the kinds; numbers among themselves are equal here.
int rank(CMTimeKind kind)
{
    switch (kind) {
    case CMTimeKind::NegativeInfinity:
        return 0;
    case CMTimeKind::Number:
        return 1;
    case CMTimeKind::PositiveInfinity:
        return 2;
    case CMTimeKind::Indefinite:
        return 3;
    case CMTimeKind::Invalid:
        break;
    }
    return 4;
}

CMTime infinity(bool isNegative) { return isNegative ? kCMTimeNegativeInfinity : kCMTimePositiveInfinity; }

// numerator / denominator seconds in the timescale, halves away from zero.
CMTime nearest(Int128 numerator, Int128 denominator, std::int32_t timescale)
{
    const Int128 scaled = numerator * timescale;
    const Int128 half = denominator / 2;
    const Int128 value = (scaled + (scaled < 0 ? -half : half)) / denominator;
    if (value > std::numeric_limits<std::int64_t>::max() || value < std::numeric_limits<std::int64_t>::min())
        return infinity(value < 0);
    return { static_cast<std::int64_t>(value), timescale, CMTimeKind::Number };
}

CMTime sum(CMTime first, CMTime second, int signOfSecond)
{
    first = withDivisor(first);
    second = withDivisor(second);
    if (first.isNumeric() && second.isNumeric()) {
        const std::int64_t common = std::lcm(
            static_cast<std::int64_t>(first.timescale), static_cast<std::int64_t>(second.timescale));
        const bool fits = common <= std::numeric_limits<std::int32_t>::max();
        const auto timescale
            = fits ? static_cast<std::int32_t>(common) : std::max(first.timescale, second.timescale);
        const Int128 numerator = static_cast<Int128>(first.value) * second.timescale
            + signOfSecond * static_cast<Int128>(second.value) * first.timescale;
        return nearest(numerator, static_cast<Int128>(first.timescale) * second.timescale, timescale);
    }
    if (signOfSecond < 0 && second.flags == CMTimeKind::PositiveInfinity)
        second = kCMTimeNegativeInfinity;
    else if (signOfSecond < 0 && second.flags == CMTimeKind::NegativeInfinity)
        second = kCMTimePositiveInfinity;
    const bool cancelOut = first.flags != second.flags && rank(first.flags) + rank(second.flags) == 2;
    if (cancelOut)
        return kCMTimeInvalid; // one infinity against the other
    if (first.isNumeric() || second.isNumeric())
        return first.isNumeric() ? second : first;
    return rank(first.flags) > rank(second.flags) ? first : second;
}

} // namespace

CMTime CMTimeMake(std::int64_t value, std::int32_t timescale)
{
    return timescale > 0 || value == 0 ? CMTime { value, std::max(timescale, 0), CMTimeKind::Number }
                                       : kCMTimeInvalid;
}

CMTime CMTimeMakeWithSeconds(double seconds, std::int32_t preferredTimescale)
{
    if (std::isnan(seconds))
        return kCMTimeInvalid;
    std::int32_t timescale = preferredTimescale > 0 ? preferredTimescale : finestTimescale;
    while (timescale > 1 && !isInRange<std::int64_t>(seconds * timescale))
        timescale /= 2;
    if (!isInRange<std::int64_t>(seconds * timescale))
        return infinity(seconds < 0);
    return { static_cast<std::int64_t>(std::round(seconds * timescale)), timescale, CMTimeKind::Number };
}

double CMTimeGetSeconds(CMTime time)
{
    time = withDivisor(time);
    switch (time.flags) {
    case CMTimeKind::Number:
        return static_cast<double>(time.value) / time.timescale;
    case CMTimeKind::PositiveInfinity:
        return std::numeric_limits<double>::infinity();
    case CMTimeKind::NegativeInfinity:
        return -std::numeric_limits<double>::infinity();
    case CMTimeKind::Indefinite:
    case CMTimeKind::Invalid:
        break;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

CMTime CMTimeConvertScale(CMTime time, std::int32_t newTimescale)
{
    time = withDivisor(time);
    if (!time.isNumeric())
        return time;
    return newTimescale > 0 ? nearest(time.value, time.timescale, newTimescale) : kCMTimeInvalid;
}

int CMTimeCompare(CMTime first, CMTime second)
{
    first = withDivisor(first);
    second = withDivisor(second);
    if (!first.isNumeric() || !second.isNumeric())
        return sign(rank(first.flags) - rank(second.flags));
    return sign(static_cast<Int128>(first.value) * second.timescale
        - static_cast<Int128>(second.value) * first.timescale);
}

CMTime CMTimeAdd(CMTime first, CMTime second) { return sum(first, second, 1); }

CMTime CMTimeSubtract(CMTime first, CMTime second) { return sum(first, second, -1); }
