#include "platform/host/MeasuredPath.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

namespace {

constexpr double nextToNothing = 1e-9;
constexpr double nearlyStraight = 0.9999; // cosine of the angle

} // namespace

MeasuredPath::Segment::Segment(const QPointF& from, const QPointF& to, bool beginsSubpath)
    : m_controls { from, from, to, to }
    , m_chordCount(1)
    , m_beginsSubpath(beginsSubpath)
{
    measure();
}

MeasuredPath::Segment::Segment(const QPointF& from, const QPointF& firstControl, const QPointF& secondControl,
    const QPointF& to, bool beginsSubpath)
    : m_controls { from, firstControl, secondControl, to }
    , m_chordCount(mostChords)
    , m_beginsSubpath(beginsSubpath)
{
    measure();
}

void MeasuredPath::Segment::measure()
{
    m_points[0] = m_controls[0];
    for (int chord = 0; chord < m_chordCount; ++chord) {
        const auto end = std::size_t(chord) + 1;
        m_points[end] = pointAt(double(end) / m_chordCount);
        m_distances[end] = m_distances[end - 1] + QLineF(m_points[end - 1], m_points[end]).length();
    }
}

void MeasuredPath::Segment::addPart(QPainterPath& path, double from, double to, bool begins) const
{
    const double first = parameterAt(from);
    const double last = parameterAt(to);
    if (begins)
        path.moveTo(pointAt(first));
    if (m_chordCount == 1) {
        path.lineTo(pointAt(last));
        return;
    }
    // Where it is cut between two pieces, a rounding error leaves nothing of the other.
    const auto after = [](double t) { return (std::floor(t * pieces + nextToNothing) + 1) / pieces; };
    double done = first;
    while (done < last - nextToNothing) {
        const double next = std::min(after(done), last);
        path.cubicTo(blossom(done, done, next), blossom(done, next, next), blossom(next, next, next));
        done = next;
    }
}

CGRect MeasuredPath::Segment::chordRect(int chord) const
{
    return CGRect(m_points[std::size_t(chord)], m_points[std::size_t(chord) + 1]).normalized();
}

double MeasuredPath::Segment::pieceBegin(int chord) const
{
    return m_chordCount > 1 ? distance(chord / chordsInPiece * chordsInPiece) : 0;
}

double MeasuredPath::Segment::pieceEnd(int chord) const
{
    return m_chordCount > 1 ? distance((chord / chordsInPiece + 1) * chordsInPiece) : length();
}

bool MeasuredPath::Segment::goesOnStraightAfter(const Segment& before) const
{
    const QPointF in = before.m_controls[3] - before.m_controls[before.m_chordCount > 1 ? 2 : 0];
    const QPointF out = m_controls[m_chordCount > 1 ? 1 : 3] - m_controls[0];
    const double lengths = std::hypot(in.x(), in.y()) * std::hypot(out.x(), out.y());
    return lengths > 0 && QPointF::dotProduct(in, out) > nearlyStraight * lengths;
}

// The curve's polar form: two equal parameters and one other give the control points of a part.
QPointF MeasuredPath::Segment::blossom(double r, double s, double t) const
{
    const auto mix = [](const QPointF& a, const QPointF& b, double u) { return a + (b - a) * u; };
    const QPointF a = mix(m_controls[0], m_controls[1], r);
    const QPointF b = mix(m_controls[1], m_controls[2], r);
    const QPointF c = mix(m_controls[2], m_controls[3], r);
    return mix(mix(a, b, s), mix(b, c, s), t);
}

QPointF MeasuredPath::Segment::pointAt(double t) const
{
    return m_chordCount > 1 ? blossom(t, t, t) : m_controls[0] + (m_controls[3] - m_controls[0]) * t;
}

double MeasuredPath::Segment::parameterAt(double distance) const
{
    if (distance <= 0 || distance >= length())
        return distance <= 0 ? 0 : 1;
    const auto* const end
        = std::lower_bound(m_distances.begin() + 1, m_distances.begin() + m_chordCount + 1, distance);
    const auto chord = std::size_t(end - m_distances.begin()) - 1;
    const double share = (distance - m_distances[chord]) / (m_distances[chord + 1] - m_distances[chord]);
    return (double(chord) + share) / m_chordCount;
}

MeasuredPath::MeasuredPath(const QPainterPath& path)
    : m_path(path)
{
    bool begins = true;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            begins = true;
            continue;
        }
        const QPointF from = path.elementAt(i - 1);
        if (element.isCurveTo()) {
            m_segments.emplace_back(from, element, path.elementAt(i + 1), path.elementAt(i + 2), begins);
            i += 2; // the curve's other points
        } else {
            m_segments.emplace_back(from, element, begins);
        }
        if (!begins && !m_segments.back().goesOnStraightAfter(m_segments[m_segments.size() - 2]))
            m_hasCorners = true;
        begins = false;
        m_length += m_segments.back().length();
    }
}

QPainterPath MeasuredPath::cut(PathPart part) const
{
    if (part.isEmpty() || part.isWhole())
        return part.isEmpty() ? QPainterPath() : m_path;
    const double start = std::clamp(part.start, 0.0, 1.0) * m_length;
    const double end = std::clamp(part.end, 0.0, 1.0) * m_length;
    QPainterPath path;
    const double nothing = nextToNothing * m_length; // rounding errors, where it is cut between two segments
    double position = 0;
    bool drawing = false;
    for (const Segment& segment : m_segments) {
        const double from = start - position;
        const double to = end - position;
        position += segment.length();
        drawing = drawing && !segment.beginsSubpath();
        if (segment.length() <= 0 || from >= segment.length() - nothing || to <= nothing)
            continue;
        segment.addPart(path, from, to, !drawing);
        drawing = true;
    }
    return path;
}

template <typename Visit> void MeasuredPath::forEachChord(PathPart part, Visit visit) const
{
    const double start = part.start * m_length;
    const double end = part.end * m_length;
    double position = 0;
    for (const Segment& segment : m_segments) {
        if (position <= end && position + segment.length() >= start)
            for (int chord = 0; chord < segment.chordCount(); ++chord) {
                const double from = position + segment.distance(chord);
                const double to = position + segment.distance(chord + 1);
                if (from <= end && to >= start)
                    visit(segment.chordRect(chord), position + segment.pieceBegin(chord),
                        position + segment.pieceEnd(chord));
            }
        position += segment.length();
    }
}

CGRect MeasuredPath::boundingRect(PathPart part) const
{
    // Rectangles of lines along an axis are empty, and would be left out by the type's own union.
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    bool isFirst = true;
    forEachChord(part, [&](const CGRect& rect, double, double) {
        left = isFirst ? rect.left() : std::min(left, rect.left());
        top = isFirst ? rect.top() : std::min(top, rect.top());
        right = isFirst ? rect.right() : std::max(right, rect.right());
        bottom = isFirst ? rect.bottom() : std::max(bottom, rect.bottom());
        isFirst = false;
    });
    return { left, top, right - left, bottom - top };
}

PathPart MeasuredPath::partNear(const CGRect& rect, PathPart part) const
{
    PathPart near { 1, 0 };
    forEachChord(part, [&](const CGRect& chord, double from, double to) {
        const bool meets = chord.left() <= rect.right() && chord.right() >= rect.left()
            && chord.top() <= rect.bottom() && chord.bottom() >= rect.top();
        if (!meets)
            return;
        near.start = std::min(near.start, from / m_length);
        near.end = std::max(near.end, to / m_length);
    });
    return { std::max(near.start, part.start), std::min(near.end, part.end) };
}
