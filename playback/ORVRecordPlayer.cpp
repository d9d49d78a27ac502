#include "playback/ORVRecordPlayer.h"

#include "model/ORVResourceCache.h"
#include "platform/foundation/Messages.h"

namespace {

constexpr double tickInterval = 0.1; // seconds

const char statusContextStorage = 0; // its address is what tells this class's observation from others
constexpr const void* statusContext = &statusContextStorage;

NSString statusKeyPath() { return QStringLiteral("status"); }

} // namespace

ORVRecordPlayer::ORVRecordPlayer(std::shared_ptr<ORVRecord> record)
    : m_record(std::move(record))
{
}

void ORVRecordPlayer::init()
{
    NSObject::init();
    const NSURL soundFileURL = m_record ? m_record->soundFileURL() : NSURL();
    m_playerItem = AVPlayerItem::playerItemWithAsset(
        ORVResourceCache::sharedInstance()->soundAssetFromURL(soundFileURL));
    m_assetPlayer = AVPlayer::playerWithPlayerItem(m_playerItem);
    m_assetPlayer->setActionAtItemEnd(AVPlayerActionAtItemEndNone);
    addItemStatusObserver();
}

ORVRecordPlayer::~ORVRecordPlayer()
{
    removeItemStatusObserver();
    removePlayerObserver();
}

void ORVRecordPlayer::setPaused(bool paused)
{
    m_paused = paused;
    if (!m_readyForPlayback)
        return;
    if (paused)
        m_assetPlayer->pause();
    else
        m_assetPlayer->play();
}

double ORVRecordPlayer::recordDuration() const { return CMTimeGetSeconds(currentItemDuration()); }

double ORVRecordPlayer::timePosition() const { return CMTimeGetSeconds(m_assetPlayer->currentTime()); }

void ORVRecordPlayer::setTimePosition(double seconds)
{
    if (!m_readyForPlayback)
        return;
    setSeeking(true);
    const CMTime target = CMTimeMakeWithSeconds(seconds, currentItemDuration().timescale);
    // A cancelled seek changes nothing: the later seek that cancelled it ends the seeking.
    m_assetPlayer->seekToTime(target, [weak = weakSelf(this)](bool finished) {
        const auto self = weak.lock();
        if (finished && self)
            self->setSeeking(false);
    });
}

void ORVRecordPlayer::addItemStatusObserver()
{
    m_playerItem->addObserver(*this, statusKeyPath(), statusContext);
}

void ORVRecordPlayer::observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void* context)
{
    if (context != statusContext) {
        NSObject::observeValueForKeyPath(keyPath, object, context);
        return;
    }
    if (&object != m_playerItem.get() || keyPath != statusKeyPath() || m_readyForPlayback)
        return;
    if (m_playerItem->status() == AVPlayerItemStatusReadyToPlay)
        itemDidFinishPreparing();
}

void ORVRecordPlayer::itemDidFinishPreparing()
{
    const KeepAlive keepAlive(*this); // the delegate may drop the player
    setReadyForPlayback(true);
    addPlayerTimeObserver();
    sendMessage(*this, m_delegate, &ORVRecordPlayerDelegate::recordPlayerDidBecomeReadyForPlayback, *this);
    if (!m_paused)
        m_assetPlayer->play();
}

void ORVRecordPlayer::addPlayerTimeObserver()
{
    const CMTime interval = CMTimeMakeWithSeconds(tickInterval, currentItemDuration().timescale);
    m_assetPlayerObserver = m_assetPlayer->addPeriodicTimeObserverForInterval(
        interval, Executor::current().mainQueue(), [weak = weakSelf(this)](CMTime time) {
            if (const auto self = weak.lock())
                self->playerObserverDidUpdateTime(time);
        });
}

void ORVRecordPlayer::playerObserverDidUpdateTime(CMTime time)
{
    if (m_paused || m_seeking)
        return;
    const KeepAlive keepAlive(*this); // the delegate may drop the player
    if (time >= currentItemDuration()) {
        setPaused(true);
        sendMessage(*this, m_delegate, &ORVRecordPlayerDelegate::recordPlayerDidEndPlayback, *this);
        time = kCMTimeZero;
        m_assetPlayer->seekToTime(kCMTimeZero);
    }
    sendMessage(*this, m_delegate, &ORVRecordPlayerDelegate::recordPlayerDidUpdatePlayingPosition, *this,
        CMTimeGetSeconds(time));
}

void ORVRecordPlayer::removePlayerObserver()
{
    m_assetPlayer->removeTimeObserver(m_assetPlayerObserver); // nil when the item never became ready
    m_assetPlayerObserver = nullptr;
}

void ORVRecordPlayer::removeItemStatusObserver()
{
    m_playerItem->removeObserver(*this, statusKeyPath(), statusContext);
}

// The zero structure, of timescale 0, when there is no item.
CMTime ORVRecordPlayer::currentItemDuration() const
{
    const std::shared_ptr<AVPlayerItem>& item = m_assetPlayer->currentItem();
    return item ? item->duration() : CMTime {};
}
