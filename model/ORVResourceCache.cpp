#include "model/ORVResourceCache.h"

#include "platform/foundation/NSCache.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSURL.h"
#include "platform/graphics/MainScreenScale.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/AVAsset.h"

namespace {

// F.jpg becomes F@3x.jpg at density 3 and stays itself at density 1.
NSURL urlAtDensity(const NSURL& baseURL, long density)
{
    if (density == 1)
        return baseURL;
    NSString name = lastPathComponentWithoutExtension(baseURL)
        + NSStringWithFormat(QStringLiteral("@%ldx"), { density });
    const NSString extension = pathExtension(baseURL);
    if (!extension.isEmpty())
        name += QLatin1Char('.') + extension;
    return urlByReplacingLastPathComponent(baseURL, name);
}

} // namespace

ORVResourceCache::ORVResourceCache()
    : m_cache(make<NSCache>())
{
}

ORVResourceCache::~ORVResourceCache() = default;

const std::shared_ptr<ORVResourceCache>& ORVResourceCache::sharedInstance()
{
    static const std::shared_ptr<ORVResourceCache> instance = make<ORVResourceCache>();
    return instance;
}

NSString ORVResourceCache::cacheKeyFromURL(const NSURL& url) { return absoluteString(url); }

std::shared_ptr<UIImage> ORVResourceCache::imageFromURL(const NSURL& url)
{
    if (url.isEmpty())
        return nullptr;
    const NSString key = cacheKeyFromURL(url);
    if (const auto cached = m_cache->objectForKey<UIImage>(key))
        return cached;
    const auto image = imageLoadedFromBaseURL(url);
    if (image)
        m_cache->setObject(image, key);
    return image;
}

std::shared_ptr<UIImage> ORVResourceCache::imageLoadedFromBaseURL(const NSURL& baseURL) const
{
    const long screenDensity = std::lround(static_cast<float>(MainScreenScale::get()));
    for (long density = screenDensity; density >= 1; --density) {
        const NSData data = dataWithContentsOfURL(urlAtDensity(baseURL, density));
        if (const auto image = UIImage::imageWithData(data, static_cast<CGFloat>(density)))
            return image;
    }
    return nullptr;
}

std::shared_ptr<AVAsset> ORVResourceCache::soundAssetFromURL(const NSURL& url)
{
    if (url.isEmpty())
        return nullptr;
    if (const auto cached = m_cache->objectForKey<AVAsset>(cacheKeyFromURL(url)))
        return cached;
    const auto asset = AVAsset::assetWithURL(url);
    if (!asset || !asset->isPlayable())
        return nullptr;
    // Stored under the address but looked up under its string, which is never equal to it: every request
    // makes a new asset.
    m_cache->setObject(asset, url);
    return asset;
}
