// Fingers on rows that go, and what may be done from inside the messages of it.
#include "tests/platform/tables/TableFixture.h"

namespace {

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

class TouchedRowTest : public TableFixture {
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
