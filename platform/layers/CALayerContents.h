// The picture of a layer: one that was put in, or one that the layer has drawn into a bitmap of its own.
#pragma once

#include "platform/graphics/CGContext.h"
#include "platform/layers/CALayerValues.h"
#include "platform/layers/FrameList.h"

#include <functional>

// How a picture of another size than the layer lies in it. Those of a place keep its size; the top is where
// the picture's top shows.
enum class CAContentsGravity {
    Resize,
    ResizeAspect,
    ResizeAspectFill,
    Center,
    Top,
    Bottom,
    Left,
    Right,
    TopLeft,
    TopRight,
    BottomLeft,
    BottomRight
};

class CALayerContents {
public:
    const std::shared_ptr<UIImage>& image() const { return m_image; }
    void setImage(std::shared_ptr<UIImage> image) { m_image = std::move(image); }
    CAContentsGravity gravity() const { return m_gravity; }
    void setGravity(CAContentsGravity gravity) { m_gravity = gravity; }
    // Device pixels in a point of what is drawn.
    double scale() const { return m_scale; }
    void setScale(double scale) { m_scale = scale; }

    // Whether the image repeats over the layer and so has to be drawn to the layer's size.
    bool repeatsImage() const;

    // Fills a clear bitmap of the bounds' size; the drawing's coordinates are the bounds'. Bounds without
    // area, not finite, or beyond what an image may measure make no bitmap.
    void draw(const CGRect& bounds, const std::function<void(CGContext&)>& drawing);
    void dropDrawn() { m_drawn = QImage(); }
    bool hasDrawn() const { return !m_drawn.isNull(); }

    // The drawn picture, or else the image, where it lies with the shown values.
    FrameContent frameContent(const CALayerValues& shown) const;

private:
    CGRect rectFor(const CGSize& size, const CGRect& bounds) const;

    std::shared_ptr<UIImage> m_image;
    QImage m_drawn;
    CGSize m_drawnFor; // the bounds' size, of which the bitmap is the next larger one
    double m_drawnScale = 1;
    CAContentsGravity m_gravity = CAContentsGravity::Resize;
    double m_scale = 1;
};
