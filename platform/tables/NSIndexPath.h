// Names a row of a table.
#pragma once

#include <compare>

struct NSIndexPath {
    int section = 0;
    int row = 0;

    auto operator<=>(const NSIndexPath&) const = default;
};
