#include "platform/media/PulseSink.h"

#include <algorithm>
#include <utility>

namespace {

PulseSink& sinkOf(void* userData) { return *static_cast<PulseSink*>(userData); }

} // namespace

std::unique_ptr<AudioSink> PulseSink::open(SoundFormat format, Handlers handlers)
{
    auto connection = PulseConnection::shared();
    if (!connection)
        return nullptr;
    {
        const PulseConnection::Lock lock(*connection);
        if (connection->isLost())
            return nullptr;
    }
    return std::make_unique<PulseSink>(std::move(connection), format, std::move(handlers));
}

PulseSink::PulseSink(std::shared_ptr<PulseConnection> connection, SoundFormat format, Handlers handlers)
    : m_connection(std::move(connection))
    , m_library(m_connection->library())
    , m_format(format)
    , m_handlers(std::move(handlers))
{
    const PulseConnection::Lock lock(*m_connection);
    m_connection->addListener(*this);
    if (m_connection->isReady())
        connectionIsReady();
    else if (m_connection->isLost())
        lose();
}

PulseSink::~PulseSink()
{
    const PulseConnection::Lock lock(*m_connection);
    m_connection->removeListener(*this);
    if (m_drain) {
        m_library.pa_operation_cancel(m_drain);
        m_library.pa_operation_unref(m_drain);
    }
    if (!m_stream)
        return;
    m_library.pa_stream_set_state_callback(m_stream, nullptr, nullptr);
    m_library.pa_stream_set_write_callback(m_stream, nullptr, nullptr);
    m_library.pa_stream_set_suspended_callback(m_stream, nullptr, nullptr);
    m_library.pa_stream_disconnect(m_stream);
    m_library.pa_stream_unref(m_stream);
}

void PulseSink::play(std::shared_ptr<SampleSource> source)
{
    const PulseConnection::Lock lock(*m_connection);
    m_source = std::move(source);
    if (isStreamReady())
        write(m_library.pa_stream_writable_size(m_stream));
}

void PulseSink::connectionIsReady()
{
    const pa_sample_spec sampleForm {
        .format = PA_SAMPLE_S16NE,
        .rate = static_cast<std::uint32_t>(m_format.sampleRate),
        .channels = static_cast<std::uint8_t>(m_format.channels),
    };
    m_stream = m_library.pa_stream_new(m_connection->context(), "", &sampleForm, nullptr);
    if (!m_stream)
        return lose();
    m_library.pa_stream_set_state_callback(
        m_stream, [](pa_stream*, void* data) { sinkOf(data).streamStateDidChange(); }, this);
    m_library.pa_stream_set_write_callback(
        m_stream, [](pa_stream*, std::size_t bytes, void* data) { sinkOf(data).write(bytes); }, this);
    m_library.pa_stream_set_suspended_callback(
        m_stream, [](pa_stream*, void* data) { sinkOf(data).suspensionDidChange(); }, this);
    constexpr auto serverChooses = static_cast<std::uint32_t>(-1);
    const auto queued = static_cast<std::uint32_t>(queuedSeconds * m_format.sampleRate) * sizeof(Sample)
        * static_cast<std::uint32_t>(m_format.channels);
    const pa_buffer_attr buffer {
        .maxlength = serverChooses,
        .tlength = static_cast<std::uint32_t>(queued),
        .prebuf = serverChooses,
        .minreq = serverChooses,
        .fragsize = serverChooses,
    };
    const auto flags = static_cast<pa_stream_flags_t>(
        PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_ADJUST_LATENCY);
    if (m_library.pa_stream_connect_playback(m_stream, nullptr, &buffer, flags, nullptr, nullptr) < 0)
        lose();
}

bool PulseSink::isStreamReady() const
{
    return m_stream && m_library.pa_stream_get_state(m_stream) == PA_STREAM_READY;
}

void PulseSink::streamStateDidChange()
{
    if (!PA_STREAM_IS_GOOD(m_library.pa_stream_get_state(m_stream)))
        return lose();
    tellIfReady();
}

// The device of a suspended stream is another program's, or asleep: it takes no samples, and time stands
// still.
void PulseSink::suspensionDidChange()
{
    if (m_library.pa_stream_is_suspended(m_stream) > 0 && measureHeard() > 0)
        return lose();
    tellIfReady();
}

void PulseSink::tellIfReady()
{
    if (!isStreamReady() || m_library.pa_stream_is_suspended(m_stream) > 0)
        return;
    if (const auto handler = std::exchange(m_handlers.ready, nullptr))
        handler();
}

void PulseSink::write(std::size_t bytes)
{
    if (!m_source)
        return;
    const std::size_t frameBytes = sizeof(Sample) * static_cast<std::size_t>(m_format.channels);
    std::size_t framesLeft = bytes / frameBytes;
    while (framesLeft > 0 && !m_sourceEnded) {
        void* memory = nullptr;
        std::size_t room = framesLeft * frameBytes;
        if (m_library.pa_stream_begin_write(m_stream, &memory, &room) < 0 || room < frameBytes)
            return;
        const std::size_t asked = std::min(framesLeft, room / frameBytes);
        const std::size_t given = m_source->read(static_cast<Sample*>(memory), asked);
        if (given > 0)
            m_library.pa_stream_write(m_stream, memory, given * frameBytes, nullptr, 0, PA_SEEK_RELATIVE);
        else
            m_library.pa_stream_cancel_write(m_stream);
        m_framesWritten += static_cast<std::int64_t>(given);
        framesLeft -= given;
        m_sourceEnded = given < asked;
    }
    measureHeard();
    if (m_sourceEnded && !m_drain)
        drain();
}

// Starts a sound that is too short to fill the queue, and tells when the last sample has been heard.
void PulseSink::drain()
{
    m_drain = m_library.pa_stream_drain(
        m_stream,
        [](pa_stream*, int success, void* data) {
            if (success)
                sinkOf(data).m_drained = true;
        },
        this);
}

void PulseSink::lose()
{
    if (const auto handler = std::exchange(m_handlers.lost, nullptr))
        handler();
}

std::int64_t PulseSink::framesHeard() const
{
    const PulseConnection::Lock lock(*m_connection);
    return measureHeard();
}

std::int64_t PulseSink::measureHeard() const
{
    pa_usec_t heard = 0;
    if (m_drained) {
        m_framesHeard = m_framesWritten;
    } else if (m_stream && m_library.pa_stream_get_time(m_stream, &heard) >= 0) {
        const auto frames
            = static_cast<std::int64_t>(static_cast<double>(heard) * m_format.sampleRate / PA_USEC_PER_SEC);
        m_framesHeard = std::clamp(frames, m_framesHeard, m_framesWritten);
    }
    return m_framesHeard;
}
