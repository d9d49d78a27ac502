// The constraints of a whole table cell, as read from a file in models/.
//
// The first line tells how many variables there are, which of them are the cell's width and height, and which
// constraint (in the order of the lines) places the thumb. A line each follows: relation, priority, constant,
// then pairs of a variable and its coefficient. The last one names left and width of the thumb and of the
// slider.
#pragma once

#include "platform/layout/solver/ConstraintSolver.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

struct LayoutModel {
    struct Constraint {
        int relation = 0;
        double priority = 0;
        double constant = 0;
        std::vector<std::pair<std::size_t, double>> terms;
    };

    std::size_t variableCount = 0;
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t thumbConstraint = 0;
    std::array<std::size_t, 4> thumb {}; // left, width; the slider's left, width
    std::vector<Constraint> constraints;

    // Nothing when there is no such file.
    static std::optional<LayoutModel> read(const std::string& name)
    {
        std::ifstream file(
            std::filesystem::path(ORUVANE_SOURCE_DIR "/tests/platform/layout/solver/models") / name);
        LayoutModel model;
        if (!(file >> model.variableCount >> model.width >> model.height >> model.thumbConstraint))
            return std::nullopt;
        for (std::string line; std::getline(file, line);) {
            std::istringstream words(line);
            Constraint constraint;
            std::size_t variable = 0;
            double coefficient = 0;
            if (line.starts_with("thumb")) {
                words.ignore(5);
                for (std::size_t& index : model.thumb)
                    words >> index;
            } else if (words >> constraint.relation >> constraint.priority >> constraint.constant) {
                while (words >> variable >> coefficient)
                    constraint.terms.emplace_back(variable, coefficient);
                model.constraints.push_back(constraint);
            }
        }
        return model;
    }

    // thumb.left + thumb.width / 2 = position * (slider.left + slider.width)
    Constraint thumbAt(double position) const
    {
        return { 0, ConstraintSolver::required, 0,
            { { thumb[0], 1 }, { thumb[1], 0.5 }, { thumb[2], -position }, { thumb[3], -position } } };
    }

    static constexpr std::array<double, 6> widths { 320, 375, 390, 414, 600, 768 };
};

// A model in a solver. Two required constraints more pin the width and height of the cell.
class SolvedModel {
public:
    static constexpr double pinPriority = ConstraintSolver::required;

    SolvedModel(ConstraintSolver& solver, const LayoutModel& model)
        : m_solver(solver)
        , m_model(model)
    {
        solver.reserve(solver.variableCount() + model.variableCount,
            solver.constraintCount() + model.constraints.size() + 3);
        for (std::size_t index = 0; index < model.variableCount; ++index)
            m_variables.push_back(solver.addVariable());
        for (const auto& constraint : model.constraints)
            m_constraints.push_back(add(constraint));
        m_width = add({ 0, pinPriority, -390, { { model.width, 1 } } });
        m_height = add({ 0, pinPriority, -64, { { model.height, 1 } } });
    }

    void setWidth(double width) { m_solver.setConstant(m_width, -width); }
    void setThumb(double position)
    {
        auto& thumb = m_constraints[m_model.thumbConstraint];
        m_solver.removeConstraint(thumb);
        const auto [left, width, sliderLeft, sliderWidth] = m_model.thumb;
        const ConstraintSolver::Term terms[] { { m_variables[left], 1 }, { m_variables[width], 0.5 },
            { m_variables[sliderLeft], -position }, { m_variables[sliderWidth], -position } };
        thumb = m_solver.addConstraint(terms, 0, ConstraintSolver::Relation::Equal);
    }
    const std::vector<ConstraintSolver::Variable>& variables() const { return m_variables; }
    const std::vector<ConstraintSolver::Constraint>& constraints() const { return m_constraints; }

private:
    ConstraintSolver::Constraint add(const LayoutModel::Constraint& constraint)
    {
        m_terms.clear();
        for (const auto& [variable, coefficient] : constraint.terms)
            m_terms.push_back({ m_variables[variable], coefficient });
        return m_solver.addConstraint(m_terms, constraint.constant,
            ConstraintSolver::Relation(constraint.relation), constraint.priority);
    }

    ConstraintSolver& m_solver;
    const LayoutModel& m_model;
    std::vector<ConstraintSolver::Variable> m_variables;
    std::vector<ConstraintSolver::Constraint> m_constraints;
    std::vector<ConstraintSolver::Term> m_terms;
    ConstraintSolver::Constraint m_width = ConstraintSolver::Constraint::None;
    ConstraintSolver::Constraint m_height = ConstraintSolver::Constraint::None;
};
