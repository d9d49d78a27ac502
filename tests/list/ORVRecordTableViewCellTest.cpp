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
    EXPECT_EQ(cell->timestampLabel()->frame().right(), 390 - 16 - 24 - 12);
    EXPECT_EQ(cell->playbackIcon()->frame(), CGRect(390 - 16 - 24, 20, 24, 24));
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
    configurator->configurePlaybackControlsInCell(nullptr, nullptr);
    EXPECT_TRUE(cell->authorNameLabel()->text().isEmpty());
}

TEST_F(ORVRecordTableViewCellTest, HasNoPlaybackWithoutAPlayer)
{
    using Configurator = ORVRecordTableViewCellConfigurator;
    EXPECT_EQ(Configurator::playbackControlsState(nullptr), ORVPlaybackControlsState::None);
    const auto player = make<ORVRecordPlayer>(record); // without a sound: never ready
    EXPECT_EQ(Configurator::playbackControlsState(player.get()), ORVPlaybackControlsState::Preparing);
    player->setReadyForPlayback(true);
    EXPECT_EQ(Configurator::playbackControlsState(player.get()), ORVPlaybackControlsState::Playing);
    player->setPaused(true);
    EXPECT_EQ(Configurator::playbackControlsState(player.get()), ORVPlaybackControlsState::Paused);
}

TEST_F(ORVRecordTableViewCellTest, ShowsNoTimeForADurationThatIsNotKnown)
{
    const auto player = make<ORVRecordPlayer>(record);
    player->setReadyForPlayback(true);
    ASSERT_TRUE(std::isnan(player->recordDuration()));
    configurator->configurePlaybackControlsInCell(cell.get(), player.get());
    EXPECT_EQ(cell->positionLabel()->text(), QStringLiteral("0:00"));
}

} // namespace
