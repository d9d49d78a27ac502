#include "platform/layout/solver/PriorityLevels.h"

#include <algorithm>

// Keeps the order; m_moved says where each has gone.
void PriorityLevels::dropUnused()
{
    Level kept = 0;
    for (const Priority& priority : m_priorities) {
        m_moved.push_back(kept);
        if (priority.uses > 0)
            m_priorities[kept++] = priority;
    }
    m_priorities.resize(kept);
}

PriorityLevels::Level PriorityLevels::acquire(double priority)
{
    m_moved.clear();
    const auto isHigher = [](const Priority& one, double other) { return one.priority > other; };
    auto place = std::lower_bound(m_priorities.begin(), m_priorities.end(), priority, isHigher);
    if (place != m_priorities.end() && place->priority == priority) {
        ++place->uses;
        return Level(place - m_priorities.begin());
    }
    dropUnused();
    place = std::lower_bound(m_priorities.begin(), m_priorities.end(), priority, isHigher);
    const Level level = Level(place - m_priorities.begin());
    m_priorities.insert(place, { priority, 1 });
    for (Level& moved : m_moved)
        moved += moved >= level ? 1 : 0;
    return level;
}
