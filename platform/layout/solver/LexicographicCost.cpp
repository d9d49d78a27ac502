#include "platform/layout/solver/LexicographicCost.h"

#include <cstddef>

namespace {

constexpr double same = 1e-9;

int sign(double value) { return value > same ? 1 : value < -same ? -1 : 0; }

} // namespace

int compareCosts(std::span<const double> first, std::span<const double> second)
{
    for (std::size_t level = 0; level < first.size(); ++level)
        if (const int result = sign(first[level] - second[level]))
            return result;
    return 0;
}

int signOfCost(std::span<const double> cost)
{
    for (const double part : cost)
        if (const int result = sign(part))
            return result;
    return 0;
}
