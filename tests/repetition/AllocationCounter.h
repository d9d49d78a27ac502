// How often this program has asked for memory, and how much of it it holds.
//
// The calls of malloc and its relatives by everything in the process, libraries included. For one thread the
// numbers are exact and the same in every run, which makes the calls a measure of work where no instructions
// can be counted. A sanitizer keeps its own heap: with one everything is 0.
#pragma once

#include <cstdint>

namespace AllocationCounter {

std::int64_t callsSoFar();
std::int64_t blocksInUse();
// With what the heap adds to the blocks to keep order, which differs with the order of the calls.
std::int64_t bytesInUse();

} // namespace AllocationCounter
