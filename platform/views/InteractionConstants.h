// The numbers of touching and pressing, in one place, each with its reason.
//
// Distances are points, times seconds. The laws of scrolling have their own numbers, beside their formulas.
#pragma once

namespace InteractionConstants {

// A finger rolls while it presses: up to here it still taps.
inline constexpr double tapMaximumMovement = 10;
// From here on it drags. The same distance, so that every touch is the one or the other.
inline constexpr double panMinimumMovement = 10;
// How soon the next tap of a double tap must begin: longer, and single taps would wait noticeably for it.
inline constexpr double multipleTapInterval = 0.3;
// How far it may lie from the one before: about the width of a fingertip.
inline constexpr double multipleTapDistance = 40;
// How long a finger presses until it is a long touch: longer than anybody taps.
inline constexpr double longPressDuration = 0.5;
// How far it may roll until then. The same as a tap's: until it is long enough nobody knows which it is.
inline constexpr double longPressMaximumMovement = 10;
// How much two fingers close or open before they pinch, so that two that only rest do not zoom.
inline constexpr double pinchMinimumMovement = 8;
// How far around a control a finger that presses it still counts as inside. It hides what it presses and
// is rarely lifted where it came down.
inline constexpr double controlTouchSlack = 70;
// How long a touch in scrolling content waits before the content hears of it: a flick is under way by
// then, so rows do not flash while the list is thrown.
inline constexpr double contentTouchDelay = 0.15;
// The stretch of time that a finger's velocity is measured over: long enough to even out the jitter of
// single positions, short enough that a finger which rests before it lifts has stopped.
inline constexpr double velocityWindow = 0.08;

} // namespace InteractionConstants
