// Which row of a table is selected, by message and by a finger.
#include "tests/platform/tables/TableFixture.h"

namespace {

class UITableViewSelectionTest : public TableFixture { };

TEST_F(UITableViewSelectionTest, SelectsARowWithATap)
{
    touch.tap({ 100, 120 });
    EXPECT_EQ(table->indexPathForSelectedRow(), (NSIndexPath { 0, 2 }));
    EXPECT_EQ(table->indexPathsForSelectedRows(), (std::vector { NSIndexPath { 0, 2 } }));
    EXPECT_EQ(rows->lines, (Lines { "will select 2", "did select 2" }));
}

TEST_F(UITableViewSelectionTest, KeepsTheBackgroundOfAPressedRowThatIsSelected)
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

TEST_F(UITableViewSelectionTest, DeselectsTheOldRowBeforeItSelectsTheNewOne)
{
    touch.tap({ 100, 120 });
    rows->lines.clear();
    touch.tap({ 100, 20 });
    EXPECT_EQ(rows->lines, (Lines { "will select 0", "did deselect 2", "did select 0" }));
    EXPECT_FALSE(table->cellForRow({ 0, 2 })->isSelected());
    EXPECT_TRUE(table->cellForRow({ 0, 0 })->isSelected());
}

TEST_F(UITableViewSelectionTest, SelectsNothingWhenTheDelegateRefuses)
{
    rows->refusesSelection = true;
    touch.tap({ 100, 120 });
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(rows->lines, (Lines { "will select 2" }));
}

TEST_F(UITableViewSelectionTest, TellsNobodyOfASelectionByMessage)
{
    select(1);
    EXPECT_TRUE(table->cellForRow({ 0, 1 })->isSelected());
    select(2);
    EXPECT_FALSE(table->cellForRow({ 0, 1 })->isSelected());
    table->deselectRow({ 0, 2 }, Animated::No);
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(rows->lines, Lines());
}

TEST_F(UITableViewSelectionTest, GivesAReusedCellItsRowsSelectionBeforeItIsDisplayed)
{
    select(2);
    scrollTo(1000);
    for (const auto& cell : table->visibleCells())
        EXPECT_FALSE(cell->isSelected());
    rows->lines.clear();
    scrollTo(0);
    EXPECT_EQ(rows->lines, (Lines { "display selected 2" }));
}

TEST_F(UITableViewSelectionTest, HighlightsAPressedRowAfterAMomentAndNotWhileScrolling)
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

TEST_F(UITableViewSelectionTest, SelectsNothingWithTheTouchThatStopsIt)
{
    touch.drag({ 100, 180 }, { 100, 60 }, 0.1);
    scheduler.advance(0.1);
    touch.tap({ 100, 100 });
    EXPECT_EQ(rows->lines, Lines());
}

} // namespace
