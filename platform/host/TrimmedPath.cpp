#include "platform/host/TrimmedPath.h"

#include <QLineF>

#include <algorithm>
#include <array>
#include <vector>

namespace {

// A curve's length is that of so many chords: for a quarter of a circle exact to a ten-thousandth.
constexpr int chordCount = 16;

// A line or a cubic curve of a path; a line is a curve whose control points lie at its ends.
class Segment {
public:
    Segment(const QPointF& from, const QPointF& to)
        : m_points { from, from, to, to }
        , m_length(QLineF(from, to).length())
    {
    }

    Segment(const QPointF& from, const QPointF& firstControl, const QPointF& secondControl, const QPointF& to)
        : m_points { from, firstControl, secondControl, to }
        , m_isCurve(true)
    {
        for (int chord = 0; chord < chordCount; ++chord)
            m_length += chordLength(chord);
    }

    double length() const { return m_length; }

    // Adds the part between two distances from the segment's beginning.
    void addPart(QPainterPath& path, double from, double to, bool begins) const
    {
        const double first = parameterAt(from);
        const double last = parameterAt(to);
        if (begins)
            path.moveTo(pointAt(first));
        if (!m_isCurve) {
            path.lineTo(pointAt(last));
            return;
        }
        path.cubicTo(blossom(first, first, last), blossom(first, last, last), blossom(last, last, last));
    }

private:
    // The curve's polar form: two equal parameters and one other give the control points of a part.
    QPointF blossom(double r, double s, double t) const
    {
        const auto mix = [](const QPointF& a, const QPointF& b, double u) { return a + (b - a) * u; };
        const QPointF a = mix(m_points[0], m_points[1], r);
        const QPointF b = mix(m_points[1], m_points[2], r);
        const QPointF c = mix(m_points[2], m_points[3], r);
        return mix(mix(a, b, s), mix(b, c, s), t);
    }

    QPointF pointAt(double t) const
    {
        return m_isCurve ? blossom(t, t, t) : m_points[0] + (m_points[3] - m_points[0]) * t;
    }

    double chordLength(int chord) const
    {
        return QLineF(pointAt(double(chord) / chordCount), pointAt(double(chord + 1) / chordCount)).length();
    }

    double parameterAt(double distance) const
    {
        if (distance <= 0 || distance >= m_length)
            return distance <= 0 ? 0 : 1;
        if (!m_isCurve)
            return distance / m_length;
        double passed = 0;
        for (int chord = 0; chord < chordCount; ++chord) {
            const double length = chordLength(chord);
            if (passed + length >= distance)
                return (chord + (distance - passed) / length) / chordCount;
            passed += length;
        }
        return 1;
    }

    std::array<QPointF, 4> m_points;
    double m_length = 0;
    bool m_isCurve = false;
};

struct PlacedSegment {
    Segment segment;
    bool beginsSubpath;
};

std::vector<PlacedSegment> segmentsOf(const QPainterPath& path)
{
    std::vector<PlacedSegment> segments;
    bool begins = true;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            begins = true;
            continue;
        }
        const QPointF from = path.elementAt(i - 1);
        if (element.isCurveTo()) {
            segments.push_back({ { from, element, path.elementAt(i + 1), path.elementAt(i + 2) }, begins });
            i += 2; // the curve's other points
        } else {
            segments.push_back({ { from, element }, begins });
        }
        begins = false;
    }
    return segments;
}

} // namespace

QPainterPath trimmedPath(const QPainterPath& path, double start, double end)
{
    start = std::clamp(start, 0.0, 1.0);
    end = std::clamp(end, 0.0, 1.0);
    if (!(start < end))
        return {};
    if (start == 0 && end == 1)
        return path;
    const std::vector<PlacedSegment> segments = segmentsOf(path);
    double length = 0;
    for (const PlacedSegment& placed : segments)
        length += placed.segment.length();

    QPainterPath trimmed;
    double position = 0;
    bool drawing = false;
    for (const auto& [segment, beginsSubpath] : segments) {
        const double from = start * length - position;
        const double to = end * length - position;
        position += segment.length();
        drawing = drawing && !beginsSubpath;
        if (segment.length() <= 0 || from >= segment.length() || to <= 0)
            continue;
        segment.addPart(trimmed, from, to, !drawing);
        drawing = true;
    }
    return trimmed;
}
