// The real window that shows a simulated screen, and the pace of its frames.
//
// A frame begins when the scheduler runs one, the frame maker computes what is to be seen, and the window
// draws it if it differs. The window's size is the screen's in device pixels, whatever Qt counts them as.
// Main thread only, the scene graph's own signals aside.
#pragma once

#include "platform/host/FrameStatistics.h"
#include "platform/host/HostScheduler.h"
#include "platform/host/SceneItem.h"

#include <QQuickWindow>

#include <functional>
#include <optional>

class SceneWindow final : public QQuickWindow {
public:
    // Answers what is to be seen, which holds until it is called again.
    using FrameMaker = std::function<std::reference_wrapper<const FrameList>()>;
    // What the user does to the window; answers whether it was used.
    using EventHandler = std::function<bool(QEvent&)>;

    explicit SceneWindow(HostScheduler& scheduler);
    ~SceneWindow() override;

    void setFrameMaker(FrameMaker maker) { m_frameMaker = std::move(maker); }
    void setEventHandler(EventHandler handler) { m_eventHandler = std::move(handler); }

    // The screen that the window shows: size in points, device pixels in a point.
    void setScreen(const CGSize& size, double scale);
    // From the window's coordinates, as Qt's events have them, to points of the screen.
    CGPoint pointFromWindow(const CGPoint&) const;

    std::int64_t framesDrawn() const { return m_statistics.framesDrawn(); }
    // As of now; what only the process knows is filled in.
    FrameStatistics statistics() const;

private:
    // A frame on its way from the frame maker to the display.
    struct Frame {
        double dueTime = 0;
        double beginTime = 0;
    };

    bool event(QEvent*) override;
    void makeFrame();
    void requestDisplay();
    void frameWasDrawn();
    bool isPacedByDisplay() const;

    HostScheduler& m_scheduler;
    SceneItem m_scene;
    FrameMaker m_frameMaker;
    EventHandler m_eventHandler;
    FrameStatistics m_statistics;
    double m_scale = 1;
    std::optional<Frame> m_madeFrame; // waits for the scene graph
    std::optional<Frame> m_drawnFrame; // the scene graph's; read and written in its thread
};
