// A window with a manual clock, for scroll views and tables under a finger.
#pragma once

#include "platform/views/UIWindow.h"
#include "tests/support/ManualScheduler.h"

class TableScene {
public:
    explicit TableScene(const CGSize& size = { 320, 480 })
    {
        UIScreen::mainScreen()->setGeometry({ size, 2, {} });
        window = make<UIWindow>(CGRect(CGPoint(), size));
        scheduler.setFrameHandler([this] { lastFrame = window->performFrame(); });
        window->makeKeyAndVisible();
    }

    // Lays out and draws what is due, without time passing: what a frame asks for comes in the next one.
    void settle()
    {
        for (int frame = 0; frame < 3; ++frame)
            scheduler.runFrameIfRequested();
    }

    TouchDispatcher& finger() { return window->touches(); }
    void press(const CGPoint& point) { finger().touchBegan(touch, point); }
    void move(const CGPoint& point) { finger().touchMoved(touch, point); }
    void lift(const CGPoint& point) { finger().touchEnded(touch, point); }
    void tap(const CGPoint& point)
    {
        press(point);
        lift(point);
    }
    // Moves in even steps, a frame apart, without lifting.
    void drag(const CGPoint& from, const CGPoint& to, double seconds)
    {
        const int steps = std::max(1, static_cast<int>(seconds / scheduler.frameInterval()));
        for (int step = 1; step <= steps; ++step) {
            scheduler.advance(seconds / steps);
            move(from + (to - from) * step / steps);
        }
    }

    ManualScheduler scheduler;
    std::shared_ptr<UIWindow> window;
    FrameList lastFrame;

private:
    static constexpr TouchID touch { 1 };
};
