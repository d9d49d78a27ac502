// What the whole application costs: to start, to stand idle, to play one recording to its end.
//
// Runs it in a real window, offscreen, waits idle, taps the first button, and prints figures about each part.
// The sound goes to the sound server, if there is one. "launch" ends after the first frame. "empty" starts a
// window with nothing in it instead: what the toolkit beneath costs by itself.
//     application_benchmark [seconds to stand idle | launch | empty]
#include "app/ORVAppDelegate.h"
#include "benchmarks/InstructionCount.h"
#include "benchmarks/ListOnTheScreen.h"
#include "list/ORVRecordTableViewCell.h"
#include "platform/host/HostApplication.h"
#include "platform/host/HostEnvironment.h"
#include "platform/host/ProcessFigures.h"

#include <QGuiApplication>

#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

constexpr double settlingTime = 1.5; // longer than what is loaded after the first frame takes
constexpr double longestPlaying = 30;
constexpr TouchID finger { 1 };

double processorTime() { return double(std::clock()) / CLOCKS_PER_SEC; }
double peakMebibytes() { return double(ProcessFigures::peakMemory()) / (1 << 20); }

class Story {
public:
    Story(HostApplication& application, double idleTime)
        : m_window(application.window())
        , m_idleTime(idleTime)
    {
        Scheduler::current().schedule(settlingTime, [this] { standIdle(); });
    }

private:
    struct Moment {
        std::int64_t frames;
        std::int64_t uploads;
        double processorTime;
    };

    Moment now() const
    {
        return { m_window.framesDrawn(), m_window.statistics().texturesUploaded(), processorTime() };
    }

    void printSince(const char* what, double seconds) const
    {
        const Moment end = now();
        std::printf("%s, %.1f s: %lld frames, %lld pictures made, %.1f ms of processor time\n", what, seconds,
            static_cast<long long>(end.frames - m_begin.frames),
            static_cast<long long>(end.uploads - m_begin.uploads),
            (end.processorTime - m_begin.processorTime) * 1000);
    }

    void standIdle()
    {
        std::printf("first frame after %.1f ms, peak memory %.1f MiB\n",
            m_window.statistics().timeToFirstFrame() * 1000, peakMebibytes());
        m_begin = now();
        Scheduler::current().schedule(m_idleTime, [this] {
            printSince("idle", m_idleTime);
            play();
        });
    }

    void play()
    {
        m_begin = now();
        m_start = Scheduler::current().now();
        TouchDispatcher& touches = *UIApplication::sharedApplication()->touches();
        const auto table = listOnTheScreen()->tableView();
        const auto cell = std::dynamic_pointer_cast<ORVRecordTableViewCell>(table->cellForRow({ 0, 0 }));
        const auto& button = cell->playbackButton();
        const CGPoint middle = button->convertPointToView(button->bounds().center(), nullptr);
        touches.touchBegan(finger, middle);
        touches.touchEnded(finger, middle);
        waitForTheEnd();
    }

    void waitForTheEnd()
    {
        const double time = Scheduler::current().now() - m_start;
        const bool hasEnded = time > settlingTime && !listOnTheScreen()->currentPlayer();
        if (!hasEnded && time < longestPlaying) {
            Scheduler::current().schedule(0.1, [this] { waitForTheEnd(); });
            return;
        }
        printSince("playing", time);
        std::printf("peak memory after playing %.1f MiB\n", peakMebibytes());
        QGuiApplication::quit();
    }

    SceneWindow& m_window;
    double m_idleTime;
    Moment m_begin {};
    double m_start = 0;
};

// Prints what it took to get there, and ends the run.
void endAtFirstFrame(const char* name, QQuickWindow& window)
{
    QObject::connect(&window, &QQuickWindow::frameSwapped, [name] {
        InstructionCount::end(name);
        std::printf("%s: first frame after %.1f ms, peak memory %.1f MiB\n", name,
            ProcessFigures::age() * 1000, peakMebibytes());
        QGuiApplication::quit();
    });
}

int runEmptyWindow()
{
    QQuickWindow window;
    window.resize(780, 1688);
    endAtFirstFrame("empty window", window);
    window.show();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const char* const argument = argc > 1 ? argv[1] : "10";
    HostEnvironment::apply(HostEnvironment::settingsFor({}));
    const QGuiApplication application(argc, argv);
    if (std::strcmp(argument, "empty") == 0)
        return runEmptyWindow();
    HostOptions options;
    options.scale = 2;
    HostApplication host(options);
    std::optional<Story> story;
    if (std::strcmp(argument, "launch") == 0)
        endAtFirstFrame("launch", host.window());
    else
        story.emplace(host, std::atof(argument));
    return host.run(NSString(), "ORVAppDelegate");
}
