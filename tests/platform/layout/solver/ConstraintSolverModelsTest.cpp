#include "tests/platform/layout/solver/LayoutModel.h"
#include "tests/platform/layout/solver/ReferenceSolver.h"

#include <gmock/gmock.h>

#include <random>

namespace {

class ConstraintSolverModelsTest : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override
    {
        const auto read = LayoutModel::read(GetParam());
        ASSERT_TRUE(read);
        model = *read;
    }

    // The model as the reference sees it, with the cell's size pinned.
    std::vector<ReferenceSolver::Constraint> stated(double width) const
    {
        std::vector<ReferenceSolver::Constraint> result;
        for (const auto& constraint : model.constraints)
            result.push_back(
                { constraint.terms, constraint.constant, constraint.relation, constraint.priority });
        result.push_back({ { { model.width, 1 } }, -width, 0, SolvedModel::pinPriority });
        result.push_back({ { { model.height, 1 } }, -64, 0, SolvedModel::pinPriority });
        return result;
    }

    void expectBest(const std::vector<ReferenceSolver::Constraint>& constraints, const SolvedModel& solved)
    {
        ASSERT_TRUE(solver.solve());
        const ReferenceSolver reference(model.variableCount, constraints);
        ASSERT_TRUE(reference.isFeasible());
        std::vector<double> values;
        for (std::size_t index = 0; index < model.variableCount; ++index) {
            values.push_back(solver.value(solved.variables()[index]));
            EXPECT_NEAR(values.back(), reference.value(index), 1e-6) << "variable " << index;
        }
        const auto errors = ReferenceSolver::errorsOf(constraints, values);
        ASSERT_EQ(errors.size(), reference.errors().size());
        for (std::size_t level = 0; level < errors.size(); ++level)
            EXPECT_NEAR(errors[level], reference.errors()[level], 1e-6) << "level " << level;
    }

    LayoutModel model;
    ConstraintSolver solver;
};

} // namespace

TEST_P(ConstraintSolverModelsTest, EveryWidthGivesTheBestFrames)
{
    SolvedModel solved(solver, model);
    expectBest(stated(390), solved);
    for (const double width : LayoutModel::widths) {
        SCOPED_TRACE(width);
        solved.setWidth(width);
        expectBest(stated(width), solved);
    }
}

TEST_P(ConstraintSolverModelsTest, EveryPlaceOfTheThumbGivesTheBestFrames)
{
    SolvedModel solved(solver, model);
    for (int tenths = 1; tenths <= 9; ++tenths) {
        SCOPED_TRACE(tenths);
        solved.setThumb(0.1 * tenths);
        const auto thumb = model.thumbAt(0.1 * tenths);
        auto constraints = stated(390);
        constraints[model.thumbConstraint] = { thumb.terms, 0, 0, ConstraintSolver::required };
        expectBest(constraints, solved);
    }
}

TEST_P(ConstraintSolverModelsTest, AfterAHundredThousandChangesTheFramesAreThoseOfAFreshSolver)
{
    SolvedModel solved(solver, model);
    std::mt19937 random(1);
    double position = 0;
    double width = 0;
    for (int change = 0; change < 100'000; ++change) {
        position = double(random() % 1000) / 1000;
        width = 300 + double(random() % 50'000) / 100;
        if (change % 3 == 0)
            solved.setThumb(position);
        solved.setWidth(width);
        ASSERT_TRUE(solver.solve());
    }
    solved.setThumb(position);
    ASSERT_TRUE(solver.solve());
    ConstraintSolver fresh;
    SolvedModel other(fresh, model);
    other.setThumb(position);
    other.setWidth(width);
    ASSERT_TRUE(fresh.solve());
    for (std::size_t index = 0; index < model.variableCount; ++index)
        EXPECT_NEAR(solver.value(solved.variables()[index]), fresh.value(other.variables()[index]), 1e-8);
}

TEST_P(ConstraintSolverModelsTest, WhileConstraintsGoInAnyOrderTheRestIsSolvedAtItsBest)
{
    for (std::uint32_t seed = 1; seed <= 4; ++seed) {
        ConstraintSolver shrinking;
        const SolvedModel solved(shrinking, model);
        auto left = stated(390);
        auto constraints = solved.constraints();
        left.resize(constraints.size()); // the cell's size stays pinned
        std::mt19937 random(seed);
        while (!constraints.empty()) {
            const auto place = std::ptrdiff_t(random() % constraints.size());
            shrinking.removeConstraint(constraints[std::size_t(place)]);
            constraints.erase(constraints.begin() + place);
            left.erase(left.begin() + place);
            ASSERT_TRUE(shrinking.solve());
            std::vector<double> values;
            for (const auto variable : solved.variables())
                values.push_back(shrinking.value(variable));
            auto all = left;
            all.push_back({ { { model.width, 1 } }, -390, 0, SolvedModel::pinPriority });
            all.push_back({ { { model.height, 1 } }, -64, 0, SolvedModel::pinPriority });
            const auto errors = ReferenceSolver::errorsOf(all, values);
            const ReferenceSolver reference(model.variableCount, all);
            ASSERT_EQ(errors.size(), reference.errors().size());
            for (std::size_t level = 0; level < errors.size(); ++level)
                ASSERT_NEAR(errors[level], reference.errors()[level], 1e-6) << "seed " << seed;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cells, ConstraintSolverModelsTest, testing::Values("cell36.model", "cell-full.model"));
