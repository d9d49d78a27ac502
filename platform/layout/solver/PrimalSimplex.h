// The primal simplex method: makes a feasible solved form optimal after a constraint was removed.
//
// Each step moves one parametric variable as long as the costs fall: past the corners of weaker constraints,
// up to a required one at most. It enters the basis for the one at whose corner it stops.
#pragma once

#include "platform/layout/solver/SolvedForm.h"

class PrimalSimplex {
public:
    using Index = SolvedForm::Index;

    // The form stays feasible, and is optimal in the end unless the limit of steps is reached before.
    void optimise(SolvedForm&);

private:
    struct Corner {
        double distance; // how far the column's variable moves until the row's one is 0
        double rate; // of the row's variable
        Index variable;
    };
    // After so many steps in one place the smallest index decides, which cannot go in circles (Bland's rule).
    static constexpr Index stepsBeforeBlandsRule = 32;

    void acceptSides(SolvedForm&);
    bool step(SolvedForm&);
    void chooseColumn(SolvedForm&);
    void considerColumn(const SolvedForm&, Index column, int direction);
    void collectCorners(SolvedForm&);
    bool isBefore(const Corner&, const Corner&) const;
    bool stopsAt(const SolvedForm&, const Corner&);

    std::vector<double> m_cost;
    std::vector<double> m_best; // of the chosen column
    std::vector<Corner> m_corners;
    Index m_column = SolvedForm::noColumn;
    int m_direction = 1;
    Index m_stepsInPlace = 0;
};
