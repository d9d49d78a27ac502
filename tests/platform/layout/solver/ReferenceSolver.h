// A slow solver to hold the real one against: one dense tableau, every time from the beginning.
//
// Each constraint has a surplus and a shortage, neither below 0. Priority by priority, required first, the
// sum of those that count is made least by the simplest of rules; what would cost anything is then shut out.
#pragma once

#include <cstddef>
#include <vector>

class ReferenceSolver {
public:
    struct Constraint {
        std::vector<std::pair<std::size_t, double>> terms; // variable and coefficient
        double constant = 0;
        int relation = 0; // -1, 0, 1
        double priority = 1000;
    };

    ReferenceSolver(std::size_t variableCount, const std::vector<Constraint>&);

    bool isFeasible() const { return m_isFeasible; }
    double value(std::size_t variable) const;
    // The least sums of errors, the highest priority first; of the required ones it is 0 when they are
    // feasible.
    const std::vector<double>& errors() const { return m_errors; }

    // The same sums for given values.
    static std::vector<double> errorsOf(const std::vector<Constraint>&, const std::vector<double>& values);

private:
    using Row = std::vector<double>; // the last one is the constant

    void addRow(const Constraint&, std::size_t variableCount, std::size_t index, std::size_t count);
    void minimise(const std::vector<Constraint>&, double priority);
    Row costs(const std::vector<Constraint>&, double priority) const;
    void pivot(std::size_t row, std::size_t column);
    bool leavingRow(std::size_t column, std::size_t& row) const;

    std::vector<Row> m_rows;
    std::vector<std::size_t> m_basis; // the column of each row
    std::vector<bool> m_isShut; // by column
    std::vector<double> m_errors;
    std::size_t m_firstError = 0; // the column of the first surplus
    bool m_isFeasible = true;
};
