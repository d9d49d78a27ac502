// What the constraints of a table cell cost: to state them, to follow six widths of the cell, and to put the
// thumb of its slider in nine places. The frames are brought up to date each time, by what the solver says to
// have changed, as the layout does it.
//
// Twelve cells that do not meet are stated in one solver and in twelve, which is how the layout does it too.
#include "benchmarks/InstructionCount.h"
#include "benchmarks/Timings.h"
#include "tests/platform/layout/solver/LayoutModel.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <string>

namespace {

constexpr std::size_t cellCount = 12;

// A cell on its own, or one of several in a solver.
class Cell {
public:
    Cell(ConstraintSolver& solver, const LayoutModel& model)
        : m_solver(solver)
        , m_solved(solver, model)
    {
    }

    // Reads what has changed; with others in the solver, theirs as well.
    void readFrames()
    {
        for (const auto variable : m_solver.changedVariables())
            m_frames[static_cast<std::size_t>(variable)] = m_solver.value(variable);
        m_solver.clearChanges();
    }

    void changeWidths()
    {
        for (const double width : LayoutModel::widths) {
            m_solved.setWidth(width);
            m_solver.solve();
            readFrames();
        }
    }

    void moveThumb()
    {
        for (int tenths = 1; tenths <= 9; ++tenths) {
            m_solved.setThumb(0.1 * tenths);
            m_solver.solve();
            readFrames();
        }
    }

    // Whether what has been read is what the solver has.
    bool isUpToDate() const
    {
        return std::all_of(m_solved.variables().begin(), m_solved.variables().end(), [this](auto variable) {
            return m_frames[static_cast<std::size_t>(variable)] == m_solver.value(variable);
        });
    }

    void solve()
    {
        m_solver.solve();
        m_frames.resize(m_solver.variableCount() + m_solver.constraintCount() + 2);
        readFrames();
    }

private:
    ConstraintSolver& m_solver;
    SolvedModel m_solved;
    std::vector<double> m_frames; // by variable
};

// The solvers and the cells in them.
class Cells {
public:
    Cells(const LayoutModel& model, std::size_t count, std::size_t cellsPerSolver)
    {
        for (std::size_t index = 0; index < count; ++index) {
            if (index % cellsPerSolver == 0)
                m_solvers.emplace_back();
            m_cells.emplace_back(m_solvers.back(), model);
        }
        for (std::size_t index = 0; index < count; index += cellsPerSolver)
            m_cells[index].solve();
    }

    Cell& first() { return m_cells.front(); }

private:
    std::deque<ConstraintSolver> m_solvers;
    std::deque<Cell> m_cells;
};

// What is measured: how long one run takes, and in a run by itself how many instructions.
class Measurement {
public:
    explicit Measurement(std::string name)
        : m_name(std::move(name))
    {
    }

    template <typename Work> void measure(Work work)
    {
        m_times.measure([&] {
            InstructionCount::begin();
            work();
            InstructionCount::end(m_name.c_str());
        });
    }
    void print() const { m_times.print(m_name.c_str()); }

private:
    std::string m_name;
    Timings m_times;
};

// Answers whether the frames were right in the end.
bool measure(const std::string& name, const LayoutModel& model, std::size_t count, std::size_t cellsPerSolver,
    int repetitions)
{
    Measurement build(name + ", built");
    Measurement widths(name + ", six widths");
    Measurement thumb(name + ", nine thumbs");
    bool isRight = true;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        std::optional<Cells> cells;
        build.measure([&] { cells.emplace(model, count, cellsPerSolver); });
        Cell& cell = cells->first();
        // The first round makes room; it is not told.
        cell.changeWidths();
        cell.moveThumb();
        widths.measure([&] { cell.changeWidths(); });
        thumb.measure([&] { cell.moveThumb(); });
        isRight = isRight && cell.isUpToDate();
    }
    build.print();
    widths.print();
    thumb.print();
    return isRight;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int repetitions = argumentCount > 1 ? std::atoi(arguments[1]) : 2000;
    const int fewer = std::max(1, repetitions / 20);
    const auto small = LayoutModel::read("cell36.model");
    const auto full = LayoutModel::read("cell-full.model");
    if (!small || !full)
        return EXIT_FAILURE;
    Timings::printHeading();
    bool isRight = measure("36 constraints", *small, 1, 1, repetitions);
    isRight = measure("89 constraints", *full, 1, 1, repetitions) && isRight;
    isRight = measure("12 x 89 in 12 solvers", *full, cellCount, 1, fewer) && isRight;
    isRight = measure("12 x 89 in one solver", *full, cellCount, cellCount, fewer) && isRight;
    return isRight ? EXIT_SUCCESS : EXIT_FAILURE;
}
