#include "list/ORVRecordTableViewCellConfigurator.h"
#include "tests/list/RecordsListFixture.h"

namespace {

class ORVRecordTableViewCellTest : public RecordsListFixture {
protected:
    ORVRecordTableViewCellTest()
    {
        record->setAuthor(make<ORVAuthor>(QStringLiteral("7")));
        record->author()->setFullName(QStringLiteral("Ada Example"));
        record->author()->setSmallPortraitFileURL(storage->authors().front()->smallPortraitFileURL());
        record->setLocationName(QStringLiteral("Yarra Park"));
        record->setTimestamp(scheduler.currentDate().addSecs(-3 * 3600));
        cell = addView<ORVRecordTableViewCell>({ 0, 0, 390, 64 });
    }

    std::shared_ptr<ORVRecord> record = make<ORVRecord>();
    std::shared_ptr<ORVRecordTableViewCellConfigurator> configurator
        = make<ORVRecordTableViewCellConfigurator>();
    std::shared_ptr<ORVRecordTableViewCell> cell;
};

TEST_F(ORVRecordTableViewCellTest, ShowsWhoMadeTheRecordWhenAndWhere)
{
    configurator->configureCell(cell.get(), *record);
    EXPECT_EQ(cell->authorNameLabel()->text(), QStringLiteral("Ada Example"));
    EXPECT_EQ(cell->timestampLabel()->text(), QStringLiteral("3 hr"));
    EXPECT_EQ(cell->locationNameLabel()->text(), QStringLiteral("Yarra Park"));
    ASSERT_NE(cell->portraitView()->image(), nullptr);
    EXPECT_EQ(cell->portraitView()->image()->renderingMode(), UIImageRenderingMode::AlwaysOriginal);
}

TEST_F(ORVRecordTableViewCellTest, CountsOnlyTheLargestUnitOfItsAge)
{
    const std::pair<int, const char*> ages[] = { { 20, "0 min" }, { 5 * 60, "5 min" }, { 26 * 3600, "1 day" },
        { 15 * 86400, "2 wks" }, { 45 * 86400, "1 mth" } };
    for (const auto& [seconds, text] : ages) {
        record->setTimestamp(scheduler.currentDate().addSecs(-seconds));
        configurator->configureCell(cell.get(), *record);
        EXPECT_EQ(cell->timestampLabel()->text(), QString::fromLatin1(text));
    }
}

TEST_F(ORVRecordTableViewCellTest, PlacesItsPartsWithoutOverlap)
{
    configurator->configureCell(cell.get(), *record);
    runFrames();
    EXPECT_EQ(cell->infoView()->frame(), CGRect(0, 0, 390, 64));
    EXPECT_EQ(cell->portraitView()->frame(), CGRect(16, 10, 44, 44));
    EXPECT_EQ(cell->authorNameLabel()->frame().left(), 72);
    EXPECT_LE(cell->authorNameLabel()->frame().right(), cell->timestampLabel()->frame().left() - 12);
    EXPECT_EQ(cell->timestampLabel()->frame().right(), 390 - 8 - 52 - 8);
    EXPECT_EQ(cell->playbackButton()->frame(), CGRect(390 - 8 - 52, 6, 52, 52));
    EXPECT_EQ(cell->playbackButton()->progressView()->frame(), CGRect(6, 6, 40, 40));
    EXPECT_EQ(cell->customSeparator()->frame(), CGRect(72, 63.5, 318, 0.5));
}

TEST_F(ORVRecordTableViewCellTest, SetsNameAndAgeOnOneBaseline)
{
    configurator->configureCell(cell.get(), *record);
    runFrames();
    const auto baseline = [](const UILabel& label) { return label.frame().top() + label.firstBaseline(); };
    EXPECT_NEAR(baseline(*cell->authorNameLabel()), baseline(*cell->timestampLabel()), 0.26); // half a pixel
}

TEST_F(ORVRecordTableViewCellTest, SqueezesALongNameRatherThanItsAge)
{
    record->author()->setFullName(QStringLiteral("Bartholomew Featherstonehaugh-Cholmondeley of Somewhere"));
    configurator->configureCell(cell.get(), *record);
    runFrames();
    EXPECT_GE(
        cell->timestampLabel()->frame().width(), cell->timestampLabel()->intrinsicContentSize().width());
    EXPECT_LT(
        cell->authorNameLabel()->frame().width(), cell->authorNameLabel()->intrinsicContentSize().width());
    EXPECT_LE(cell->authorNameLabel()->frame().right(), cell->timestampLabel()->frame().left());
}

TEST_F(ORVRecordTableViewCellTest, ShowsARecordWithoutAnythingAsAnEmptyRow)
{
    configurator->configureCell(cell.get(), *record);
    configurator->configureCell(cell.get(), *make<ORVRecord>());
    runFrames();
    EXPECT_TRUE(cell->authorNameLabel()->text().isEmpty());
    EXPECT_TRUE(cell->timestampLabel()->text().isEmpty());
    EXPECT_EQ(cell->portraitView()->image(), nullptr);
}

TEST_F(ORVRecordTableViewCellTest, MayBeMissing)
{
    configurator->configureCell(nullptr, *record);
    configurator->configureCellSelectedState(nullptr, Animated::Yes);
    configurator->configurePlaybackControlsInCell(nullptr, nullptr, Animated::Yes);
    EXPECT_TRUE(cell->authorNameLabel()->text().isEmpty());
}

TEST_F(ORVRecordTableViewCellTest, KeepsNoMarginsOfItsOwnOrItsSuperview)
{
    EXPECT_FALSE(cell->preservesSuperviewLayoutMargins());
    cell->setFrame({ 0, 200, 390, 64 }); // clear of the notch
    EXPECT_EQ(cell->layoutMargins(), UIEdgeInsets());
}

TEST_F(ORVRecordTableViewCellTest, SetsTheNameSemiboldAndLargerThanAgeAndPlace)
{
    EXPECT_TRUE(
        cell->authorNameLabel()->font()->isEqual(UIFont::systemFontOfSize(16, UIFontWeight::Semibold).get()));
    for (const auto& label : { cell->timestampLabel(), cell->locationNameLabel() })
        EXPECT_TRUE(label->font()->isEqual(UIFont::systemFontOfSize(13).get()));
}

// --- Playback controls -------------------------------------------------------------------------------

struct Look {
    bool playing;
    bool spinning;
    bool thumbHidden;
    bool operator==(const Look&) const = default;
};

class PlaybackControlsTest : public ORVRecordTableViewCellTest {
protected:
    Look look() const
    {
        return { cell->playbackButton()->isPlaying(),
            cell->playbackButton()->progressView()->isIndeterminate(),
            cell->playbackSlider()->isThumbHidden() };
    }
    Look lookWith(const ORVRecordPlayer* player)
    {
        configurator->configurePlaybackControlsInCell(cell.get(), player, Animated::No);
        return look();
    }
};

TEST_F(PlaybackControlsTest, ShowWhatThePlayerDoes)
{
    EXPECT_EQ(lookWith(nullptr), (Look { false, false, true }));
    const auto player = make<ORVRecordPlayer>(record); // without a sound: never ready
    EXPECT_EQ(lookWith(player.get()), (Look { false, true, true }));
    player->setReadyForPlayback(true);
    EXPECT_EQ(lookWith(player.get()), (Look { true, false, false }));
    player->setPaused(true);
    EXPECT_EQ(lookWith(player.get()), (Look { false, false, false }));
}

TEST_F(PlaybackControlsTest, StandAtTheStartForADurationThatIsNotKnown)
{
    const auto player = make<ORVRecordPlayer>(record);
    player->setReadyForPlayback(true);
    ASSERT_TRUE(std::isnan(player->recordDuration()));
    configurator->configurePlaybackControlsInCell(cell.get(), player.get(), Animated::No);
    EXPECT_EQ(cell->playbackButton()->progressView()->progress(), 0);
    EXPECT_EQ(cell->playbackSlider()->currentPosition(), 0);
}

TEST_F(PlaybackControlsTest, TakeAFractionAsItIs)
{
    configurator->configurePlaybackControlsInCell(
        cell.get(), 1.5, ORVPlaybackControlsState::Playing, Animated::No);
    EXPECT_EQ(cell->playbackButton()->progressView()->progress(), 1.5);
    EXPECT_EQ(cell->playbackSlider()->currentPosition(), 1);
}

TEST_F(PlaybackControlsTest, SwitchTheIconOnlyWhenItChanges)
{
    runFrames();
    const auto switches = [&] {
        return cell->playbackButton()->imageView()->layer()->animationForKey(
            QStringLiteral("imageViewSwitch"));
    };
    configurator->configurePlaybackControlsInCell(
        cell.get(), 0, ORVPlaybackControlsState::Playing, Animated::Yes);
    EXPECT_NE(switches(), nullptr);
    scheduler.advance(1);
    configurator->configurePlaybackControlsInCell(
        cell.get(), 0.1, ORVPlaybackControlsState::Playing, Animated::Yes);
    EXPECT_EQ(switches(), nullptr);
}

// --- The slider --------------------------------------------------------------------------------------

class CellSliderTest : public ORVRecordTableViewCellTest {
protected:
    bool hasSlider() const { return cell->playbackSlider()->superview() != nullptr; }
    double shownAlpha() const { return cell->playbackSlider()->layer()->presentationValues().opacity; }
};

TEST_F(CellSliderTest, IsNotInAFreshCell)
{
    EXPECT_FALSE(hasSlider());
    EXPECT_EQ(
        ORVRecordTableViewCell::preferredHeight(true) - ORVRecordTableViewCell::preferredHeight(false), 44);
}

TEST_F(CellSliderTest, HangsBelowTheInformation)
{
    cell->setFrame({ 0, 0, 390, 108 });
    cell->setPlaybackSliderVisible(true, Animated::No);
    EXPECT_EQ(cell->playbackSlider()->frame(), CGRect(0, 64, 390, 44)) << "at once";
    EXPECT_EQ(cell->playbackSlider()->alpha(), 1);
    cell->setPlaybackSliderVisible(true, Animated::No);
    EXPECT_EQ(std::count(cell->contentView()->subviews().begin(), cell->contentView()->subviews().end(),
                  cell->playbackSlider()),
        1);
}

TEST_F(CellSliderTest, LeavesWhenItsFadeHasFinished)
{
    cell->setPlaybackSliderVisible(true, Animated::No);
    runFrames();
    cell->setPlaybackSliderVisible(false, Animated::Yes);
    scheduler.advance(0.15);
    EXPECT_TRUE(hasSlider());
    EXPECT_NEAR(shownAlpha(), 0.5, 0.05);
    scheduler.advance(0.3);
    EXPECT_FALSE(hasSlider());
    EXPECT_TRUE(cell->contentView()->constraints().size() > 0) << "the others stay";
}

TEST_F(CellSliderTest, IsTiedToTheCellOnlyWhileItIsShown)
{
    const auto constraintsOfCell = [this] {
        return cell->contentView()->constraints().size() + cell->playbackSlider()->constraints().size();
    };
    const auto show = [this](bool visible) {
        cell->setPlaybackSliderVisible(visible, Animated::No);
        runFrames();
    };
    show(true);
    show(false); // the slider has made its own by now
    const std::size_t without = constraintsOfCell();
    for (int opening = 0; opening < 3; ++opening) {
        show(true);
        EXPECT_EQ(constraintsOfCell(), without + 4) << "left, right, top and height";
        EXPECT_EQ(cell->playbackSlider()->frame(), CGRect(0, 64, 390, 44));
        show(false);
        EXPECT_EQ(constraintsOfCell(), without);
    }
}

TEST_F(CellSliderTest, RendersItsWaveformAnewWhenItsWidthOrItsScaleChanges)
{
    record->setSoundFileURL(storage->records().front()->soundFileURL());
    configurator->configureCell(cell.get(), *record);
    cell->setPlaybackSliderVisible(true, Animated::No);
    executor.runAll();
    const auto expectHalvesThatMeet = [this] {
        runFrames();
        executor.runAll();
        runFrames();
        const double width = cell->playbackSlider()->bounds().width();
        EXPECT_EQ(width, cell->bounds().width());
        for (const auto& half :
            { cell->playbackSlider()->minimumTrackView(), cell->playbackSlider()->maximumTrackView() }) {
            EXPECT_EQ(half->waveformImage()->size().width(), width);
            EXPECT_EQ(half->waveformImage()->scale(), window->screen()->scale());
        }
    };
    for (const double width : { 390.0, 844.0, 333.0, 390.0 }) {
        cell->setFrame({ 0, 0, width, 108 });
        expectHalvesThatMeet();
    }
    UIScreen::mainScreen()->setGeometry({ { 390, 844 }, 3, {} });
    expectHalvesThatMeet();
    cell->setFrame({ 0, 50, 390, 100 }); // as wide as before
    runFrames();
    EXPECT_EQ(executor.global().size(), 0u) << "nothing is rendered for a change of place or height";
}

TEST_F(CellSliderTest, StaysWhenItIsShownAgainBeforeItHasGone)
{
    for (const Animated animated : { Animated::Yes, Animated::No }) {
        cell->setPlaybackSliderVisible(true, Animated::No);
        runFrames();
        cell->setPlaybackSliderVisible(false, Animated::Yes);
        scheduler.advance(0.15);
        cell->setPlaybackSliderVisible(true, animated);
        EXPECT_NEAR(shownAlpha(), animated == Animated::Yes ? 0.5 : 1, 0.05);
        scheduler.advance(1);
        EXPECT_TRUE(hasSlider());
        EXPECT_EQ(shownAlpha(), 1);
    }
}

TEST_F(CellSliderTest, IsShownOrGoneAtOnceWhateverFadesAreUnderWay)
{
    for (const bool visible : { true, false }) {
        cell->setPlaybackSliderVisible(true, Animated::No);
        runFrames();
        for (const bool fadesIn : { false, true }) {
            cell->setPlaybackSliderVisible(fadesIn, Animated::Yes);
            scheduler.advance(0.1);
        }
        cell->setPlaybackSliderVisible(visible, Animated::No);
        EXPECT_EQ(shownAlpha(), visible ? 1 : 0);
        for (const double seconds : { 0.0, 1.0 }) {
            scheduler.advance(seconds);
            EXPECT_EQ(hasSlider(), visible);
        }
    }
}

TEST_F(CellSliderTest, StaysTransparentWhereItsFadeWasInterrupted)
{
    cell->setPlaybackSliderVisible(true, Animated::No);
    runFrames();
    cell->setPlaybackSliderVisible(false, Animated::Yes);
    scheduler.advance(0.15);
    cell->playbackSlider()->layer()->removeAllAnimations();
    scheduler.advance(1);
    EXPECT_TRUE(hasSlider());
    EXPECT_EQ(cell->playbackSlider()->alpha(), 0);
}

TEST_F(CellSliderTest, LeavesACellThatIsDroppedWhileItFades)
{
    cell->setPlaybackSliderVisible(true, Animated::No);
    runFrames();
    cell->setPlaybackSliderVisible(false, Animated::Yes);
    const std::weak_ptr<ORVRecordTableViewCell> weak = cell;
    std::exchange(cell, nullptr)->removeFromSuperview();
    scheduler.advance(1);
    EXPECT_TRUE(weak.expired());
}

TEST_F(CellSliderTest, RendersItsWaveformAtEveryShowing)
{
    record->setSoundFileURL(storage->records().front()->soundFileURL());
    configurator->configureCell(cell.get(), *record);
    for (int showing = 1; showing <= 3; ++showing) {
        cell->setPlaybackSliderVisible(true, Animated::No);
        EXPECT_EQ(executor.global().size(), 1u);
        executor.runAll();
        EXPECT_NE(cell->playbackSlider()->minimumTrackView()->waveformImage(), nullptr);
        cell->setPlaybackSliderVisible(false, Animated::No);
    }
}

// --- Requests ----------------------------------------------------------------------------------------

class CellRequests final : public NSObject, public ORVRecordTableViewCellDelegate {
public:
    void recordTableViewCellRequestsPlayback(ORVRecordTableViewCell&) override { hear("play"); }
    void recordTableViewCellRequestsPauseInterim(ORVRecordTableViewCell&, bool interim) override
    {
        hear(interim ? "pause for now" : "pause");
    }
    void recordTableViewCellRequestsSeekPlaybackToPositionFraction(
        ORVRecordTableViewCell&, double fraction) override
    {
        hear("seek " + std::to_string(fraction).substr(0, 4));
    }
    std::vector<std::string> lines;
    std::function<void(const std::string& line)> whenHeard;

private:
    void hear(const std::string& line)
    {
        lines.push_back(line);
        if (whenHeard)
            whenHeard(line);
    }
};

class CellRequestsTest : public CellSliderTest {
protected:
    using Lines = std::vector<std::string>;

    CellRequestsTest()
    {
        cell->setFrame({ 0, 0, 390, 108 });
        cell->setPlaybackSliderVisible(true, Animated::No);
        runFrames();
        cell->setDelegate(requests);
    }
    void drag(ORVPlaybackSlider& slider, double to)
    {
        cell->playbackSliderDidBeginDraggingThumb(slider);
        cell->playbackSliderDidDragThumbToPosition(slider, to);
        EXPECT_EQ(cell->playbackButton()->progressView()->progress(), to);
        cell->playbackSliderDidEndDraggingThumbWithNewPosition(slider, to);
    }

    std::shared_ptr<CellRequests> requests = make<CellRequests>();
};

TEST_F(CellRequestsTest, AskToPlayWhileIdleAndToPauseWhilePlaying)
{
    touch.tap(centerOf(*cell->playbackButton()));
    EXPECT_FALSE(cell->playbackButton()->isPlaying()) << "the button waits to be told";
    cell->playbackButton()->setPlaying(true, Animated::No);
    touch.tap(centerOf(*cell->playbackButton()));
    EXPECT_EQ(requests->lines, (Lines { "play", "pause" }));
}

TEST_F(CellRequestsTest, PauseForADragAndResumeAfterTheSeekWhenItBeganPlaying)
{
    cell->playbackButton()->setPlaying(true, Animated::No);
    drag(*cell->playbackSlider(), 0.25);
    EXPECT_EQ(requests->lines, (Lines { "pause for now", "seek 0.25", "play" }));
}

TEST_F(CellRequestsTest, OnlySeekAfterADragThatBeganPaused)
{
    drag(*cell->playbackSlider(), 0.25);
    EXPECT_EQ(requests->lines, (Lines { "pause for now", "seek 0.25" }));
}

TEST_F(CellRequestsTest, SeekForATapOnTheBarAndMoveTheRing)
{
    touch.tap(cell->playbackSlider()->convertPointToView({ 195, 22 }, nullptr));
    EXPECT_EQ(requests->lines, Lines { "seek 0.50" });
    EXPECT_EQ(cell->playbackButton()->progressView()->progress(), 0.5);
}

TEST_F(CellRequestsTest, ReachNobodyWithoutADelegateOrWithOneThatDoesNotListen)
{
    class Deaf final : public NSObject, public ORVRecordTableViewCellDelegate { };
    const auto deaf = make<Deaf>();
    for (const std::shared_ptr<ORVRecordTableViewCellDelegate>& delegate :
        { std::shared_ptr<ORVRecordTableViewCellDelegate>(),
            std::shared_ptr<ORVRecordTableViewCellDelegate>(deaf) }) {
        cell->setDelegate(delegate);
        touch.tap(centerOf(*cell->playbackButton()));
        drag(*cell->playbackSlider(), 0.75);
        EXPECT_FALSE(cell->playbackButton()->isPlaying());
    }
    EXPECT_TRUE(requests->lines.empty());
}

TEST_F(CellRequestsTest, MayDropTheCellFromInsideEachOfThem)
{
    for (const char* when : { "pause for now", "seek", "play", "pause" }) {
        cell = addView<ORVRecordTableViewCell>({ 0, 0, 390, 108 });
        cell->setPlaybackSliderVisible(true, Animated::No);
        cell->playbackSlider()->setThumbHidden(false);
        cell->playbackButton()->setPlaying(true, Animated::No);
        runFrames();
        cell->setDelegate(requests);
        const std::weak_ptr<ORVRecordTableViewCell> weak = cell;
        requests->whenHeard = [&](const std::string& line) {
            if (cell && line.starts_with(when))
                std::exchange(cell, nullptr)->removeFromSuperview();
        };
        const CGPoint thumb = cell->playbackSlider()->convertPointToView({ 5, 22 }, nullptr);
        const CGPoint button = centerOf(*cell->playbackButton());
        touch.down(thumb);
        touch.moveTo(thumb + CGPoint(30, 0));
        touch.moveTo(thumb + CGPoint(60, 0));
        touch.up();
        scheduler.advance(0.4);
        touch.tap(button);
        scheduler.advance(1);
        EXPECT_FALSE(cell) << when;
        EXPECT_TRUE(weak.expired()) << when;
        requests->whenHeard = nullptr;
    }
}

TEST_F(CellRequestsTest, EndADragWhoseCellIsTakenAway)
{
    cell->playbackButton()->setPlaying(true, Animated::No);
    const CGPoint thumb = cell->playbackSlider()->convertPointToView({ 5, 22 }, nullptr);
    touch.down(thumb);
    touch.moveTo(thumb + CGPoint(12, 0));
    touch.moveTo(thumb + CGPoint(12 + 39, 0));
    cell->removeFromSuperview();
    EXPECT_EQ(requests->lines, (Lines { "pause for now", "seek 0.10", "play" }));
    touch.up();
    EXPECT_EQ(requests->lines.size(), 3u);
}

} // namespace
