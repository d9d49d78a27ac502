// A path whose length is known at each place, so that parts of it are found by fractions of its whole length,
// all its subpaths taken in turn.
//
// Measuring it takes as long as drawing it: whoever cuts one path again and again keeps it measured.
#pragma once

#include "platform/graphics/Geometry.h"

#include <QPainterPath>

#include <array>
#include <vector>

// From one fraction of a path's length to another.
struct PathPart {
    double start = 0;
    double end = 1;

    bool isEmpty() const { return !(start < end); }
    bool isWhole() const { return start <= 0 && end >= 1; }
};

class MeasuredPath {
public:
    explicit MeasuredPath(const QPainterPath& path);

    // Whether it changes its direction all at once somewhere.
    bool hasCorners() const { return m_hasCorners; }
    // The part of the path. Fractions outside 0 to 1 mean the ends; the whole path comes back as it is.
    // Curves stay curves, cut at the same places wherever the part ends.
    QPainterPath cut(PathPart part) const;
    // Around the part; more than that by at most what its ends need to the next chord.
    CGRect boundingRect(PathPart part) const;
    // The part of the part that holds all of it that meets the rectangle, and goes on to where a line or a
    // curve ends: what is drawn of it there has the very pixels of the whole.
    PathPart partNear(const CGRect& rect, PathPart part) const;

private:
    // A line or a cubic curve. A curve's length is that of its chords: for a quarter of a circle exact to a
    // ten-thousandth.
    class Segment {
    public:
        Segment(const QPointF& from, const QPointF& to, bool beginsSubpath);
        Segment(const QPointF& from, const QPointF& firstControl, const QPointF& secondControl,
            const QPointF& to, bool beginsSubpath);

        bool beginsSubpath() const { return m_beginsSubpath; }
        double length() const { return m_distances[std::size_t(m_chordCount)]; }
        // Adds the part between two distances from the segment's beginning.
        void addPart(QPainterPath& path, double from, double to, bool begins) const;

        int chordCount() const { return m_chordCount; }
        double distance(int point) const { return m_distances[std::size_t(point)]; }
        CGRect chordRect(int chord) const;
        // The distances between which the chord's piece of a curve lies.
        double pieceBegin(int chord) const;
        double pieceEnd(int chord) const;
        bool goesOnStraightAfter(const Segment& before) const;

    private:
        // A painter draws a long curve with an error that depends on where it ends. One that grows is cut at
        // the same places each time, so that what is drawn of it already stays as it is.
        static constexpr int pieces = 8;
        static constexpr int chordsInPiece = 2;
        static constexpr int mostChords = pieces * chordsInPiece;

        void measure();
        QPointF blossom(double r, double s, double t) const;
        QPointF pointAt(double t) const;
        double parameterAt(double distance) const;

        std::array<QPointF, 4> m_controls;
        std::array<QPointF, mostChords + 1> m_points; // between the chords
        std::array<double, mostChords + 1> m_distances {}; // of the points, from the beginning
        int m_chordCount;
        bool m_beginsSubpath;
    };

    // Calls the function with each chord's rectangle and its piece's distances from the path's beginning.
    template <typename Visit> void forEachChord(PathPart part, Visit visit) const;

    QPainterPath m_path;
    std::vector<Segment> m_segments;
    double m_length = 0;
    bool m_hasCorners = false;
};
