// Tells callgrind what instructions are spent on, so that one run counts several things apart;
// benchmarks/run reads the result. Does nothing in a plain run.
#pragma once

#include <valgrind/callgrind.h>

namespace InstructionCount {

inline void begin() { CALLGRIND_ZERO_STATS; }
// What was spent since begin() belongs to the kind.
inline void end(const char* kind) { CALLGRIND_DUMP_STATS_AT(kind); }

} // namespace InstructionCount
