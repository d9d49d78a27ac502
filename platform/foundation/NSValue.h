// A small structure of doubles as one value, such as a coordinate, labelled with its kind.
//
// The code of the structure wraps and unwraps it; the label keeps a point from being read as a
// coordinate. A default value is nil.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <utility>
#include <vector>

class NSValue {
public:
    NSValue() = default;
    NSValue(NSString kind, std::vector<double> members)
        : m_kind(std::move(kind))
        , m_members(std::move(members))
    {
    }

    bool isNull() const { return m_kind.isNull(); }
    const NSString& kind() const { return m_kind; }
    const std::vector<double>& members() const { return m_members; }
    bool operator==(const NSValue&) const = default;

private:
    NSString m_kind;
    std::vector<double> m_members;
};
