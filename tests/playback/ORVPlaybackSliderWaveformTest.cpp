#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// How the slider gets the picture of its waveform.
class ORVPlaybackSliderWaveformTest : public PlaybackSliderFixture {
protected:
    static std::shared_ptr<UIImage> resource()
    {
        return UIImage::imageNamed(QStringLiteral("mock_playback_waveform"));
    }
    ORVPlaybackSlider::Completion countCompletions()
    {
        return [this] { ++completions; };
    }
    void request() { slider->renderWafeformIfNecessaryWithCompletion(countCompletions()); }
    std::shared_ptr<UIImage> picture() const { return slider->minimumTrackView()->waveformImage(); }

    int completions = 0;
};

// --- The need ----------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderWaveformTest, WithoutAnAssetTheCompletionComesAtOnceAndNothingElseHappens)
{
    slider->setNeedsRenderWaveform();
    request();
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(slider->isRenderingWaveform());
    EXPECT_EQ(executor.global().size(), 0U);
    EXPECT_THAT(log->lines, IsEmpty());
    EXPECT_FALSE(picture());
}

TEST_F(ORVPlaybackSliderWaveformTest, WithoutANeedTheCompletionComesAtOnceAndNothingElseHappens)
{
    slider->setRenderingWaveform(true);
    request();
    EXPECT_EQ(completions, 1);
    EXPECT_TRUE(slider->isRenderingWaveform()) << "left as it is";
    EXPECT_EQ(executor.global().size(), 0U);
    EXPECT_THAT(log->lines, IsEmpty());
}

TEST_F(ORVPlaybackSliderWaveformTest, NoCompletionIsNeededWhereNothingIsToBeDone)
{
    slider->renderWafeformIfNecessaryWithCompletion(nullptr);
    EXPECT_THAT(log->lines, IsEmpty());
}

TEST_F(ORVPlaybackSliderWaveformTest, TheSameAssetSetAgainAsksForNothing)
{
    slider->setShouldAutomaticallyRenderWaveform(true);
    const auto asset = makeAsset();
    slider->setAsset(asset);
    EXPECT_THAT(log->takeLines(), ElementsAre("rendering"));
    slider->setAsset(asset);
    EXPECT_THAT(log->lines, IsEmpty());
    slider->setAsset(makeAsset()); // the same sound, another object
    EXPECT_THAT(log->lines, ElementsAre("rendering"));
    EXPECT_EQ(executor.global().size(), 2U);
}

TEST_F(ORVPlaybackSliderWaveformTest, TheNeedStaysOnceItWasStated)
{
    slider->setAsset(makeAsset());
    for (int round = 1; round <= 3; ++round) {
        request();
        EXPECT_EQ(executor.global().size(), 1U);
        executor.runAll();
        EXPECT_EQ(completions, round);
    }
    EXPECT_THAT(
        log->lines, ElementsAre("rendering", "rendered", "rendering", "rendered", "rendering", "rendered"));
}

TEST_F(ORVPlaybackSliderWaveformTest, WithoutTheAssetNothingIsRenderedAnyMore)
{
    slider->setAsset(makeAsset());
    slider->setAsset(nullptr);
    request();
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(executor.global().size(), 0U);
}

TEST_F(ORVPlaybackSliderWaveformTest, RendersByItselfOnlyWhereItWasToldToAndIsInAWindow)
{
    slider->setAsset(makeAsset());
    EXPECT_EQ(executor.global().size(), 0U);
    slider->removeFromSuperview();
    slider->setShouldAutomaticallyRenderWaveform(true);
    slider->setNeedsRenderWaveform();
    EXPECT_EQ(executor.global().size(), 0U);
    window->addSubview(slider);
    EXPECT_EQ(executor.global().size(), 1U);
    slider->setNeedsRenderWaveform();
    EXPECT_EQ(executor.global().size(), 2U);
    slider->removeFromSuperview();
    EXPECT_EQ(executor.global().size(), 2U);
    slider->setShouldAutomaticallyRenderWaveform(false);
    window->addSubview(slider);
    EXPECT_EQ(executor.global().size(), 2U);
}

// --- One rendering -----------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderWaveformTest, APictureIsMadeOnTheGlobalQueueAndShownOnTheMainOne)
{
    slider->setAsset(makeAsset());
    request();
    EXPECT_TRUE(slider->isRenderingWaveform());
    EXPECT_THAT(log->lines, ElementsAre("rendering"));
    ASSERT_TRUE(executor.global().runOne());
    EXPECT_FALSE(picture());
    EXPECT_EQ(completions, 0);
    EXPECT_TRUE(slider->isRenderingWaveform());
    ASSERT_TRUE(executor.main().runOne());
    ASSERT_TRUE(picture());
    EXPECT_EQ(picture()->qImage().size(), QSize(700, 88));
    EXPECT_FALSE(slider->isRenderingWaveform());
    EXPECT_THAT(log->lines, ElementsAre("rendering", "rendered"));
    EXPECT_EQ(completions, 1);
}

TEST_F(ORVPlaybackSliderWaveformTest, TheBeginningIsToldBeforeTheWorkIsHandedOn)
{
    std::size_t handedOn = 1;
    bool rendering = false;
    log->whenHeard = [&](const std::string& message) {
        if (message != "rendering")
            return;
        handedOn = executor.global().size();
        rendering = slider->isRenderingWaveform();
    };
    slider->setAsset(makeAsset());
    request();
    EXPECT_EQ(handedOn, 0U);
    EXPECT_TRUE(rendering);
}

TEST_F(ORVPlaybackSliderWaveformTest, TheEndIsToldWhenThePictureIsShownAndBeforeTheCompletion)
{
    Lines order;
    log->whenHeard = [&](const std::string& message) {
        if (message == "rendered")
            order.push_back(picture() && !slider->isRenderingWaveform() ? "shown and told" : "told");
    };
    slider->setAsset(makeAsset());
    slider->renderWafeformIfNecessaryWithCompletion([&] { order.push_back("completed"); });
    executor.runAll();
    EXPECT_THAT(order, ElementsAre("shown and told", "completed"));
}

TEST_F(ORVPlaybackSliderWaveformTest, BothHalvesShareThePixelsAndTintThem)
{
    slider->setAsset(makeAsset());
    request();
    executor.runAll();
    const auto left = slider->minimumTrackView()->waveformImage();
    const auto right = slider->maximumTrackView()->waveformImage();
    EXPECT_EQ(left->qImage().cacheKey(), right->qImage().cacheKey());
    EXPECT_EQ(left->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    EXPECT_EQ(right->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
}

TEST_F(ORVPlaybackSliderWaveformTest, TheResourcesOwnPixelsAreShownWhereItFits)
{
    slider->setFrame({ 0, 200, 390, 44 });
    slider->setAsset(makeAsset());
    request();
    const auto held = resource();
    executor.runAll();
    EXPECT_EQ(picture()->qImage().cacheKey(), held->qImage().cacheKey());
}

TEST_F(ORVPlaybackSliderWaveformTest, TheSizeIsThatOfTheRequest)
{
    slider->setAsset(makeAsset());
    request();
    slider->setFrame({ 0, 200, 200, 44 });
    executor.runAll();
    EXPECT_EQ(picture()->size().width(), width);
    EXPECT_EQ(executor.global().size(), 0U) << "a new size renders nothing by itself";
}

TEST_F(ORVPlaybackSliderWaveformTest, OutsideOfAWindowTheMainScreensScaleIsTaken)
{
    slider->removeFromSuperview();
    slider->setAsset(makeAsset());
    request();
    executor.runAll();
    ASSERT_TRUE(picture());
    EXPECT_EQ(picture()->scale(), 2);
}

TEST_F(ORVPlaybackSliderWaveformTest, ABarThatIsNotLaidOutYetShowsNoWaveform)
{
    slider->setFrame({});
    slider->setAsset(makeAsset());
    request();
    executor.runAll();
    EXPECT_FALSE(picture());
    EXPECT_EQ(completions, 1);
    EXPECT_THAT(log->lines, ElementsAre("rendering", "rendered"));
    EXPECT_FALSE(slider->isRenderingWaveform());
}

TEST_F(ORVPlaybackSliderWaveformTest, NoPictureTakesTheShownOneAway)
{
    showPicture();
    EXPECT_TRUE(picture());
    slider->finishRenderingWaveformWithImage(nullptr, nullptr);
    EXPECT_FALSE(picture());
    EXPECT_FALSE(slider->maximumTrackView()->waveformImage());
}

// --- Several renderings ------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderWaveformTest, TwoRequestsInARowAreTwoJobsAndBothResultsAreShownInTurn)
{
    slider->setAsset(makeAsset());
    request();
    slider->setFrame({ 0, 200, 200, 44 });
    request();
    EXPECT_EQ(executor.global().size(), 2U);
    executor.global().runAll();
    ASSERT_TRUE(executor.main().runOne());
    EXPECT_EQ(picture()->size().width(), width);
    EXPECT_FALSE(slider->isRenderingWaveform()) << "at the first end";
    ASSERT_TRUE(executor.main().runOne());
    EXPECT_EQ(picture()->size().width(), 200);
    EXPECT_EQ(completions, 2);
    EXPECT_THAT(log->lines, ElementsAre("rendering", "rendering", "rendered", "rendered"));
}

// --- Those who go meanwhile --------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderWaveformTest, ASliderThatIsReleasedMeanwhileIsNotKeptAndNobodyHearsOfTheResult)
{
    slider->setAsset(makeAsset());
    for (const bool duringTheWork : { true, false }) {
        slider = addView<ORVPlaybackSlider>({ 0, 0, width, height });
        slider->setDelegate(log);
        slider->setAsset(makeAsset());
        request();
        if (!duringTheWork)
            executor.global().runAll();
        log->takeLines();
        const std::weak_ptr<ORVPlaybackSlider> weak = slider;
        std::exchange(slider, nullptr)->removeFromSuperview();
        EXPECT_TRUE(weak.expired());
        executor.runAll();
        EXPECT_EQ(completions, 0);
        EXPECT_THAT(log->lines, IsEmpty());
    }
}

TEST_F(ORVPlaybackSliderWaveformTest, WhatOthersOwnGoesWithTheResultOnTheMainQueue)
{
    auto owned = std::make_shared<int>(1);
    const std::weak_ptr<int> weak = owned;
    slider->setAsset(makeAsset());
    const std::weak_ptr<AVAsset> weakAsset = slider->asset();
    slider->renderWafeformIfNecessaryWithCompletion([owned = std::exchange(owned, nullptr)] {});
    slider->setAsset(nullptr);
    executor.global().runAll();
    EXPECT_FALSE(weak.expired());
    EXPECT_FALSE(weakAsset.expired());
    executor.main().runAll();
    EXPECT_TRUE(weak.expired());
    EXPECT_TRUE(weakAsset.expired());
}

TEST_F(ORVPlaybackSliderWaveformTest, SliderAndDelegateMayGoFromInsideTheMessages)
{
    for (const char* message : { "rendering", "rendered" })
        for (const bool dropsSlider : { true, false }) {
            completions = 0;
            log = std::make_shared<SliderLog>();
            slider = addView<ORVPlaybackSlider>({ 0, 0, width, height });
            slider->setDelegate(log);
            log->whenHeard = [this, message, dropsSlider](const std::string& heard) {
                if (heard != message)
                    return;
                if (dropsSlider)
                    std::exchange(slider, nullptr)->removeFromSuperview();
                else
                    log = nullptr;
            };
            slider->setAsset(makeAsset());
            request();
            executor.runAll();
            const bool goneBefore = dropsSlider && message == std::string("rendering");
            EXPECT_EQ(completions, goneBefore ? 0 : 1) << message;
            EXPECT_EQ(slider == nullptr, dropsSlider);
            EXPECT_EQ(log == nullptr, !dropsSlider);
        }
}

TEST_F(ORVPlaybackSliderWaveformTest, TheCompletionMayReleaseTheSlider)
{
    slider->setAsset(makeAsset());
    const std::weak_ptr<ORVPlaybackSlider> weak = slider;
    slider->renderWafeformIfNecessaryWithCompletion(
        [this] { std::exchange(slider, nullptr)->removeFromSuperview(); });
    executor.runAll();
    EXPECT_TRUE(weak.expired());
}

} // namespace
