// What the content of an item asks of its size along one axis: not to be larger (hugging) and not to be
// smaller (compression resistance), each with its priority. And what every size asks for: not to turn
// negative.
#pragma once

#include "platform/layout/LayoutTypes.h"
#include "platform/layout/solver/ConstraintSolver.h"

class ContentConstraints {
public:
    struct ContentSize { // along the axis
        double size = 0;
        UILayoutPriority hugging = 0;
        UILayoutPriority compressionResistance = 0;

        bool operator==(const ContentSize&) const = default;
    };

    // Sizes shrink to nothing rather than turn negative, unless something required leaves them no choice.
    void keepFromTurningNegative(ConstraintSolver&, ConstraintSolver::Variable size);

    bool isStated(const ContentSize& content) const
    {
        return m_hugging != Constraint::None && content == m_content;
    }
    // False when the required constraints cannot all hold with it; see ConstraintSolver::setConstant().
    bool state(ConstraintSolver&, ConstraintSolver::Variable size, const ContentSize&);
    // Where the content has no size.
    void removeContentSize(ConstraintSolver&);
    void removeAll(ConstraintSolver&);
    // Takes out one that is in the conflict; false when none is.
    bool removeOneOf(ConstraintSolver&, std::span<const ConstraintSolver::Constraint> conflict);
    // The solver is gone, or the variable.
    void forget() { *this = {}; }

private:
    using Constraint = ConstraintSolver::Constraint;

    static void remove(ConstraintSolver&, Constraint&);

    ContentSize m_content;
    Constraint m_hugging = Constraint::None;
    Constraint m_compressionResistance = Constraint::None;
    Constraint m_notNegative = Constraint::None;
};
