// Where every view gets its portraits and every player its sounds, by file address.
//
// Nothing is reported: a missing or unreadable file gives nil, nil is not remembered, and the next call
// looks again. Files are read on the caller's thread.
#pragma once

#include "platform/foundation/NSObject.h"

class AVAsset;
class NSCache;
class UIImage;

class ORVResourceCache : public NSObject {
public:
    // One for the process.
    static const std::shared_ptr<ORVResourceCache>& sharedInstance();
    static NSString cacheKeyFromURL(const NSURL&);

    ORVResourceCache();
    ~ORVResourceCache() override;

    // The image at the best density that exists; the same object while it is cached.
    std::shared_ptr<UIImage> imageFromURL(const NSURL&);
    // imageLoadedFromBaseURL: — the same without the cache. The address is that of the file of density 1; the
    // densities of the main screen and below lie beside it as F@3x.jpg and F@2x.jpg.
    std::shared_ptr<UIImage> imageLoadedFromBaseURL(const NSURL&) const;
    // A new asset on every call, nil when the sound cannot be played.
    std::shared_ptr<AVAsset> soundAssetFromURL(const NSURL&);

private:
    const std::shared_ptr<NSCache> m_cache;
};
