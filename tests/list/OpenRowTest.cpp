// The open row when all around it changes: the screen is turned, or the rows are loaded anew. At rest, while
// its record plays, and with a finger on its thumb.
#include "tests/list/RecordsListFixture.h"

namespace {

enum class Use : unsigned char { AtRest, Playing, Dragged };
const auto uses = testing::Values(Use::AtRest, Use::Playing, Use::Dragged);

std::string nameOf(const testing::TestParamInfo<Use>& use)
{
    return use.param == Use::AtRest ? "AtRest" : use.param == Use::Playing ? "Playing" : "Dragged";
}

const UIScreen::Geometry upright { { 390, 844 }, 2, { 47, 0, 34, 0 } };
const UIScreen::Geometry turned { { 844, 390 }, 2, { 0, 47, 21, 47 } };
const UIScreen::Geometry narrow { { 333.5, 600 }, 2, {} };

class OpenRowTest : public RecordsListFixture, public testing::WithParamInterface<Use> {
protected:
    OpenRowTest()
    {
        open();
        if (GetParam() == Use::AtRest)
            tapRow(0);
        else
            tapButton(0);
        scheduler.advance(1);
        if (GetParam() == Use::Dragged) {
            finger = centerOf(*slider().thumbView());
            touch.down(finger);
            for (const double distance : { 20.0, 80.0 }) // the first of them is how the drag begins
                moveFinger(distance);
            runFrames();
        }
    }

    ORVPlaybackSlider& slider() const { return *cellAt(0)->playbackSlider(); }
    const std::shared_ptr<ORVRecordPlayer>& player() const { return controller->currentPlayer(); }
    void moveFinger(double distance)
    {
        finger += CGPoint(distance, 0);
        touch.moveTo(finger);
    }
    void becomes(const UIScreen::Geometry& geometry)
    {
        UIScreen::mainScreen()->setGeometry(geometry);
        runFrames();
        executor.runAll();
        runFrames();
    }
    // All its parts are there and in their places, on a screen of that width.
    void expectWhole(double width) const
    {
        EXPECT_EQ(controller->tableView()->indexPathForSelectedRow(), (NSIndexPath { 0, 0 }));
        EXPECT_EQ(cellAt(0)->frame(), CGRect(0, 0, width, 108));
        EXPECT_EQ(slider().frame(), CGRect(0, 64, width, 44));
        EXPECT_EQ(slider().layer()->presentationValues().opacity, 1);
        for (const auto& half : { slider().minimumTrackView(), slider().maximumTrackView() })
            EXPECT_EQ(half->waveformImage()->size().width(), width);
        EXPECT_NEAR(slider().thumbView()->frame().center().x(), slider().currentPosition() * width, 1e-9);
        const auto shown = [](const UIView& view) { return view.layer()->presentationValues().frame(); };
        const double thumb = shown(*slider().thumbView()).center().x();
        EXPECT_NEAR(shown(*slider().minimumTrackView()).right(), thumb, 1e-9);
        EXPECT_NEAR(shown(*slider().maximumTrackView()).left(), thumb, 1e-9);
    }

    CGPoint finger;
};

INSTANTIATE_TEST_SUITE_P(InUse, OpenRowTest, uses, nameOf);

// --- Turned ------------------------------------------------------------------------------------------

TEST_P(OpenRowTest, IsWholeAtAnyWidthAndBack)
{
    for (const auto& geometry : { turned, upright, narrow, upright }) {
        const double width = geometry.size.width();
        const double before = slider().currentPosition();
        becomes(geometry);
        EXPECT_EQ(slider().currentPosition(), before);
        expectWhole(width);
        if (GetParam() == Use::Dragged) {
            moveFinger(13);
            EXPECT_NEAR(slider().currentPosition(), (finger.x() - 20) / width, 0.01)
                << "the finger has the thumb";
            EXPECT_TRUE(slider().isDraggingThumb());
        }
        scheduler.advance(0.45);
        expectWhole(width);
        EXPECT_TRUE(GetParam() != Use::Playing || slider().currentPosition() > before) << "it plays on";
    }
}

TEST_P(OpenRowTest, GoesOnFromItsPlaceWhereTurningTakesTheFingerAway)
{
    const double position = slider().currentPosition();
    window->touches().cancelAllTouches(); // as the host does when the device is turned
    EXPECT_FALSE(slider().isDraggingThumb());
    becomes(turned);
    expectWhole(844);
    if (GetParam() == Use::AtRest)
        return;
    scheduler.advance(0.5);
    EXPECT_FALSE(player()->isPaused());
    EXPECT_TRUE(showsPause(0));
    EXPECT_NEAR(player()->timePosition(), position * player()->recordDuration() + 0.5, 0.11);
}

// --- Loaded anew -------------------------------------------------------------------------------------

class ReloadedRowTest : public OpenRowTest {
protected:
    // No row is open, no other record plays, and what is seen of the record that played is true.
    void expectClosedRows() const
    {
        EXPECT_EQ(controller->tableView()->indexPathForSelectedRow(), std::nullopt);
        EXPECT_EQ(controller->tableView()->rectForRow({ 0, 0 }).height(), 64);
        for (const auto& each : controller->tableView()->visibleCells()) {
            const auto& cell = static_cast<const ORVRecordTableViewCell&>(*each);
            EXPECT_FALSE(cell.playbackSlider()->superview());
            EXPECT_FALSE(cell.playbackSlider()->isDraggingThumb());
            const bool plays = player() && controller->recordForCell(cell)->isEqual(player()->record().get());
            EXPECT_EQ(cell.playbackButton()->isPlaying(), plays && !player()->isPaused());
            EXPECT_EQ(cell.playbackButton()->progressView()->progress() > 0, plays);
        }
    }
    void expectNothingWentOnButTheRecord(const std::function<void()>& reload)
    {
        const auto before = player();
        const auto time = [&] { return before ? before->timePosition() : 0; };
        const double timeBefore = time();
        reload();
        expectClosedRows();
        if (GetParam() == Use::Dragged) {
            EXPECT_TRUE(before->isPaused()) << "the drag had paused it, and its row is gone";
            moveFinger(100);
            touch.up();
        }
        executor.runAll();
        scheduler.advance(1);
        expectClosedRows();
        EXPECT_EQ(player(), before);
        EXPECT_NEAR(time() - timeBefore, GetParam() == Use::Playing ? 1 : 0, 0.11);
        const auto& subviews = controller->tableView()->subviews();
        EXPECT_EQ(std::count_if(subviews.begin(), subviews.end(),
                      [](const auto& view) {
                          return std::dynamic_pointer_cast<UITableViewCell>(view) && !view->isHidden();
                      }),
            long(controller->tableView()->visibleCells().size()))
            << "the old rows have faded away";
        tapRow(0);
        scheduler.advance(1);
        expectWhole(390);
    }
};

INSTANTIATE_TEST_SUITE_P(InUse, ReloadedRowTest, uses, nameOf);

TEST_P(ReloadedRowTest, WithTheSameRecordsItIsClosedAndItsRecordGoesOn)
{
    expectNothingWentOnButTheRecord([this] {
        controller->setUserLocation(controller->userLocation());
        executor.runAll();
    });
}

TEST_P(ReloadedRowTest, WithOtherRecordsItIsClosedAndItsRecordGoesOn)
{
    const auto first = controller->fetchedRecords().front();
    expectNothingWentOnButTheRecord([this] {
        controller->setUserLocation(make<CLLocation>(-37.8304, 144.98));
        executor.runAll();
    });
    EXPECT_FALSE(controller->fetchedRecords().front()->isEqual(first.get()));
}

TEST_P(ReloadedRowTest, LoadedAtOnceItIsClosedAndItsRecordGoesOn)
{
    expectNothingWentOnButTheRecord([this] {
        controller->tableView()->reloadData();
        runFrames();
    });
}

} // namespace
