// A part of a path, cut out by fractions of its length.
#pragma once

#include <QPainterPath>

// The part from one fraction of the path's whole length to another, all its subpaths taken in turn.
// Fractions outside 0 to 1 mean the ends; the whole path comes back as it is. Curves stay curves.
QPainterPath trimmedPath(const QPainterPath& path, double start, double end);
