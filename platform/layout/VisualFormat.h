// A visual format as a tree: which views stand in a row, how far apart, how large.
//
//     format     = ["H:" | "V:"] ["|" [connection]] view {[connection] view} [[connection] "|"]
//     connection = "-" | "-" value ["@" value] "-" | "-" predicates "-"
//     view       = "[" name [predicates] "]"
//     predicates = "(" predicate {"," predicate} ")"
//     predicate  = ["==" | "<=" | ">="] value ["@" value]
//     value      = number | name
//
// Blanks may stand between these, not within "H:", a relation, a number or a name. A number is decimal, with
// a sign, a fraction and an exponent if need be. The names are references into the text that was parsed: it
// must outlive the tree.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/layout/LayoutTypes.h"

#include <QStringView>

#include <optional>
#include <vector>

struct VisualFormat {
    // Where something begins in the text. Trees from texts with other blanks are equal.
    struct Position {
        qsizetype index = 0;

        bool operator==(const Position&) const { return true; }
    };

    struct Value {
        QStringView name; // empty for a number
        double number = 0;
        Position position;

        bool operator==(const Value&) const = default;
    };

    struct Predicate {
        NSLayoutRelation relation = NSLayoutRelation::Equal;
        Value value;
        std::optional<Value> priority;

        bool operator==(const Predicate&) const = default;
    };

    // Flush is no distance at all; the standard one is what the two neighbours keep by themselves.
    enum class GapKind { Flush, Standard, Given };

    struct Gap {
        GapKind kind = GapKind::Flush;
        std::vector<Predicate> predicates; // of a given one
        Position position;

        bool operator==(const Gap&) const = default;
    };

    // An edge of the container, and its distance from the nearest view.
    struct Pin {
        Gap gap;
        Position position;

        bool operator==(const Pin&) const = default;
    };

    struct View {
        QStringView name;
        std::vector<Predicate> sizes;
        Gap gapBefore; // from the view before; not of the first
        Position position;

        bool operator==(const View&) const = default;
    };

    UILayoutConstraintAxis axis = UILayoutConstraintAxis::Horizontal;
    std::optional<Pin> start;
    std::vector<View> views; // one at least
    std::optional<Pin> end;

    // The same tree as text, in full: "V:|-[a(==8@500)]-(>=gap)-[b]|".
    NSString description() const;

    bool operator==(const VisualFormat&) const = default;
};
