// What a row or a column of the tableau stands for: a variable, or how far a constraint is from being tight.
//
// Every constraint is read as "its terms plus its constant is at least 0" or "is 0"; that sum is its symbol.
// What a weaker constraint costs is a function of its symbol with a corner at 0, so one symbol serves where
// textbooks take a slack and two errors. A symbol outside the basis sits on its corner.
#pragma once

#include <cstdint>

struct SolverSymbol {
    enum class Kind : std::uint8_t {
        Unused,
        Variable,
        Equality,
        Inequality,
        Abandoned, // of a removed constraint; as free as a variable, gone once it enters the basis
    };
    // Whether it has a row, a column, or neither because it follows from others; see RedundantEquations.
    enum class Role : std::uint8_t { Basic, Parametric, Redundant };
    // On which sides of 0 a basic symbol may be without a change of its slope.
    enum Sides : std::uint8_t { Neither = 0, Negative = 1, Positive = 2, Both = 3 };

    static constexpr std::uint32_t requiredLevel = ~0u;

    bool isRequired() const { return level == requiredLevel; }
    bool isBasic() const { return role == Role::Basic; }
    bool isParametric() const { return role == Role::Parametric; }
    bool isRedundant() const { return role == Role::Redundant; }
    bool isRequiredEquation() const { return kind == Kind::Equality && isRequired(); }
    bool isConstraint() const { return kind == Kind::Equality || kind == Kind::Inequality; }
    // Whether its value has left the allowed sides.
    bool isOutside(double tolerance) const
    {
        return (value < -tolerance && !(sides & Negative)) || (value > tolerance && !(sides & Positive));
    }
    // How its cost changes with its value once it is on that side; what is required has no cost.
    int slopeOn(Sides side) const
    {
        if (isRequired() || !isConstraint())
            return 0;
        return side == Negative ? -1 : side == Positive && kind == Kind::Equality ? 1 : 0;
    }

    double value = 0;
    std::uint32_t place = 0; // its row when it is basic, its column when it is parametric
    std::uint32_t level = requiredLevel; // of its priority, the highest below required first
    std::uint32_t sloping = 0; // its place among the symbols with a slope
    Kind kind = Kind::Unused;
    Sides sides = Both;
    signed char slope = 0; // of its cost, while it is basic
    Role role = Role::Parametric;
    bool isSuspect = false; // listed as perhaps outside
    bool isTouched = false; // listed as perhaps changed
};
