// Ends the event loop when the system asks the process to end, so that a run interrupted at the keyboard
// still prints its report. In force from construction to destruction; one at a time.
#pragma once

#include <QSocketNotifier>

#include <array>
#include <optional>

class QuitSignals {
public:
    QuitSignals();
    ~QuitSignals();
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;

private:
    std::array<int, 2> m_pipe { -1, -1 };
    std::optional<QSocketNotifier> m_notifier;
};
