#include "platform/media/AVPlayerItem.h"

#include "platform/foundation/Executor.h"
#include "platform/foundation/Messages.h"
#include "platform/media/AVAsset.h"
#include "platform/media/AudioSink.h"
#include "platform/media/SoundLoader.h"

std::shared_ptr<AVPlayerItem> AVPlayerItem::playerItemWithAsset(std::shared_ptr<AVAsset> asset)
{
    return make<AVPlayerItem>(std::move(asset));
}

AVPlayerItem::AVPlayerItem(std::shared_ptr<AVAsset> asset)
    : m_asset(std::move(asset))
{
}

AVPlayerItem::~AVPlayerItem()
{
    if (m_loadingCancelled)
        *m_loadingCancelled = true;
}

CMTime AVPlayerItem::duration() const
{
    return m_sound ? CMTimeMake(m_sound->frameCount(), m_sound->format().sampleRate) : kCMTimeIndefinite;
}

void AVPlayerItem::load()
{
    if (m_loadingCancelled)
        return;
    m_loadingCancelled = std::make_shared<std::atomic<bool>>(false);
    const auto finish = [weakItem = weakSelf(this)](std::shared_ptr<Sound> sound) {
        Executor::current().mainQueue().async([weakItem, sound = std::move(sound)] {
            if (const auto item = weakItem.lock())
                item->finishLoading(sound);
        });
    };
    if (!m_asset)
        return finish(nullptr);
    Executor::current().globalQueue().async([url = m_asset->url(), cancelled = m_loadingCancelled, finish] {
        auto sound = SoundLoader::load(url, *cancelled);
        const bool willPlay = sound != nullptr;
        finish(std::move(sound));
        if (willPlay)
            AudioSink::warmUp();
    });
}

void AVPlayerItem::finishLoading(std::shared_ptr<Sound> sound)
{
    const KeepAlive keepAlive(*this); // an observer may drop the item
    m_sound = std::move(sound);
    m_status = m_sound ? AVPlayerItemStatusReadyToPlay : AVPlayerItemStatusFailed;
    {
        const AutomaticChange change(*this, QStringLiteral("status"));
    }
    if (m_loadedHandler)
        m_loadedHandler();
}
