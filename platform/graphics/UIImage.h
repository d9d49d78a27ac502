// A picture: pixels, how many of them make a point, and how a view is to draw it.
//
// Pixels are decoded when the image is made and are shared by its copies. An image never changes and may
// be made and drawn on any thread. A missing image is a null pointer; making one from something that is
// no picture gives null, never an error.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/graphics/Geometry.h"
#include "platform/graphics/ImageLimits.h"

#include <QImage>

#include <optional>

enum class UIImageRenderingMode { Automatic = 0, AlwaysOriginal = 1, AlwaysTemplate = 2 };
enum class UIImageResizingMode { Tile = 0, Stretch = 1 };

class UIImage final : public NSObject {
public:
    // imageNamed: — the main bundle's file NAME@3x.png, NAME@2x.png or NAME.png: the main screen's density
    // or the next lower one that exists and is a picture, else the next higher. While somebody holds a named
    // image, asking again gives the same object.
    static std::shared_ptr<UIImage> imageNamed(const NSString& name);
    // imageWithData:scale: — PNG or JPEG. Null for data that is broken, cut short, or larger than
    // maximumSide or maximumPixels, which its header tells before anything is decoded; and for a scale
    // that is no positive number.
    static std::shared_ptr<UIImage> imageWithData(const NSData& data, CGFloat scale = 1);
    // Pixels made elsewhere; null for a null picture. A size in points says that the last row and column are
    // only in part the picture's.
    static std::shared_ptr<UIImage> imageWithQImage(
        const QImage& pixels, CGFloat scale, const std::optional<CGSize>& size = {});

    static constexpr int maximumSide = ImageLimits::side;
    static constexpr qint64 maximumPixels = ImageLimits::pixels;

    CGSize size() const { return m_size; } // points
    CGFloat scale() const { return m_scale; }
    UIImageRenderingMode renderingMode() const { return m_renderingMode; }
    UIImageResizingMode resizingMode() const { return m_resizingMode; }
    // Device pixels: premultiplied ARGB32, or RGB32 when the picture is opaque. Never null.
    const QImage& qImage() const { return m_pixels; }
    // Where all the pixels go when the image fills the rectangle: their last row and column may reach beyond.
    CGRect rectOfPixels(const CGRect& rect) const;

    // A new image with the same pixels. The static form takes nil, of which it makes nil.
    std::shared_ptr<UIImage> imageWithRenderingMode(UIImageRenderingMode) const;
    static std::shared_ptr<UIImage> imageWithRenderingMode(
        const std::shared_ptr<UIImage>& image, UIImageRenderingMode mode);
    // resizableImageWithCapInsets:resizingMode: — the whole picture repeats or stretches; it has no fixed
    // borders, so the insets must be zero.
    std::shared_ptr<UIImage> resizableImage(const UIEdgeInsets& capInsets, UIImageResizingMode mode) const;
    std::shared_ptr<UIImage> copy() const;

    // drawInRect: — into the thread's current context, filling the rectangle; without one nothing happens.
    void drawInRect(const CGRect&) const;

    NSString description() const override;

    UIImage(QImage pixels, CGFloat scale, const CGSize& size, UIImageRenderingMode, UIImageResizingMode);

private:
    const QImage m_pixels;
    const CGFloat m_scale;
    const CGSize m_size;
    const UIImageRenderingMode m_renderingMode;
    const UIImageResizingMode m_resizingMode;
};
