// Writes the samples of a sound file to standard output: 16 bits, one channel, 44.1 kHz, nothing around them.
//
// What the end-to-end tests compare the heard sound with. Decoded here and not with the platform's decoder,
// so that a mistake of that one is heard as a difference.
extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
}

#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

constexpr int rate = 44100;

void require(bool holds, const char* what)
{
    if (!holds)
        throw std::runtime_error(what);
}

template <auto release> struct Release {
    template <typename T> void operator()(T* object) const { release(&object); }
};
using Format = std::unique_ptr<AVFormatContext, Release<avformat_close_input>>;
using Codec = std::unique_ptr<AVCodecContext, Release<avcodec_free_context>>;
using Resampler = std::unique_ptr<SwrContext, Release<swr_free>>;
using Packet = std::unique_ptr<AVPacket, Release<av_packet_free>>;
using Frame = std::unique_ptr<AVFrame, Release<av_frame_free>>;

class Decoder {
public:
    explicit Decoder(const char* path)
    {
        AVFormatContext* format = nullptr;
        require(avformat_open_input(&format, path, nullptr, nullptr) == 0, "the file cannot be opened");
        m_format.reset(format);
        require(avformat_find_stream_info(format, nullptr) >= 0, "the file cannot be read");
        const AVCodec* decoder = nullptr;
        m_stream = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, &decoder, 0);
        require(m_stream >= 0, "there is no sound in the file");
        m_codec.reset(avcodec_alloc_context3(decoder));
        avcodec_parameters_to_context(m_codec.get(), format->streams[m_stream]->codecpar);
        m_codec->pkt_timebase = format->streams[m_stream]->time_base; // else the lead-in is not skipped
        require(avcodec_open2(m_codec.get(), decoder, nullptr) == 0, "the sound cannot be decoded");

        AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
        SwrContext* resampler = nullptr;
        swr_alloc_set_opts2(&resampler, &mono, AV_SAMPLE_FMT_S16, rate, &m_codec->ch_layout,
            m_codec->sample_fmt, m_codec->sample_rate, 0, nullptr);
        m_resampler.reset(resampler);
        require(resampler && swr_init(resampler) == 0, "the sound cannot be resampled");
    }

    void writeTo(std::FILE* output)
    {
        while (av_read_frame(m_format.get(), m_packet.get()) >= 0) {
            if (m_packet->stream_index == m_stream)
                decode(m_packet.get(), output);
            av_packet_unref(m_packet.get());
        }
        decode(nullptr, output);
        write(nullptr, 0, output);
    }

private:
    void decode(const AVPacket* packet, std::FILE* output)
    {
        require(avcodec_send_packet(m_codec.get(), packet) == 0, "a packet cannot be decoded");
        while (avcodec_receive_frame(m_codec.get(), m_frame.get()) == 0)
            write(const_cast<const std::uint8_t**>(m_frame->extended_data), m_frame->nb_samples, output);
    }

    void write(const std::uint8_t** data, int count, std::FILE* output)
    {
        std::vector<std::int16_t> samples(
            static_cast<std::size_t>(swr_get_out_samples(m_resampler.get(), count)));
        auto* target = reinterpret_cast<std::uint8_t*>(samples.data());
        const int written
            = swr_convert(m_resampler.get(), &target, static_cast<int>(samples.size()), data, count);
        require(written >= 0, "samples cannot be converted");
        if (written > 0) // else there may be no memory to point at
            std::fwrite(samples.data(), sizeof(std::int16_t), static_cast<std::size_t>(written), output);
    }

    Format m_format;
    Codec m_codec;
    Resampler m_resampler;
    const Packet m_packet { av_packet_alloc() };
    const Frame m_frame { av_frame_alloc() };
    int m_stream = -1;
};

} // namespace

int main(int argc, char** argv)
try {
    require(argc == 2, "usage: decode_clip FILE");
    Decoder(argv[1]).writeTo(stdout);
    return 0;
} catch (const std::exception& problem) {
    std::fprintf(stderr, "decode_clip: %s\n", problem.what());
    return 1;
}
