#include "platform/host/FrameGeometry.h"

#include "platform/host/TrimmedPath.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double pixelTolerance = 1e-3;
// What the way from pixels to points and back may do to a number.
constexpr double rounding = 1e-6;

// What lies farther away is on no screen, and need not fit into an integer.
constexpr double farthestPixel = 1e8;

// How far a stroke may reach beyond its path: sharp corners are cut at two line widths.
constexpr double strokeReach = 2;

// What lies on whole pixels does so exactly: renderers count some sides of a rectangle by cutting the
// fraction off, and 82.99999 would lose a pixel.
double devicePixels(double points, double scale)
{
    const double pixels = points * scale;
    const double whole = std::round(pixels);
    return std::abs(pixels - whole) < rounding ? whole : pixels;
}

// Unlike QRectF's own union, one with an empty rectangle is the other one.
CGRect united(const CGRect& first, const CGRect& second)
{
    if (first.isEmpty())
        return second;
    return second.isEmpty() ? first : first.united(second);
}

CGRect contentExtent(const FrameItem& item, double scale)
{
    if (const auto* image = std::get_if<FrameImage>(&item.content))
        return FrameGeometry::deviceRect(image->rect, scale);
    const auto* shape = std::get_if<FrameShape>(&item.content);
    if (!shape)
        return {};
    CGRect extent;
    if (shape->fillColor.isValid())
        extent = FrameGeometry::deviceRect(shape->path->boundingRect(), scale).adjusted(-1, -1, 1, 1);
    if (!shape->strokeColor.isValid())
        return extent;
    // A short arc of a large circle that turns on the screen is a small picture to turn.
    const QPainterPath stroked = trimmedPath(*shape->path, shape->strokeStart, shape->strokeEnd);
    return stroked.isEmpty()
        ? extent
        : united(extent, FrameGeometry::strokedRect(*shape, stroked.boundingRect(), scale));
}

bool contains(const CGRect& outer, const CGRect& inner)
{
    return outer.adjusted(-pixelTolerance, -pixelTolerance, pixelTolerance, pixelTolerance).contains(inner);
}

} // namespace

CGRect FrameGeometry::deviceRect(const CGRect& points, double scale)
{
    return { devicePixels(points.x(), scale), devicePixels(points.y(), scale),
        devicePixels(points.width(), scale), devicePixels(points.height(), scale) };
}

CGAffineTransform FrameGeometry::deviceTransform(const FrameItem& item, double scale)
{
    const CGAffineTransform& points = item.transform;
    return { points.m11(), points.m12(), points.m21(), points.m22(), devicePixels(points.dx(), scale),
        devicePixels(points.dy(), scale) };
}

bool FrameGeometry::isTranslation(const CGAffineTransform& transform)
{
    return transform.type() <= QTransform::TxTranslate;
}

CGAffineTransform FrameGeometry::onWholePixels(const CGAffineTransform& translation)
{
    return CGAffineTransform::fromTranslate(std::round(translation.dx()), std::round(translation.dy()));
}

CGRect FrameGeometry::onWholePixels(const CGRect& rect)
{
    const CGPoint begin(std::floor(rect.left() + 0.5), std::floor(rect.top() + 0.5));
    const CGPoint end(std::floor(rect.right() + 0.5), std::floor(rect.bottom() + 0.5));
    return { begin, end };
}

double FrameGeometry::effectiveCornerRadius(const FrameItem& item)
{
    return std::clamp(item.cornerRadius, 0.0, std::min(item.bounds.width(), item.bounds.height()) / 2);
}

bool FrameGeometry::drawsBackground(const FrameItem& item)
{
    return item.backgroundColor.isValid() && item.backgroundColor.alpha() > 0 && !item.bounds.isEmpty();
}

bool FrameGeometry::drawsContent(const FrameItem& item)
{
    if (const auto* image = std::get_if<FrameImage>(&item.content))
        return !image->image.isNull() && !image->rect.isEmpty();
    const auto* shape = std::get_if<FrameShape>(&item.content);
    return shape && !shape->path->isEmpty() && (shape->fillColor.isValid() || shape->strokeColor.isValid());
}

bool FrameGeometry::clipsRoundedly(const FrameItem& item)
{
    return item.clipsToBounds && effectiveCornerRadius(item) > 0;
}

bool FrameGeometry::needsPainter(const FrameItem& item)
{
    if (effectiveCornerRadius(item) > 0 && (drawsBackground(item) || item.clipsToBounds))
        return true;
    return drawsContent(item) && std::holds_alternative<FrameShape>(item.content);
}

CGRect FrameGeometry::strokedRect(const FrameShape& shape, const CGRect& ofPath, double scale)
{
    const double reach = std::max(shape.lineWidth, 0.0) * strokeReach;
    // Antialiasing colours one more pixel on each side.
    return deviceRect(ofPath.adjusted(-reach, -reach, reach, reach), scale).adjusted(-1, -1, 1, 1);
}

CGRect FrameGeometry::ownExtent(const FrameItem& item, double scale)
{
    const CGRect bounds = deviceRect(item.bounds, scale);
    CGRect extent = drawsBackground(item) ? bounds : CGRect();
    if (drawsContent(item))
        extent = united(extent, contentExtent(item, scale));
    return item.clipsToBounds ? extent.intersected(bounds) : extent;
}

CGRect FrameGeometry::subtreeExtent(const FrameList& list, int index)
{
    const FrameItem& item = list.items[std::size_t(index)];
    CGRect extent = ownExtent(item, list.scale);
    forEachChild(list, index, [&](int child) {
        const FrameItem& childItem = list.items[std::size_t(child)];
        if (childItem.opacity > 0)
            extent
                = united(extent, deviceTransform(childItem, list.scale).mapRect(subtreeExtent(list, child)));
    });
    return item.clipsToBounds ? extent.intersected(deviceRect(item.bounds, list.scale)) : extent;
}

bool FrameGeometry::isCovered(const FrameList& list, int index, const CGRect& rect)
{
    const FrameItem& item = list.items[std::size_t(index)];
    const bool fillsRect = contains(deviceRect(item.bounds, list.scale), rect);
    const bool isRound = effectiveCornerRadius(item) > 0;
    if (drawsBackground(item) && item.backgroundColor.alpha() == 255 && fillsRect && !isRound)
        return true;
    const auto* image = std::get_if<FrameImage>(&item.content);
    if (image && !image->image.isNull() && !image->image.hasAlphaChannel() && !image->tint.isValid()
        && !isRound && contains(deviceRect(image->rect, list.scale), rect)
        && (fillsRect || !item.clipsToBounds))
        return true;
    if (item.clipsToBounds && (!fillsRect || isRound))
        return false;
    bool covered = false;
    forEachChild(list, index, [&](int child) {
        const FrameItem& childItem = list.items[std::size_t(child)];
        const CGAffineTransform transform = deviceTransform(childItem, list.scale);
        covered = covered
            || (childItem.opacity >= 1 && isTranslation(transform)
                && isCovered(list, child, rect.translated(-transform.dx(), -transform.dy())));
    });
    return covered;
}

QRect FrameGeometry::wholePixels(const CGRect& rect)
{
    const CGRect countable
        = rect.intersected({ -farthestPixel, -farthestPixel, 2 * farthestPixel, 2 * farthestPixel });
    if (countable.isEmpty())
        return {};
    return countable.adjusted(pixelTolerance, pixelTolerance, -pixelTolerance, -pixelTolerance)
        .toAlignedRect();
}
