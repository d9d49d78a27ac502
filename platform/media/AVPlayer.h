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

    const std::shared_ptr<AVPlayerItem>& currentItem() const { return m_item; }
    // What is wanted: 1 after play(), 0 after pause() and at first.
    float rate() const { return m_rate; }
    CMTime currentTime() const;

    AVPlayerActionAtItemEnd actionAtItemEnd() const { return m_actionAtItemEnd; }
    void setActionAtItemEnd(AVPlayerActionAtItemEnd action) { m_actionAtItemEnd = action; }

    // Before the item is ready the wish is remembered.
    void play();
    void pause();

    using SeekCompletion = std::function<void(bool finished)>;
    // Moves to the sample nearest to the time, clamped to the sound; currentTime() is there at once. The
    // completion is called once, later, on the main thread: NO when another seek or the player's end came
    // first, or when the item is not ready. A time that is no moment moves nothing and finishes.
    void seekToTime(CMTime time) { seekToTime(time, nullptr); }
    // seekToTime:completionHandler:
    void seekToTime(CMTime, SeekCompletion);

    using TimeObserver = std::function<void(CMTime)>;
    // addPeriodicTimeObserverForInterval:queue:usingBlock: — the block is called on the queue with the
    // current time: every interval while the sound plays, once when its end has been heard, and after each
    // seek. An interval that is no positive number leaves the last two. Dropping the token stops nothing.
    std::shared_ptr<NSObject> addPeriodicTimeObserverForInterval(CMTime interval, DispatchQueue& queue,
        TimeObserver block);
    // The block is not called again once this returns; from another queue a call under way may still end.
    // Nil and foreign tokens are ignored.
    void removeTimeObserver(const std::shared_ptr<NSObject>& token);

protected:
    void init() override;

private:
    class PeriodicObserver;
    struct Seek {
        std::uint64_t serial = 0; // of the newest seek
        bool underWay = false;
        SeekCompletion completion;
    };

    bool isMoving() const; // heard time is running
    std::int64_t position() const; // frames heard
    void itemDidLoad();
    void startOutput();
    void stopOutput();
    void finishSeek(std::uint64_t serial);
    void cancelSeek();
    void checkEnd();
    void startTicking(PeriodicObserver&);
    void tellObservers();

    const std::shared_ptr<AVPlayerItem> m_item;
    const std::unique_ptr<AudioOutput> m_output;
    float m_rate = 0;
    AVPlayerActionAtItemEnd m_actionAtItemEnd = AVPlayerActionAtItemEndPause;
    std::int64_t m_restingFrame = 0; // where the time stands while nothing moves
    Seek m_seek;
    std::vector<std::shared_ptr<PeriodicObserver>> m_observers;
    Scheduler::TimerID m_endTimer = Scheduler::TimerID::None;
};
