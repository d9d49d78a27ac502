#include "platform/tables/CellPool.h"

std::shared_ptr<UITableViewCell> CellPool::take(const NSString& identifier)
{
    auto& unused = m_unused[identifier];
    if (!unused.empty()) {
        auto cell = std::move(unused.back());
        unused.pop_back();
        cell->prepareForReuse();
        return cell;
    }
    const Maker maker = m_makers.value(identifier);
    if (!maker)
        return nullptr;
    auto cell = maker();
    cell->setReuseIdentifier(identifier);
    return cell;
}

void CellPool::giveBack(const std::shared_ptr<UITableViewCell>& cell)
{
    if (cell->reuseIdentifier().isEmpty()) {
        cell->removeFromSuperview();
        return;
    }
    cell->setHidden(true);
    m_unused[cell->reuseIdentifier()].push_back(cell);
}

void CellPool::keepAtMost(std::size_t count)
{
    for (auto& unused : m_unused)
        while (unused.size() > count) {
            const auto cell = std::move(unused.back());
            unused.pop_back();
            cell->removeFromSuperview();
        }
}
