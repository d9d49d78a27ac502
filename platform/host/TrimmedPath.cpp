#include "platform/host/TrimmedPath.h"

#include "platform/host/MeasuredPath.h"

QPainterPath trimmedPath(const QPainterPath& path, double start, double end)
{
    const PathPart part { start, end };
    const bool isOutside = !(start < 1) || !(end > 0);
    if (part.isEmpty() || isOutside)
        return {};
    return part.isWhole() ? path : MeasuredPath(path).cut(part);
}
