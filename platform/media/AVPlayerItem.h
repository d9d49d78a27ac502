// One asset on its way to being heard: whether it can be played yet, and how long it lasts.
//
// An item does nothing by itself; the player it is given to starts the loading, which runs off the main
// thread. The status changes once, on the main thread and never inside a constructor, from unknown to
// ready or to failed, and stays there. It is observable under the key "status". Main thread only.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/media/CMTime.h"

#include <atomic>
#include <functional>

class AVAsset;
class Sound;

enum AVPlayerItemStatus {
    AVPlayerItemStatusUnknown = 0,
    AVPlayerItemStatusReadyToPlay = 1,
    AVPlayerItemStatusFailed = 2,
};

class AVPlayerItem final : public NSObject {
public:
    // A nil asset is accepted: the item fails once a player has taken it.
    static std::shared_ptr<AVPlayerItem> playerItemWithAsset(std::shared_ptr<AVAsset>);

    explicit AVPlayerItem(std::shared_ptr<AVAsset>); // for playerItemWithAsset()
    ~AVPlayerItem() override; // stops a loading that is under way

    const std::shared_ptr<AVAsset>& asset() const { return m_asset; }
    AVPlayerItemStatus status() const { return m_status; }
    // Indefinite until the item is ready; from then on exact, in the timescale of the sound's sample rate.
    CMTime duration() const;

    // --- For the player ------------------------------------------------------------------------------

    // Starts the loading. A second call changes nothing.
    void load();
    // Called on the main thread after the status has left unknown and its observers have been told.
    void setLoadedHandler(std::function<void()> handler) { m_loadedHandler = std::move(handler); }
    // The samples; null unless the item is ready.
    const std::shared_ptr<Sound>& sound() const { return m_sound; }

private:
    void finishLoading(std::shared_ptr<Sound>);

    const std::shared_ptr<AVAsset> m_asset;
    AVPlayerItemStatus m_status = AVPlayerItemStatusUnknown;
    std::shared_ptr<Sound> m_sound;
    std::function<void()> m_loadedHandler;
    std::shared_ptr<std::atomic<bool>> m_loadingCancelled; // null until the loading starts
};
