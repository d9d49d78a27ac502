// Where the edges of layers lie on the pixels of the screen: the one place that decides it.
//
// An edge of a layer at rest lies on the pixel edge that is nearest to its place on the screen, so layers
// that touch each other touch on the screen, too. What has a size keeps at least one pixel of it. A scrolled
// distance (the origin of the bounds) and a transform that only moves are rounded apart from the place: they
// shift what they move by whole pixels and change nothing in it.
//
// Only the model decides. A layer in motion is moved by the part of a pixel that its place of rest is moved
// by: it may lie anywhere on its way, ends where it stays, and what lies in it moves along as it is. In a
// layer that rests turned or scaled nothing is moved.
#pragma once

#include "platform/layers/CALayerValues.h"
#include "platform/layers/FrameList.h"

class PixelGrid {
public:
    // The nearest distance that is whole in device pixels, by the rule that scrolled distances are drawn by.
    static double nearestWholeDistance(double distance, double scale);

    // For the coordinates of a screen with scale device pixels in a point.
    explicit PixelGrid(double scale);

    // For the coordinates of a layer in these ones that has these values at rest.
    PixelGrid inLayer(const CALayerValues& rest) const;

    // Whether what lies in these coordinates is drawn as it would be in the other ones: they are whole pixels
    // apart.
    bool placesAs(const PixelGrid& other) const;

    // What follows is asked of a layer's own grid. What is shown are the rest's values in motion, or they.
    // From the layer's coordinates to its superlayer's.
    CGAffineTransform transformToSuperlayer(
        const PixelGrid& superlayer, const CALayerValues& rest, const CALayerValues& shown) const;
    CGRect bounds(const CALayerValues& rest, const CALayerValues& shown) const;
    // Where a picture of the layer goes that lies at a rectangle in the shown bounds. One that shows pixel
    // for pixel keeps its size.
    CGRect pictureRect(const FrameImage&, const CALayerValues& rest, const CALayerValues& shown) const;

private:
    // In device pixels of one direction.
    struct Axis {
        double place = 0; // of the coordinates' origin on the screen, at rest
        double pixel = 0; // where that is drawn: what is counted from there is whole

        Axis inLayer(double frameOrigin, double translation, double scrolled) const;
        // The pixel edge nearest to a place in the coordinates, counted from the drawn origin.
        double edge(double position) const;
        double farEdge(double position, double size) const;
        bool isCountable() const;
        double partOfPixel() const { return place - pixel; }
    };

    double m_scale;
    Axis m_x;
    Axis m_y;
    bool m_isAligned = true; // nothing above is turned or scaled
};
