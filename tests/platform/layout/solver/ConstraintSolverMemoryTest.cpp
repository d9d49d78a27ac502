// Counts what is allocated in this program, to show that a warm solver needs no memory for a change.
#include "tests/platform/layout/solver/LayoutModel.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <new>

namespace {

std::size_t s_allocations = 0;

void* allocate(std::size_t size)
{
    ++s_allocations;
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

class ConstraintSolverMemoryTest : public testing::Test {
protected:
    void SetUp() override
    {
        const auto read = LayoutModel::read("cell-full.model");
        ASSERT_TRUE(read);
        model = *read;
    }

    void changeAll(SolvedModel& solved)
    {
        for (const double width : LayoutModel::widths) {
            solved.setWidth(width);
            EXPECT_TRUE(solver.solve());
            for (int tenths = 1; tenths <= 9; ++tenths) {
                solved.setThumb(0.1 * tenths);
                EXPECT_TRUE(solver.solve());
                solver.clearChanges();
            }
        }
    }

    LayoutModel model;
    ConstraintSolver solver;
};

} // namespace

TEST_F(ConstraintSolverMemoryTest, AnEmptySolverAllocatesNothing)
{
    const std::size_t before = s_allocations;
    ConstraintSolver empty;
    EXPECT_TRUE(empty.solve());
    EXPECT_EQ(s_allocations, before);
}

TEST_F(ConstraintSolverMemoryTest, AWarmSolverAllocatesNothingForAChange)
{
    SolvedModel solved(solver, model);
    changeAll(solved);
    const std::size_t before = s_allocations;
    for (int round = 0; round < 200; ++round) // long enough for the tableau to be made anew
        changeAll(solved);
    EXPECT_EQ(s_allocations, before);
}

TEST_F(ConstraintSolverMemoryTest, AWarmSolverAllocatesNothingToRefuseAConstraint)
{
    SolvedModel solved(solver, model);
    ASSERT_TRUE(solver.solve());
    const ConstraintSolver::Term terms[] { { solved.variables()[0], 1 } };
    const auto refuse = [&] {
        return solver.addConstraint(terms, 5, ConstraintSolver::Relation::Equal)
            == ConstraintSolver::Constraint::None;
    };
    ASSERT_TRUE(refuse());
    const std::size_t before = s_allocations;
    EXPECT_TRUE(refuse());
    EXPECT_TRUE(solver.solve());
    EXPECT_EQ(s_allocations, before);
}

TEST_F(ConstraintSolverMemoryTest, TheCounterSeesWhatAFirstVariableAllocates)
{
    const std::size_t before = s_allocations;
    solver.addVariable();
    EXPECT_GT(s_allocations, before);
}
