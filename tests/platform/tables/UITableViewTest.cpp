#include "platform/tables/UITableView.h"

#include "tests/platform/tables/TableFixture.h"
#include "tests/support/AssertionRecorder.h"

namespace {

class UITableViewTest : public TableFixture { };

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

TEST_F(UITableViewTest, MayBeDroppedWhileItLoadsItsRows)
{
    class Dropping final : public NSObject, public UITableViewDataSource, public UITableViewDelegate {
    public:
        int tableViewNumberOfRowsInSection(UITableView&, int) override
        {
            owned = nullptr;
            return 3;
        }
        std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(UITableView&, NSIndexPath) override
        {
            return make<UITableViewCell>();
        }
        std::optional<double> tableViewHeightForRowAtIndexPath(UITableView&, NSIndexPath) override
        {
            EXPECT_FALSE(watched.expired());
            ++heightsAskedFor;
            return 50;
        }
        std::shared_ptr<UITableView> owned;
        std::weak_ptr<UITableView> watched;
        int heightsAskedFor = 0;
    };
    const std::function<void(UITableView&)> acts[] = {
        [](UITableView& loading) {
            loading.selectRow({ 0, 1 }, Animated::No, UITableViewScrollPosition::Top);
        },
        [](UITableView& loading) {
            loading.scrollToRow({ 0, 1 }, UITableViewScrollPosition::Top, Animated::No);
        },
        [](UITableView& loading) { loading.beginUpdates(); },
        [](UITableView& loading) { loading.reloadData(); },
    };
    for (const auto& act : acts) {
        const auto source = make<Dropping>();
        source->owned = make<UITableView>(CGRect(0, 0, 100, 100));
        source->watched = source->owned;
        source->owned->setDataSource(source);
        source->owned->setDelegate(source);
        act(*source->owned);
        EXPECT_EQ(source->heightsAskedFor, 3);
        EXPECT_TRUE(source->watched.expired());
    }
}

} // namespace
