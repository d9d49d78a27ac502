// Walks from a vertex that the required constraints allow to the one where the weaker ones cost least.
//
// This is the method after a constraint was removed. Each step moves one symbol as long as the costs fall:
// past the corners of weaker constraints, up to a required one at most.
#pragma once

#include "platform/layout/solver/SolverVertex.h"

class PrimalSimplex {
public:
    using Index = SolverVertex::Index;

    // Ends at a vertex that is allowed in any case, and the best one unless it has to walk absurdly far.
    void optimise(SolverVertex&);

private:
    struct Corner {
        double distance; // how far the column's symbol moves until the row's one is 0
        double rate; // of the row's symbol
        Index symbol;
    };
    // After so many steps in one place, the order of the symbols decides, which cannot go in circles.
    static constexpr Index patience = 32;

    void acceptSides(SolverVertex&);
    bool step(SolverVertex&);
    void chooseColumn(SolverVertex&);
    void considerColumn(const SolverVertex&, Index column, int direction);
    void collectCorners(SolverVertex&);
    bool isBefore(const Corner&, const Corner&) const;
    bool stopsAt(const SolverVertex&, const Corner&);

    std::vector<double> m_cost;
    std::vector<double> m_best; // of the chosen column
    std::vector<Corner> m_corners;
    Index m_column = SolverVertex::noColumn;
    int m_direction = 1;
    Index m_stepsInPlace = 0;
};
