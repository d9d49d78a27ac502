// A scrolling column of rows, of which only those on the screen exist.
//
// One plain section. A hundred thousand rows cost what thirty cost: heights are asked for when the rows are
// loaded, cells when their row comes into view, and a cell that has left is used again. At most one row is
// selected. A selection made by a finger is told to the delegate, one made by a message is not. Index
// paths outside of the rows are answered with nothing and change nothing.
#pragma once

#include "platform/tables/CellPool.h"
#include "platform/tables/RowGeometry.h"
#include "platform/tables/UIScrollView.h"
#include "platform/tables/UITableViewDelegate.h"

#include <map>

enum class UITableViewScrollPosition { None = 0, Top = 1, Middle = 2, Bottom = 3 };
enum class UITableViewRowAnimation { Fade = 0, None = 5 };

class UITableView : public UIScrollView {
public:
    using UIScrollView::UIScrollView;
    ~UITableView() override;

    void setDataSource(std::weak_ptr<UITableViewDataSource> dataSource);
    void setDelegate(std::weak_ptr<UITableViewDelegate> delegate);
    // Where the delegate gives no height.
    double rowHeight() const { return m_rowHeight; }
    void setRowHeight(double height);

    // registerClass:forCellReuseIdentifier: — how a new cell of that kind is made.
    void registerCell(const NSString& identifier, const CellPool::Maker& maker)
    {
        m_pool.registerCell(identifier, maker);
    }
    // dequeueReusableCellWithIdentifier:forIndexPath: — an unregistered identifier is a programming error
    // and gives a plain cell.
    std::shared_ptr<UITableViewCell> dequeueReusableCell(const NSString& identifier, NSIndexPath indexPath);

    // Asks for everything again and drops the selection.
    void reloadData();
    // reloadSections:withRowAnimation: — there is one section, 0.
    void reloadSection(int section, UITableViewRowAnimation animation);
    // An empty pair asks for every height again and moves the rows to their new places.
    void beginUpdates();
    void endUpdates();

    int numberOfRows() const { return m_rows.rowCount(); }
    CGRect rectForRow(NSIndexPath indexPath) const;
    std::optional<NSIndexPath> indexPathForRowAtPoint(const CGPoint& point) const;
    // The cells on the screen, from top to bottom.
    std::vector<std::shared_ptr<UITableViewCell>> visibleCells() const;
    // The cell of a row on the screen; null for all others.
    std::shared_ptr<UITableViewCell> cellForRow(NSIndexPath indexPath) const;
    std::optional<NSIndexPath> indexPathForCell(const UITableViewCell& cell) const;

    std::optional<NSIndexPath> indexPathForSelectedRow() const { return m_selected; }
    std::vector<NSIndexPath> indexPathsForSelectedRows() const;
    // selectRowAtIndexPath:animated:scrollPosition: — none scrolls nowhere.
    void selectRow(NSIndexPath indexPath, Animated animated, UITableViewScrollPosition position);
    void deselectRow(NSIndexPath indexPath, Animated animated);
    // scrollToRowAtIndexPath:atScrollPosition:animated: — none scrolls as little as shows the row.
    void scrollToRow(NSIndexPath indexPath, UITableViewScrollPosition position, Animated animated);

    void layoutSubviews() override;
    void touchesBegan(const UITouches& touches, UIEvent& event) override;
    void touchesMoved(const UITouches& touches, UIEvent& event) override;
    void touchesEnded(const UITouches& touches, UIEvent& event) override;
    void touchesCancelled(const UITouches& touches, UIEvent& event) override;

protected:
    void init() override;
    void contentOffsetDidChange() override { setNeedsLayout(); }

private:
    using Span = RowGeometry::Span;

    std::shared_ptr<UITableViewDelegate> tableDelegate() const { return m_tableDelegate.lock(); }
    bool hasRow(NSIndexPath indexPath) const;
    void loadIfNecessary();
    RowGeometry measureRows();
    void setRows(RowGeometry rows);
    Span visibleRows() const;
    CGRect frameOfRow(const RowGeometry& rows, int row) const;
    void showRows(Span span, const RowGeometry& rows);
    void showRow(int row, const RowGeometry& rows);
    void hideRowsOutside(Span span);
    void discardCells();
    void useAgain(const std::vector<std::shared_ptr<UITableViewCell>>& cells);
    void letGoOfTouches(UITableViewCell& cell);
    void moveRows(const RowGeometry& oldRows);
    void setCellSelected(NSIndexPath indexPath, bool selected, Animated animated);
    void setHighlightedRow(std::optional<int> row);
    void userTapped(NSIndexPath indexPath);

    std::weak_ptr<UITableViewDataSource> m_dataSource;
    std::weak_ptr<UITableViewDelegate> m_tableDelegate;
    CellPool m_pool;
    RowGeometry m_rows;
    std::map<int, std::shared_ptr<UITableViewCell>> m_cells; // by row
    std::optional<NSIndexPath> m_selected;
    std::optional<int> m_highlightedRow;
    double m_rowHeight = 44;
    int m_updateDepth = 0;
    int m_movesUnderWay = 0; // rows that have left the view stay until they have arrived
    bool m_loaded = false;
};
