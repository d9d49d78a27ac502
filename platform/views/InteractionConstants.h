// How touching feels: every number of it in one place, with its reason.
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
// How long a touch in scrolling content waits before the content hears of it: a flick is under way by
// then, so rows do not flash while the list is thrown.
inline constexpr double contentTouchDelay = 0.15;
// The stretch of time that a finger's velocity is measured over: long enough to even out the jitter of
// single positions, short enough that a finger which rests before it lifts has stopped.
inline constexpr double velocityWindow = 0.08;

} // namespace InteractionConstants
