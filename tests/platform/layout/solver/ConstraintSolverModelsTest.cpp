#include "tests/platform/layout/solver/LayoutModel.h"
#include "tests/platform/layout/solver/ReferenceSolver.h"

#include <gmock/gmock.h>

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

INSTANTIATE_TEST_SUITE_P(
    Cells, ConstraintSolverModelsTest, testing::Values("cell36.model", "cell-full.model"));
