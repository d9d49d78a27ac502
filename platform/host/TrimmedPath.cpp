#include "platform/host/TrimmedPath.h"

#include <QLineF>
#include <QPolygonF>
#include <QTransform>

#include <algorithm>

namespace {

constexpr double curvePrecision = 8; // a curve is cut as finely as if it were drawn so many times larger

double lengthOf(const QList<QPolygonF>& polygons)
{
    double length = 0;
    for (const QPolygonF& polygon : polygons)
        for (qsizetype i = 1; i < polygon.size(); ++i)
            length += QLineF(polygon[i - 1], polygon[i]).length();
    return length;
}

} // namespace

QPainterPath trimmedPath(const QPainterPath& path, double start, double end, double scale)
{
    start = std::clamp(start, 0.0, 1.0);
    end = std::clamp(end, 0.0, 1.0);
    if (!(start < end))
        return {};
    if (start == 0 && end == 1)
        return path;
    const double precision = scale * curvePrecision;
    const QList<QPolygonF> polygons = path.toSubpathPolygons(QTransform::fromScale(precision, precision));
    const double length = lengthOf(polygons);
    const double from = start * length;
    const double to = end * length;
    QPainterPath trimmed;
    double position = 0;
    for (const QPolygonF& polygon : polygons) {
        bool drawing = false; // each subpath begins anew
        for (qsizetype i = 1; i < polygon.size(); ++i) {
            const QLineF line(polygon[i - 1], polygon[i]);
            const double lineEnd = position + line.length();
            if (line.length() > 0 && lineEnd > from && position < to) {
                const auto pointAt = [&](double distance) {
                    return line.pointAt(std::clamp((distance - position) / line.length(), 0.0, 1.0))
                        / precision;
                };
                if (!drawing)
                    trimmed.moveTo(pointAt(from));
                drawing = true;
                trimmed.lineTo(pointAt(to));
            }
            position = lineEnd;
        }
    }
    return trimmed;
}
