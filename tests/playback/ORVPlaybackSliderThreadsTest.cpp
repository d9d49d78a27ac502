#include "platform/foundation/MainQueue.h"
#include "platform/foundation/ThreadPool.h"
#include "platform/graphics/UIImage.h"
#include "tests/playback/PlaybackSliderFixture.h"

#include <array>
#include <semaphore>
#include <thread>

namespace {

// The waveform's job on real worker threads; only the clock is still moved by hand.
class ORVPlaybackSliderThreadsTest : public PlaybackSliderFixture {
protected:
    ORVPlaybackSliderThreadsTest() { Executor::setCurrent(&realExecutor); }
    void TearDown() override
    {
        threads.stop(); // while the executor is in force: the last jobs hand on to the main queue
        PlaybackSliderFixture::TearDown();
    }

    // What workers hand to the main queue is run as it comes, until the condition holds.
    template <typename Condition> void drainUntil(Condition condition)
    {
        while (!condition()) {
            woken.acquire();
            mainQueue.drain();
            drained.release();
        }
    }

    static constexpr int sliderCount = 8;

    std::counting_semaphore<> woken { 0 };
    std::counting_semaphore<> drained { 0 };
    // A worker that wakes the main thread waits for it, so that what the worker still holds ends last.
    MainQueue mainQueue { [this] {
        woken.release();
        drained.acquire();
    } };
    ThreadPool threads { 4 };
    Executor realExecutor { mainQueue, threads };
};

TEST_F(ORVPlaybackSliderThreadsTest, SlidersRenderAtOnceWhileTheMainThreadLaysThemOutAndDraws)
{
    std::array<std::shared_ptr<ORVPlaybackSlider>, sliderCount> sliders;
    int completions = 0;
    for (int index = 0; index < sliderCount; ++index) {
        // One in two fits the resource, so that several threads share its pixels.
        sliders[index] = addView<ORVPlaybackSlider>({ 0, 0, index % 2 ? 390.0 : 200.0 + index, height });
        sliders[index]->setAsset(makeAsset());
        sliders[index]->renderWafeformIfNecessaryWithCompletion([this, &completions] {
            EXPECT_TRUE(mainQueue.isMainThread());
            ++completions;
        });
    }
    for (const auto& rendering : sliders) {
        const auto resource = UIImage::imageNamed(QStringLiteral("mock_playback_waveform"));
        rendering->minimumTrackView()->setWaveformImage(resource);
        rendering->setCurrentPosition(0.5);
        runFrames();
    }
    drainUntil([&] { return completions == sliderCount; });
    for (const auto& rendered : sliders) {
        EXPECT_FALSE(rendered->isRenderingWaveform());
        const auto picture = rendered->maximumTrackView()->waveformImage();
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->size(), rendered->bounds().size());
    }
}

TEST_F(ORVPlaybackSliderThreadsTest, WhatASliderReleasedMeanwhileLeavesBehindEndsOnTheMainThread)
{
    struct Owned {
        Owned(const MainQueue& queue, int& ends)
            : mainQueue(queue)
            , ended(ends)
        {
        }
        ~Owned()
        {
            EXPECT_TRUE(mainQueue.isMainThread());
            ++ended;
        }
        const MainQueue& mainQueue;
        int& ended;
    };
    int ended = 0;
    for (int index = 0; index < sliderCount; ++index) {
        auto released = addView<ORVPlaybackSlider>({ 0, 0, width, height });
        released->setAsset(makeAsset());
        released->renderWafeformIfNecessaryWithCompletion(
            [owned = std::make_shared<Owned>(mainQueue, ended)] { ADD_FAILURE() << "nobody is left"; });
        const std::weak_ptr<ORVPlaybackSlider> weak = released;
        std::exchange(released, nullptr)->removeFromSuperview();
        EXPECT_TRUE(weak.expired());
    }
    drainUntil([&] { return ended == sliderCount; });
}

} // namespace
