// Points, sizes, rectangles and affine transforms, all in points with y pointing down.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

using CGFloat = double;
using CGPoint = QPointF;
using CGSize = QSizeF;
using CGRect = QRectF;
using CGAffineTransform = QTransform; // only its affine part is used

// Distances inwards from the edges of a rectangle; negative ones lead outwards.
struct UIEdgeInsets {
    CGFloat top = 0;
    CGFloat left = 0;
    CGFloat bottom = 0;
    CGFloat right = 0;

    bool operator==(const UIEdgeInsets&) const = default;
};

inline CGRect UIEdgeInsetsInsetRect(const CGRect& rect, const UIEdgeInsets& insets)
{
    return rect.adjusted(insets.left, insets.top, -insets.right, -insets.bottom);
}
