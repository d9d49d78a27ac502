// Opens a sound and decodes what is needed to begin playing it.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/media/Sound.h"

#include <atomic>
#include <memory>

namespace SoundLoader {

// A sound of up to this length is held whole; at 44.1 kHz in stereo that is 10 MiB.
inline constexpr std::int64_t longestHeldSeconds = 60;

// Null for what is no sound, for one without samples, and once cancelled is set. Meant for the global
// queue: it reads and decodes before it returns.
std::shared_ptr<Sound> load(const NSURL&, const std::atomic<bool>& cancelled);

// Loads the decoders and connects to the sound system, so that the first sound is ready as fast as the next.
void warmUp();

} // namespace SoundLoader
