#include "platform/host/QuitSignals.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr int quitSignals[] = { SIGINT, SIGTERM, SIGHUP };

volatile std::sig_atomic_t writeEnd = -1;

// A signal may come in the middle of anything: all that is allowed here is to write to a pipe. A second
// one ends the process at once, should the loop not listen any more.
void noteSignal(int signal)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
    std::signal(signal, SIG_DFL);
}

} // namespace

QuitSignals::QuitSignals()
{
    if (pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals then end the process as they always do
    m_notifier.emplace(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, [this] {
        m_notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    writeEnd = m_pipe[1];
    for (const int signal : quitSignals)
        std::signal(signal, noteSignal);
}

QuitSignals::~QuitSignals()
{
    if (!m_notifier)
        return;
    for (const int signal : quitSignals)
        std::signal(signal, SIG_DFL);
    writeEnd = -1;
    m_notifier.reset();
    for (const int end : m_pipe)
        close(end);
}
