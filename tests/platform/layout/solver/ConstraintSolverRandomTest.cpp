// Random programs, held against the reference after every few changes. A failing one is told by its seed.
#include "platform/layout/solver/ConstraintSolver.h"
#include "tests/platform/layout/solver/ReferenceSolver.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

// Constraints that come and go in a solver, beside a list of what has been stated.
class RandomProgram {
public:
    using Stated = std::vector<ReferenceSolver::Constraint>;

    // With few different constants, many constraints meet in one corner.
    RandomProgram(std::uint32_t seed, std::size_t variableCount, std::size_t constantCount)
        : m_random(seed)
        , m_constantCount(constantCount)
    {
        for (std::size_t index = 0; index < variableCount; ++index)
            m_variables.push_back(solver.addVariable());
    }

    const Stated& stated() const { return m_stated; }
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    std::vector<double> values() const
    {
        std::vector<double> result;
        for (const auto variable : m_variables)
            result.push_back(solver.value(variable));
        return result;
    }

    void addRandom() { state(randomConstraint()); }

    // A sum of two required equations that have been stated, or one of them again; now and then with a
    // constant of its own, which contradicts them.
    void addFollowing()
    {
        Stated equations;
        std::copy_if(m_stated.begin(), m_stated.end(), std::back_inserter(equations),
            [](const auto& stated) { return stated.relation == 0 && stated.priority == 1000; });
        if (equations.empty())
            return;
        auto sum = equations[below(equations.size())];
        if (below(3) != 0) {
            const auto& other = equations[below(equations.size())];
            sum.terms.insert(sum.terms.end(), other.terms.begin(), other.terms.end());
            sum.constant += other.constant;
        }
        if (below(6) == 0)
            sum.constant += 1;
        state(sum);
    }

    // Required equations have columns, so rows are left to variables and to all other constraints.
    void expectNoRowForAnEquation()
    {
        const auto others = std::count_if(m_stated.begin(), m_stated.end(),
            [](const auto& stated) { return stated.relation != 0 || stated.priority < 1000; });
        ASSERT_LE(solver.description().count(QStringLiteral("\nrow ")),
            qsizetype(m_variables.size()) + qsizetype(others));
    }

    void state(const ReferenceSolver::Constraint& constraint)
    {
        auto with = m_stated;
        with.push_back(constraint);
        const bool isSettled = below(2) == 0 && solver.solve();
        const auto before = values();
        if (add(constraint) != ConstraintSolver::Constraint::None) {
            m_stated.push_back(constraint);
            return;
        }
        EXPECT_FALSE(ReferenceSolver(m_variables.size(), with).isFeasible());
        EXPECT_TRUE(solver.solve());
        const auto after = values();
        for (std::size_t index = 0; index < before.size() && isSettled; ++index)
            EXPECT_NEAR(before[index], after[index], 1e-9) << "a refused constraint has moved something";
    }

    void removeRandom()
    {
        if (m_stated.empty())
            return;
        remove(below(m_stated.size()));
    }

    // A contradiction is resolved by taking out one of those that it names.
    void changeRandom()
    {
        if (m_stated.empty())
            return;
        const std::size_t place = below(m_stated.size());
        m_stated[place].constant = randomConstant();
        bool isFeasible = solver.setConstant(m_constraints[place], m_stated[place].constant);
        EXPECT_EQ(isFeasible, ReferenceSolver(m_variables.size(), m_stated).isFeasible());
        while (!isFeasible) {
            expectConflict();
            const auto& conflict = solver.conflict();
            ASSERT_FALSE(conflict.empty());
            const auto found
                = std::find(m_constraints.begin(), m_constraints.end(), conflict[below(conflict.size())]);
            ASSERT_NE(found, m_constraints.end());
            remove(std::size_t(found - m_constraints.begin()));
            isFeasible = solver.solve();
        }
    }

    void expectBest()
    {
        ASSERT_TRUE(solver.solve());
        const ReferenceSolver reference(m_variables.size(), m_stated);
        ASSERT_TRUE(reference.isFeasible());
        const auto errors = ReferenceSolver::errorsOf(m_stated, values());
        ASSERT_EQ(errors.size(), reference.errors().size());
        for (std::size_t level = 0; level < errors.size(); ++level)
            ASSERT_NEAR(errors[level], reference.errors()[level], 1e-6) << "level " << level;
    }

    ConstraintSolver solver;

private:
    double randomConstant()
    {
        const std::size_t middle = m_constantCount / 2;
        return double(below(m_constantCount)) - double(middle);
    }

    ReferenceSolver::Constraint randomConstraint()
    {
        constexpr double coefficients[] { 1, 1, 1, -1, -1, 0.5, -0.5, 2, -0.3 };
        constexpr double priorities[] { 1000, 1000, 1000, 750, 750, 251, 250, 1 };
        ReferenceSolver::Constraint result;
        const std::size_t count = std::min<std::size_t>(1 + below(4), m_variables.size());
        while (result.terms.size() < count) {
            const std::size_t variable = below(m_variables.size());
            const bool isNew = std::none_of(result.terms.begin(), result.terms.end(),
                [&](const auto& term) { return term.first == variable; });
            if (isNew)
                result.terms.emplace_back(variable, coefficients[below(std::size(coefficients))]);
        }
        result.constant = randomConstant();
        result.relation = int(below(3)) - 1;
        result.priority = priorities[below(std::size(priorities))];
        return result;
    }

    ConstraintSolver::Constraint add(const ReferenceSolver::Constraint& constraint)
    {
        std::vector<ConstraintSolver::Term> terms;
        for (const auto& [variable, coefficient] : constraint.terms)
            terms.push_back({ m_variables[variable], coefficient });
        const auto added = solver.addConstraint(
            terms, constraint.constant, ConstraintSolver::Relation(constraint.relation), constraint.priority);
        if (added != ConstraintSolver::Constraint::None)
            m_constraints.push_back(added);
        return added;
    }

    void remove(std::size_t place)
    {
        solver.removeConstraint(m_constraints[place]);
        m_constraints.erase(m_constraints.begin() + std::ptrdiff_t(place));
        m_stated.erase(m_stated.begin() + std::ptrdiff_t(place));
    }

    // All of them together cannot hold, and without any one of them the others can.
    void expectConflict()
    {
        Stated named;
        for (std::size_t place = 0; place < m_stated.size(); ++place)
            if (std::count(solver.conflict().begin(), solver.conflict().end(), m_constraints[place]) > 0)
                named.push_back(m_stated[place]);
        ASSERT_EQ(named.size(), solver.conflict().size());
        EXPECT_FALSE(ReferenceSolver(m_variables.size(), named).isFeasible());
        for (std::size_t place = 0; place < named.size(); ++place) {
            auto fewer = named;
            fewer.erase(fewer.begin() + std::ptrdiff_t(place));
            EXPECT_TRUE(ReferenceSolver(m_variables.size(), fewer).isFeasible());
        }
    }

    std::mt19937 m_random;
    std::size_t m_constantCount;
    std::vector<ConstraintSolver::Variable> m_variables;
    std::vector<ConstraintSolver::Constraint> m_constraints;
    Stated m_stated;
};

} // namespace

TEST(ConstraintSolverRandomTest, WhatIsAddedChangedAndRemovedIsAlwaysSolvedAtItsBest)
{
    for (std::uint32_t seed = 1; seed <= 1500; ++seed) {
        RandomProgram program(seed, 2 + seed % 13, seed % 2 == 0 ? 41 : 2);
        for (int step = 0; step < 60; ++step) {
            const auto choice = program.below(8);
            if (choice < 4)
                program.addRandom();
            else if (choice < 6)
                program.changeRandom();
            else
                program.removeRandom();
            if (program.below(3) == 0)
                program.expectBest();
        }
        program.expectBest();
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}

TEST(ConstraintSolverRandomTest, EquationsThatFollowFromOthersComeAndGoWithoutARow)
{
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        RandomProgram program(seed, 2 + seed % 7, seed % 2 == 0 ? 41 : 2);
        for (int step = 0; step < 60; ++step) {
            const auto choice = program.below(12);
            if (choice < 3)
                program.addRandom();
            else if (choice < 7)
                program.addFollowing();
            else if (choice < 9)
                program.changeRandom();
            else
                program.removeRandom();
            if (program.below(3) == 0) {
                program.expectBest();
                program.expectNoRowForAnEquation();
            }
        }
        program.expectBest();
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}
