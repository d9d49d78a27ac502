// The running application under a hand that does one thing over and over.
//
// What an action leaves behind grows with every time it is done: objects, timers, observers, memory, work. So
// an action is done ten thousand times, and what lives after the last hundred, and what the last hundred
// cost, is held against the first hundred. The first rounds of all are not counted: they fill pools and
// caches. The frames go on to the host's scene-graph nodes, so that nodes and textures are counted with the
// rest.
//
// Not every machine lets a program count its instructions. What stands for them here is the same in every
// run: the allocations of the process, the frames, the drawing steps in them that are new or have changed,
// and the pictures that become textures. Work that does none of these goes unseen: a loop over what is there
// already, as in a pass of layout that finds nothing to do. The benchmarks count instructions.
#pragma once

#include "app/ORVAppDelegate.h"
#include "list/ORVRecordTableViewCell.h"
#include "platform/application/UIApplication.h"
#include "platform/foundation/KeyValueObservers.h"
#include "platform/foundation/LiveObjects.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/media/AudioSink.h"
#include "tests/repetition/AllocationCounter.h"
#include "tests/repetition/NodeScreen.h"
#include "tests/support/CountingDecoder.h"
#include "tests/support/ManualExecutor.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/SourcePath.h"
#include "tests/support/TouchScript.h"

#include <gtest/gtest.h>

#include <cstdio>

class RepetitionFixture : public ::testing::Test {
protected:
    RepetitionFixture()
    {
        UIScreen::mainScreen()->setGeometry(upright);
        scheduler.setFrameInterval(frameInterval);
        scheduler.setAfterTurn([this] { executor.runAll(); });
        scheduler.setFrameHandler([this] { screen.show(application->performFrame()); });
        application = UIApplication::launch({}, QStringLiteral("ORVAppDelegate"));
        window = application->keyWindow();
        list = std::dynamic_pointer_cast<ORVAppDelegate>(application->delegate())->listViewController();
        settle();
    }
    ~RepetitionFixture() override
    {
        scheduler.setAfterTurn(nullptr);
        list = nullptr;
        window = nullptr;
        application = nullptr;
        CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light);
        UIScreen::mainScreen()->setGeometry({});
    }

    // Does the action over and over, and expects the end to be like the beginning.
    void repeat(const std::function<void()>& action)
    {
        const NSDate today = scheduler.currentDate();
        const auto atTheSameHour = [&] { // or else the ages of the records grow
            scheduler.setCurrentDate(today);
            action();
        };
        for (int round = 0; round < roundsBefore; ++round)
            atTheSameHour();
        const State first = stateAfterHundred(atTheSameHour);
        const std::int64_t blocksAtFirst = AllocationCounter::blocksInUse(); // with those of that state
        const std::int64_t bytesAtFirst = AllocationCounter::bytesInUse();
        for (int round = 0; round < repetitions - 200; ++round)
            atTheSameHour();
        const State last = stateAfterHundred(atTheSameHour);

        EXPECT_EQ(differences(first.counts, last.counts), "");
        // A container that is found full at another moment, and a tick of a player that falls into another
        // frame; what grows does so by more.
        EXPECT_NEAR(double(last.allocations), double(first.allocations), double(first.allocations) * 0.02);
        const auto grows
            = [](std::int64_t before, std::int64_t after) { return after > before + before / 10 + 10; };
        EXPECT_FALSE(grows(first.frames, last.frames));
        EXPECT_FALSE(grows(first.items, last.items));
        EXPECT_FALSE(grows(first.uploads, last.uploads));
        EXPECT_LT(last.blocks - blocksAtFirst, 20);
        EXPECT_LT(last.bytes - bytesAtFirst, repetitions * 16);
        const auto each = [](std::int64_t count) { return double(count) / 100; };
        std::printf(
            "%d repetitions, each %.0f allocations, %.1f frames, %.0f steps and %.1f uploads at first; "
            "%.0f, %.1f, %.0f and %.1f at last; %+ld blocks, %+ld bytes in all\n",
            repetitions, each(first.allocations), each(first.frames), each(first.items), each(first.uploads),
            each(last.allocations), each(last.frames), each(last.items), each(last.uploads),
            long(last.blocks - blocksAtFirst), long(last.bytes - bytesAtFirst));
    }

    void settle(double seconds = 0.6) { scheduler.advance(seconds); }
    std::shared_ptr<ORVRecordTableViewCell> cellAt(int row) const
    {
        return std::dynamic_pointer_cast<ORVRecordTableViewCell>(list->tableView()->cellForRow({ 0, row }));
    }
    static CGPoint centerOf(const UIView& view)
    {
        return view.convertPointToView(view.bounds().center(), nullptr);
    }
    void tapRow(int row)
    {
        const CGRect rect = list->tableView()->rectForRow({ 0, row });
        touch.tap(list->tableView()->convertPointToView(rect.topLeft() + CGPoint(100, 32), nullptr));
        settle();
    }
    void tapButton(int row)
    {
        touch.tap(centerOf(*cellAt(row)->playbackButton()));
        settle();
    }

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    static constexpr int repetitions = 1000;
#else
    static constexpr int repetitions = 10000;
#endif
    static constexpr int roundsBefore = 20;
    // Long steps: what a motion is like in between is not asked here.
    static constexpr double frameInterval = 0.14;
    // A small phone, for its rows are drawn many times.
    static constexpr UIScreen::Geometry upright { { 320, 360 }, 1, { 20, 0, 20, 0 } };
    static constexpr UIScreen::Geometry turned { { 360, 320 }, 1, { 0, 20, 20, 20 } };

    LiveObjects objects;
    const NSBundle::MainReplacement mainBundle { make<NSBundle>(
        sourcePath("resources"), std::vector<NSString> { QStringLiteral("en") }) };
    // A sound that is decoded in no time and heard by nobody.
    const std::shared_ptr<CountingDecoder::Log> decoderLog = std::make_shared<CountingDecoder::Log>();
    const SoundDecoder::Replacement decoder { [this](const NSURL&) {
        return std::make_unique<CountingDecoder>(soundFrames, soundFrames, decoderLog);
    } };
    static constexpr std::int64_t soundFrames = 10 * CountingDecoder::sampleRate;
    const AudioSink::Replacement noDevice { [](auto&&...) { return nullptr; } };

    NodeScreen screen;
    ManualExecutor executor;
    ManualScheduler scheduler;
    std::shared_ptr<UIApplication> application;
    std::shared_ptr<UIWindow> window;
    std::shared_ptr<ORVRecordsListViewController> list;
    TouchScript touch { scheduler, window };

private:
    using Counts = std::map<std::string, std::int64_t>; // of objects by class, and of what are no objects

    struct State {
        Counts counts;
        // By the last hundred.
        std::int64_t allocations;
        std::int64_t frames;
        std::int64_t items;
        std::int64_t uploads;
        // Held.
        std::int64_t blocks;
        std::int64_t bytes;
    };

    static std::string differences(Counts before, const Counts& after)
    {
        std::string lines;
        for (const auto& [name, count] : after)
            if (const auto had = std::exchange(before[name], count); had != count)
                lines += name + ": " + std::to_string(had) + " became " + std::to_string(count) + '\n';
        for (const auto& [name, count] : before)
            if (!after.contains(name))
                lines += name + ": " + std::to_string(count) + " became 0\n";
        return lines;
    }

    State stateAfterHundred(const std::function<void()>& action)
    {
        State before {};
        before.allocations = AllocationCounter::callsSoFar();
        before.frames = screen.framesShown();
        before.items = screen.itemsShown();
        before.uploads = screen.uploads();
        for (int round = 0; round < 100; ++round)
            action();
        State state {};
        state.allocations = AllocationCounter::callsSoFar() - before.allocations;
        state.frames = screen.framesShown() - before.frames;
        state.items = screen.itemsShown() - before.items;
        state.uploads = screen.uploads() - before.uploads;
        state.blocks = AllocationCounter::blocksInUse();
        state.bytes = AllocationCounter::bytesInUse();
        decoderLog->seeks = {};
        state.counts = objects.countsByClass();
        state.counts["(timers)"] = static_cast<std::int64_t>(scheduler.pendingTimerCount());
        state.counts["(notification observers)"]
            = static_cast<std::int64_t>(NSNotificationCenter::defaultCenter().observerCount());
        state.counts["(key-value observers)"] = KeyValueObservers::liveCount();
        state.counts["(scene-graph nodes)"] = screen.nodeCount();
        state.counts["(textures)"] = screen.textureCount();
        return state;
    }
};
