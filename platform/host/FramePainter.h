// Paints items of a frame list with a plain painter.
//
// This is how the host draws what scene-graph nodes cannot: rounded corners, shapes, and whole subtrees
// as one picture. Painting a whole list this way is also the picture that the nodes must give.
#pragma once

#include "platform/layers/FrameList.h"

// A picture of device pixels and where it goes, in the device pixels of the item's coordinates.
struct FramePicture {
    QImage image;
    QRect rect;
};

class QPainter;

class FramePainter {
public:
    // The list must outlive the painter.
    explicit FramePainter(const FrameList& list)
        : m_list(list)
    {
    }

    // The whole screen.
    QImage paintScreen() const;
    // The item and all below it, without the item's own transform and opacity. The picture has no alpha
    // channel when something opaque covers all of it. Empty when nothing is drawn, and when the picture would
    // have more than UIImage::maximumPixels.
    FramePicture paintSubtree(int index) const;
    // What the item draws itself: background and content, cut by its clip. Empty as above.
    FramePicture paintItem(int index) const;

    // A stroke along a part of the shape's path, in the rectangle of the device pixels of its coordinates.
    static QImage paintStroke(
        const FrameShape& shape, const QPainterPath& part, double scale, const QRect& rect);

    // The picture's alpha filled with the colour.
    static QImage tinted(const QImage& image, const QColor& tint);

private:
    enum class Depth { Item, Subtree };
    struct Place {
        CGAffineTransform transform; // from the item's device pixels to the picture's
        double opacity = 1;
    };

    FramePicture paint(int index, Depth depth, const QRect& rect, QImage::Format format) const;
    void paintPlaced(QPainter& painter, int index, const Place& parent) const;
    void paintAsOnePicture(QPainter& painter, int index, const Place& place, Depth depth) const;
    void paintPlain(QPainter& painter, int index, const Place& place, Depth depth) const;
    void paintBackground(QPainter& painter, const FrameItem& item) const;
    void paintContent(QPainter& painter, const FrameItem& item) const;
    void paintImage(QPainter& painter, const FrameImage& image) const;
    void paintShape(QPainter& painter, const FrameShape& shape) const;
    bool drawsSeveralThings(int index) const;

    const FrameList& m_list;
};
