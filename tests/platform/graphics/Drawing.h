// Pictures that tests draw and look at.
#pragma once

#include "platform/graphics/UIGraphics.h"
#include "tests/support/Pictures.h"

#include <functional>

// What the drawing leaves on a transparent ground.
inline QImage drawn(const CGSize& size, CGFloat scale, const std::function<void(CGContext&)>& drawing)
{
    UIGraphicsBeginImageContextWithOptions(size, /* opaque */ false, scale);
    drawing(*UIGraphicsGetCurrentContext());
    const QImage pixels = UIGraphicsGetImageFromCurrentImageContext()->qImage();
    UIGraphicsEndImageContext();
    return pixels;
}

// The smallest rectangle with everything that is at least half opaque.
inline QRect inkBounds(const QImage& pixels)
{
    QRect bounds;
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x) {
            if (qAlpha(pixels.pixel(x, y)) > 127)
                bounds = bounds.united(QRect(x, y, 1, 1));
        }
    }
    return bounds;
}
