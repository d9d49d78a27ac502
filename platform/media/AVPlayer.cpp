#include "platform/media/AVPlayer.h"

#include "platform/media/AudioOutput.h"
#include "platform/media/PeriodicTimeObserver.h"
#include "platform/media/SoundLoader.h"

#include <algorithm>

namespace {

// How often the end is looked for once it should have come: a device may lag behind the clock a little.
constexpr double endCheckInterval = 0.005;

// Completions are told later, so that none is called inside the call that causes it.
void completeLater(AVPlayer::SeekCompletion completion, bool finished)
{
    if (completion)
        Executor::current().mainQueue().async(
            [completion = std::move(completion), finished] { completion(finished); });
}

} // namespace

std::shared_ptr<AVPlayer> AVPlayer::playerWithPlayerItem(std::shared_ptr<AVPlayerItem> item)
{
    return make<AVPlayer>(std::move(item));
}

AVPlayer::AVPlayer(std::shared_ptr<AVPlayerItem> item)
    : m_item(std::move(item))
    , m_output(std::make_unique<AudioOutput>())
{
}

void AVPlayer::init()
{
    NSObject::init();
    if (!m_item)
        return;
    m_item->setLoadedHandler([weakPlayer = weakSelf(this)] {
        if (const auto player = weakPlayer.lock())
            player->startOutput();
    });
    m_item->load();
}

AVPlayer::~AVPlayer()
{
    cancelSeek();
    stopOutput();
    for (const auto& observer : m_observers)
        observer->stop();
}

void AVPlayer::warmUp()
{
    Executor::current().globalQueue().async([] { SoundLoader::warmUp(); });
}

CMTime AVPlayer::currentTime() const
{
    return isReady() ? CMTimeMake(position(), m_item->sound()->format().sampleRate) : kCMTimeZero;
}

std::int64_t AVPlayer::position() const
{
    return m_output->isRunning() ? m_output->position() : m_restingFrame;
}

void AVPlayer::play()
{
    m_rate = 1;
    startOutput();
}

void AVPlayer::pause()
{
    m_rate = 0;
    stopOutput();
}

// Starts the sound if the rate is 1, the item is ready and no seek is under way; called when any of the three
// changes.
void AVPlayer::startOutput()
{
    if (m_rate == 0 || !isReady() || m_isSeeking || m_output->isRunning())
        return;
    const std::int64_t framesLeft = m_item->sound()->frameCount() - m_restingFrame;
    if (framesLeft > 0) {
        m_output->start(m_item->sound(), m_restingFrame);
        for (const auto& observer : m_observers)
            startTicking(*observer);
    }
    Scheduler::current().cancel(m_endTimer);
    const double secondsLeft = static_cast<double>(framesLeft) / m_item->sound()->format().sampleRate;
    m_endTimer = Scheduler::current().schedule(secondsLeft, [this] { checkEnd(); });
}

void AVPlayer::stopOutput()
{
    m_restingFrame = position();
    m_output->stop();
    for (const auto& observer : m_observers)
        observer->pauseTicking();
    if (m_endTimer != Scheduler::TimerID::None)
        Scheduler::current().cancel(std::exchange(m_endTimer, Scheduler::TimerID::None));
}

void AVPlayer::startTicking(PeriodicTimeObserver& observer)
{
    observer.startTicking([this, &observer] { tick(observer); });
}

void AVPlayer::tick(PeriodicTimeObserver& observer)
{
    if (position() >= m_item->sound()->frameCount())
        checkEnd(); // it comes with the same time, and only once
    else
        observer.tell(currentTime());
}

void AVPlayer::checkEnd()
{
    const std::int64_t framesLeft = m_item->sound()->frameCount() - position();
    if (framesLeft > 0) {
        const double secondsLeft = static_cast<double>(framesLeft) / m_item->sound()->format().sampleRate;
        m_endTimer
            = Scheduler::current().schedule(std::max(secondsLeft, endCheckInterval), [this] { checkEnd(); });
        return;
    }
    stopOutput();
    if (m_actionAtItemEnd == AVPlayerActionAtItemEndPause)
        m_rate = 0;
    tellObservers();
}

void AVPlayer::tellObservers()
{
    for (const auto& observer : m_observers)
        observer->tell(currentTime());
}

void AVPlayer::seekToTime(CMTime time, SeekCompletion completion)
{
    cancelSeek();
    if (!isReady())
        return completeLater(std::move(completion), false);
    const bool isMoment = time.flags != CMTimeKind::Indefinite && time.flags != CMTimeKind::Invalid;
    stopOutput();
    if (isMoment) {
        const std::int64_t end = m_item->sound()->frameCount();
        const CMTime clamped = std::clamp(time, kCMTimeZero, m_item->duration());
        m_restingFrame
            = std::min(CMTimeConvertScale(clamped, m_item->sound()->format().sampleRate).value, end);
    }
    m_isSeeking = true;
    m_seekCompletion = std::move(completion);
    const auto whenReady = [weakPlayer = weakSelf(this), serial = m_seekSerial] {
        Executor::current().mainQueue().async([weakPlayer, serial] {
            if (const auto player = weakPlayer.lock())
                player->finishSeek(serial);
        });
    };
    m_item->sound()->prepare(m_restingFrame, whenReady);
}

void AVPlayer::finishSeek(std::uint64_t serial)
{
    if (serial != m_seekSerial || !m_isSeeking)
        return;
    m_isSeeking = false;
    const SeekCompletion completion = std::exchange(m_seekCompletion, nullptr);
    startOutput();
    // Told before the observers are: whoever ignores ticks during a seek must be told this one.
    if (completion)
        completion(true);
    tellObservers();
}

void AVPlayer::cancelSeek()
{
    ++m_seekSerial;
    m_isSeeking = false;
    completeLater(std::exchange(m_seekCompletion, nullptr), false);
}

std::shared_ptr<NSObject> AVPlayer::addPeriodicTimeObserverForInterval(
    CMTime interval, DispatchQueue& queue, TimeObserver block)
{
    const auto observer = make<PeriodicTimeObserver>(interval, queue, std::move(block));
    m_observers.push_back(observer);
    if (m_output->isRunning())
        startTicking(*observer);
    return observer;
}

void AVPlayer::removeTimeObserver(const std::shared_ptr<NSObject>& token)
{
    const auto found = std::find(m_observers.begin(), m_observers.end(), token);
    if (found == m_observers.end())
        return;
    (*found)->stop();
    m_observers.erase(found);
}
