// Cells that are not in use, by kind. A cell that is given back stays in the table, hidden: to show it
// again costs less than to add it again.
#pragma once

#include "platform/tables/UITableViewCell.h"

#include <QHash>

#include <functional>

class CellPool {
public:
    using Maker = std::function<std::shared_ptr<UITableViewCell>()>;

    void registerCell(const NSString& identifier, const Maker& maker) { m_makers.insert(identifier, maker); }
    // A cell that was given back, prepared for its new row, or else a new one; null for an unknown kind.
    std::shared_ptr<UITableViewCell> take(const NSString& identifier);
    // A cell without an identifier is dropped.
    void giveBack(const std::shared_ptr<UITableViewCell>& cell);
    // Drops what is more than that of a kind.
    void keepAtMost(std::size_t count);

private:
    QHash<NSString, Maker> m_makers;
    QHash<NSString, std::vector<std::shared_ptr<UITableViewCell>>> m_unused;
};
