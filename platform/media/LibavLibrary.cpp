#include "platform/media/LibavLibrary.h"

#include "platform/media/DynamicLibrary.h"

#include <optional>

namespace {

// No sound needs more in one piece; a header that lies about sizes must not take the machine's memory.
constexpr std::size_t largestAllocation = 64 << 20;

std::optional<LibavLibrary> load()
{
    // Its dependencies bring the other three, in the versions that belong to it.
    const DynamicLibrary library("libavformat.so." AV_STRINGIFY(LIBAVFORMAT_VERSION_MAJOR));
    LibavLibrary functions;
    bool isComplete = library.isLoaded();
#define LIBAV_RESOLVE(name) isComplete = isComplete && library.resolve(#name, functions.name);
    LIBAV_FUNCTIONS(LIBAV_RESOLVE)
#undef LIBAV_RESOLVE
    if (!isComplete)
        return std::nullopt;
    functions.av_log_set_level(AV_LOG_QUIET);
    functions.av_max_alloc(largestAllocation);
    return functions;
}

} // namespace

const LibavLibrary* LibavLibrary::shared()
{
    static const std::optional<LibavLibrary> library = load();
    return library ? &*library : nullptr;
}
