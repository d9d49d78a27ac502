#include "platform/media/LibavDecoder.h"

#include "platform/media/SoundFileProbe.h"

#include <algorithm>

namespace {

constexpr int highestRate = 384'000;
// A codec needs a few packets before it is right again after a jump; none of ours has longer packets.
constexpr std::int64_t framesBeforeTarget = 4 * 2048;
// How far behind the target a container may land before the seek counts as failed.
constexpr std::int64_t longestGap = 8192;
// Up to this rate a codec may give twice the rate that the header states, which only decoding shows.
constexpr int highestDoubledRate = 24'000;

// Whether the header alone says what decoding will give.
bool isWhollyDescribed(const AVStream& stream)
{
    return stream.codecpar->sample_rate > highestDoubledRate && stream.codecpar->ch_layout.nb_channels > 0
        && stream.duration > 0;
}

} // namespace

LibavDecoder::LibavDecoder(const LibavLibrary& libav)
    : m_libav(libav)
    , m_packet(libav.av_packet_alloc())
    , m_frame(libav.av_frame_alloc())
{
}

LibavDecoder::~LibavDecoder()
{
    m_libav.swr_free(&m_conversion);
    m_libav.av_channel_layout_uninit(&m_sourceLayout);
    m_libav.av_frame_free(&m_frame);
    m_libav.av_packet_free(&m_packet);
    m_libav.avcodec_free_context(&m_context);
    m_libav.avformat_close_input(&m_container);
}

std::unique_ptr<SoundDecoder> LibavDecoder::openFile(const NSURL& url)
{
    const LibavLibrary* libav = LibavLibrary::shared();
    if (!libav)
        return nullptr;
    std::unique_ptr<LibavDecoder> decoder(new LibavDecoder(*libav));
    if (!decoder->m_packet || !decoder->m_frame || !decoder->openContainer(url) || !decoder->openCodec())
        return nullptr;
    decoder->findLength(url);
    return decoder;
}

bool LibavDecoder::openContainer(const NSURL& url)
{
    const char* const format = SoundFileProbe::libavFormat(url);
    if (!format)
        return false;
    AVDictionary* options = nullptr;
    m_libav.av_dict_set(&options, "protocol_whitelist", "file", 0);
    m_libav.av_dict_set(&options, "format_whitelist", format, 0);
    const QByteArray path = "file:" + url.toLocalFile().toUtf8();
    // Without a name libav tries every format that it knows, which loads megabytes of code.
    const AVInputFormat* const container = m_libav.av_find_input_format(format);
    const int opened = m_libav.avformat_open_input(&m_container, path.constData(), container, &options);
    m_libav.av_dict_free(&options);
    if (opened < 0)
        return false;
    // To look into the stream takes as long as all the rest, and more memory.
    const bool isDescribed = findStream() && isWhollyDescribed(*m_stream);
    if (!isDescribed && (m_libav.avformat_find_stream_info(m_container, nullptr) < 0 || !findStream()))
        return false;
    for (unsigned i = 0; i < m_container->nb_streams; ++i)
        if (m_container->streams[i] != m_stream)
            m_container->streams[i]->discard = AVDISCARD_ALL;
    return true;
}

bool LibavDecoder::findStream()
{
    const int index = m_libav.av_find_best_stream(m_container, AVMEDIA_TYPE_AUDIO, -1, -1, &m_codec, 0);
    if (index < 0 || !m_codec)
        return false;
    m_stream = m_container->streams[index];
    return true;
}

bool LibavDecoder::openCodec()
{
    m_context = m_libav.avcodec_alloc_context3(m_codec);
    if (!m_context || m_libav.avcodec_parameters_to_context(m_context, m_stream->codecpar) < 0)
        return false;
    m_context->pkt_timebase = m_stream->time_base;
    m_context->thread_count = 1; // a clip is decoded in a millisecond: threads would cost more
    if (m_libav.avcodec_open2(m_context, m_codec, nullptr) < 0)
        return false;
    const int rate = m_stream->codecpar->sample_rate;
    const int channels = m_stream->codecpar->ch_layout.nb_channels;
    if (rate < 1 || rate > highestRate || channels < 1)
        return false;
    m_format = { rate, std::min(channels, 2) };
    return true;
}

void LibavDecoder::findLength(const NSURL& url)
{
    const bool isStated
        = m_stream->duration > 0 && m_container->duration_estimation_method != AVFMT_DURATION_FROM_BITRATE;
    if (isStated) {
        m_frameCount
            = m_libav.av_rescale_q(m_stream->duration, m_stream->time_base, { 1, m_format.sampleRate });
        return;
    }
    // A bare stream says nothing of its length, and its bit rate only guesses: its packets are counted.
    LibavDecoder counter(m_libav);
    if (counter.openContainer(url))
        m_frameCount = counter.countPackets();
}

std::int64_t LibavDecoder::countPackets()
{
    std::int64_t duration = 0;
    while (m_libav.av_read_frame(m_container, m_packet) >= 0) {
        if (m_packet->stream_index == m_stream->index)
            duration += std::clamp<std::int64_t>(m_packet->duration, 0, INT32_MAX);
        m_libav.av_packet_unref(m_packet);
    }
    const int rate = std::max(m_stream->codecpar->sample_rate, 1);
    return m_libav.av_rescale_q(duration, m_stream->time_base, { 1, rate });
}

bool LibavDecoder::decodeNext(std::vector<Sample>& samples)
{
    while (true) {
        const int received = m_libav.avcodec_receive_frame(m_context, m_frame);
        if (received == AVERROR_EOF)
            return false;
        if (received < 0) { // the codec wants more, or was given something damaged
            if (!feedCodec())
                return false;
            continue;
        }
        const std::size_t before = samples.size();
        if (convertFrame(samples))
            dropUntilTarget(samples, before);
        if (samples.size() > before)
            return true;
    }
}

// Gives the codec one packet of the sound, or tells it that there are no more; false when it knows that.
bool LibavDecoder::feedCodec()
{
    while (m_libav.av_read_frame(m_container, m_packet) >= 0) {
        const bool isOurs = m_packet->stream_index == m_stream->index;
        if (isOurs)
            m_libav.avcodec_send_packet(m_context, m_packet); // what is damaged gives no frame
        m_libav.av_packet_unref(m_packet);
        if (isOurs)
            return true;
    }
    return m_libav.avcodec_send_packet(m_context, nullptr) >= 0;
}

bool LibavDecoder::convertFrame(std::vector<Sample>& samples)
{
    if (!prepareConversion())
        return false;
    const int room = m_libav.swr_get_out_samples(m_conversion, m_frame->nb_samples);
    if (room <= 0)
        return false;
    const auto channels = static_cast<std::size_t>(m_format.channels);
    const std::size_t before = samples.size();
    samples.resize(before + static_cast<std::size_t>(room) * channels);
    auto* out = reinterpret_cast<std::uint8_t*>(samples.data() + before);
    const auto** in = const_cast<const std::uint8_t**>(m_frame->extended_data);
    const int converted = std::max(m_libav.swr_convert(m_conversion, &out, room, in, m_frame->nb_samples), 0);
    samples.resize(before + static_cast<std::size_t>(converted) * channels);
    return true;
}

// Made for the first frame, and again where the sound changes its rate, sample format or channels.
bool LibavDecoder::prepareConversion()
{
    const bool isCurrent = m_conversion && m_frame->sample_rate == m_sourceRate
        && m_frame->format == m_sourceSampleFormat
        && m_libav.av_channel_layout_compare(&m_frame->ch_layout, &m_sourceLayout) == 0;
    if (isCurrent)
        return true;
    m_libav.swr_free(&m_conversion);
    m_sourceRate = m_frame->sample_rate;
    m_sourceSampleFormat = m_frame->format;
    if (m_libav.av_channel_layout_copy(&m_sourceLayout, &m_frame->ch_layout) < 0)
        return false;
    if (m_sourceLayout.order == AV_CHANNEL_ORDER_UNSPEC)
        m_libav.av_channel_layout_default(&m_sourceLayout, m_sourceLayout.nb_channels);
    AVChannelLayout layout {};
    m_libav.av_channel_layout_default(&layout, m_format.channels);
    const int made
        = m_libav.swr_alloc_set_opts2(&m_conversion, &layout, AV_SAMPLE_FMT_S16, m_format.sampleRate,
            &m_sourceLayout, static_cast<AVSampleFormat>(m_sourceSampleFormat), m_sourceRate, 0, nullptr);
    if (made >= 0 && m_libav.swr_init(m_conversion) >= 0)
        return true;
    m_libav.swr_free(&m_conversion);
    return false;
}

// After a seek the codec begins before the target; where it begins after it, silence fills the gap.
void LibavDecoder::dropUntilTarget(std::vector<Sample>& samples, std::size_t firstNew)
{
    const auto channels = static_cast<std::int64_t>(m_format.channels);
    if (!m_positionIsKnown) {
        m_position = m_frame->pts == AV_NOPTS_VALUE ? m_targetFrame : frameAt(m_frame->pts);
        m_positionIsKnown = true;
        const std::int64_t gap = std::clamp<std::int64_t>(m_position - m_targetFrame, 0, longestGap);
        samples.insert(samples.begin() + static_cast<std::ptrdiff_t>(firstNew),
            static_cast<std::size_t>(gap * channels), Sample { 0 });
        m_position -= gap;
    }
    const auto frames = static_cast<std::int64_t>(samples.size() - firstNew) / channels;
    const std::int64_t early = std::clamp<std::int64_t>(m_targetFrame - m_position, 0, frames);
    const auto begin = samples.begin() + static_cast<std::ptrdiff_t>(firstNew);
    samples.erase(begin, begin + static_cast<std::ptrdiff_t>(early * channels));
    m_position += frames;
}

bool LibavDecoder::seekToFrame(std::int64_t frame)
{
    const std::int64_t start = m_stream->start_time == AV_NOPTS_VALUE ? 0 : m_stream->start_time;
    const std::int64_t entry = std::max<std::int64_t>(frame - framesBeforeTarget, 0);
    const std::int64_t timestamp
        = start + m_libav.av_rescale_q(entry, { 1, m_format.sampleRate }, m_stream->time_base);
    if (m_libav.av_seek_frame(m_container, m_stream->index, timestamp, AVSEEK_FLAG_BACKWARD) < 0)
        return false;
    m_libav.avcodec_flush_buffers(m_context);
    m_libav.swr_free(&m_conversion); // with whatever it had left over
    m_targetFrame = frame;
    m_positionIsKnown = false;
    return true;
}

std::int64_t LibavDecoder::frameAt(std::int64_t timestamp) const
{
    const std::int64_t start = m_stream->start_time == AV_NOPTS_VALUE ? 0 : m_stream->start_time;
    return m_libav.av_rescale_q(timestamp - start, m_stream->time_base, { 1, m_format.sampleRate });
}
