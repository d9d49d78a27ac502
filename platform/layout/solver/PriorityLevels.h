// The priorities in use below required, the highest first. A priority's place in that order is its level.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

class PriorityLevels {
public:
    using Level = std::uint32_t;

    // The level of the priority, which counts as used once more. When that shifts levels, movedLevels() tells
    // where each old one has gone, until the next call; otherwise it is empty.
    Level acquire(double priority);
    void release(Level level) { --m_priorities[level].uses; }
    std::span<const Level> movedLevels() const { return m_moved; }

    std::size_t count() const { return m_priorities.size(); }
    double priority(Level level) const { return m_priorities[level].priority; }

private:
    struct Priority {
        double priority;
        std::uint32_t uses;
    };
    void dropUnused();

    std::vector<Priority> m_priorities;
    std::vector<Level> m_moved;
};
