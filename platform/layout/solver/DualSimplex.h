// The dual simplex method: makes an optimal solved form feasible again after a constraint was added or
// changed.
//
// Each step takes an infeasible basic variable and pivots it out of the basis, for the parametric one that
// costs least; a weaker constraint may stay violated instead where that costs less. Where the form is not
// optimal, the costs do not count and it only finds what the required constraints allow.
#pragma once

#include "platform/layout/solver/SolvedForm.h"

class DualSimplex {
public:
    using Index = SolvedForm::Index;

    // Makes the markers of required constraints feasible. Answers the one that cannot be because of the
    // parametric variables in its row, SolvedForm::none when all are.
    Index fulfilRequired(SolvedForm&);
    // The same for all markers. Only for an optimal form.
    Index fulfilAll(SolvedForm&);
    // Gives the row of a required equation, whose value is 0 already, to a column that may move, so that the
    // equation holds from then on without a row. Moves nothing and keeps an optimal form optimal.
    void leaveBasis(SolvedForm&, Index equation);

private:
    // From then on the smallest index decides, which cannot go in circles (Bland's rule).
    static constexpr Index stepsBeforeBlandsRule = 64;

    void start(SolvedForm&);
    Index takeInfeasible(SolvedForm&, std::vector<Index>&) const;
    bool step(SolvedForm&, Index variable);
    Index cheapestColumn(SolvedForm&, Index row, int direction);
    Index largestColumn(SolvedForm&, Index row, int direction) const;
    bool crossOver(SolvedForm&, Index variable, bool hasColumn);
    bool exceedsStepLimit(const SolvedForm&) const;
    int compareTies(const SolvedForm&, Index column, double size, Index other, double otherSize) const;

    std::vector<double> m_cost;
    std::vector<double> m_cheapest;
    Index m_steps = 0;
};
