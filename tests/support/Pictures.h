// Pictures of one colour.
#pragma once

#include "platform/graphics/UIImage.h"

#include <QColor>

inline QImage plainPixels(const QSize& size, const QColor& color)
{
    QImage pixels(size, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(color);
    return pixels;
}

inline std::shared_ptr<UIImage> plainImage(const QSize& pixels, const QColor& color, CGFloat scale = 1)
{
    return UIImage::imageWithQImage(plainPixels(pixels, color), scale);
}
