// Plays one item and tells how far it has been heard.
//
// The current time is what has been heard, not what has been handed to the sound system: it never runs
// backwards except by a seek, and it is exact to the sample where it stands still. Where there is no
// sound device, or the device goes away, time goes on without sound. Whoever holds a token or is called
// back may drop the player at any time, from inside a call of its own too. Main thread only.
#pragma once

#include "platform/foundation/Executor.h"
#include "platform/foundation/Scheduler.h"
#include "platform/media/AVPlayerItem.h"

#include <functional>
#include <vector>

class AudioOutput;
class PeriodicTimeObserver;

enum AVPlayerActionAtItemEnd {
    AVPlayerActionAtItemEndPause = 1,
    AVPlayerActionAtItemEndNone = 2, // nothing happens: the time stays at the end, the rate as it was
};

class AVPlayer final : public NSObject {
public:
    // Starts loading the item; nil is accepted and never plays. An item serves one player.
    static std::shared_ptr<AVPlayer> playerWithPlayerItem(std::shared_ptr<AVPlayerItem>);

    explicit AVPlayer(std::shared_ptr<AVPlayerItem>); // for playerWithPlayerItem()
    ~AVPlayer() override; // falls silent; a seek under way is called back as unfinished

    // Loads in the background what the first player would otherwise load: the decoders (30 ms, 18 MiB) and
    // the connection to the sound system. Worth calling once the application is on the screen.
    static void warmUp();

    const std::shared_ptr<AVPlayerItem>& currentItem() const { return m_item; }
    // What is wanted: 1 after play(), 0 after pause() and at first.
    float rate() const { return m_rate; }
    CMTime currentTime() const;

    AVPlayerActionAtItemEnd actionAtItemEnd() const { return m_actionAtItemEnd; }
    void setActionAtItemEnd(AVPlayerActionAtItemEnd action) { m_actionAtItemEnd = action; }

    // Before the item is ready only the rate is set; the sound begins when the item becomes ready.
    void play();
    void pause();

    using SeekCompletion = std::function<void(bool finished)>;
    // Moves to the sample nearest to the time, clamped to the sound; currentTime() is there at once. The
    // completion is called once, later, on the main thread: NO when another seek or the player's end came
    // first, or when the item is not ready. An indefinite or invalid time moves nothing and finishes.
    void seekToTime(CMTime time) { seekToTime(time, nullptr); }
    // seekToTime:completionHandler:
    void seekToTime(CMTime, SeekCompletion);

    using TimeObserver = std::function<void(CMTime)>;
    // addPeriodicTimeObserverForInterval:queue:usingBlock: — the block is called on the queue with the
    // current time: every interval while the sound plays, once when its end has been heard, and after each
    // seek. An interval that is no positive number leaves the last two. Dropping the token stops nothing.
    std::shared_ptr<NSObject> addPeriodicTimeObserverForInterval(
        CMTime interval, DispatchQueue& queue, TimeObserver block);
    // The block is not called again once this returns; from another queue a call under way may still end.
    // Nil and foreign tokens are ignored.
    void removeTimeObserver(const std::shared_ptr<NSObject>& token);

protected:
    void init() override;

private:
    bool isReady() const { return m_item && m_item->sound(); }
    std::int64_t position() const; // frames heard
    void startOutput();
    void stopOutput();
    void startTicking(PeriodicTimeObserver&);
    void tick(PeriodicTimeObserver&);
    void checkEnd();
    void tellObservers();
    void finishSeek(std::uint64_t serial);
    void cancelSeek();

    const std::shared_ptr<AVPlayerItem> m_item;
    const std::unique_ptr<AudioOutput> m_output;
    std::vector<std::shared_ptr<PeriodicTimeObserver>> m_observers;
    SeekCompletion m_seekCompletion;
    std::int64_t m_restingFrame = 0; // where the time stands while nothing plays
    std::uint64_t m_seekSerial = 0; // of the newest seek
    Scheduler::TimerID m_endTimer = Scheduler::TimerID::None;
    AVPlayerActionAtItemEnd m_actionAtItemEnd = AVPlayerActionAtItemEndPause;
    float m_rate = 0;
    bool m_isSeeking = false;
};
