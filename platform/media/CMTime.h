// A moment or a length of sound as a fraction: value / timescale seconds, exact to the sample.
//
// Beside the numbers there are the two infinities, "indefinite" (not known yet) and "invalid" (no time
// at all). They are ordered: −∞ < every number < +∞ < indefinite < invalid. The zero structure CMTime {}
// is a number, 0 seconds with timescale 0, which is the time of a player that is nil.
#pragma once

#include <cstdint>

enum class CMTimeKind : std::uint32_t { Number = 0, PositiveInfinity, NegativeInfinity, Indefinite, Invalid };

struct CMTime {
    std::int64_t value = 0;
    std::int32_t timescale = 0; // units in a second; 0 only where there is nothing to divide
    CMTimeKind flags = CMTimeKind::Number;

    bool isNumeric() const { return flags == CMTimeKind::Number; }
};

inline constexpr CMTime kCMTimeZero { 0, 1, CMTimeKind::Number };
inline constexpr CMTime kCMTimePositiveInfinity { 0, 0, CMTimeKind::PositiveInfinity };
inline constexpr CMTime kCMTimeNegativeInfinity { 0, 0, CMTimeKind::NegativeInfinity };
inline constexpr CMTime kCMTimeIndefinite { 0, 0, CMTimeKind::Indefinite };
inline constexpr CMTime kCMTimeInvalid { 0, 0, CMTimeKind::Invalid };

// A timescale of 0 or less gives an invalid time, unless the value is 0 too.
CMTime CMTimeMake(std::int64_t value, std::int32_t timescale);

// The nearest time in the given timescale. A timescale of 0 or less leaves the choice open: nanoseconds.
// A timescale too fine for that many seconds is made coarser; what fits none is infinite; NaN is invalid.
CMTime CMTimeMakeWithSeconds(double seconds, std::int32_t preferredTimescale);

// Indefinite and invalid times give NaN, infinite ones infinity.
double CMTimeGetSeconds(CMTime);

// The nearest time in another timescale (> 0), halves away from zero.
CMTime CMTimeConvertScale(CMTime, std::int32_t newTimescale);

// −1, 0 or 1; exact whatever the timescales are.
int CMTimeCompare(CMTime first, CMTime second);

// Exact while a common timescale fits; else rounded to the finer one. What does not fit is infinite.
CMTime CMTimeAdd(CMTime first, CMTime second);
CMTime CMTimeSubtract(CMTime first, CMTime second);

// Equal as moments: 1/2 is 2/4.
inline bool operator==(CMTime first, CMTime second) { return CMTimeCompare(first, second) == 0; }
inline bool operator<(CMTime first, CMTime second) { return CMTimeCompare(first, second) < 0; }
inline bool operator<=(CMTime first, CMTime second) { return CMTimeCompare(first, second) <= 0; }
inline bool operator>(CMTime first, CMTime second) { return CMTimeCompare(first, second) > 0; }
inline bool operator>=(CMTime first, CMTime second) { return CMTimeCompare(first, second) >= 0; }
