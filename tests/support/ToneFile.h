// A temporary WAV file for tests: a known tone, sample by sample.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QTemporaryDir>

#include <cstdint>
#include <functional>

// Writes a WAV file of 16-bit samples; every channel is given the same one at a frame.
void writeWave(const NSString& path, int frames, int sampleRate, int channels,
    const std::function<std::int16_t(int frame)>& sampleAt);

class ToneFile {
public:
    // A 440 Hz tone of that many frames, at half of full level.
    explicit ToneFile(int frames, int sampleRate = 44100, int channels = 1);

    NSURL url() const { return QUrl::fromLocalFile(path()); }
    NSString path() const { return m_folder.filePath(QStringLiteral("tone.wav")); }

    // What is written at a frame, in every channel.
    std::int16_t sampleAt(std::int64_t frame) const;

private:
    const QTemporaryDir m_folder;
    const int m_sampleRate;
};
