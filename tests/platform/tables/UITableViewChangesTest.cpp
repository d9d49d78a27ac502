// Rows that move, and rows that are loaded anew.
#include "tests/platform/tables/TableFixture.h"
#include "tests/support/AssertionRecorder.h"

#include <gmock/gmock.h>

namespace {

class UITableViewChangesTest : public TableFixture {
protected:
    void updateHeights()
    {
        table->beginUpdates();
        table->endUpdates();
        runFrames();
    }
    double shownTop(int row) const
    {
        return table->cellForRow({ 0, row })->layer()->presentationValues().frame().top();
    }
};

TEST_F(UITableViewChangesTest, MovesRowsToTheirNewPlacesAroundAnEmptyPairOfUpdates)
{
    rows->growsSelection = true;
    select(1);
    const int askedBefore = rows->cellsAskedFor;
    updateHeights();
    EXPECT_EQ(table->cellForRow({ 0, 1 })->frame(), CGRect(0, 50, 320, 90));
    EXPECT_EQ(table->cellForRow({ 0, 2 })->frame(), CGRect(0, 140, 320, 50));
    EXPECT_EQ(table->contentSize().height(), 5040);
    EXPECT_EQ(rows->cellsAskedFor, askedBefore); // no cell is loaded again
    EXPECT_NEAR(shownTop(2), 100, 0.01);
    scheduler.advance(0.15);
    EXPECT_NEAR(shownTop(2), 120, 0.01);
    scheduler.advance(0.2);
    EXPECT_NEAR(shownTop(2), 140, 0.01);
}

TEST_F(UITableViewChangesTest, RowsThatComeByAMoveStartWhereTheyWereAndThoseThatGoStayUntilItsEnd)
{
    rows->growsSelection = true;
    table->setFrame({ 0, 0, 320, 190 });
    runFrames();
    ASSERT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
    select(1);
    updateHeights(); // the last row leaves by it
    EXPECT_NEAR(shownTop(3), 150, 0.01);
    scheduler.advance(0.15);
    table->setNeedsLayout(); // as a scroll does meanwhile
    runFrames();
    ASSERT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
    EXPECT_NEAR(shownTop(3), 170, 0.01);
    scheduler.advance(0.2);
    EXPECT_EQ(visibleRows(), (std::vector { 0, 1, 2 }));
    table->deselectRow({ 0, 1 }, Animated::No);
    updateHeights(); // and comes again
    ASSERT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
    EXPECT_EQ(table->cellForRow({ 0, 3 })->frame().top(), 150);
    EXPECT_NEAR(shownTop(3), 190, 0.01);
    scheduler.advance(0.15);
    EXPECT_NEAR(shownTop(3), 170, 0.01);
    scheduler.advance(0.2);
    EXPECT_NEAR(shownTop(3), 150, 0.01);
    EXPECT_EQ(visibleRows(), (std::vector { 0, 1, 2, 3 }));
}

TEST_F(UITableViewChangesTest, ReportsAnEndOfUpdatesWithoutABeginning)
{
    const AssertionRecorder recorder;
    table->endUpdates();
    EXPECT_THAT(
        recorder.messages(), testing::ElementsAre(QStringLiteral("endUpdates without a beginUpdates.")));
}

TEST_F(UITableViewChangesTest, DropsTheSelectionHoweverItReloads)
{
    const std::function<void()> reloads[] = { [this] { table->reloadData(); },
        [this] { table->reloadSection(0, UITableViewRowAnimation::Fade); },
        [this] { table->reloadSection(0, UITableViewRowAnimation::None); } };
    rows->count = 2;
    for (const auto& reload : reloads) {
        table->reloadData();
        runFrames();
        select(1);
        reload();
        runFrames();
        EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
        EXPECT_EQ(visibleRows(), (std::vector { 0, 1 }));
        EXPECT_FALSE(table->cellForRow({ 0, 1 })->isSelected());
    }
}

TEST_F(UITableViewChangesTest, FadesOldRowsIntoNewOnesWhenItsSectionReloads)
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

TEST_F(UITableViewChangesTest, UsesTheCellsOfAReloadedSectionAgainWhenTheyHaveFaded)
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

TEST_F(UITableViewChangesTest, FadesOldRowsAboveTheNewOnesAlsoWhenTheirCellsAreUsedAgain)
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

TEST_F(UITableViewChangesTest, AFingerOnARowThatFadesAwayDoesNotGoOverToTheRowThatItsCellShowsNext)
{
    table->reloadSection(0, UITableViewRowAnimation::Fade);
    touch.down({ 10, 10 });
    scheduler.advance(1);
    table->reloadSection(0, UITableViewRowAnimation::Fade);
    touch.up();
    EXPECT_EQ(rows->lines, Lines {});
}

} // namespace
