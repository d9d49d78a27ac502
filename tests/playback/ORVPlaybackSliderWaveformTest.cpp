#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// How the slider gets the picture of its waveform.
class ORVPlaybackSliderWaveformTest : public PlaybackSliderFixture {
protected:
    // Answers how many completions came inside the call.
    int request()
    {
        const int before = completions;
        slider->renderWafeformIfNecessaryWithCompletion([this] { ++completions; });
        return completions - before;
    }
    void requestWithAsset()
    {
        slider->setAsset(makeAsset());
        EXPECT_EQ(request(), 0);
    }
    std::size_t jobs() { return executor.global().size(); }
    std::shared_ptr<UIImage> picture() const { return slider->minimumTrackView()->waveformImage(); }

    int completions = 0;
};

// --- The need ----------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderWaveformTest, WithoutANeedOrAnAssetTheCompletionComesAtOnceAndNothingElseHappens)
{
    slider->renderWafeformIfNecessaryWithCompletion(nullptr);
    slider->setRenderingWaveform(true);
    EXPECT_EQ(request(), 1);
    EXPECT_TRUE(slider->isRenderingWaveform()) << "left as it is";
    slider->setRenderingWaveform(false);
    slider->setNeedsRenderWaveform();
    EXPECT_EQ(request(), 1);
    slider->setAsset(makeAsset());
    slider->setAsset(nullptr);
    EXPECT_EQ(request(), 1);
    EXPECT_FALSE(slider->isRenderingWaveform());
    EXPECT_EQ(jobs(), 0U);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_FALSE(picture());
}

TEST_F(ORVPlaybackSliderWaveformTest, TheSameAssetSetAgainAsksForNothing)
{
    slider->setShouldAutomaticallyRenderWaveform(true);
    const auto asset = makeAsset();
    slider->setAsset(asset);
    EXPECT_THAT(heard(), ElementsAre("rendering"));
    slider->setAsset(asset);
    EXPECT_THAT(heard(), IsEmpty());
    slider->setAsset(makeAsset()); // the same sound, another object
    EXPECT_THAT(heard(), ElementsAre("rendering"));
    EXPECT_EQ(jobs(), 2U);
}

TEST_F(ORVPlaybackSliderWaveformTest, TheNeedStaysOnceItWasStated)
{
    slider->setAsset(makeAsset());
    for (int round = 1; round <= 3; ++round) {
        request();
        EXPECT_EQ(jobs(), 1U);
        executor.runAll();
        EXPECT_EQ(completions, round);
        EXPECT_THAT(heard(), ElementsAre("rendering", "rendered"));
    }
}

TEST_F(ORVPlaybackSliderWaveformTest, RendersByItselfOnlyWhereItWasToldToAndIsInAWindow)
{
    slider->setAsset(makeAsset());
    slider->removeFromSuperview();
    slider->setShouldAutomaticallyRenderWaveform(true);
    slider->setNeedsRenderWaveform();
    EXPECT_EQ(jobs(), 0U);
    window->addSubview(slider);
    EXPECT_EQ(jobs(), 1U);
    slider->setNeedsRenderWaveform();
    EXPECT_EQ(jobs(), 2U);
    slider->removeFromSuperview();
    slider->setShouldAutomaticallyRenderWaveform(false);
    window->addSubview(slider);
    EXPECT_EQ(jobs(), 2U);
}

// --- One rendering -----------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderWaveformTest, APictureIsMadeOnTheGlobalQueueAndShownOnTheMainOne)
{
    requestWithAsset();
    EXPECT_TRUE(slider->isRenderingWaveform());
    EXPECT_THAT(heard(), ElementsAre("rendering"));
    ASSERT_TRUE(executor.global().runOne());
    EXPECT_FALSE(picture());
    EXPECT_EQ(completions, 0);
    EXPECT_TRUE(slider->isRenderingWaveform());
    ASSERT_TRUE(executor.main().runOne());
    ASSERT_TRUE(picture());
    EXPECT_EQ(picture()->qImage().size(), QSize(700, 88));
    EXPECT_FALSE(slider->isRenderingWaveform());
    EXPECT_THAT(heard(), ElementsAre("rendered"));
    EXPECT_EQ(completions, 1);
}

TEST_F(ORVPlaybackSliderWaveformTest, TheMessagesComeInTheirPlaces)
{
    Lines order;
    log->whenHeard = [&](const std::string& message) {
        order.push_back(message + (slider->isRenderingWaveform() ? ", is rendering" : "")
            + (jobs() > 0 ? ", handed on" : "") + (picture() ? ", shown" : ""));
    };
    slider->setAsset(makeAsset());
    slider->renderWafeformIfNecessaryWithCompletion([&] { order.push_back("completed"); });
    executor.runAll();
    EXPECT_THAT(order, ElementsAre("rendering, is rendering", "rendered, shown", "completed"));
}

TEST_F(ORVPlaybackSliderWaveformTest, BothHalvesShareTheResourcesPixelsWhereItFitsAndTintThem)
{
    slider->setFrame({ 0, 200, 390, 44 });
    const auto held = UIImage::imageNamed(QStringLiteral("mock_playback_waveform"));
    requestWithAsset();
    executor.runAll();
    for (const auto& half : { slider->minimumTrackView(), slider->maximumTrackView() }) {
        EXPECT_EQ(half->waveformImage()->qImage().cacheKey(), held->qImage().cacheKey());
        EXPECT_EQ(half->waveformImage()->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    }
}

TEST_F(ORVPlaybackSliderWaveformTest, TheSizeIsThatOfTheRequest)
{
    requestWithAsset();
    slider->setFrame({ 0, 200, 200, 44 });
    executor.runAll();
    EXPECT_EQ(picture()->size().width(), width);
    EXPECT_EQ(jobs(), 0U) << "a new size renders nothing by itself";
}

TEST_F(ORVPlaybackSliderWaveformTest, OutsideOfAWindowTheMainScreensScaleIsTaken)
{
    slider->removeFromSuperview();
    requestWithAsset();
    executor.runAll();
    ASSERT_TRUE(picture());
    EXPECT_EQ(picture()->scale(), 2);
}

TEST_F(ORVPlaybackSliderWaveformTest, ABarThatNoPictureFitsShowsNoneAndEndsItsRendering)
{
    slider->setAsset(makeAsset());
    for (const double wide : { 0.0, 1e9, 1e300 }) {
        showPicture();
        heard();
        slider->setFrame({ 20, 200, wide, wide > 0 ? height : 0 });
        request();
        executor.runAll();
        EXPECT_FALSE(picture()) << wide;
        EXPECT_THAT(heard(), ElementsAre("rendering", "rendered"));
        EXPECT_FALSE(slider->isRenderingWaveform());
        slider->setFrame({ 20, 200, width, height });
    }
    EXPECT_EQ(completions, 3);
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
    requestWithAsset();
    slider->setFrame({ 0, 200, 200, 44 });
    request();
    EXPECT_EQ(jobs(), 2U);
    executor.global().runAll();
    ASSERT_TRUE(executor.main().runOne());
    EXPECT_EQ(picture()->size().width(), width);
    EXPECT_FALSE(slider->isRenderingWaveform()) << "at the first end";
    ASSERT_TRUE(executor.main().runOne());
    EXPECT_EQ(picture()->size().width(), 200);
    EXPECT_EQ(completions, 2);
    EXPECT_THAT(heard(), ElementsAre("rendering", "rendering", "rendered", "rendered"));
}

// --- Those who go meanwhile --------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderWaveformTest, ASliderThatIsReleasedMeanwhileIsNotKeptAndNobodyHearsOfTheResult)
{
    for (const bool isPictureMade : { false, true }) {
        makeAnew();
        requestWithAsset();
        if (isPictureMade)
            executor.global().runAll();
        heard();
        const std::weak_ptr<ORVPlaybackSlider> weak = slider;
        drop();
        EXPECT_TRUE(weak.expired());
        executor.runAll();
        EXPECT_EQ(completions, 0);
        EXPECT_THAT(heard(), IsEmpty());
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

TEST_F(ORVPlaybackSliderWaveformTest, TheSliderMayGoFromInsideTheMessagesAndTheCompletion)
{
    for (const char* message : { "rendering", "rendered", "completion" }) {
        makeAnew();
        fromInside(message, [this] { drop(); });
        const std::weak_ptr<ORVPlaybackSlider> weak = slider;
        slider->setAsset(makeAsset());
        bool completed = false;
        slider->renderWafeformIfNecessaryWithCompletion([&] {
            completed = true;
            log->whenHeard("completion");
        });
        executor.runAll();
        EXPECT_EQ(completed, message != std::string("rendering")) << message;
        EXPECT_TRUE(weak.expired()) << message;
    }
}

TEST_F(ORVPlaybackSliderWaveformTest, TheDelegateMayGoFromInsideTheMessages)
{
    for (const char* message : { "rendering", "rendered" }) {
        log = std::make_shared<SliderLog>();
        makeAnew();
        fromInside(message, [this] { log = nullptr; });
        requestWithAsset();
        executor.runAll();
        EXPECT_FALSE(log) << message;
    }
    EXPECT_EQ(completions, 2);
}

} // namespace
