#include "platform/host/SettledWindow.h"

#include "platform/host/SceneWindow.h"

#include <chrono>

namespace {

constexpr std::chrono::milliseconds interval { 50 };
constexpr int quietChecksWanted = 6; // 0.3 s: longer than what starts by itself waits before it moves
constexpr int mostChecks = 100; // 5 s

} // namespace

SettledWindow::SettledWindow(const SceneWindow& window, std::function<void()> work)
    : m_window(window)
    , m_work(std::move(work))
{
    QObject::connect(&m_timer, &QTimer::timeout, [this] { check(); });
    m_timer.start(interval);
}

void SettledWindow::check()
{
    const std::int64_t frames = m_window.framesDrawn();
    m_quietChecks = frames == m_framesSeen && frames > 0 ? m_quietChecks + 1 : 0;
    m_framesSeen = frames;
    if (++m_checks < mostChecks && m_quietChecks < quietChecksWanted)
        return;
    m_timer.stop();
    m_work();
}
