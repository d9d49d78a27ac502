// Brings symbols that have left their sides back, or lets weaker ones cross over, whichever costs less.
//
// This is the method for a vertex that was the best one before a constraint was added or changed: it stays
// the best for what it fulfils, and each step fulfils one more. Where the vertex is not the best one, the
// costs do not count and it only finds what the required constraints allow.
#pragma once

#include "platform/layout/solver/SolverVertex.h"

class DualSimplex {
public:
    using Index = SolverVertex::Index;

    // Makes the required symbols keep to their sides. Answers the one that cannot because of the symbols
    // outside the basis that are in its row, SolverVertex::none when all do.
    Index fulfilRequired(SolverVertex&);
    // The same for all symbols. Only for the best vertex.
    Index fulfilAll(SolverVertex&);
    // Gives the row of a required equation, whose value is 0 already, to a column that may move, so that the
    // equation holds from then on without a row. Moves nothing and keeps a best vertex the best.
    void leaveBasis(SolverVertex&, Index equation);

private:
    // After so many steps without an end, the order of the symbols decides, which cannot go in circles.
    static constexpr Index patience = 64;

    void start(SolverVertex&);
    Index takeSuspect(SolverVertex&, std::vector<Index>&) const;
    bool step(SolverVertex&, Index symbol);
    Index cheapestColumn(SolverVertex&, Index row, int direction);
    Index largestColumn(SolverVertex&, Index row, int direction) const;
    bool crossOver(SolverVertex&, Index symbol, bool hasColumn);
    bool isWornOut(const SolverVertex&) const;
    int compareTies(const SolverVertex&, Index column, double size, Index other, double otherSize) const;

    std::vector<double> m_cost;
    std::vector<double> m_cheapest;
    Index m_steps = 0;
};
