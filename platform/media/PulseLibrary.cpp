#include "platform/media/PulseLibrary.h"

#include "platform/media/DynamicLibrary.h"

#include <optional>

namespace {

std::optional<PulseLibrary> load()
{
    const DynamicLibrary library("libpulse.so.0");
    PulseLibrary functions;
    bool isComplete = library.isLoaded();
#define PULSE_RESOLVE(name) isComplete = isComplete && library.resolve(#name, functions.name);
    PULSE_FUNCTIONS(PULSE_RESOLVE)
#undef PULSE_RESOLVE
    return isComplete ? std::optional(functions) : std::nullopt;
}

} // namespace

const PulseLibrary* PulseLibrary::shared()
{
    static const std::optional<PulseLibrary> library = load();
    return library ? &*library : nullptr;
}
