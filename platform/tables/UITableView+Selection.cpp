// The part of UITableView that selects rows: by message, and by a finger.

#include "platform/foundation/Messages.h"
#include "platform/tables/UITableView.h"
#include "platform/views/UITouch.h"

std::vector<NSIndexPath> UITableView::indexPathsForSelectedRows() const
{
    return m_selected ? std::vector { *m_selected } : std::vector<NSIndexPath>();
}

void UITableView::selectRow(NSIndexPath indexPath, Animated animated, UITableViewScrollPosition position)
{
    const KeepAlive keepAlive(*this);
    loadIfNecessary();
    if (!hasRow(indexPath))
        return;
    if (m_selected && m_selected != indexPath)
        setCellSelected(*m_selected, false, animated);
    m_selected = indexPath;
    setCellSelected(indexPath, true, animated);
    if (position != UITableViewScrollPosition::None)
        scrollToRow(indexPath, position, animated);
}

void UITableView::deselectRow(NSIndexPath indexPath, Animated animated)
{
    if (m_selected != indexPath)
        return;
    m_selected.reset();
    setCellSelected(indexPath, false, animated);
}

void UITableView::setCellSelected(NSIndexPath indexPath, bool selected, Animated animated)
{
    if (const auto cell = cellForRow(indexPath))
        cell->setSelected(selected, animated);
}

void UITableView::scrollToRow(NSIndexPath indexPath, UITableViewScrollPosition position, Animated animated)
{
    const KeepAlive keepAlive(*this);
    loadIfNecessary();
    if (!hasRow(indexPath))
        return;
    CGRect target = rectForRow(indexPath);
    const double free = uncoveredRect().height() - target.height();
    // A rectangle as long as the view, placed so that the row lies at its top, middle or bottom.
    if (position == UITableViewScrollPosition::Top)
        target.adjust(0, 0, 0, free);
    else if (position == UITableViewScrollPosition::Middle)
        target.adjust(0, -free / 2, 0, free / 2);
    else if (position == UITableViewScrollPosition::Bottom)
        target.adjust(0, -free, 0, 0);
    scrollRectToVisible(target, animated);
}

void UITableView::userTapped(NSIndexPath indexPath)
{
    const KeepAlive keepAlive(*this);
    const auto delegate = tableDelegate();
    const auto chosen = delegate ? delegate->tableViewWillSelectRowAtIndexPath(*this, indexPath) : indexPath;
    if (!chosen || !hasRow(*chosen))
        return;
    const auto previous = m_selected;
    if (previous && previous != chosen) {
        deselectRow(*previous, Animated::Yes);
        if (delegate)
            delegate->tableViewDidDeselectRowAtIndexPath(*this, *previous);
    }
    if (!hasRow(*chosen))
        return; // the delegate loaded other rows meanwhile
    m_selected = chosen;
    setCellSelected(*chosen, true, Animated::Yes);
    if (delegate)
        delegate->tableViewDidSelectRowAtIndexPath(*this, *chosen);
}

// --- Touches -----------------------------------------------------------------------------------------

void UITableView::touchesBegan(const UITouches& touches, UIEvent&)
{
    const auto indexPath = indexPathForRowAtPoint(touches.front()->locationInView(this));
    setHighlightedRow(indexPath ? std::optional(indexPath->row) : std::nullopt);
}

void UITableView::touchesMoved(const UITouches&, UIEvent&) { }

void UITableView::touchesEnded(const UITouches& touches, UIEvent&)
{
    const KeepAlive keepAlive(*this);
    const auto indexPath = indexPathForRowAtPoint(touches.front()->locationInView(this));
    if (indexPath && m_highlightedRow == indexPath->row)
        userTapped(*indexPath);
    setHighlightedRow({}); // last: a row that is selected now keeps its background as it is
}

void UITableView::touchesCancelled(const UITouches&, UIEvent&) { setHighlightedRow({}); }

void UITableView::setHighlightedRow(std::optional<int> row)
{
    const auto previous = std::exchange(m_highlightedRow, row);
    if (previous)
        if (const auto cell = cellForRow({ 0, *previous }))
            cell->setHighlighted(false, Animated::Yes);
    if (row)
        if (const auto cell = cellForRow({ 0, *row }))
            cell->setHighlighted(true, Animated::No);
}
