// The laws of scrolling along one axis: rubber band, deceleration, spring.
//
// Positions are content offsets in points, velocities points a second, times seconds. Everything is a
// pure function, so a motion can be asked for any moment and tested at chosen times.
#pragma once

namespace ScrollPhysics {

// What is left of a velocity after one millisecond of free scrolling.
inline constexpr double decelerationRatePerMillisecond = 0.998;
// How stiffly the content resists being pulled past its end: 1 follows the finger at first, 0 not at all.
inline constexpr double rubberBandStiffness = 0.55;
// Angular frequency of the critically damped spring that brings the content back, in 1/s: the way back
// takes about 0.4 s, and a fast fling shoots past the end by about a tenth of a screen.
inline constexpr double springFrequency = 12;
// A motion ends when less than this is left of its way, in points: under a pixel on every screen.
inline constexpr double restDistance = 0.25;

// The offsets at which the content fills the view; minimum ≤ maximum.
struct Range {
    double minimum = 0;
    double maximum = 0;

    double clamp(double offset) const;
    bool contains(double offset) const { return offset >= minimum && offset <= maximum; }
};

// How far past its end the content is shown for a finger that has pulled it `excess` points past, in a view
// `dimension` points long. Never as much as `dimension`.
double rubberBand(double excess, double dimension);
// The finger's pull that shows such an excess: the inverse of rubberBand(), for a finger that catches a
// content on its way back.
double rubberBandPull(double shownExcess, double dimension);
// An offset that follows the finger inside the range and resists outside of it.
double rubberBandOffset(double offset, Range, double dimension);

} // namespace ScrollPhysics

// A released content on its way: it decelerates, and springs back when it meets an end.
class ScrollFlight {
public:
    // Leaves `offset` with `velocity` at time 0; an offset past an end springs back at once.
    ScrollFlight(double offset, double velocity, ScrollPhysics::Range);

    double offsetAt(double time) const;
    double velocityAt(double time) const;
    double duration() const { return m_springStart + m_springDuration; }
    // Where the content comes to rest.
    double destination() const { return m_destination; }

private:
    void startSpring(double time, double offset, double velocity, double target);

    double m_offset;
    double m_velocity;
    double m_springStart = 0; // when free scrolling ends
    double m_springDuration = 0;
    double m_springOffset = 0; // relative to the destination, when the spring takes over
    double m_springVelocity = 0;
    double m_destination = 0;
};
