// What a move costs, by level of priority: the first level that differs decides, however little it is. So the
// paper's symbolic weights are compared.
#pragma once

#include <span>

// Below 0 when the first is cheaper, 0 when they cost the same, above 0 otherwise.
int compareCosts(std::span<const double> first, std::span<const double> second);
// The same against a cost of nothing.
int signOfCost(std::span<const double> cost);
