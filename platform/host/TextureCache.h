// Textures by the picture they show: each picture in use is uploaded once, each tinted form of it, too.
//
// A texture lives as long as somebody holds it. Lives in the scene graph's thread, and dies before its
// window's graphics context does. The window must outlive the cache.
#pragma once

#include "platform/layers/FrameList.h"

#include <QRect>

#include <memory>
#include <unordered_map>

class QQuickWindow;
class QSGTexture;

using SharedTexture = std::shared_ptr<QSGTexture>;

class TextureCache {
public:
    explicit TextureCache(QQuickWindow& window);
    ~TextureCache();
    TextureCache(const TextureCache&) = delete;
    TextureCache& operator=(const TextureCache&) = delete;

    // The texture of a picture, tinted when it has a tint, and the pixels outside of which all of it is
    // transparent.
    struct Picture {
        SharedTexture texture;
        QRect visiblePixels;
    };
    Picture picture(const FrameImage&);
    SharedTexture texture(const FrameImage& image) { return picture(image).texture; }
    // A texture that is shared with nobody.
    SharedTexture makeTexture(const QImage&);
    std::int64_t uploadCount() const { return m_uploadCount; }
    // How many textures live, the unshared ones included.
    std::int64_t textureCount() const { return *m_textureCount; }
    // How many pictures it remembers; those that nobody holds are forgotten with the next upload.
    std::size_t size() const { return m_textures.size(); }

private:
    void dropUnused();

    struct Key {
        qint64 image;
        QRgb tint;
        bool isTinted;
        bool operator==(const Key&) const = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const
        {
            return std::hash<qint64>()(key.image) * 31 + key.tint + std::size_t(key.isTinted);
        }
    };

    QQuickWindow& m_window;
    struct Entry {
        std::weak_ptr<QSGTexture> texture;
        QRect visiblePixels;
    };
    std::unordered_map<Key, Entry, Hash> m_textures;
    std::int64_t m_uploadCount = 0;
    // Held by each texture, which takes itself off when it ends; some may end after the cache.
    std::shared_ptr<std::int64_t> m_textureCount = std::make_shared<std::int64_t>(0);
};
