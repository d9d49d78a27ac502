#include "tests/repetition/AllocationCounter.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) && defined(__GLIBC__)
#define COUNTS_ALLOCATIONS
#endif

namespace {

std::atomic<std::int64_t> calls = 0;
std::atomic<std::int64_t> blocks = 0;

[[maybe_unused]] void* given(void* block)
{
    calls.fetch_add(1, std::memory_order_relaxed);
    if (block)
        blocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

} // namespace

#ifdef COUNTS_ALLOCATIONS

// The library's own functions under their second names; the ones below take the place of the first.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
// NOLINTEND(bugprone-reserved-identifier)

void* malloc(std::size_t size) { return given(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size) { return given(__libc_calloc(count, size)); }
void* memalign(std::size_t alignment, std::size_t size) { return given(__libc_memalign(alignment, size)); }
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }

int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    *block = memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}

void* realloc(void* block, std::size_t size)
{
    if (block)
        blocks.fetch_sub(1, std::memory_order_relaxed);
    return given(__libc_realloc(block, size));
}

void free(void* block)
{
    if (block)
        blocks.fetch_sub(1, std::memory_order_relaxed);
    __libc_free(block);
}
}

std::int64_t AllocationCounter::bytesInUse()
{
    const auto info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd); // in the heap, and mapped by themselves
}

#else

std::int64_t AllocationCounter::bytesInUse() { return 0; }

#endif

std::int64_t AllocationCounter::callsSoFar() { return calls.load(std::memory_order_relaxed); }
std::int64_t AllocationCounter::blocksInUse() { return blocks.load(std::memory_order_relaxed); }
