// Where a table's rows come from, and who hears what happens to them.
#pragma once

#include "platform/tables/NSIndexPath.h"
#include "platform/tables/UIScrollViewDelegate.h"

#include <memory>
#include <optional>

class UITableView;
class UITableViewCell;

class UITableViewDataSource {
public:
    // tableView:numberOfRowsInSection:
    virtual int tableViewNumberOfRowsInSection(UITableView&, int section) = 0;
    // tableView:cellForRowAtIndexPath: — a dequeued or new cell, never null.
    virtual std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(UITableView&, NSIndexPath) = 0;

protected:
    ~UITableViewDataSource() = default; // nobody owns a data source through this type
};

// Every message is optional; its default is what an absent one means.
class UITableViewDelegate : public UIScrollViewDelegate {
public:
    // tableView:heightForRowAtIndexPath: — points; none stands for the table's own row height.
    virtual std::optional<double> tableViewHeightForRowAtIndexPath(UITableView&, NSIndexPath) { return {}; }
    // tableView:willDisplayCell:forRowAtIndexPath: — the cell is configured and about to be shown.
    virtual void tableViewWillDisplayCell(UITableView&, UITableViewCell&, NSIndexPath) { }
    // tableView:willSelectRowAtIndexPath: — the row to select in its place; none selects nothing.
    virtual std::optional<NSIndexPath> tableViewWillSelectRowAtIndexPath(UITableView&, NSIndexPath indexPath)
    {
        return indexPath;
    }
    // The cells' own state has changed before these are sent.
    virtual void tableViewDidSelectRowAtIndexPath(UITableView&, NSIndexPath) { }
    virtual void tableViewDidDeselectRowAtIndexPath(UITableView&, NSIndexPath) { }

protected:
    ~UITableViewDelegate() = default;
};
