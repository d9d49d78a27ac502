// A table of numbered rows in a window, whose data source writes down what the table tells it.
#pragma once

#include "platform/tables/UITableView.h"
#include "tests/support/SceneFixture.h"

using Lines = std::vector<std::string>;

inline const NSString rowCell = QStringLiteral("row");

class NumberedCell final : public UITableViewCell {
public:
    int row = -1;
    int reuses = 0;
    void prepareForReuse() override { ++reuses; }
};

// Rows 50 points high, the selected one 90.
class Rows final : public NSObject, public UITableViewDataSource, public UITableViewDelegate {
public:
    int tableViewNumberOfRowsInSection(UITableView&, int) override { return count; }
    std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(
        UITableView& table, NSIndexPath path) override
    {
        if (returnsNoCells)
            return nullptr;
        auto cell = std::static_pointer_cast<NumberedCell>(table.dequeueReusableCell(rowCell, path));
        cell->row = path.row;
        ++cellsAskedFor;
        return cell;
    }
    std::optional<double> tableViewHeightForRowAtIndexPath(UITableView& table, NSIndexPath path) override
    {
        if (heightOfRow1 && path.row == 1)
            return heightOfRow1;
        return growsSelection && table.indexPathForSelectedRow() == path ? 90 : 50;
    }
    void tableViewWillDisplayCell(UITableView&, UITableViewCell& cell, NSIndexPath path) override
    {
        if (cell.isSelected())
            lines.push_back("display selected " + std::to_string(path.row));
    }
    std::optional<NSIndexPath> tableViewWillSelectRowAtIndexPath(UITableView&, NSIndexPath path) override
    {
        lines.push_back("will select " + std::to_string(path.row));
        if (onSelection)
            onSelection(lines.back());
        return refusesSelection ? std::nullopt : std::optional(path);
    }
    void tableViewDidSelectRowAtIndexPath(UITableView& table, NSIndexPath path) override
    {
        const auto cell = table.cellForRow(path);
        lines.push_back(
            "did select " + std::to_string(path.row) + (cell && cell->isSelected() ? "" : " late"));
        if (onSelection)
            onSelection(lines.back());
    }
    void tableViewDidDeselectRowAtIndexPath(UITableView& table, NSIndexPath path) override
    {
        const auto cell = table.cellForRow(path);
        lines.push_back(
            "did deselect " + std::to_string(path.row) + (cell && cell->isSelected() ? " late" : ""));
        if (onSelection)
            onSelection(lines.back());
    }

    int count = 100;
    int cellsAskedFor = 0;
    std::optional<double> heightOfRow1;
    std::function<void(const std::string& message)> onSelection;
    bool growsSelection = false;
    bool refusesSelection = false;
    bool returnsNoCells = false;
    Lines lines;
};

class TableFixture : public SceneFixture {
protected:
    TableFixture()
    {
        UIScreen::mainScreen()->setGeometry({ screenGeometry.size, screenGeometry.scale, {} });
        table->registerCell(rowCell, [this] {
            ++cellsMade;
            return make<NumberedCell>();
        });
        table->setDataSource(rows);
        table->setDelegate(rows);
        window->addSubview(table);
        runFrames();
    }

    std::vector<int> visibleRows() const
    {
        std::vector<int> numbers;
        for (const auto& cell : table->visibleCells())
            numbers.push_back(std::static_pointer_cast<NumberedCell>(cell)->row);
        return numbers;
    }
    void scrollTo(double offset)
    {
        table->setContentOffset({ 0, offset });
        runFrames();
    }
    void select(int row) { table->selectRow({ 0, row }, Animated::No, UITableViewScrollPosition::None); }

    std::shared_ptr<Rows> rows = make<Rows>();
    int cellsMade = 0;
    std::shared_ptr<UITableView> table = make<UITableView>(CGRect(0, 0, 320, 200));
};
