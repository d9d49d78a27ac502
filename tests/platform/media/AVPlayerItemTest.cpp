#include "platform/media/Sound.h"
#include "tests/platform/media/MediaTest.h"
#include "tests/support/ToneFile.h"

namespace {

class StatusLog final : public NSObject {
public:
    void observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void*) override
    {
        EXPECT_EQ(keyPath, QStringLiteral("status"));
        seen.push_back(dynamic_cast<AVPlayerItem&>(object).status());
        if (onChange)
            onChange();
    }

    std::vector<AVPlayerItemStatus> seen;
    std::function<void()> onChange;
};

class AVPlayerItemTest : public MediaTest {
protected:
    std::shared_ptr<AVPlayerItem> observedItem(const std::shared_ptr<AVAsset>& asset)
    {
        auto item = AVPlayerItem::playerItemWithAsset(asset);
        item->addObserver(*log, QStringLiteral("status"), this);
        return item;
    }

    std::shared_ptr<StatusLog> log = make<StatusLog>();
    ToneFile tone { 4000 };
};

TEST_F(AVPlayerItemTest, DoesNothingWithoutAPlayer)
{
    const auto item = observedItem(AVAsset::assetWithURL(tone.url()));
    settle();
    EXPECT_EQ(item->status(), AVPlayerItemStatusUnknown);
    EXPECT_TRUE(log->seen.empty());
}

TEST_F(AVPlayerItemTest, IsUnknownUntilTheLoadedSoundIsBackOnTheMainThread)
{
    const auto item = observedItem(AVAsset::assetWithURL(tone.url()));
    const auto player = AVPlayer::playerWithPlayerItem(item);
    EXPECT_EQ(item->status(), AVPlayerItemStatusUnknown);
    executor.global().runAll();
    EXPECT_EQ(item->status(), AVPlayerItemStatusUnknown);
    EXPECT_EQ(item->duration().flags, CMTimeKind::Indefinite);
    executor.main().runAll();
    EXPECT_EQ(item->status(), AVPlayerItemStatusReadyToPlay);
    EXPECT_EQ(log->seen, std::vector { AVPlayerItemStatusReadyToPlay });
}

TEST_F(AVPlayerItemTest, ItsDurationIsExactInItsOwnTimescale)
{
    const auto player = playerFor(tone.url());
    settle();
    EXPECT_EQ(player->currentItem()->duration().value, 4000);
    EXPECT_EQ(player->currentItem()->duration().timescale, 44100);
}

TEST_F(AVPlayerItemTest, EncoderDelayAndPaddingAreNotPartOfTheDuration)
{
    const auto player = playerFor(clip("fountain.m4a"));
    settle();
    const CMTime duration = player->currentItem()->duration();
    EXPECT_EQ(duration.timescale, 44100);
    EXPECT_NE(duration.value % 1024, 0) << "whole packets: the padding was not taken off";
    EXPECT_DOUBLE_EQ(CMTimeGetSeconds(duration), std::round(CMTimeGetSeconds(duration) * 4) / 4)
        << "the clips are made in quarters of a second";
}

TEST_F(AVPlayerItemTest, ANilAssetFailsLater)
{
    const auto item = observedItem(nullptr);
    const auto player = AVPlayer::playerWithPlayerItem(item);
    EXPECT_EQ(item->status(), AVPlayerItemStatusUnknown);
    settle();
    EXPECT_EQ(item->status(), AVPlayerItemStatusFailed);
    EXPECT_EQ(log->seen, std::vector { AVPlayerItemStatusFailed });
    EXPECT_EQ(item->duration().flags, CMTimeKind::Indefinite);
}

TEST_F(AVPlayerItemTest, AFileThatIsNoSoundFails)
{
    const auto item = observedItem(AVAsset::assetWithURL(QUrl::fromLocalFile(QStringLiteral(__FILE__))));
    const auto player = AVPlayer::playerWithPlayerItem(item);
    settle();
    EXPECT_EQ(item->status(), AVPlayerItemStatusFailed);
}

TEST_F(AVPlayerItemTest, ASoundOfNoSamplesFails)
{
    const ToneFile empty(0);
    const auto player = playerFor(empty.url());
    settle();
    EXPECT_EQ(player->currentItem()->status(), AVPlayerItemStatusFailed);
}

TEST_F(AVPlayerItemTest, ASecondPlayerDoesNotLoadAgain)
{
    const auto item = observedItem(AVAsset::assetWithURL(tone.url()));
    const auto first = AVPlayer::playerWithPlayerItem(item);
    settle();
    const auto sound = item->sound();
    const auto second = AVPlayer::playerWithPlayerItem(item);
    settle();
    EXPECT_EQ(item->sound(), sound);
    EXPECT_EQ(log->seen.size(), 1u);
}

TEST_F(AVPlayerItemTest, MayBeDroppedWhileItLoads)
{
    auto player = playerFor(tone.url());
    const std::weak_ptr<AVPlayerItem> item = player->currentItem();
    player.reset();
    settle();
    EXPECT_TRUE(item.expired());
}

TEST_F(AVPlayerItemTest, MayBeDroppedByItsObserver)
{
    auto item = observedItem(AVAsset::assetWithURL(tone.url()));
    auto player = AVPlayer::playerWithPlayerItem(item);
    log->onChange = [&] {
        player.reset();
        item.reset();
    };
    settle();
    EXPECT_EQ(item, nullptr);
    EXPECT_EQ(log->seen.size(), 1u);
}

} // namespace
