// Where something is drawn: a thin layer over a painter, in points and in colours of the platform.
//
// The painter's transform leads from points to device pixels, so everything is drawn at its final size.
// Dynamic colours are those of the appearance in force. Shapes that are
// not finite, or reach farther out than a million points, draw nothing.
#pragma once

#include "platform/graphics/UIBezierPath.h"
#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIImage.h"

#include <QPainter>

class CGContext {
public:
    // The painter must be active for as long as the context lives. Smooth edges and pictures are switched on.
    explicit CGContext(QPainter& painter);
    CGContext(const CGContext&) = delete;
    CGContext& operator=(const CGContext&) = delete;

    QPainter& painter() { return m_painter; }

    // CGContextSaveGState and CGContextRestoreGState: clip, transform and opacity come back with the end of
    // the guard.
    class [[nodiscard]] SavedState {
    public:
        explicit SavedState(CGContext& context)
            : m_painter(context.m_painter)
        {
            m_painter.save();
        }
        ~SavedState() { m_painter.restore(); }
        SavedState(const SavedState&) = delete;
        SavedState& operator=(const SavedState&) = delete;

    private:
        QPainter& m_painter;
    };

    void translate(CGFloat x, CGFloat y);
    void scale(CGFloat x, CGFloat y);
    void concatenate(const CGAffineTransform&);
    void clipToRect(const CGRect&);
    void clipToPath(const QPainterPath&);
    // Multiplies into everything that is drawn until the state is restored.
    void setAlpha(double alpha);

    void fillRect(const CGRect&, const UIColor&);
    void fillPath(const QPainterPath&, const UIColor&);
    // Butt ends, mitred corners.
    void strokePath(const QPainterPath&, const UIColor&, CGFloat lineWidth = 1);
    void clearRect(const CGRect&);

    // Fills the rectangle with the picture: stretched, or repeated where its resizing mode says so. With a
    // tint only the picture's alpha counts; a null tint draws it in its own colours.
    void drawImage(const UIImage&, const CGRect&, const UIColor* tint = nullptr);

private:
    QPainter& m_painter;
};
