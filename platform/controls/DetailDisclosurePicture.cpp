#include "platform/controls/DetailDisclosurePicture.h"

#include "platform/graphics/UIGraphics.h"

#include <map>

namespace {

// In points, from the top left corner.
constexpr CGFloat side = 22;
constexpr CGFloat lineWidth = 1.5;
constexpr CGFloat lineInset = 1 + lineWidth / 2;
constexpr CGFloat dotRadius = 1.2;
constexpr CGFloat dotCenter = 6.7;
constexpr CGFloat stemWidth = 1.8;
constexpr CGFloat stemTop = 9.3;
constexpr CGFloat stemBottom = 16.3;

std::shared_ptr<UIImage> drawnPicture(CGFloat scale)
{
    UIGraphicsBeginImageContextWithOptions({ side, side }, false, scale);
    if (CGContext* const context = UIGraphicsGetCurrentContext()) {
        const auto black = UIColor::blackColor(); // only the alpha counts
        const CGRect circle = CGRect(0, 0, side, side).adjusted(lineInset, lineInset, -lineInset, -lineInset);
        const CGRect dot(side / 2 - dotRadius, dotCenter - dotRadius, 2 * dotRadius, 2 * dotRadius);
        const CGRect stem(side / 2 - stemWidth / 2, stemTop, stemWidth, stemBottom - stemTop);
        context->strokePath(*UIBezierPath::bezierPathWithOvalInRect(circle)->cgPath(), *black, lineWidth);
        context->fillPath(*UIBezierPath::bezierPathWithOvalInRect(dot)->cgPath(), *black);
        context->fillPath(*UIBezierPath::bezierPathWithRoundedRect(stem, stemWidth / 2)->cgPath(), *black);
    }
    const auto picture = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    return UIImage::imageWithRenderingMode(picture, UIImageRenderingMode::AlwaysTemplate);
}

} // namespace

std::shared_ptr<UIImage> detailDisclosurePicture(CGFloat scale)
{
    static std::map<CGFloat, std::shared_ptr<UIImage>> pictures; // a handful of scales in a process
    if (!(scale > 0))
        return nullptr; // no place in the order of keys, or the screen's own
    std::shared_ptr<UIImage>& picture = pictures[scale];
    if (!picture)
        picture = drawnPicture(scale);
    return picture;
}
