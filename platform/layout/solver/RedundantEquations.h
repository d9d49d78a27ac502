// Required equations that follow from other ones, and from which: they hold by themselves and need no row.
//
// The sum of such an equation is a sum of those of equations in force, each times a factor, but for a number
// that is 0 while all of them agree. That stays so whatever the basis is, until one of them is removed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class RedundantEquations {
public:
    using Index = std::uint32_t;

    void makeRoom(std::size_t variables) { m_followers.resize(variables); }
    // There must be room for both variables.
    void addSource(Index equation, Index source, double factor);
    void remove(Index equation);
    void clear();

    // Whether some equation follows from this one and perhaps others.
    bool hasFollowers(Index source) const { return source < m_followers.size() && m_followers[source] > 0; }
    // Tells them, in order, and forgets what they follow from.
    void takeFollowers(Index source, std::vector<Index>& followers);
    // Hands (equation, factor) of each to the visitor.
    template <typename Visitor> void forEachFollower(Index source, Visitor visit) const
    {
        for (const Link& link : m_links)
            if (link.source == source)
                visit(link.equation, link.factor);
    }
    // Hands (source, factor) to the visitor for each equation that this one follows from.
    template <typename Visitor> void forEachSource(Index equation, Visitor visit) const
    {
        for (const Link& link : m_links)
            if (link.equation == equation)
                visit(link.source, link.factor);
    }

private:
    struct Link {
        Index equation;
        Index source;
        double factor;
    };

    template <typename Condition> void dropLinks(Condition);

    std::vector<Link> m_links;
    std::vector<Index> m_followers; // how many, by source
};
