// How a stretch of time is placed on its parent's time line, and where in its run a moment falls.
//
// Animations and layers have one each. Time on the inside is (parent time − beginTime) · speed + timeOffset.
// Everything here is a pure function.
#pragma once

#include <optional>

enum class CAFillMode {
    Removed, // shows only while it runs
    Forwards, // keeps its end value after it
    Backwards, // shows its start value before it
    Both,
};
inline constexpr CAFillMode kCAFillModeRemoved = CAFillMode::Removed;
inline constexpr CAFillMode kCAFillModeForwards = CAFillMode::Forwards;
inline constexpr CAFillMode kCAFillModeBackwards = CAFillMode::Backwards;
inline constexpr CAFillMode kCAFillModeBoth = CAFillMode::Both;

// A moment on a time line, and how fast that line runs against the media clock: 0 stands still, below 0
// runs backwards.
struct CAMoment {
    double time = 0;
    double rate = 1;
};

struct CAMediaTiming {
    double beginTime = 0;
    double timeOffset = 0;
    double speed = 1;
    double duration = 0; // of one run, seconds
    double repeatCount = 0; // 0 counts as 1; fractions end in mid-run; the largest float repeats for ever
    double repeatDuration = 0; // above 0: instead of the count
    bool autoreverses = false; // each run is followed by one backwards
    CAFillMode fillMode = kCAFillModeRemoved;

    // The moment on this time line at a moment of the parent's.
    CAMoment local(const CAMoment& parent) const;

    // The length of all runs together, in local time; infinite when they repeat for ever.
    double activeDuration() const;

    enum class Phase { Before, Active, After };
    // On a line that stands still the first and the last moment both count as active, and a moment that is
    // one of them but for the rounding of sums counts as that one.
    Phase phase(const CAMoment& local) const;

    // How far the current run has got, 0 to 1; nothing while the fill mode shows nothing.
    std::optional<double> progress(const CAMoment& local) const;

    // Seconds on the media clock until the phase begins or is over; infinite when that never comes,
    // 0 or less when it has come.
    double secondsUntilActive(const CAMoment& local) const;
    double secondsUntilEnd(const CAMoment& local) const;
};
