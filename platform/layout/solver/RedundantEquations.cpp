#include "platform/layout/solver/RedundantEquations.h"

#include <algorithm>

void RedundantEquations::addSource(Index equation, Index source, double factor)
{
    m_links.push_back({ equation, source, factor });
    ++m_followers[source];
}

template <typename Condition> void RedundantEquations::dropLinks(Condition isDropped)
{
    std::erase_if(m_links, [&](const Link& link) {
        const bool drops = isDropped(link);
        m_followers[link.source] -= drops ? 1 : 0;
        return drops;
    });
}

void RedundantEquations::remove(Index equation)
{
    dropLinks([equation](const Link& link) { return link.equation == equation; });
}

void RedundantEquations::clear()
{
    m_links.clear();
    std::fill(m_followers.begin(), m_followers.end(), 0);
}

void RedundantEquations::takeFollowers(Index source, std::vector<Index>& followers)
{
    followers.clear();
    forEachFollower(source, [&](Index equation, double) { followers.push_back(equation); });
    std::sort(followers.begin(), followers.end());
    dropLinks([&](const Link& link) {
        return std::binary_search(followers.begin(), followers.end(), link.equation);
    });
}
