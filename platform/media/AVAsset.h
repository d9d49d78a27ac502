// A sound in a file, named but not held: an address and whether it can be played.
//
// Views make assets by the dozen and caches keep them for the length of the process, so an asset holds
// neither the file open nor any of its samples; those belong to a player's item. Main thread only.
#pragma once

#include "platform/foundation/NSObject.h"

#include <optional>

class AVAsset final : public NSObject {
public:
    // A new object on every call; nil for a null address.
    static std::shared_ptr<AVAsset> assetWithURL(const NSURL&);

    explicit AVAsset(NSURL); // for assetWithURL(), which is how an asset is made

    const NSURL& url() const { return m_url; }

    // Whether the file's header names a sound that can be decoded here. The file is looked at when this is
    // first asked; the answer stays.
    bool isPlayable() const;

private:
    const NSURL m_url;
    mutable std::optional<bool> m_playable;
};
