// A screen with one window, a clock moved by hand, and fingers: what tests of views are derived from.
//
// Frames run as they do on a screen: scheduler.advance() runs those that are asked for on the way.
#pragma once

#include "platform/views/UIWindow.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/TouchScript.h"

#include <gtest/gtest.h>

class SceneFixture : public ::testing::Test {
protected:
    SceneFixture()
    {
        UIScreen::mainScreen()->setGeometry(screenGeometry);
        window = make<UIWindow>(UIScreen::mainScreen()->bounds());
        window->makeKeyAndVisible();
        scheduler.setFrameHandler([this] {
            if (const auto held = window) // a frame ends with its window
                frame = held->performFrame();
        });
        runFrames();
    }
    ~SceneFixture() override
    {
        CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light);
        UIScreen::mainScreen()->setGeometry({});
    }

    // The window goes before what a test holds: its views may write to that as they go.
    void TearDown() override { window = nullptr; }

    // Runs frames at this very moment until none is asked for; answers how many ran.
    int runFrames()
    {
        int count = 0;
        while (count < 100 && scheduler.runFrameIfRequested())
            ++count;
        return count;
    }

    // How many frames are run on the way there.
    int framesRunIn(double seconds)
    {
        const int before = scheduler.framesRun();
        scheduler.advance(seconds);
        return scheduler.framesRun() - before;
    }

    // A view of the class, added to the window.
    template <typename View = UIView> std::shared_ptr<View> addView(const CGRect& rect)
    {
        auto view = make<View>(rect);
        window->addSubview(view);
        return view;
    }

    static constexpr UIScreen::Geometry screenGeometry { { 390, 844 }, 2, { 47, 0, 34, 0 } };

    ManualScheduler scheduler;
    std::shared_ptr<UIWindow> window;
    FrameList frame; // the last one
    TouchScript touch { scheduler, window };
};
