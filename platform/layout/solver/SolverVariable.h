// A variable of the tableau: an external one, which the caller has added, or the marker of a constraint.
//
// Every constraint is read as "its terms plus its constant is at least 0" or "is 0"; that sum is its marker.
// It serves where the paper takes a dummy variable (required equation), a slack (inequality) and two errors
// (weaker constraint): what a weaker constraint costs is a function of its marker with a corner at 0. A basic
// variable has a row, a parametric one a column; a parametric marker is 0.
#pragma once

#include <cstdint>

struct SolverVariable {
    enum class Kind : std::uint8_t {
        Unused,
        External, // one that the caller has added
        Equality, // marker of an equation
        Inequality, // marker of an inequality
        Removed, // marker of a removed constraint: as free as an external one, gone once it becomes basic
    };
    // A redundant one has neither row nor column, because its equation follows from others.
    enum class Role : std::uint8_t { Basic, Parametric, Redundant };
    // On which sides of 0 a basic variable may be without a change of its slope.
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
    std::uint32_t slopedIndex = 0; // its place among the variables with a slope
    Kind kind = Kind::Unused;
    Sides sides = Both;
    signed char slope = 0; // of its cost, while it is basic
    Role role = Role::Parametric;
    bool isListedInfeasible = false; // listed as perhaps outside
    bool isListedMoved = false; // listed as perhaps changed
};
