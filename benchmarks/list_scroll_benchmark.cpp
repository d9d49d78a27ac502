// What one frame of the application's own list costs while it scrolls, from the finger to the picture.
//
// Runs the real application in a real window, offscreen, drags the list up and down with a finger, one
// step a frame, and prints the time of a frame. For instruction counts run it under callgrind, once with
// few and once with many frames:
//     list_scroll_benchmark 100
#include "app/ORVAppDelegate.h"
#include "platform/host/HostApplication.h"
#include "platform/host/HostEnvironment.h"

#include <QGuiApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr double step = 7; // points a frame: a brisk drag
constexpr double top = 200;
constexpr double bottom = 780;
constexpr TouchID finger { 1 };

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Drags by one step for each frame that is drawn, turning round at both ends.
class Drag {
public:
    Drag(HostApplication& application, int frames)
        : m_framesWanted(frames)
    {
        QObject::connect(&application.window(), &QQuickWindow::frameSwapped, [this] { frameWasDrawn(); });
    }

    void print()
    {
        std::sort(m_times.begin(), m_times.end());
        const auto at = [&](double fraction) {
            return m_times[std::size_t(fraction * double(m_times.size() - 1))] * 1000;
        };
        std::printf("%zu frames: median %.3f ms, 90th percentile %.3f ms, 99th %.3f ms, longest %.3f ms\n",
            m_times.size(), at(0.5), at(0.9), at(0.99), at(1));
    }

private:
    void frameWasDrawn()
    {
        if (m_isDown)
            m_times.push_back(secondsSince(m_start));
        if (int(m_times.size()) >= m_framesWanted)
            QGuiApplication::quit();
        else
            Scheduler::current().schedule(0, [this] { moveOn(); });
    }

    void moveOn()
    {
        TouchDispatcher& touches = *UIApplication::sharedApplication()->touches();
        if (!m_isDown) {
            touches.touchBegan(finger, { 100, m_y });
            touches.touchMoved(finger, { 100, m_y -= 20 }); // beyond what could still be a tap
            m_isDown = true;
        }
        if (m_y + m_step < top || m_y + m_step > bottom)
            m_step = -m_step;
        m_y += m_step;
        m_start = Clock::now();
        touches.touchMoved(finger, { 100, m_y });
    }

    int m_framesWanted;
    std::vector<double> m_times;
    Clock::time_point m_start;
    double m_y = bottom;
    double m_step = -step;
    bool m_isDown = false;
};

} // namespace

int main(int argc, char** argv)
{
    HostEnvironment::apply(HostEnvironment::settingsFor({}));
    const QGuiApplication application(argc, argv);
    HostOptions options;
    options.scale = 2;
    HostApplication host(options);
    dynamic_cast<HostScheduler&>(Scheduler::current()).setRefreshInterval(1e-6); // no waiting in between
    Drag drag(host, argc > 1 ? std::max(std::atoi(argv[1]), 1) : 600);
    host.run(NSString(), "ORVAppDelegate");
    drag.print();
    return 0;
}
