// Required equations that follow from others: they hold, they are named, and they cost no row.
#include "platform/layout/solver/ConstraintSolver.h"

#include <gmock/gmock.h>

namespace {

using Variable = ConstraintSolver::Variable;
using Constraint = ConstraintSolver::Constraint;
using Relation = ConstraintSolver::Relation;
using Terms = std::vector<ConstraintSolver::Term>;
using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

class ConstraintSolverRedundancyTest : public testing::Test {
protected:
    Constraint equation(const Terms& terms, double sum, double priority = 1000)
    {
        return solver.addConstraint(terms, -sum, Relation::Equal, priority);
    }
    Constraint equal(Variable variable, double number, double priority = 1000)
    {
        return equation({ { variable, 1 } }, number, priority);
    }
    std::vector<Constraint> equalTimes(int count, Variable variable, double number)
    {
        std::vector<Constraint> result;
        for (int time = 0; time < count; ++time)
            result.push_back(equal(variable, number));
        return result;
    }
    double solved(Variable variable)
    {
        EXPECT_TRUE(solver.solve());
        return solver.value(variable);
    }
    qsizetype rowCount()
    {
        EXPECT_TRUE(solver.solve());
        return solver.description().count(QStringLiteral("\nrow "));
    }

    ConstraintSolver solver;
    Variable x = solver.addVariable();
    Variable y = solver.addVariable();
    Variable z = solver.addVariable();
};

} // namespace

TEST_F(ConstraintSolverRedundancyTest, TheSameEquationAThousandTimesHasOneRow)
{
    equal(x, 44);
    const auto rows = rowCount();
    equalTimes(1000, x, 44);
    EXPECT_EQ(rowCount(), rows);
    EXPECT_EQ(solver.constraintCount(), 1001u);
    EXPECT_EQ(solver.value(x), 44);
}

TEST_F(ConstraintSolverRedundancyTest, AWeakerWishThatCameFirstDoesNotMakeThemMore)
{
    equal(x, 44, 500);
    equal(x, 50, 400);
    equal(x, 44);
    const auto rows = rowCount();
    equalTimes(1000, x, 44);
    EXPECT_EQ(rowCount(), rows);
    EXPECT_EQ(solver.value(x), 44);
}

TEST_F(ConstraintSolverRedundancyTest, InequalitiesThatAreTightAlreadyDoNotMakeThemMore)
{
    solver.addConstraint(Terms { { x, 1 } }, -44, Relation::GreaterThanOrEqual);
    solver.addConstraint(Terms { { x, 1 } }, -44, Relation::LessThanOrEqual);
    equal(x, 44);
    const auto rows = rowCount();
    equalTimes(1000, x, 44);
    EXPECT_EQ(rowCount(), rows);
    EXPECT_EQ(solver.value(x), 44);
}

TEST_F(ConstraintSolverRedundancyTest, ASumOfOtherEquationsNeedsNoRow)
{
    equal(x, 4);
    equation({ { y, 1 }, { x, -2 } }, 1);
    const auto rows = rowCount();
    EXPECT_NE(equation({ { x, 1 }, { y, 1 } }, 13), Constraint::None);
    EXPECT_NE(equation({ { x, 5 }, { y, -1 } }, 11), Constraint::None);
    EXPECT_NE(equation({}, 0), Constraint::None);
    EXPECT_EQ(rowCount(), rows);
    EXPECT_EQ(equation({ { x, 1 }, { y, 1 } }, 14), Constraint::None);
}

TEST_F(ConstraintSolverRedundancyTest, WhicheverOfEqualEquationsGoesTheOthersHold)
{
    for (std::size_t first = 0; first < 4; ++first)
        for (std::size_t second = 0; second < 3; ++second) {
            auto equations = equalTimes(4, x, 44);
            const auto wish = equal(x, 9, 500);
            const auto tie = equation({ { y, 1 }, { x, -1 } }, 1);
            for (const std::size_t place : { first, second, std::size_t(0), std::size_t(0) }) {
                EXPECT_EQ(solved(x), 44);
                EXPECT_EQ(solver.value(y), 45);
                solver.removeConstraint(equations[place]);
                equations.erase(equations.begin() + std::ptrdiff_t(place));
            }
            EXPECT_EQ(solved(x), 9);
            EXPECT_EQ(solver.value(y), 10);
            solver.removeConstraint(wish);
            solver.removeConstraint(tie);
        }
    EXPECT_EQ(solver.constraintCount(), 0u);
}

TEST_F(ConstraintSolverRedundancyTest, AnEquationThatFollowedTakesThePlaceOfOneThatGoes)
{
    const auto first = equal(x, 4);
    const auto second = equal(y, 6);
    equation({ { x, 1 }, { y, 1 } }, 10);
    equal(x, 0, 500);
    equal(y, 0, 400);
    solver.removeConstraint(first);
    EXPECT_EQ(solved(x), 4);
    EXPECT_EQ(solver.value(y), 6);
    EXPECT_EQ(equal(x, 5), Constraint::None);
    solver.removeConstraint(second);
    EXPECT_EQ(solved(x), 0);
    EXPECT_EQ(solver.value(y), 10);
}

TEST_F(ConstraintSolverRedundancyTest, AContradictionNamesOneOfEqualEquationsAndNoMore)
{
    const auto equations = equalTimes(3, x, 44);
    EXPECT_EQ(equal(x, 45), Constraint::None);
    ASSERT_EQ(solver.conflict().size(), 1u);
    EXPECT_THAT(equations, IsSupersetOf(solver.conflict()));
    EXPECT_EQ(solved(x), 44);
}

TEST_F(ConstraintSolverRedundancyTest, AnEquationThatParticipatesInNoneIsNotNamed)
{
    equal(z, 3);
    const auto first = equal(x, 4);
    const auto second = equal(y, 6);
    const auto sum = equation({ { x, 1 }, { y, 1 } }, 10);
    ASSERT_TRUE(solver.solve());
    EXPECT_FALSE(solver.setConstant(sum, -11));
    EXPECT_THAT(solver.conflict(), UnorderedElementsAre(first, second, sum));
    EXPECT_FALSE(solver.solve());
    EXPECT_TRUE(solver.setConstant(second, -7));
    EXPECT_EQ(solved(y), 7);
    EXPECT_EQ(solver.value(x), 4);
}

TEST_F(ConstraintSolverRedundancyTest, EqualEquationsThatDifferInTheirNewConstantsContradictEachOther)
{
    const auto equations = equalTimes(3, x, 44);
    ASSERT_EQ(solved(x), 44);
    EXPECT_FALSE(solver.setConstant(equations[0], -50));
    EXPECT_EQ(solver.conflict().size(), 2u);
    EXPECT_THAT(equations, IsSupersetOf(solver.conflict()));
    EXPECT_FALSE(solver.setConstant(equations[1], -50));
    EXPECT_EQ(solver.value(x), 44);
    EXPECT_TRUE(solver.setConstant(equations[2], -50));
    EXPECT_EQ(solved(x), 50);
}

TEST_F(ConstraintSolverRedundancyTest, AContradictionEndsWithTheOneThatIsTakenOut)
{
    for (std::size_t place = 0; place < 2; ++place) {
        const auto equations = equalTimes(2, x, 44);
        ASSERT_EQ(solved(x), 44);
        ASSERT_FALSE(solver.setConstant(equations[0], -50));
        solver.removeConstraint(equations[place]);
        EXPECT_EQ(solved(x), place == 0 ? 44 : 50);
        solver.removeConstraint(equations[1 - place]);
    }
}

TEST_F(ConstraintSolverRedundancyTest, WhatIsStatedWhileAContradictionStandsHasNoRowAfterwards)
{
    const auto low = solver.addConstraint(Terms { { z, 1 } }, -10, Relation::GreaterThanOrEqual);
    solver.addConstraint(Terms { { z, 1 } }, -20, Relation::LessThanOrEqual);
    equal(x, 44, 500);
    equal(x, 44);
    const auto rows = rowCount();
    ASSERT_FALSE(solver.setConstant(low, -30));
    equalTimes(100, x, 44);
    ASSERT_TRUE(solver.setConstant(low, -10));
    EXPECT_EQ(rowCount(), rows);
    EXPECT_EQ(solver.value(x), 44);
}

TEST_F(ConstraintSolverRedundancyTest, ARefusedConstraintLeavesThemInForce)
{
    const auto equations = equalTimes(3, x, 44);
    solver.addConstraint(Terms { { y, 1 }, { x, 1 } }, -100, Relation::LessThanOrEqual);
    equal(y, 0, 500);
    ASSERT_TRUE(solver.solve());
    const auto rows = rowCount();
    EXPECT_EQ(solver.addConstraint(Terms { { y, 1 }, { x, 1 } }, -101, Relation::GreaterThanOrEqual),
        Constraint::None);
    EXPECT_EQ(rowCount(), rows);
    solver.removeConstraint(equations[0]);
    solver.removeConstraint(equations[1]);
    EXPECT_EQ(solved(x), 44);
}

TEST_F(ConstraintSolverRedundancyTest, AVariableCanGoWithAllEquationsOverIt)
{
    for (const auto constraint : equalTimes(3, x, 44))
        solver.removeConstraint(constraint);
    solver.removeVariable(x);
    EXPECT_EQ(solver.variableCount(), 2u);
    equal(y, 7);
    EXPECT_EQ(solved(y), 7);
}

TEST_F(ConstraintSolverRedundancyTest, ThePrintedSolverTellsWhatTheyFollowFrom)
{
    equal(x, 4);
    equal(y, 6);
    equation({ { x, 1 }, { y, 2 } }, 16);
    ASSERT_TRUE(solver.solve());
    EXPECT_TRUE(solver.description().contains(QStringLiteral("\nc6: v1 + 2 v2 - 16 = 0, by c4 + 2 c5")))
        << solver.description().toStdString();
}
