#include "platform/layout/solver/ConstraintSolver.h"

#include "tests/support/AssertionRecorder.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using Variable = ConstraintSolver::Variable;
using Constraint = ConstraintSolver::Constraint;
using Relation = ConstraintSolver::Relation;
using Terms = std::vector<ConstraintSolver::Term>;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

class ConstraintSolverTest : public testing::Test {
protected:
    Constraint add(const Terms& terms, double constant, Relation relation, double priority = 1000)
    {
        return solver.addConstraint(terms, constant, relation, priority);
    }
    // The variable compared with a number.
    Constraint equal(Variable variable, double number, double priority = 1000)
    {
        return add({ { variable, 1 } }, -number, Relation::Equal, priority);
    }
    Constraint atLeast(Variable variable, double number, double priority = 1000)
    {
        return add({ { variable, 1 } }, -number, Relation::GreaterThanOrEqual, priority);
    }
    Constraint atMost(Variable variable, double number, double priority = 1000)
    {
        return add({ { variable, 1 } }, -number, Relation::LessThanOrEqual, priority);
    }
    double solved(Variable variable)
    {
        EXPECT_TRUE(solver.solve());
        return solver.value(variable);
    }
    std::vector<Variable> changed() const
    {
        const auto variables = solver.changedVariables();
        return { variables.begin(), variables.end() };
    }
    std::vector<NSString> messages() const { return recorder.messages(); }
    static NSString invalid(const char* condition)
    {
        return QStringLiteral("Invalid parameter not satisfying: ") + QLatin1String(condition);
    }

    AssertionRecorder recorder;
    ConstraintSolver solver;
    Variable x = solver.addVariable();
    Variable y = solver.addVariable();
    Variable z = solver.addVariable();
};

} // namespace

TEST_F(ConstraintSolverTest, AVariableIsZeroUntilItIsConstrained)
{
    EXPECT_EQ(solver.value(x), 0);
    EXPECT_EQ(solved(x), 0);
    equal(x, 7);
    EXPECT_EQ(solver.value(x), 0);
    EXPECT_EQ(solved(x), 7);
}

TEST_F(ConstraintSolverTest, AVariableMayBeNegative)
{
    equal(x, -12.5);
    EXPECT_EQ(solved(x), -12.5);
}

TEST_F(ConstraintSolverTest, EqualitiesFollowEachOtherThroughAChain)
{
    add({ { y, 1 }, { x, -1 } }, -8, Relation::Equal);
    add({ { z, 1 }, { y, -0.5 } }, 0, Relation::Equal);
    const auto pin = equal(x, 10);
    EXPECT_EQ(solved(z), 9);
    EXPECT_TRUE(solver.setConstant(pin, -20));
    EXPECT_EQ(solved(z), 14);
    EXPECT_EQ(solver.value(y), 28);
}

TEST_F(ConstraintSolverTest, InequalitiesPushThroughAChain)
{
    add({ { y, 1 }, { x, -1 } }, -10, Relation::GreaterThanOrEqual);
    add({ { z, 1 }, { y, -1 } }, -10, Relation::GreaterThanOrEqual);
    equal(x, 0, 500);
    equal(y, 0, 400);
    const auto last = equal(z, 0, 300);
    EXPECT_EQ(solved(x), 0);
    EXPECT_EQ(solver.value(y), 10);
    EXPECT_EQ(solver.value(z), 20);
    solver.setConstant(last, -35);
    EXPECT_EQ(solved(x), 0);
    EXPECT_EQ(solver.value(y), 10);
    EXPECT_EQ(solver.value(z), 35);
}

TEST_F(ConstraintSolverTest, AStrongerConstraintAtTheEndOfAChainPushesBack)
{
    add({ { y, 1 }, { x, -1 } }, -10, Relation::GreaterThanOrEqual);
    add({ { z, 1 }, { y, -1 } }, -10, Relation::GreaterThanOrEqual);
    equal(x, 0, 300);
    equal(z, 15, 600);
    EXPECT_EQ(solved(z), 15);
    EXPECT_EQ(solver.value(x), -5);
    EXPECT_EQ(solver.value(y), 5);
}

TEST_F(ConstraintSolverTest, ASingleConstraintOutweighsAnyNumberOfWeakerOnes)
{
    equal(x, 1, 251);
    for (int count = 0; count < 200; ++count)
        equal(x, 1000, 250);
    EXPECT_EQ(solved(x), 1);
}

TEST_F(ConstraintSolverTest, WithinOnePriorityTheSumOfTheErrorsIsLeast)
{
    equal(x, 0, 500);
    equal(x, 10, 500);
    equal(x, 100, 500);
    EXPECT_EQ(solved(x), 10);
}

TEST_F(ConstraintSolverTest, WithinOnePriorityTwoOutweighOneAndLargerCoefficientsOutweighSmallerOnes)
{
    equal(x, 0, 500);
    atLeast(x, 10, 500);
    atLeast(x, 10, 500);
    EXPECT_EQ(solved(x), 10);
    add({ { y, 3 } }, 0, Relation::Equal, 500);
    equal(y, 10, 500);
    EXPECT_EQ(solved(y), 0);
}

TEST_F(ConstraintSolverTest, AWeakInequalityCostsNothingOnItsOwnSide)
{
    atLeast(x, 10, 700);
    const auto wish = equal(x, 30, 100);
    EXPECT_EQ(solved(x), 30);
    solver.setConstant(wish, -3);
    EXPECT_EQ(solved(x), 10);
}

TEST_F(ConstraintSolverTest, ASqueezedLabelGivesWayBeforeAResistingOne)
{
    // Two labels side by side in 100 points, wishing for 80 each.
    add({ { x, 1 }, { y, 1 } }, -100, Relation::Equal);
    atLeast(x, 80, 750);
    atLeast(y, 80, 100);
    EXPECT_EQ(solved(x), 80);
    EXPECT_EQ(solver.value(y), 20);
}

TEST_F(ConstraintSolverTest, WhenAConstraintGoesTheWeakerOnesTakeOver)
{
    const auto strong = equal(x, 5, 900);
    equal(x, 50, 10);
    EXPECT_EQ(solved(x), 5);
    solver.removeConstraint(strong);
    EXPECT_EQ(solved(x), 50);
    EXPECT_EQ(solver.constraintCount(), 1u);
}

TEST_F(ConstraintSolverTest, ARequiredConstraintThatContradictsIsRefusedAndTheOthersAreNamed)
{
    const auto first = equal(x, 1);
    const auto second = add({ { y, 1 }, { x, -1 } }, 0, Relation::Equal);
    equal(z, 3);
    ASSERT_TRUE(solver.solve());
    EXPECT_EQ(equal(y, 2), Constraint::None);
    EXPECT_THAT(solver.conflict(), UnorderedElementsAre(first, second));
    EXPECT_EQ(solver.constraintCount(), 3u);
    solver.clearChanges();
    EXPECT_EQ(solved(y), 1);
    EXPECT_THAT(changed(), IsEmpty());
}

TEST_F(ConstraintSolverTest, AContradictionOfInequalitiesNamesOnlyThoseThatMeet)
{
    const auto low = atLeast(x, 10);
    atLeast(y, 10);
    atMost(x, 50);
    EXPECT_EQ(atMost(x, 9), Constraint::None);
    EXPECT_THAT(solver.conflict(), ElementsAre(low));
    EXPECT_NE(atMost(x, 11), Constraint::None);
    EXPECT_GE(solved(x), 10);
    EXPECT_LE(solver.value(x), 11);
}

TEST_F(ConstraintSolverTest, ARefusedConstraintLeavesWhatIsOpenWhereItWas)
{
    // y may be anywhere between 10 and 20 for all that is asked.
    atLeast(y, 10);
    atMost(y, 20);
    add({ { x, 1 }, { y, 1 } }, -100, Relation::Equal);
    const double before = solved(y);
    EXPECT_EQ(add({ { x, 1 }, { y, 1 } }, -130, Relation::GreaterThanOrEqual), Constraint::None);
    EXPECT_EQ(solved(y), before);
    EXPECT_EQ(atMost(x, 79), Constraint::None);
    EXPECT_EQ(solved(y), before);
    EXPECT_NE(atMost(x, 80), Constraint::None);
    EXPECT_EQ(solved(y), 20);
}

TEST_F(ConstraintSolverTest, ARedundantRequiredConstraintIsWelcome)
{
    equal(x, 4);
    equal(y, 6);
    EXPECT_NE(add({ { x, 1 }, { y, 1 } }, -10, Relation::Equal), Constraint::None);
    EXPECT_EQ(solved(x), 4);
}

TEST_F(ConstraintSolverTest, ARedundantConstraintHoldsWhenTheOtherOneGoes)
{
    const auto first = equal(x, 4);
    equal(x, 4);
    equal(x, 9, 500);
    solver.removeConstraint(first);
    EXPECT_EQ(solved(x), 4);
}

TEST_F(ConstraintSolverTest, AConstantThatContradictsLeavesTheLastValuesAndNamesTheConflict)
{
    const auto low = atLeast(x, 10);
    const auto high = atMost(x, 20);
    atLeast(y, 5);
    equal(x, 12, 500);
    ASSERT_EQ(solved(x), 12);
    EXPECT_FALSE(solver.setConstant(low, -30));
    EXPECT_THAT(solver.conflict(), UnorderedElementsAre(low, high));
    EXPECT_FALSE(solver.solve());
    EXPECT_EQ(solver.value(x), 12);
}

TEST_F(ConstraintSolverTest, AConstantThatGoesBackEndsTheConflict)
{
    const auto low = atLeast(x, 10);
    atMost(x, 20);
    equal(x, 12, 500);
    ASSERT_TRUE(solver.solve());
    ASSERT_FALSE(solver.setConstant(low, -30));
    EXPECT_TRUE(solver.setConstant(low, -15));
    EXPECT_EQ(solved(x), 15);
}

TEST_F(ConstraintSolverTest, TakingOutAnyOneOfTheConflictEndsIt)
{
    for (std::size_t place = 0; place < 3; ++place) {
        ConstraintSolver other;
        const auto a = other.addVariable();
        const auto b = other.addVariable();
        const auto relation = Relation::GreaterThanOrEqual;
        other.addConstraint(Terms { { a, 1 } }, -10, relation);
        other.addConstraint(Terms { { b, 1 }, { a, -1 } }, -10, relation);
        const auto last = other.addConstraint(Terms { { b, -1 } }, 30, relation);
        ASSERT_TRUE(other.solve());
        ASSERT_FALSE(other.setConstant(last, 15));
        ASSERT_EQ(other.conflict().size(), 3u);
        other.removeConstraint(other.conflict()[place]);
        EXPECT_TRUE(other.solve());
        EXPECT_EQ(other.constraintCount(), 2u);
    }
}

TEST_F(ConstraintSolverTest, WhileAConflictStandsNothingIsRefused)
{
    const auto first = equal(x, 1);
    const auto second = add({ { x, 1 }, { y, -1 } }, 0, Relation::Equal);
    const auto third = equal(y, 1);
    ASSERT_TRUE(solver.solve());
    ASSERT_FALSE(solver.setConstant(third, -2));
    EXPECT_NE(equal(z, 3), Constraint::None);
    EXPECT_FALSE(solver.solve());
    EXPECT_THAT(solver.conflict(), UnorderedElementsAre(first, second, third));
    solver.removeConstraint(second);
    EXPECT_EQ(solved(x), 1);
    EXPECT_EQ(solver.value(y), 2);
    EXPECT_EQ(solver.value(z), 3);
    EXPECT_EQ(equal(z, 4), Constraint::None);
}

TEST_F(ConstraintSolverTest, ChangedVariablesAreNamedOnceUntilTheyAreCleared)
{
    const auto pin = equal(x, 1);
    equal(y, 2);
    ASSERT_TRUE(solver.solve());
    EXPECT_THAT(changed(), UnorderedElementsAre(x, y));
    solver.setConstant(pin, -5);
    ASSERT_TRUE(solver.solve());
    EXPECT_THAT(changed(), UnorderedElementsAre(x, y));
    solver.clearChanges();
    EXPECT_THAT(changed(), IsEmpty());
    solver.setConstant(pin, -6);
    EXPECT_THAT(changed(), IsEmpty());
    ASSERT_TRUE(solver.solve());
    EXPECT_THAT(changed(), ElementsAre(x));
}

TEST_F(ConstraintSolverTest, WhatEndsWhereItWasHasNotChanged)
{
    const auto pin = equal(x, 1);
    ASSERT_TRUE(solver.solve());
    solver.clearChanges();
    solver.setConstant(pin, -5);
    solver.setConstant(pin, -1);
    ASSERT_TRUE(solver.solve());
    EXPECT_THAT(changed(), IsEmpty());
}

TEST_F(ConstraintSolverTest, ARemovedVariableIsNoLongerAmongTheChangedOnes)
{
    const auto pin = equal(x, 1);
    equal(y, 1);
    ASSERT_TRUE(solver.solve());
    solver.removeConstraint(pin);
    solver.removeVariable(x);
    EXPECT_THAT(changed(), ElementsAre(y));
    EXPECT_EQ(solver.variableCount(), 2u);
}

TEST_F(ConstraintSolverTest, AVariableCanGoThatAnotherOneWasTiedTo)
{
    const auto pin = equal(x, 3);
    const auto tie = add({ { y, 1 }, { x, -1 } }, -1, Relation::Equal);
    const auto more = add({ { z, 1 }, { y, -1 } }, -1, Relation::Equal);
    ASSERT_EQ(solved(z), 5);
    solver.removeConstraint(tie);
    solver.removeConstraint(pin);
    solver.removeVariable(x);
    EXPECT_EQ(solved(z), 5);
    equal(y, 7);
    EXPECT_EQ(solved(z), 8);
    solver.removeConstraint(more);
    const auto fresh = solver.addVariable();
    EXPECT_EQ(solver.value(fresh), 0);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ConstraintSolverTest, AVariableWithSeveralTermsHasTheirSum)
{
    add({ { x, 1 }, { y, 1 }, { x, 1 } }, -10, Relation::Equal);
    equal(y, 4);
    EXPECT_EQ(solved(x), 3);
}

TEST_F(ConstraintSolverTest, LongSumsAreAddedUpToo)
{
    Terms terms;
    for (int count = 0; count < 10; ++count) {
        terms.push_back({ x, 1 });
        terms.push_back({ y, 2 });
    }
    add(terms, -100, Relation::Equal);
    equal(y, 1);
    EXPECT_EQ(solved(x), 8);
}

TEST_F(ConstraintSolverTest, ATermWithoutACoefficientIsNotThere)
{
    add({ { x, 1 }, { y, 0 }, { z, 2 }, { z, -2 } }, -10, Relation::Equal);
    solver.removeVariable(y);
    solver.removeVariable(z);
    EXPECT_THAT(messages(), IsEmpty());
    EXPECT_EQ(solved(x), 10);
}

TEST_F(ConstraintSolverTest, AConstraintWithoutVariablesIsKeptWhenItHolds)
{
    const auto constraint = add({}, 1, Relation::GreaterThanOrEqual);
    EXPECT_NE(constraint, Constraint::None);
    EXPECT_NE(add({ { x, 0 } }, 0, Relation::Equal), Constraint::None);
    EXPECT_TRUE(solver.solve());
    EXPECT_TRUE(solver.setConstant(constraint, 5));
    solver.removeConstraint(constraint);
    EXPECT_TRUE(solver.solve());
}

TEST_F(ConstraintSolverTest, AConstraintWithoutVariablesIsAConflictWithItselfWhenItDoesNotHold)
{
    EXPECT_EQ(add({}, 1, Relation::Equal), Constraint::None);
    EXPECT_THAT(solver.conflict(), IsEmpty());
    const auto constraint = add({}, 0, Relation::Equal);
    EXPECT_FALSE(solver.setConstant(constraint, 1));
    EXPECT_THAT(solver.conflict(), ElementsAre(constraint));
    solver.removeConstraint(constraint);
    EXPECT_TRUE(solver.solve());
}

TEST_F(ConstraintSolverTest, AWeakConstraintWithoutVariablesNeverMatters)
{
    EXPECT_NE(add({}, 1, Relation::Equal, 500), Constraint::None);
    equal(x, 3, 400);
    EXPECT_EQ(solved(x), 3);
}

TEST_F(ConstraintSolverTest, SolvingAgainWithoutAChangeChangesNothing)
{
    equal(x, 3);
    ASSERT_TRUE(solver.solve());
    solver.clearChanges();
    EXPECT_TRUE(solver.solve());
    EXPECT_THAT(changed(), IsEmpty());
}

TEST_F(ConstraintSolverTest, EmptySolversAreSolved)
{
    ConstraintSolver empty;
    EXPECT_TRUE(empty.solve());
    EXPECT_EQ(empty.variableCount(), 0u);
    empty.reserve(0, 0);
    EXPECT_THAT(empty.changedVariables(), IsEmpty());
}

TEST_F(ConstraintSolverTest, LargeNumbersContradictNobody)
{
    equal(x, 1e9);
    add({ { y, 1 }, { x, -1.0 / 3 } }, 0, Relation::Equal);
    EXPECT_NE(add({ { x, 1 }, { y, -3 } }, 0, Relation::Equal), Constraint::None);
    EXPECT_NEAR(solved(y), 1e9 / 3, 1e-3);
    EXPECT_NE(add({ { z, 1e9 }, { x, 1 } }, 0, Relation::Equal), Constraint::None);
    EXPECT_NEAR(solved(z), -1, 1e-6);
}

TEST_F(ConstraintSolverTest, ACoefficientThatIsNoOrdinaryNumberIsRefused)
{
    for (const double coefficient : { notANumber, infinity, -infinity, 1.1e9, -1.1e9 })
        EXPECT_EQ(add({ { x, 1 }, { y, coefficient } }, 0, Relation::Equal), Constraint::None);
    EXPECT_THAT(messages(),
        testing::AllOf(testing::SizeIs(5), testing::Each(invalid("fabs(term.coefficient) <= 1e9"))));
    EXPECT_EQ(solver.constraintCount(), 0u);
}

TEST_F(ConstraintSolverTest, AConstantThatIsNoOrdinaryNumberIsRefused)
{
    const auto constraint = equal(x, 3);
    for (const double constant : { notANumber, infinity, -infinity, 1.1e9, -1.1e9 }) {
        EXPECT_EQ(add({ { x, 1 } }, constant, Relation::Equal), Constraint::None);
        EXPECT_TRUE(solver.setConstant(constraint, constant));
    }
    EXPECT_THAT(
        messages(), testing::AllOf(testing::SizeIs(10), testing::Each(invalid("fabs(constant) <= 1e9"))));
    EXPECT_EQ(solved(x), 3);
}

TEST_F(ConstraintSolverTest, APriorityOutsideOfItsRangeIsRefused)
{
    for (const double priority : { 0.0, -1.0, 1000.5, notANumber, infinity, -infinity })
        EXPECT_EQ(equal(x, 3, priority), Constraint::None);
    EXPECT_THAT(messages(),
        testing::AllOf(testing::SizeIs(6), testing::Each(invalid("priority > 0 && priority <= 1000"))));
    EXPECT_EQ(solved(x), 0);
}

TEST_F(ConstraintSolverTest, AnUnknownVariableIsRefused)
{
    const auto unknown = static_cast<Variable>(4711);
    EXPECT_EQ(equal(unknown, 1), Constraint::None);
    EXPECT_EQ(equal(Variable::None, 1), Constraint::None);
    EXPECT_THAT(messages(), testing::Each(invalid("isVariable(term.variable)")));
    EXPECT_EQ(solver.value(unknown), 0);
    EXPECT_EQ(solver.value(Variable::None), 0);
    solver.removeVariable(unknown);
    EXPECT_EQ(messages().size(), 5u);
    EXPECT_EQ(messages().back(), invalid("isVariable(variable)"));
    EXPECT_EQ(solver.variableCount(), 3u);
}

TEST_F(ConstraintSolverTest, ARemovedVariableIsUnknown)
{
    solver.removeVariable(y);
    EXPECT_EQ(solver.value(y), 0);
    EXPECT_THAT(messages(), ElementsAre(invalid("isVariable(variable)")));
}

TEST_F(ConstraintSolverTest, AVariableThatIsStillMentionedStays)
{
    equal(x, 3);
    solver.removeVariable(x);
    EXPECT_THAT(messages(), ElementsAre(invalid("!isMentioned(variable)")));
    EXPECT_EQ(solved(x), 3);
}

TEST_F(ConstraintSolverTest, AnUnknownConstraintIsRefused)
{
    const auto constraint = equal(x, 3);
    solver.removeConstraint(constraint);
    solver.removeConstraint(constraint);
    solver.removeConstraint(Constraint::None);
    solver.removeConstraint(static_cast<Constraint>(x));
    EXPECT_TRUE(solver.setConstant(static_cast<Constraint>(4711), 1));
    EXPECT_THAT(
        messages(), testing::AllOf(testing::SizeIs(4), testing::Each(invalid("isConstraint(constraint)"))));
    EXPECT_EQ(solver.constraintCount(), 0u);
}

TEST_F(ConstraintSolverTest, TheSameProgramEndsInTheSameValuesToTheLastBit)
{
    // Nothing says where between 0 and 100 the two shall part.
    const auto run = [](ConstraintSolver& other) {
        const auto a = other.addVariable();
        const auto b = other.addVariable();
        other.addConstraint(Terms { { a, 1 }, { b, 1 } }, -100, Relation::Equal);
        other.addConstraint(Terms { { a, 0.3 } }, -30, Relation::LessThanOrEqual, 500);
        other.addConstraint(Terms { { b, 0.7 } }, -30, Relation::Equal, 500);
        other.addConstraint(Terms { { a, 0.7 } }, -7, Relation::Equal, 500);
        EXPECT_TRUE(other.solve());
        return std::vector { other.value(a), other.value(b) };
    };
    ConstraintSolver first;
    ConstraintSolver second;
    EXPECT_EQ(run(first), run(second));
}

TEST_F(ConstraintSolverTest, ItPrintsItself)
{
    add({ { x, 1 }, { y, -0.5 } }, -12, Relation::Equal);
    atMost(x, 50);
    equal(y, 10, 750);
    ASSERT_TRUE(solver.solve());
    EXPECT_EQ(solver.description(),
        QStringLiteral("3 variables, 3 constraints\n"
                       "v1 = 17\n"
                       "v2 = 10\n"
                       "v3 = 0\n"
                       "c4: v1 - 0.5 v2 - 12 = 0\n"
                       "c5: v1 - 50 <= 0\n"
                       "c6: v2 - 10 = 0 @750\n"
                       "row v1 by c4 + 0.5 c6, now 17\n"
                       "row v2 by c6, now 10\n"
                       "row c5 by -c4 - 0.5 c6, now 33"));
}
