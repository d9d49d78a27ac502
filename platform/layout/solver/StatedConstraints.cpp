#include "platform/layout/solver/StatedConstraints.h"

#include "platform/layout/solver/Tableau.h"

#include <algorithm>

// A removed constraint's room waits for the next one of its number; too small, it is given up.
void StatedConstraints::makeTermRoom(Constraint& constraint, Index count)
{
    if (constraint.termCapacity >= count)
        return;
    m_wasted += constraint.termCapacity;
    constraint.termCapacity = 0;
    if (m_wasted > m_terms.size() / 2 + 64)
        compact();
    constraint.firstTerm = Index(m_terms.size());
    constraint.termCapacity = count;
    m_terms.resize(m_terms.size() + count);
}

void StatedConstraints::compact()
{
    std::vector<Term> kept;
    kept.reserve(m_terms.size() - m_wasted);
    for (Constraint& constraint : m_constraints) {
        const auto first = m_terms.begin() + constraint.firstTerm;
        constraint.firstTerm = Index(kept.size());
        kept.insert(kept.end(), first, first + constraint.termCapacity);
    }
    m_terms.swap(kept);
    m_wasted = 0;
}

void StatedConstraints::add(
    Index variable, std::span<const Term> terms, double constant, double priority, int sign)
{
    Constraint& constraint = m_constraints[variable];
    makeTermRoom(constraint, Index(terms.size()));
    constraint.termCount = Index(terms.size());
    constraint.constant = constant;
    constraint.priority = priority;
    constraint.sign = sign;
    Term* kept = m_terms.data() + constraint.firstTerm;
    for (const Term& term : terms)
        *kept++ = term;
}

// A variable whose coefficients cancel each other is not.
bool StatedConstraints::isMentioned(Index variable) const
{
    const auto mentions = [&](const Constraint& constraint) {
        double coefficient = 0;
        for (Index place = 0; place < constraint.termCount; ++place)
            if (m_terms[constraint.firstTerm + place].variable == variable)
                coefficient += m_terms[constraint.firstTerm + place].coefficient;
        return std::abs(coefficient) >= Tableau::tiny;
    };
    return std::any_of(m_constraints.begin(), m_constraints.end(), mentions);
}
