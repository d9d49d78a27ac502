#include "platform/media/AVAsset.h"
#include "platform/media/SoundDecoder.h"
#include "tests/playback/RecordPlayerFixture.h"

namespace {

// --- Becoming ready --------------------------------------------------------------------------------------

TEST_F(ORVRecordPlayerTest, PlaysNothingBeforeItsItemIsReady)
{
    makePlayer();
    EXPECT_TRUE(player->record());
    EXPECT_TRUE(player->playerItem());
    EXPECT_TRUE(player->assetPlayer());
    EXPECT_EQ(player->assetPlayer()->currentItem(), player->playerItem());
    EXPECT_EQ(player->assetPlayer()->actionAtItemEnd(), AVPlayerActionAtItemEndNone);
    EXPECT_FALSE(player->isReadyForPlayback());
    EXPECT_FALSE(player->isPaused());
    EXPECT_FALSE(player->isSeeking());
    EXPECT_TRUE(std::isnan(player->recordDuration()));
    EXPECT_EQ(player->timePosition(), 0);
    EXPECT_TRUE(device.runs().empty());
    EXPECT_TRUE(delegate->lines.empty());
}

TEST_F(ORVRecordPlayerTest, StartsByItselfOnceItHasReportedThatItIsReady)
{
    makePlayer();
    delegate->whenHeard = [&](const std::string&, ORVRecordPlayer& sender) {
        EXPECT_EQ(&sender, player.get());
        EXPECT_TRUE(sender.isReadyForPlayback());
        EXPECT_EQ(sender.recordDuration(), 0.5);
        EXPECT_EQ(sender.assetPlayer()->rate(), 0) << "playing begins after the report";
        EXPECT_TRUE(device.runs().empty());
    };
    executor.runAll();
    EXPECT_EQ(delegate->lines, Lines { "ready" });
    EXPECT_EQ(player->assetPlayer()->rate(), 1);
    EXPECT_EQ(device.runs().size(), 1U);
}

TEST_F(ORVRecordPlayerTest, PausedBeforeItIsReadyItBecomesReadyWithoutPlaying)
{
    makePlayer();
    player->setPaused(true);
    EXPECT_TRUE(player->isPaused());
    executor.runAll();
    EXPECT_EQ(heardIn(1), Lines { "ready" });
    EXPECT_TRUE(device.runs().empty());
    player->setPaused(false);
    EXPECT_EQ(heardIn(0.1), Lines { "at 0.1" });
}

TEST_F(ORVRecordPlayerTest, PausedAndResumedBeforeItIsReadyItPlays)
{
    makePlayer();
    player->setPaused(true);
    player->setPaused(false);
    EXPECT_EQ(player->assetPlayer()->rate(), 0) << "the wish alone is stored";
    executor.runAll();
    EXPECT_EQ(device.runs().size(), 1U);
}

TEST_F(ORVRecordPlayerTest, MayBePausedFromInsideTheReportThatItIsReady)
{
    makePlayer();
    delegate->whenHeard = [](const std::string&, ORVRecordPlayer& sender) { sender.setPaused(true); };
    executor.runAll();
    EXPECT_TRUE(device.runs().empty());
}

TEST_F(ORVRecordPlayerTest, ReportsOnceThatItIsReadyWhateverElseItsItemAnnounces)
{
    makePlayer();
    player->playerItem()->didChangeValueForKey(QStringLiteral("status")); // still unknown
    EXPECT_FALSE(player->isReadyForPlayback());
    EXPECT_EQ(heard(), Lines { "ready" }) << "now it is";
    player->playerItem()->didChangeValueForKey(QStringLiteral("status"));
    EXPECT_EQ(heard(), Lines());
    EXPECT_EQ(device.runs().size(), 1U);
}

TEST_F(ORVRecordPlayerTest, PassesForeignObservationsOnToItsSuperclass)
{
    makePlayer();
    const int foreign = 0;
    {
        AssertionRecorder root; // the root class knows no observation at all
        player->observeValueForKeyPath(QStringLiteral("status"), *player->playerItem(), &foreign);
        player->observeValueForKeyPath(QStringLiteral("status"), *player->playerItem(), nullptr);
        ASSERT_EQ(root.failures().size(), 2U);
        EXPECT_EQ(root.failures()[0].source, QStringLiteral("NSObject"));
    }
    EXPECT_FALSE(player->isReadyForPlayback());
}

TEST_F(ORVRecordPlayerTest, SharesNoAssetWithAnotherPlayerOfTheSameRecord)
{
    const auto record = recordOf(sound.url());
    const auto first = make<ORVRecordPlayer>(record);
    const auto second = make<ORVRecordPlayer>(record);
    EXPECT_EQ(first->record(), record);
    EXPECT_EQ(second->record(), record);
    EXPECT_NE(first->playerItem()->asset(), second->playerItem()->asset());
}

// --- Sounds that cannot be played ------------------------------------------------------------------------

struct Silence {
    const char* name;
    NSURL url;
    bool hasAsset = false; // its header names a sound
    bool isDamaged = false; // which is found out when it is decoded
};

const Silence silences[] {
    { .name = "Missing", .url = NSURL(QStringLiteral("file:///nowhere/tram.m4a")) },
    { .name = "WithoutAddress", .url = NSURL() },
    { .name = "NoSound", .url = QUrl::fromLocalFile(QStringLiteral(__FILE__)) },
    { .name = "Damaged", .url = {}, .hasAsset = true, .isDamaged = true },
};

class ORVRecordPlayerSilenceTest : public ORVRecordPlayerTest, public testing::WithParamInterface<Silence> {
protected:
    void expectSilenceForEver()
    {
        executor.runAll();
        EXPECT_EQ(player->playerItem()->status(), AVPlayerItemStatusFailed);
        player->setPaused(true);
        player->setPaused(false);
        player->setTimePosition(0.2);
        EXPECT_EQ(heardIn(2), Lines());
        EXPECT_FALSE(player->isReadyForPlayback());
        EXPECT_FALSE(player->isPaused());
        EXPECT_FALSE(player->isSeeking());
        EXPECT_EQ(player->assetPlayer()->rate(), 0);
        EXPECT_EQ(player->timePosition(), 0);
        EXPECT_TRUE(std::isnan(player->recordDuration()));
        EXPECT_TRUE(device.runs().empty());
    }
};

INSTANTIATE_TEST_SUITE_P(Sounds, ORVRecordPlayerSilenceTest, testing::ValuesIn(silences),
    [](const auto& silence) { return std::string(silence.param.name); });

TEST_P(ORVRecordPlayerSilenceTest, IsNeverReady)
{
    std::optional<SoundDecoder::Replacement> damage;
    if (GetParam().isDamaged)
        damage.emplace([](const NSURL&) { return nullptr; });
    makePlayer(GetParam().isDamaged ? sound.url() : GetParam().url);
    EXPECT_EQ(player->playerItem()->asset() != nullptr, GetParam().hasAsset);
    expectSilenceForEver();
}

TEST_F(ORVRecordPlayerTest, APlayerOfNoRecordIsNeverReady)
{
    player = make<ORVRecordPlayer>(nullptr);
    player->setDelegate(delegate);
    EXPECT_EQ(heardIn(2), Lines());
    EXPECT_FALSE(player->isReadyForPlayback());
    EXPECT_TRUE(device.runs().empty());
}

// --- Delegates and ends of life --------------------------------------------------------------------------

TEST_F(ORVRecordPlayerTest, PlaysWithoutADelegateAndWithOneThatImplementsNothing)
{
    class Indifferent final : public ORVRecordPlayerDelegate { };
    const auto indifferent = std::make_shared<Indifferent>();
    makePlayer();
    const std::weak_ptr<ORVRecordPlayerDelegate> watched = delegate;
    EXPECT_EQ(player->delegate(), delegate);
    delegate = nullptr;
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(player->delegate());
    for (const auto& each : { watched, std::weak_ptr<ORVRecordPlayerDelegate>(indifferent) }) {
        player->setDelegate(each);
        player->setPaused(false);
        executor.runAll();
        scheduler.advance(0.6);
        EXPECT_TRUE(player->isPaused()) << "it has played to the end";
    }
}

class ORVRecordPlayerDropTest : public ORVRecordPlayerTest,
                                public testing::WithParamInterface<const char*> { };

TEST_P(ORVRecordPlayerDropTest, MayBeDroppedFromInsideAMessage)
{
    makePlayer();
    const std::weak_ptr<ORVRecordPlayer> watched = player;
    bool dropped = false;
    delegate->whenHeard = [&](const std::string& line, ORVRecordPlayer& sender) {
        if (line != GetParam())
            return;
        player = nullptr;
        dropped = true;
        EXPECT_FALSE(watched.expired()) << "it lives for the length of the call";
        sender.setPaused(true);
    };
    executor.runAll();
    scheduler.advance(2);
    EXPECT_TRUE(dropped);
    EXPECT_TRUE(watched.expired());
    // At the end the position is still told: it belongs to the same tick.
    EXPECT_EQ(delegate->lines.back(), std::string(GetParam()) == "end" ? "at 0" : GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    EachMessage, ORVRecordPlayerDropTest, testing::Values("ready", "at 0.2", "end", "at 0"));

TEST_F(ORVRecordPlayerTest, MayLoseItsDelegateFromInsideTheEnd)
{
    makeReadyPlayer();
    const auto kept = delegate;
    kept->whenHeard = [&](const std::string& line, ORVRecordPlayer& sender) {
        if (line == "end")
            sender.setDelegate({});
    };
    scheduler.advance(1);
    EXPECT_EQ(kept->lines.back(), "end");
}

TEST_F(ORVRecordPlayerTest, DestroyedBeforeItWasReadyItRemovesItsObservation)
{
    makePlayer();
    const auto item = player->playerItem();
    const auto assetPlayer = player->assetPlayer();
    player = nullptr; // also hands the platform player a nil token
    executor.runAll();
    EXPECT_EQ(item->status(), AVPlayerItemStatusReadyToPlay);
    EXPECT_TRUE(delegate->lines.empty());
    EXPECT_TRUE(device.runs().empty());
}

TEST_F(ORVRecordPlayerTest, DestroyedWhilePlayingItHearsNothingMoreAndLeavesThePlatformPlayerPlaying)
{
    makeReadyPlayer();
    const auto assetPlayer = player->assetPlayer();
    player = nullptr;
    scheduler.advance(0.3);
    EXPECT_TRUE(delegate->lines.empty());
    EXPECT_EQ(assetPlayer->rate(), 1) << "silencing it is the owner's business";
}

TEST_F(ORVRecordPlayerTest, FallsSilentWithItsPlatformPlayer)
{
    makeReadyPlayer();
    EXPECT_FALSE(device.lastRun().isOver());
    player = nullptr;
    EXPECT_TRUE(device.lastRun().isOver());
}

TEST_F(ORVRecordPlayerTest, NeitherASeekNorATickKeepsItAlive)
{
    makeReadyPlayer();
    const std::weak_ptr<ORVRecordPlayer> watched = player;
    scheduler.setAfterTurn(nullptr);
    scheduler.advance(0.1); // a tick waits on the main queue
    player->setTimePosition(0.3); // and so does a seek
    player = nullptr;
    EXPECT_TRUE(watched.expired());
    executor.runAll();
    EXPECT_TRUE(delegate->lines.empty());
}

TEST_F(ORVRecordPlayerTest, IsReplacedTenThousandTimes)
{
    for (int i = 0; i < 10'000; ++i) {
        makePlayer();
        executor.main().runAll();
    }
    executor.runAll();
    EXPECT_EQ(delegate->lines, Lines { "ready" }) << "the last one alone is there to be ready";
    EXPECT_EQ(device.runs().size(), 1U);
}

} // namespace
