// Waits until nothing moves in a window any more.
#pragma once

#include <QTimer>

#include <cstdint>
#include <functional>

class SceneWindow;

class SettledWindow {
public:
    // Calls the work once, when no frame has been drawn for a while; after some seconds in any case, as
    // there are things that never stop moving.
    SettledWindow(const SceneWindow& window, std::function<void()> work);

private:
    void check();

    const SceneWindow& m_window;
    std::function<void()> m_work;
    QTimer m_timer;
    std::int64_t m_framesSeen = 0;
    int m_checks = 0;
    int m_quietChecks = 0;
};
