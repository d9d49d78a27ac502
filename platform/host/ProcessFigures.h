// What the operating system knows about this process.
#pragma once

#include <cstdint>

namespace ProcessFigures {

// Seconds since the process was started, the loading of its libraries included; 0 where the system does
// not tell. Exact to a hundredth of a second at the start, to the clock from there.
double age();
// The largest resident memory so far, in bytes; 0 where the system does not tell.
std::int64_t peakMemory();

} // namespace ProcessFigures
