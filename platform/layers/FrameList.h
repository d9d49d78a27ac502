// One frame: a flat list of drawing steps, computed from the layer tree at one moment.
//
// The list is the layer tree in drawing order: a layer, then its sublayers, each after its parent.
// It is a plain value that tests compare and that the host turns into scene-graph nodes in one place.
// Two frames' lists tell the host what changed: a subtree whose items are equal, its first item's
// transform and opacity aside, has only moved. A list that a builder has made from its last one names the
// items that differ, so that nobody needs to look at the others.
#pragma once

#include "platform/graphics/Geometry.h"

#include <QColor>
#include <QImage>
#include <QPainterPath>

#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

enum class LayerID : std::uint64_t { None = 0 };

// Exact, where the value type's own comparison takes what is nearly equal for equal.
inline bool isSameRect(const CGRect& first, const CGRect& second)
{
    return first.x() == second.x() && first.y() == second.y() && first.width() == second.width()
        && first.height() == second.height();
}

// A picture stretched over a rectangle.
struct FrameImage {
    QImage image; // device pixels; equal when it is the same picture in memory
    CGRect rect; // where it goes, in the layer's coordinates
    QColor tint; // valid: only the picture's alpha counts, filled with this colour

    bool operator==(const FrameImage& other) const
    {
        return isSameRect(rect, other.rect) && image.cacheKey() == other.image.cacheKey()
            && tint == other.tint;
    }
};

// A path, filled and stroked. Stroke ends are fractions of the path's length.
struct FrameShape {
    std::shared_ptr<const QPainterPath> path; // in the layer's coordinates; never null, never changed
    QColor fillColor; // invalid: none
    QColor strokeColor; // invalid: none
    CGFloat lineWidth = 1;
    Qt::PenCapStyle lineCap = Qt::FlatCap;
    double strokeStart = 0;
    double strokeEnd = 1;

    bool operator==(const FrameShape&) const = default; // the same path object is the same path
};

using FrameContent = std::variant<std::monostate, FrameImage, FrameShape>;

// What one layer draws, and how its subtree is placed.
struct FrameItem {
    LayerID layer = LayerID::None;
    int subtreeEnd = 0; // one past the last item of the layer's subtree
    CGAffineTransform transform; // from the layer's coordinates to its parent item's
    double opacity = 1; // of the whole subtree, as one picture
    CGRect bounds; // in the layer's coordinates
    double cornerRadius = 0; // rounds the background, and the clip when there is one
    bool clipsToBounds = false; // clips content and sublayers
    QColor backgroundColor; // invalid: none; drawn below the content
    FrameContent content;

    // Whether the layer itself looks and clips the same, wherever it is.
    bool drawsSame(const FrameItem& other) const
    {
        return isSameRect(bounds, other.bounds) && cornerRadius == other.cornerRadius
            && clipsToBounds == other.clipsToBounds && backgroundColor == other.backgroundColor
            && content == other.content;
    }
    bool operator==(const FrameItem& other) const
    {
        return layer == other.layer && subtreeEnd == other.subtreeEnd && opacity == other.opacity
            && transform == other.transform && drawsSame(other);
    }
};

// Where a list comes from. Whoever changes a list by hand clears its history.
struct FrameHistory {
    std::uint64_t id = 0; // of the list, never given twice; 0: made by hand
    std::uint64_t previous = 0; // the list that it is made from; 0: from none
    std::vector<int> changedItems; // those that differ from it; all others, and the nesting, are the same

    // Whether changedItems says all about the way from the other list to this one.
    bool follows(const FrameHistory& other) const { return previous != 0 && previous == other.id; }
};

struct FrameList {
    CGSize size; // of the screen, in points
    double scale = 1; // device pixels in a point
    std::vector<FrameItem> items; // the first one is the root's
    FrameHistory history {};

    // Whether they show the same, wherever they come from.
    bool operator==(const FrameList& other) const
    {
        return size == other.size && scale == other.scale && items == other.items;
    }
};
