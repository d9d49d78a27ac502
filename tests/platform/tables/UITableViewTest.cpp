#include "platform/tables/UITableView.h"

#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <gmock/gmock.h>

namespace {

using Lines = std::vector<std::string>;

const NSString rowCell = QStringLiteral("row");

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

class UITableViewTest : public SceneFixture {
protected:
    UITableViewTest()
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

TEST_F(UITableViewTest, MakesCellsOnlyForRowsOnTheScreen)
{
    EXPECT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
    EXPECT_EQ(cellsMade, 4);
    EXPECT_EQ(table->contentSize().height(), 5000);
    EXPECT_EQ(table->cellForRow({ 0, 2 })->frame(), CGRect(0, 100, 320, 50));
    EXPECT_EQ(table->cellForRow({ 0, 4 }), nullptr);
}

TEST_F(UITableViewTest, UsesCellsAgainThatHaveLeftTheScreen)
{
    for (double offset = 0; offset <= 4800; offset += 25)
        scrollTo(offset);
    EXPECT_EQ(visibleRows(), (std::vector { 96, 97, 98, 99 }));
    EXPECT_LE(cellsMade, 6);
    EXPECT_EQ(table->visibleCells().size(), 4u);
}

TEST_F(UITableViewTest, ShowsTheSameRowsFromTheTenThousandthJumpAsFromTheFirst)
{
    for (int jump = 0; jump < 10'000; ++jump)
        table->setContentOffset({ 0, jump % 2 ? 0.0 : 3000.0 });
    scrollTo(3000);
    for (int jump = 0; jump < 200; ++jump)
        scrollTo(jump % 2 ? 0 : 3000);
    EXPECT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
    EXPECT_LE(cellsMade, 8);
}

TEST_F(UITableViewTest, SelectsARowWithATap)
{
    touch.tap({ 100, 120 });
    EXPECT_EQ(table->indexPathForSelectedRow(), (NSIndexPath { 0, 2 }));
    EXPECT_EQ(table->indexPathsForSelectedRows(), (std::vector { NSIndexPath { 0, 2 } }));
    EXPECT_EQ(rows->lines, (Lines { "will select 2", "did select 2" }));
}

TEST_F(UITableViewTest, KeepsTheBackgroundOfAPressedRowThatIsSelected)
{
    const auto background = make<UIView>();
    const auto cell = table->cellForRow({ 0, 2 });
    cell->setSelectedBackgroundView(background);
    touch.down({ 100, 120 });
    scheduler.advance(0.2);
    EXPECT_EQ(background->alpha(), 1);
    touch.up();
    EXPECT_FALSE(cell->isHighlighted());
    EXPECT_EQ(background->alpha(), 1);
    EXPECT_EQ(background->layer()->presentationValues().opacity, 1);
    const int framesBefore = scheduler.framesRun();
    scheduler.advance(1);
    EXPECT_LE(scheduler.framesRun() - framesBefore, 1); // nothing fades
}

TEST_F(UITableViewTest, DeselectsTheOldRowBeforeItSelectsTheNewOne)
{
    touch.tap({ 100, 120 });
    rows->lines.clear();
    touch.tap({ 100, 20 });
    EXPECT_EQ(rows->lines, (Lines { "will select 0", "did deselect 2", "did select 0" }));
    EXPECT_FALSE(table->cellForRow({ 0, 2 })->isSelected());
    EXPECT_TRUE(table->cellForRow({ 0, 0 })->isSelected());
}

TEST_F(UITableViewTest, SelectsNothingWhenTheDelegateRefuses)
{
    rows->refusesSelection = true;
    touch.tap({ 100, 120 });
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(rows->lines, (Lines { "will select 2" }));
}

TEST_F(UITableViewTest, TellsNobodyOfASelectionByMessage)
{
    select(1);
    EXPECT_TRUE(table->cellForRow({ 0, 1 })->isSelected());
    select(2);
    EXPECT_FALSE(table->cellForRow({ 0, 1 })->isSelected());
    table->deselectRow({ 0, 2 }, Animated::No);
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(rows->lines, Lines());
}

TEST_F(UITableViewTest, GivesAReusedCellItsRowsSelectionBeforeItIsDisplayed)
{
    select(2);
    scrollTo(1000);
    for (const auto& cell : table->visibleCells())
        EXPECT_FALSE(cell->isSelected());
    rows->lines.clear();
    scrollTo(0);
    EXPECT_EQ(rows->lines, (Lines { "display selected 2" }));
}

TEST_F(UITableViewTest, HighlightsAPressedRowAfterAMomentAndNotWhileScrolling)
{
    touch.down({ 100, 120 });
    EXPECT_FALSE(table->cellForRow({ 0, 2 })->isHighlighted());
    scheduler.advance(0.16);
    EXPECT_TRUE(table->cellForRow({ 0, 2 })->isHighlighted());
    touch.moveTo({ 100, 100 });
    touch.moveTo({ 100, 80 });
    EXPECT_FALSE(table->cellForRow({ 0, 2 })->isHighlighted());
    touch.up();
    EXPECT_EQ(rows->lines, Lines());
}

TEST_F(UITableViewTest, SelectsNothingWithTheTouchThatStopsIt)
{
    touch.drag({ 100, 180 }, { 100, 60 }, 0.1);
    scheduler.advance(0.1);
    touch.tap({ 100, 100 });
    EXPECT_EQ(rows->lines, Lines());
}

TEST_F(UITableViewTest, MovesRowsToTheirNewPlacesAroundAnEmptyPairOfUpdates)
{
    rows->growsSelection = true;
    select(1);
    const int askedBefore = rows->cellsAskedFor;
    table->beginUpdates();
    table->endUpdates();
    EXPECT_EQ(table->cellForRow({ 0, 1 })->frame(), CGRect(0, 50, 320, 90));
    EXPECT_EQ(table->cellForRow({ 0, 2 })->frame(), CGRect(0, 140, 320, 50));
    EXPECT_EQ(table->contentSize().height(), 5040);
    EXPECT_EQ(rows->cellsAskedFor, askedBefore); // no cell is loaded again
    runFrames();
    const auto shownTop = [&](int row) {
        const auto& layer = table->cellForRow({ 0, row })->layer();
        return layer->presentationValues().frame().top();
    };
    EXPECT_NEAR(shownTop(2), 100, 0.01);
    scheduler.advance(0.15);
    EXPECT_NEAR(shownTop(2), 120, 3);
    scheduler.advance(0.2);
    EXPECT_NEAR(shownTop(2), 140, 0.01);
}

TEST_F(UITableViewTest, BringsRowsInFromBelowWhenRowsAboveThemShrink)
{
    rows->growsSelection = true;
    select(1);
    table->reloadData();
    select(1);
    table->beginUpdates();
    table->endUpdates();
    scheduler.advance(1);
    ASSERT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
    table->deselectRow({ 0, 1 }, Animated::No);
    scrollTo(0);
    table->beginUpdates();
    table->endUpdates();
    EXPECT_EQ(table->cellForRow({ 0, 3 })->frame().top(), 150);
    scheduler.advance(1);
    EXPECT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
}

TEST_F(UITableViewTest, ReportsAnEndOfUpdatesWithoutABeginning)
{
    const AssertionRecorder recorder;
    table->endUpdates();
    EXPECT_THAT(
        recorder.messages(), testing::ElementsAre(QStringLiteral("endUpdates without a beginUpdates.")));
}

TEST_F(UITableViewTest, DropsTheSelectionWhenItReloads)
{
    select(1);
    rows->count = 2;
    table->reloadData();
    runFrames();
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(visibleRows(), (std::vector { 0, 1 }));
}

TEST_F(UITableViewTest, FadesOldRowsIntoNewOnesWhenItsSectionReloads)
{
    const auto old = table->cellForRow({ 0, 0 });
    table->reloadSection(0, UITableViewRowAnimation::Fade);
    const auto fresh = table->cellForRow({ 0, 0 });
    ASSERT_NE(fresh, nullptr);
    EXPECT_NE(fresh, old);
    EXPECT_EQ(old->superview(), table.get());
    scheduler.advance(0.15);
    EXPECT_NEAR(fresh->layer()->presentationValues().opacity, 0.5, 0.1);
    scheduler.advance(0.3);
    EXPECT_TRUE(old->isHidden());
    EXPECT_EQ(fresh->alpha(), 1);
}

TEST_F(UITableViewTest, UsesTheCellsOfAReloadedSectionAgainWhenTheyHaveFaded)
{
    const auto reload = [this](double time) {
        table->reloadSection(0, UITableViewRowAnimation::Fade);
        scheduler.advance(time);
        EXPECT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
        for (const auto& cell : table->visibleCells()) {
            EXPECT_FALSE(cell->isHidden());
            EXPECT_EQ(cell->alpha(), 1);
        }
    };
    reload(1);
    EXPECT_EQ(cellsMade, 8) << "as many as are seen at once";
    for (int again = 0; again < 50; ++again)
        reload(1);
    EXPECT_EQ(cellsMade, 8);
    for (int again = 0; again < 50; ++again)
        reload(0.1);
    EXPECT_EQ(cellsMade, 16) << "four sets fade at once";
    scheduler.advance(1);
    EXPECT_EQ(table->visibleCells().size(), 4u);
    EXPECT_LE(table->subviews().size(), 4u + 2u + 4u) << "rows, indicators, and one set of spare cells";
}

TEST_F(UITableViewTest, FadesOldRowsAboveTheNewOnesAlsoWhenTheirCellsAreUsedAgain)
{
    for (int reload = 0; reload < 3; ++reload) {
        const auto old = table->cellForRow({ 0, 0 });
        table->reloadSection(0, UITableViewRowAnimation::Fade);
        const auto& views = table->subviews();
        EXPECT_LT(std::find(views.begin(), views.end(), table->cellForRow({ 0, 0 })),
            std::find(views.begin(), views.end(), old));
        scheduler.advance(1);
    }
}

TEST_F(UITableViewTest, AFingerOnARowThatFadesAwayDoesNotGoOverToTheRowThatItsCellShowsNext)
{
    table->reloadSection(0, UITableViewRowAnimation::Fade);
    touch.down({ 10, 10 });
    scheduler.advance(1);
    table->reloadSection(0, UITableViewRowAnimation::Fade);
    touch.up();
    EXPECT_EQ(rows->lines, Lines {});
}

TEST_F(UITableViewTest, ScrollsARowIntoView)
{
    table->scrollToRow({ 0, 2 }, UITableViewScrollPosition::None, Animated::No);
    EXPECT_EQ(table->contentOffset().y(), 0);
    table->scrollToRow({ 0, 10 }, UITableViewScrollPosition::None, Animated::No);
    EXPECT_EQ(table->contentOffset().y(), 350);
    table->scrollToRow({ 0, 10 }, UITableViewScrollPosition::Top, Animated::No);
    EXPECT_EQ(table->contentOffset().y(), 500);
    table->scrollToRow({ 0, 10 }, UITableViewScrollPosition::Middle, Animated::No);
    EXPECT_EQ(table->contentOffset().y(), 425);
    table->scrollToRow({ 0, 99 }, UITableViewScrollPosition::Top, Animated::No);
    EXPECT_EQ(table->contentOffset().y(), 4800);
}

TEST_F(UITableViewTest, AnswersNothingForRowsThatDoNotExist)
{
    for (const NSIndexPath path : { NSIndexPath { 0, -1 }, NSIndexPath { 0, 100 }, NSIndexPath { 1, 0 } }) {
        table->selectRow(path, Animated::Yes, UITableViewScrollPosition::Top);
        table->deselectRow(path, Animated::Yes);
        table->scrollToRow(path, UITableViewScrollPosition::Top, Animated::Yes);
        EXPECT_EQ(table->cellForRow(path), nullptr);
        EXPECT_EQ(table->rectForRow(path), CGRect());
    }
    scheduler.advance(1);
    EXPECT_EQ(table->contentOffset(), CGPoint());
    EXPECT_EQ(table->indexPathForCell(*make<UITableViewCell>()), std::nullopt);
}

TEST_F(UITableViewTest, ReportsARowWithoutACellAndShowsAnEmptyOne)
{
    const AssertionRecorder recorder;
    rows->returnsNoCells = true;
    table->reloadData();
    runFrames();
    ASSERT_FALSE(recorder.failures().empty());
    EXPECT_EQ(
        recorder.failures().front().message, QStringLiteral("The data source returned no cell for row 0."));
    EXPECT_EQ(table->visibleCells().size(), 4u);
}

TEST_F(UITableViewTest, ReportsAnIdentifierThatNobodyRegistered)
{
    const AssertionRecorder recorder;
    EXPECT_NE(table->dequeueReusableCell(QStringLiteral("unknown"), {}), nullptr);
    EXPECT_EQ(recorder.messages().size(), 1u);
}

TEST_F(UITableViewTest, IsEmptyWithoutADataSource)
{
    rows.reset();
    table->reloadData();
    runFrames();
    EXPECT_TRUE(table->visibleCells().empty());
    touch.tap({ 100, 100 });
    EXPECT_EQ(table->contentSize().height(), 0);
}

TEST_F(UITableViewTest, AsksForTheRowsThatItsDataHasWhenItIsFirstShown)
{
    const auto late = make<UITableView>(CGRect(0, 0, 320, 200));
    late->registerCell(rowCell, [] { return make<NumberedCell>(); });
    late->setDataSource(rows);
    EXPECT_EQ(late->cellForRow({ 0, 0 }), nullptr);
    window->addSubview(late);
    runFrames();
    EXPECT_EQ(late->visibleCells().size(), 5u); // of its own row height
}

TEST_F(UITableViewTest, HoldsAHundredThousandRowsInAScreenfulOfCells)
{
    rows->count = 100'000;
    table->reloadData();
    scrollTo(50.0 * 99'000);
    EXPECT_EQ(visibleRows(), (std::vector { 99'000, 99'001, 99'002, 99'003 }));
    EXPECT_LE(cellsMade, 8);
}

TEST_F(UITableViewTest, FollowsANewWidth)
{
    table->setFrame({ 0, 0, 200, 200 });
    runFrames();
    EXPECT_EQ(table->cellForRow({ 0, 1 })->frame(), CGRect(0, 50, 200, 50));
}

TEST_F(UITableViewTest, ARowHeightThatIsNoHeightIsNone)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double height : { std::nan(""), infinity, -infinity, -20.0 }) {
        rows->heightOfRow1 = height;
        table->reloadData();
        runFrames();
        EXPECT_EQ(table->rectForRow({ 0, 1 }).height(), 0) << height;
        EXPECT_EQ(table->rectForRow({ 0, 2 }).top(), 50) << height;
        EXPECT_EQ(table->contentSize().height(), 4950) << height;
    }
}

// --- Fingers on rows that go -------------------------------------------------------------------------

// Writes down what becomes of a touch, and does what a test asks for while it hears of it.
class TouchedView final : public UIView {
public:
    using UIView::UIView;
    void touchesBegan(const UITouches&, UIEvent&) override { hear("began"); }
    void touchesMoved(const UITouches&, UIEvent&) override { hear("moved"); }
    void touchesEnded(const UITouches&, UIEvent&) override { hear("ended"); }
    void touchesCancelled(const UITouches&, UIEvent&) override { hear("cancelled"); }

    Lines lines;
    std::function<void()> whenCancelled;

private:
    void hear(const char* what)
    {
        lines.push_back(what);
        if (whenCancelled && lines.back() == "cancelled")
            whenCancelled();
    }
};

class TouchedRowTest : public UITableViewTest {
protected:
    // Puts a finger on something in the first row.
    void touchFirstRow()
    {
        table->cellForRow({ 0, 0 })->contentView()->addSubview(touched);
        touch.down({ 10, 10 });
        scheduler.advance(0.2);
        ASSERT_EQ(touched->lines, Lines { "began" });
    }

    std::shared_ptr<TouchedView> touched = make<TouchedView>(CGRect(0, 0, 320, 50));
};

TEST_F(TouchedRowTest, AFingerOnARowThatIsScrolledAwayIsCancelledWhileTheRowIsStillKnown)
{
    touchFirstRow();
    const auto cell = table->cellForRow({ 0, 0 });
    std::optional<NSIndexPath> rowThen;
    touched->whenCancelled = [&] { rowThen = table->indexPathForCell(*cell); };
    scrollTo(3000);
    EXPECT_EQ(touched->lines, (Lines { "began", "cancelled" }));
    EXPECT_EQ(rowThen, (NSIndexPath { 0, 0 }));
    touch.moveTo({ 20, 20 });
    touch.up();
    EXPECT_EQ(touched->lines.size(), 2u) << "though the cell shows another row now";
}

TEST_F(TouchedRowTest, AFingerOnARowIsCancelledByAReloadWhenTheCellShowsNoRowAnyMore)
{
    const std::function<void()> reloads[] = { [this] { table->reloadData(); },
        [this] { table->reloadSection(0, UITableViewRowAnimation::Fade); },
        [this] { table->reloadSection(0, UITableViewRowAnimation::None); } };
    for (const auto& reload : reloads) {
        touched->lines.clear();
        touchFirstRow();
        const auto cell = table->cellForRow({ 0, 0 });
        bool hadRow = true;
        touched->whenCancelled = [&] { hadRow = table->indexPathForCell(*cell).has_value(); };
        reload();
        EXPECT_EQ(touched->lines, (Lines { "began", "cancelled" }));
        EXPECT_FALSE(hadRow);
        touch.up();
        scheduler.advance(1);
        EXPECT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
    }
}

TEST_F(TouchedRowTest, WhoHearsOfTheCancellationMayReloadTheTable)
{
    touchFirstRow();
    touched->whenCancelled = [&] { table->reloadData(); };
    scrollTo(3000);
    EXPECT_EQ(visibleRows(), (std::vector { 60, 61, 62, 63 }));
    touch.up();
}

TEST_F(TouchedRowTest, WhoHearsOfTheCancellationMayDropTheTable)
{
    touchFirstRow();
    const std::weak_ptr<UITableView> weak = table;
    touched->whenCancelled = [&] {
        if (table)
            std::exchange(table, nullptr)->removeFromSuperview();
    };
    scrollTo(3000);
    touch.up();
    scheduler.advance(1);
    touched->removeFromSuperview();
    EXPECT_TRUE(weak.expired());
}

TEST_F(TouchedRowTest, ARowMayGoFromInsideEachMessageOfItsSelection)
{
    const std::function<void()> ways[] = {
        [this] { table->reloadData(); },
        [this] { table->reloadSection(0, UITableViewRowAnimation::Fade); },
        [this] {
            table->cellForRow({ 0, 1 })->removeFromSuperview();
        },
        [this] {
            rows->count = 1;
            table->reloadData();
        },
    };
    for (const char* message : { "will select", "did deselect", "did select" })
        for (const auto& way : ways) {
            rows->count = 100;
            table->reloadData();
            runFrames();
            select(0);
            bool done = false;
            rows->onSelection = [&](const std::string& heard) {
                if (heard.starts_with(message) && !std::exchange(done, true))
                    way();
            };
            touch.tap({ 10, 75 });
            scheduler.advance(1);
            rows->onSelection = nullptr;
            EXPECT_TRUE(done) << message;
            const auto selected = table->indexPathForSelectedRow();
            EXPECT_TRUE(!selected || selected->row < rows->count) << message;
            EXPECT_EQ(table->visibleCells().size(), std::min(rows->count, 4)) << message;
        }
}

TEST_F(TouchedRowTest, TheTableMayBeDroppedFromInsideEachMessageOfASelection)
{
    for (const char* message : { "will select", "did deselect", "did select" }) {
        table = make<UITableView>(CGRect(0, 0, 320, 200));
        table->registerCell(rowCell, [] { return make<NumberedCell>(); });
        table->setDataSource(rows);
        table->setDelegate(rows);
        window->addSubview(table);
        runFrames();
        select(0);
        const std::weak_ptr<UITableView> weak = table;
        rows->onSelection = [&](const std::string& heard) {
            if (table && heard.starts_with(message))
                std::exchange(table, nullptr)->removeFromSuperview();
        };
        touch.tap({ 10, 75 });
        scheduler.advance(1);
        EXPECT_TRUE(weak.expired()) << message;
    }
    rows->onSelection = nullptr;
}

TEST_F(TouchedRowTest, TheFingerThatScrollsGoesOnWhenItsRowHasLeft)
{
    touch.down({ 10, 190 });
    touch.glideTo({ 10, 10 }, 0.5);
    touch.glideTo({ 10, -500 }, 0.5);
    EXPECT_NEAR(table->contentOffset().y(), 680, 0.1);
    EXPECT_TRUE(table->isDragging());
    touch.up();
}

TEST_F(TouchedRowTest, ACellThatIsTakenOutUnderAFingerSelectsNothing)
{
    touch.down({ 10, 10 });
    scheduler.advance(0.2);
    table->cellForRow({ 0, 0 })->removeFromSuperview();
    touch.up();
    EXPECT_EQ(rows->lines, Lines {});
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
}

} // namespace
