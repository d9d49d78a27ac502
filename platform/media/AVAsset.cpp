#include "platform/media/AVAsset.h"

#include "platform/media/SoundFileProbe.h"

std::shared_ptr<AVAsset> AVAsset::assetWithURL(const NSURL& url)
{
    return url.isEmpty() ? nullptr : make<AVAsset>(url);
}

AVAsset::AVAsset(NSURL url)
    : m_url(std::move(url))
{
}

bool AVAsset::isPlayable() const
{
    if (!m_playable)
        m_playable = SoundFileProbe::namesSound(m_url);
    return *m_playable;
}
