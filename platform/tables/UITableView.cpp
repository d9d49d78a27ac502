#include "platform/tables/UITableView.h"

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/UIWindow.h"

#include <algorithm>

namespace {

constexpr double moveDuration = 0.3; // seconds
constexpr double fadeDuration = 0.3; // seconds

} // namespace

UITableView::~UITableView() = default;

void UITableView::init()
{
    UIScrollView::init();
    setAlwaysBounceVertical(true);
}

void UITableView::setDataSource(std::weak_ptr<UITableViewDataSource> dataSource)
{
    m_dataSource = std::move(dataSource);
    m_loaded = false;
    setNeedsLayout();
}

void UITableView::setDelegate(std::weak_ptr<UITableViewDelegate> delegate)
{
    UIScrollView::setDelegate(delegate);
    m_tableDelegate = std::move(delegate);
    m_loaded = false;
    setNeedsLayout();
}

void UITableView::setRowHeight(double height)
{
    m_rowHeight = height;
    m_loaded = false;
    setNeedsLayout();
}

std::shared_ptr<UITableViewCell> UITableView::dequeueReusableCell(const NSString& identifier, NSIndexPath)
{
    auto cell = m_pool.take(identifier);
    NSCAssert(cell, "UITableView",
        QStringLiteral("Unable to dequeue a cell with identifier %1: register it first.").arg(identifier));
    return cell ? cell : make<UITableViewCell>();
}

// --- Rows --------------------------------------------------------------------------------------------

void UITableView::reloadData()
{
    const KeepAlive keepAlive(*this); // a finger's end may drop the table
    discardCells();
    m_selected.reset();
    m_loaded = false;
    setNeedsLayout();
    loadIfNecessary();
}

void UITableView::reloadSection(int section, UITableViewRowAnimation animation)
{
    NSParameterAssert(section == 0, "UITableView", "section == 0");
    if (section != 0)
        return;
    if (animation == UITableViewRowAnimation::None || !window()) {
        reloadData();
        return;
    }
    const KeepAlive keepAlive(*this);
    // The old rows fade away over the new ones; they are no longer cells of the table.
    std::vector<std::shared_ptr<UITableViewCell>> leaving;
    for (const auto& [row, cell] : std::exchange(m_cells, {}))
        leaving.push_back(cell);
    m_highlightedRow.reset();
    for (const auto& cell : leaving)
        letGoOfTouches(*cell);
    m_selected.reset();
    m_loaded = false;
    loadIfNecessary();
    layoutIfNeeded();
    performWithoutAnimation([this] {
        for (const auto& [row, cell] : m_cells) {
            sendSubviewToBack(*cell);
            cell->setAlpha(0);
        }
    });
    const auto fade = [this, leaving] {
        for (const auto& cell : leaving)
            cell->setAlpha(0);
        for (const auto& [row, cell] : m_cells)
            cell->setAlpha(1);
    };
    animate(fadeDuration, 0, UIViewAnimationOptions::AllowUserInteraction, fade,
        [table = weakSelf(this), leaving](bool) {
            if (const auto self = table.lock())
                self->useAgain(leaving);
        });
}

// Reloads that follow each other faster than they fade leave several sets of cells; one is kept.
void UITableView::useAgain(const std::vector<std::shared_ptr<UITableViewCell>>& cells)
{
    for (const auto& cell : cells) {
        letGoOfTouches(*cell);
        m_pool.giveBack(cell);
    }
    m_pool.keepAtMost(m_cells.size());
}

void UITableView::loadIfNecessary()
{
    if (m_loaded)
        return;
    m_loaded = true;
    if (m_selected && m_selected->row >= m_rows.rowCount())
        m_selected.reset();
    setRows(measureRows());
}

RowGeometry UITableView::measureRows()
{
    const int count
        = sendMessage(*this, m_dataSource, &UITableViewDataSource::tableViewNumberOfRowsInSection, *this, 0);
    const auto delegate = tableDelegate();
    return { std::max(count, 0), [&](int row) {
                const auto height
                    = delegate ? delegate->tableViewHeightForRowAtIndexPath(*this, { 0, row }) : std::nullopt;
                return height.value_or(m_rowHeight);
            } };
}

void UITableView::setRows(RowGeometry rows)
{
    m_rows = std::move(rows);
    setContentSize({ 0, m_rows.totalHeight() });
    setNeedsLayout();
}

void UITableView::beginUpdates()
{
    const KeepAlive keepAlive(*this);
    loadIfNecessary();
    ++m_updateDepth;
}

void UITableView::endUpdates()
{
    NSCAssert(m_updateDepth > 0, "UITableView", QStringLiteral("endUpdates without a beginUpdates."));
    if (m_updateDepth == 0 || --m_updateDepth > 0)
        return;
    RowGeometry newRows = measureRows();
    if (newRows.rowCount() != m_rows.rowCount()) {
        reloadData(); // rows came or went unannounced: there is nothing to move
        return;
    }
    const RowGeometry oldRows = std::exchange(m_rows, std::move(newRows));
    moveRows(oldRows);
}

void UITableView::moveRows(const RowGeometry& oldRows)
{
    // Rows that come into view by the move start from where they would have been before it.
    const auto showComingRows = [&] { showRows(visibleRows(), oldRows); };
    performWithoutAnimation(showComingRows);
    ++m_movesUnderWay;
    const auto move = [this] {
        setContentSize({ 0, m_rows.totalHeight() });
        for (const auto& [row, cell] : m_cells) {
            cell->setFrame(frameOfRow(m_rows, row));
            cell->layoutIfNeeded();
        }
    };
    const auto table = weakSelf(this);
    animate(moveDuration, 0,
        UIViewAnimationOptions::AllowUserInteraction | UIViewAnimationOptions::BeginFromCurrentState, move,
        [table](bool) {
            const auto self = table.lock();
            if (self && --self->m_movesUnderWay == 0)
                self->setNeedsLayout();
        });
}

bool UITableView::hasRow(NSIndexPath indexPath) const
{
    return indexPath.section == 0 && indexPath.row >= 0 && indexPath.row < m_rows.rowCount();
}

CGRect UITableView::rectForRow(NSIndexPath indexPath) const
{
    return hasRow(indexPath) ? frameOfRow(m_rows, indexPath.row) : CGRect();
}

CGRect UITableView::frameOfRow(const RowGeometry& rows, int row) const
{
    return { 0, rows.top(row), bounds().width(), rows.height(row) };
}

std::optional<NSIndexPath> UITableView::indexPathForRowAtPoint(const CGPoint& point) const
{
    const int row = m_rows.rowAt(point.y());
    return row < 0 ? std::nullopt : std::optional(NSIndexPath { 0, row });
}

UITableView::Span UITableView::visibleRows() const
{
    return m_rows.rowsBetween(bounds().top(), bounds().bottom());
}

// --- Cells -------------------------------------------------------------------------------------------

void UITableView::layoutSubviews()
{
    loadIfNecessary();
    UIScrollView::layoutSubviews();
    const Span span = visibleRows();
    if (m_movesUnderWay == 0)
        hideRowsOutside(span);
    showRows(span, m_rows);
    for (const auto& [row, cell] : m_cells)
        if (cell->frame().width() != bounds().width())
            cell->setFrame(frameOfRow(m_rows, row));
}

void UITableView::showRows(Span span, const RowGeometry& rows)
{
    for (int row = span.first; row < span.last; ++row)
        if (!m_cells.contains(row))
            showRow(row, rows);
}

void UITableView::showRow(int row, const RowGeometry& rows)
{
    if (m_dataSource.expired())
        return;
    const NSIndexPath indexPath { 0, row };
    auto cell = sendMessage(
        *this, m_dataSource, &UITableViewDataSource::tableViewCellForRowAtIndexPath, *this, indexPath);
    NSCAssert(cell, "UITableView", QStringLiteral("The data source returned no cell for row %1.").arg(row));
    if (!cell)
        cell = make<UITableViewCell>();
    m_cells[row] = cell;
    performWithoutAnimation([&] {
        cell->setHidden(false);
        cell->setAlpha(1);
        cell->setHighlighted(false, Animated::No);
        cell->setSelected(m_selected == indexPath, Animated::No);
        if (cell->superview() != this)
            insertSubview(cell, 0);
        cell->setFrame(frameOfRow(rows, row));
    });
    sendMessage(
        *this, m_tableDelegate, &UITableViewDelegate::tableViewWillDisplayCell, *this, *cell, indexPath);
}

void UITableView::hideRowsOutside(Span span)
{
    std::vector<int> leaving;
    for (const auto& [row, cell] : m_cells)
        if (!span.contains(row))
            leaving.push_back(row);
    for (const int row : leaving) {
        const auto cell = cellForRow({ 0, row });
        if (cell)
            letGoOfTouches(*cell); // as long as it is known which row it shows
        if (!cell || cellForRow({ 0, row }) != cell)
            continue; // one of those who were told has reloaded the table
        m_cells.erase(row);
        m_pool.giveBack(cell);
    }
}

// All rows may be others by now, so that these cells show none any more.
void UITableView::discardCells()
{
    m_highlightedRow.reset();
    for (const auto& [row, cell] : std::exchange(m_cells, {})) {
        letGoOfTouches(*cell);
        m_pool.giveBack(cell);
    }
}

// A finger does not go over to the row that a cell shows next.
void UITableView::letGoOfTouches(UITableViewCell& cell)
{
    if (window())
        window()->touches().cancelTouchesIn(cell);
}

std::vector<std::shared_ptr<UITableViewCell>> UITableView::visibleCells() const
{
    std::vector<std::shared_ptr<UITableViewCell>> cells;
    for (const auto& [row, cell] : m_cells)
        cells.push_back(cell);
    return cells;
}

std::shared_ptr<UITableViewCell> UITableView::cellForRow(NSIndexPath indexPath) const
{
    const auto found = indexPath.section == 0 ? m_cells.find(indexPath.row) : m_cells.end();
    return found == m_cells.end() ? nullptr : found->second;
}

std::optional<NSIndexPath> UITableView::indexPathForCell(const UITableViewCell& cell) const
{
    const auto found = std::find_if(
        m_cells.begin(), m_cells.end(), [&](const auto& entry) { return entry.second.get() == &cell; });
    return found == m_cells.end() ? std::nullopt : std::optional(NSIndexPath { 0, found->first });
}
