// Decodes sound files with libavformat and libavcodec.
//
// Only local files in the sound formats that SoundFileProbe knows are opened, whatever they contain: a
// file that names other files or addresses is not followed.
#pragma once

#include "platform/media/LibavLibrary.h"
#include "platform/media/SoundDecoder.h"

class LibavDecoder final : public SoundDecoder {
public:
    static std::unique_ptr<SoundDecoder> openFile(const NSURL&);
    ~LibavDecoder() override;

    SoundFormat format() const override { return m_format; }
    std::int64_t frameCount() const override { return m_frameCount; }
    bool decodeNext(std::vector<Sample>& samples) override;
    bool seekToFrame(std::int64_t frame) override;

private:
    explicit LibavDecoder(const LibavLibrary&);

    bool openContainer(const NSURL&);
    bool findStream();
    bool openCodec();
    void findLength(const NSURL&);
    std::int64_t countPackets(); // frames in all packets; leaves the container at its end
    bool feedCodec();
    bool convertFrame(std::vector<Sample>& samples);
    bool prepareConversion();
    void dropUntilTarget(std::vector<Sample>& samples, std::size_t firstNew);
    std::int64_t frameAt(std::int64_t timestamp) const;

    const LibavLibrary& m_libav;
    AVFormatContext* m_container = nullptr;
    AVStream* m_stream = nullptr; // the container's
    const AVCodec* m_codec = nullptr;
    AVCodecContext* m_context = nullptr;
    AVPacket* m_packet;
    AVFrame* m_frame;
    SwrContext* m_conversion = nullptr;
    AVChannelLayout m_sourceLayout {}; // what m_conversion was made for
    int m_sourceRate = 0;
    int m_sourceSampleFormat = AV_SAMPLE_FMT_NONE;

    SoundFormat m_format;
    std::int64_t m_frameCount = 0;
    std::int64_t m_targetFrame = 0; // what lies before it is dropped
    std::int64_t m_position = 0; // of the next frame out of the codec
    bool m_positionIsKnown = true; // false from a seek to the first frame after it
};
