// How large a picture may be that is made or read, in pixels: what one file can make the process hold.
#pragma once

#include <QSize>

struct ImageLimits {
    static constexpr int side = 8192;
    static constexpr qint64 pixels = 32'000'000;

    // Whether a picture of that many pixels is one to make: not empty and within the limits.
    static bool permit(const QSize& size)
    {
        return !size.isEmpty() && size.width() <= side && size.height() <= side
            && qint64(size.width()) * size.height() <= pixels;
    }
};
