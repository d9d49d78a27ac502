// Plays the sound of one record and reports how far it has got.
//
// A player serves one record for its whole life; another record means another player. It starts by itself
// when its item becomes ready, unless setPaused(true) came first; an item that never becomes ready leaves
// it silent for ever. The end is found by the player itself: it pauses, reports and goes back to the start.
// It does not silence the sound on its way out, its owner pauses it first. Main thread only.
#pragma once

#include "model/ORVRecord.h"
#include "platform/media/AVPlayer.h"

class ORVRecordPlayer;

// Hears from an ORVRecordPlayer. Every message is optional; its default does nothing.
// The player keeps itself alive for the length of a call, so a delegate may drop it from inside one.
class ORVRecordPlayerDelegate {
public:
    // Once; playing has not begun yet.
    virtual void recordPlayerDidBecomeReadyForPlayback(ORVRecordPlayer&) { }
    // recordPlayer:didUpdatePlayingPosition: — seconds; on each tick, and 0 right after the end.
    virtual void recordPlayerDidUpdatePlayingPosition(ORVRecordPlayer&, double) { }
    virtual void recordPlayerDidEndPlayback(ORVRecordPlayer&) { } // isPaused() is already true

protected:
    ~ORVRecordPlayerDelegate() = default; // nobody owns a delegate through this type
};

class ORVRecordPlayer final : public NSObject {
public:
    // initWithRecord:
    explicit ORVRecordPlayer(std::shared_ptr<ORVRecord> record);
    ~ORVRecordPlayer() override;

    const std::shared_ptr<ORVRecord>& record() const { return m_record; }
    const std::shared_ptr<AVPlayerItem>& playerItem() const { return m_playerItem; }
    const std::shared_ptr<AVPlayer>& assetPlayer() const { return m_assetPlayer; }

    void setDelegate(std::weak_ptr<ORVRecordPlayerDelegate> delegate) { m_delegate = std::move(delegate); }
    std::shared_ptr<ORVRecordPlayerDelegate> delegate() const { return m_delegate.lock(); }

    bool isReadyForPlayback() const { return m_readyForPlayback; }
    void setReadyForPlayback(bool ready) { m_readyForPlayback = ready; }

    // What the owner wants, not what is heard: before readiness the wish is only remembered.
    bool isPaused() const { return m_paused; }
    void setPaused(bool paused);

    // Whether a seek that this player started is under way. No position is reported meanwhile.
    bool isSeeking() const { return m_seeking; }
    void setSeeking(bool seeking) { m_seeking = seeking; }

    // Seconds; not a number while the item does not know it.
    double recordDuration() const;
    // Seconds. Setting it seeks; before readiness that is ignored and not remembered.
    double timePosition() const;
    void setTimePosition(double seconds);

    void observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void* context) override;

protected:
    void init() override;

private:
    void addItemStatusObserver();
    void itemDidFinishPreparing();
    void addPlayerTimeObserver();
    void playerObserverDidUpdateTime(CMTime time);
    void removePlayerObserver();
    void removeItemStatusObserver();

    CMTime currentItemDuration() const;

    const std::shared_ptr<ORVRecord> m_record;
    std::shared_ptr<AVPlayerItem> m_playerItem;
    std::shared_ptr<AVPlayer> m_assetPlayer;
    std::shared_ptr<NSObject> m_assetPlayerObserver; // nil until the item is ready
    std::weak_ptr<ORVRecordPlayerDelegate> m_delegate;
    bool m_readyForPlayback = false;
    bool m_paused = false;
    bool m_seeking = false;
};
