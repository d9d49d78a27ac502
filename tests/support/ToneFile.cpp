#include "tests/support/ToneFile.h"

#include <QDataStream>
#include <QFile>

#include <cmath>
#include <numbers>

void writeWave(const NSString& path, int frames, int sampleRate, int channels,
    const std::function<std::int16_t(int frame)>& sampleAt)
{
    const int bytes = frames * channels * 2;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(path));
    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + bytes);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(channels) << quint32(sampleRate)
        << quint32(sampleRate * channels * 2) << quint16(channels * 2) << quint16(16);
    out.writeRawData("data", 4);
    out << quint32(bytes);
    for (int frame = 0; frame < frames; ++frame)
        for (int channel = 0; channel < channels; ++channel)
            out << qint16(sampleAt(frame));
}

ToneFile::ToneFile(int frames, int sampleRate, int channels)
    : m_sampleRate(sampleRate)
{
    writeWave(path(), frames, sampleRate, channels, [this](int frame) { return sampleAt(frame); });
}

std::int16_t ToneFile::sampleAt(std::int64_t frame) const
{
    const double phase = 2 * std::numbers::pi * 440 * static_cast<double>(frame) / m_sampleRate;
    return static_cast<std::int16_t>(std::lround(16384 * std::sin(phase)));
}
