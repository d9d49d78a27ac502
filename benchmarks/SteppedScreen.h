// A phone's screen whose clock goes on by one refresh of the display at a time, drawn into a real window.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/graphics/UIColor.h"
#include "platform/host/SceneItem.h"
#include "platform/views/UIWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickWindow>

#include <functional>

class SteppedScheduler final : public Scheduler {
public:
    static constexpr double refreshRate = 60;

    SteppedScheduler() { setCurrent(this); }
    ~SteppedScheduler() override
    {
        cancelAll();
        setCurrent(nullptr);
    }
    NSDate currentDate() const override { return NSDate::fromSecsSinceEpoch(0); }
    // Runs the frame of the next refresh, if one is asked for by then.
    void step()
    {
        m_time += 1 / refreshRate;
        runDueTimers();
        if (isFrameRequested())
            runFrame();
    }

protected:
    double clockNow() const override { return m_time; }
    void wakeAt(double) override { }
    void wakeForFrame() override { }

private:
    double m_time = 0;
};

// The display: a real window, drawn without a screen.
class SteppedDisplay {
public:
    // To be called before QGuiApplication is made: no display, and no waiting for one.
    static void setEnvironment()
    {
        for (const auto& [name, value] : { std::pair { "QT_QPA_PLATFORM", "offscreen" },
                 std::pair { "QT_QUICK_BACKEND", "software" }, std::pair { "QT_QPA_UPDATE_IDLE_TIME", "0" } })
            qputenv(name, value);
    }

    using FrameMaker = std::function<std::reference_wrapper<const FrameList>()>;
    // Opens the window; each frame of the scheduler shows what the maker answers.
    explicit SteppedDisplay(FrameMaker frameMaker)
        : m_item(m_quickWindow.contentItem())
    {
        UIScreen::mainScreen()->setGeometry(geometry);
        m_scheduler.setFrameHandler([this, maker = std::move(frameMaker)] { show(maker()); });
        m_quickWindow.resize((geometry.size * geometry.scale).toSize());
        m_item.setSize(m_quickWindow.size());
        QObject::connect(&m_quickWindow, &QQuickWindow::frameSwapped, [this] { ++m_drawn; });
        m_quickWindow.show();
        waitForFrameAfter(0);
    }
    SteppedDisplay(const SteppedDisplay&) = delete;
    SteppedDisplay& operator=(const SteppedDisplay&) = delete;

    // From the timers of a refresh to the drawn picture.
    void step() { m_scheduler.step(); }
    int framesDrawn() const { return m_drawn; }
    std::int64_t uploads() const { return m_item.uploadCount(); }
    const FrameList& frameList() const { return m_item.frameList(); }

    static constexpr UIScreen::Geometry geometry { { 390, 844 }, 2, { 47, 0, 34, 0 } };

private:
    void show(const FrameList& list)
    {
        const int before = m_drawn;
        if (m_item.setFrameList(list))
            waitForFrameAfter(before);
    }
    void waitForFrameAfter(int before) const
    {
        while (m_drawn == before)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    SteppedScheduler m_scheduler;
    QQuickWindow m_quickWindow;
    SceneItem m_item;
    int m_drawn = 0;
};

// A display with an empty white window of the platform's.
class SteppedScreen : public SteppedDisplay {
public:
    SteppedScreen()
        : SteppedDisplay([this]() -> const FrameList& { return m_window->performFrame(); })
    {
        m_window = make<UIWindow>(UIScreen::mainScreen()->bounds());
        m_window->setBackgroundColor(UIColor::whiteColor());
        m_window->makeKeyAndVisible();
        step();
    }
    ~SteppedScreen() { m_window = nullptr; }

    UIWindow& window() { return *m_window; }

private:
    std::shared_ptr<UIWindow> m_window;
};
