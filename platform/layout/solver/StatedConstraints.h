// The constraints as they were stated, each turned so that its sum is at least 0 or is 0.
//
// What the tableau has become by many pivots can be made anew from them.
#pragma once

#include "platform/layout/solver/SolverVariable.h"

#include <cstddef>
#include <span>
#include <vector>

class StatedConstraints {
public:
    using Index = std::uint32_t;
    struct Term {
        Index variable;
        double coefficient;
    };
    struct Constraint {
        double constant = 0;
        double priority = 0;
        int sign = 1; // -1 when it was turned
        Index firstTerm = 0;
        Index termCount = 0;
        Index termCapacity = 0;
    };

    void makeRoom(std::size_t variables) { m_constraints.resize(variables); }
    void reserveTerms(std::size_t count) { m_terms.reserve(count); }
    // There must be room for all variables that are named.
    void add(Index variable, std::span<const Term>, double constant, double priority, int sign);
    void remove(Index variable) { m_constraints[variable].termCount = 0; }

    const Constraint& operator[](Index variable) const { return m_constraints[variable]; }
    // By how much the constant, which is given as it was stated, has grown.
    double changeConstant(Index variable, double constant)
    {
        Constraint& constraint = m_constraints[variable];
        const double before = constraint.constant;
        constraint.constant = constraint.sign * constant;
        return constraint.constant - before;
    }
    std::span<const Term> terms(Index variable) const
    {
        return { m_terms.data() + m_constraints[variable].firstTerm, m_constraints[variable].termCount };
    }
    bool isMentioned(Index variable) const; // looks through all of them

private:
    void makeTermRoom(Constraint&, Index count);
    void compact();

    std::vector<Constraint> m_constraints; // by marker; an external variable has no terms
    std::vector<Term> m_terms;
    std::size_t m_wasted = 0; // terms in rooms that were given up
};
