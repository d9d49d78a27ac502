// Problems on which the simplex methods would go round for ever, if they kept on choosing the column that
// gains most and the row that is farthest out. Bland's rule, the smallest index, ends them.
#include "platform/layout/solver/ConstraintSolver.h"
#include "tests/platform/layout/solver/ReferenceSolver.h"

#include <gtest/gtest.h>

namespace {

class ConstraintSolverCyclingTest : public testing::Test {
protected:
    using Relation = ConstraintSolver::Relation;
    using Coefficients = std::vector<double>; // of all variables, in order

    ConstraintSolver::Constraint add(
        const Coefficients& coefficients, double constant, Relation relation, double priority = 1000)
    {
        std::vector<ConstraintSolver::Term> terms;
        ReferenceSolver::Constraint statement { {}, constant, static_cast<int>(relation), priority };
        for (std::size_t index = 0; index < coefficients.size(); ++index)
            if (coefficients[index] != 0) {
                terms.push_back({ variables[index], coefficients[index] });
                statement.terms.emplace_back(index, coefficients[index]);
            }
        stated.push_back(statement);
        return solver.addConstraint(terms, constant, relation, priority);
    }
    static Coefficients only(std::size_t variable, double coefficient)
    {
        Coefficients result(4);
        result[variable] = coefficient;
        return result;
    }
    void expectBest()
    {
        ASSERT_TRUE(solver.solve());
        const ReferenceSolver reference(variables.size(), stated);
        ASSERT_TRUE(reference.isFeasible());
        std::vector<double> values;
        for (const auto variable : variables)
            values.push_back(solver.value(variable));
        const auto errors = ReferenceSolver::errorsOf(stated, values);
        ASSERT_EQ(errors.size(), reference.errors().size());
        for (std::size_t level = 0; level < errors.size(); ++level)
            EXPECT_NEAR(errors[level], reference.errors()[level], 1e-6) << "level " << level;
    }

    ConstraintSolver solver;
    std::vector<ConstraintSolver::Variable> variables { solver.addVariable(), solver.addVariable(),
        solver.addVariable(), solver.addVariable() };
    std::vector<ReferenceSolver::Constraint> stated;
};

} // namespace

TEST_F(ConstraintSolverCyclingTest, ThePrimalMethodLeavesACornerInWhichAllConstraintsMeet)
{
    const double scales[] { 1, 1, 0.1, 1 };
    for (std::size_t index = 0; index < 4; ++index)
        add(only(index, scales[index]), 0, Relation::GreaterThanOrEqual);
    add({ 80, 10, -5, 60 }, 0, Relation::GreaterThanOrEqual);
    add({ -1, -8, 0.3, 8 }, 0, Relation::GreaterThanOrEqual);
    add({ -14, 6, 0, 12 }, 0, Relation::GreaterThanOrEqual);
    std::vector<ConstraintSolver::Constraint> pins;
    for (std::size_t index = 0; index < 4; ++index)
        pins.push_back(add(only(index, 1), 0, Relation::Equal));
    stated.resize(stated.size() - pins.size());
    add({ 5, 4, 0.3, -4 }, 10'000, Relation::LessThanOrEqual, 500);
    ASSERT_TRUE(solver.solve());
    for (const auto pin : pins)
        solver.removeConstraint(pin);
    expectBest();
}

TEST_F(ConstraintSolverCyclingTest, TheDualMethodFindsWhatTheConstraintsAllow)
{
    for (std::size_t index = 0; index < 4; ++index)
        add(only(index, 1), 0, Relation::GreaterThanOrEqual);
    const Coefficients rows[] { { -5, 4, 9, 3 }, { 2, -7, 9, 4 }, { 7, 2, 8, -2 }, { -7, -7, 5, 0 } };
    std::vector<ConstraintSolver::Constraint> constraints;
    for (const Coefficients& row : rows)
        constraints.push_back(add(row, 1000, Relation::GreaterThanOrEqual));
    ASSERT_TRUE(solver.solve());
    const double constants[] { -2, -4, -2, -8 };
    for (std::size_t index = 0; index < 4; ++index) {
        EXPECT_TRUE(solver.setConstant(constraints[index], constants[index]))
            << "the third one could be large";
        stated[4 + index].constant = constants[index];
    }
    expectBest();
}
