// What a frame of the application's own list costs while a record plays: its ring grows and its slider
// glides.
//
// Runs the real application in a window that is drawn without a screen, taps the first button, and goes on by
// one refresh of the display at a time. Sound is decoded before the first counted frame, and plays silently
// on the stepped clock, so that each frame holds what the main thread does and nothing else. Frames in which
// the player reports a position, ten a second, are told apart from those in which only the motion goes on.
//     playing_benchmark [frames]
#include "app/ORVAppDelegate.h"
#include "benchmarks/HeldQueue.h"
#include "benchmarks/InstructionCount.h"
#include "benchmarks/ListOnTheScreen.h"
#include "benchmarks/SteppedScreen.h"
#include "benchmarks/Timings.h"
#include "list/ORVRecordTableViewCell.h"
#include "platform/graphics/MainScreenScale.h"
#include "platform/media/AudioSink.h"

#include <cstdlib>

namespace {

constexpr TouchID finger { 1 };
constexpr int refreshesASecond = int(SteppedScheduler::refreshRate);

class PlayingList {
public:
    PlayingList()
        : m_display([]() -> const FrameList& { return UIApplication::sharedApplication()->performFrame(); })
    {
        Executor::setCurrent(&m_executor);
    }
    ~PlayingList()
    {
        m_application = nullptr;
        runQueues();
    }

    // Until the first record has played for a second.
    void begin()
    {
        m_application = UIApplication::launch(NSString(), QStringLiteral("ORVAppDelegate"));
        run(refreshesASecond);
        const auto& button = cell()->playbackButton();
        const CGPoint middle = button->convertPointToView(button->bounds().center(), nullptr);
        m_application->touches()->touchBegan(finger, middle);
        m_application->touches()->touchEnded(finger, middle);
        run(refreshesASecond);
    }

    void step()
    {
        m_display.step();
        runQueues();
    }
    double position() const { return cell()->playbackSlider()->currentPosition(); }
    int framesDrawn() const { return m_display.framesDrawn(); }
    std::int64_t uploads() const { return m_display.uploads(); }

private:
    static std::shared_ptr<ORVRecordTableViewCell> cell()
    {
        return std::dynamic_pointer_cast<ORVRecordTableViewCell>(
            listOnTheScreen()->tableView()->cellForRow({ 0, 0 }));
    }

    void runQueues()
    {
        while (!m_globalQueue.isEmpty() || !m_mainQueue.isEmpty()) {
            m_globalQueue.run();
            m_mainQueue.run();
        }
    }
    void run(int refreshes)
    {
        for (int refresh = 0; refresh < refreshes; ++refresh)
            step();
    }

    HeldQueue m_mainQueue;
    HeldQueue m_globalQueue;
    Executor m_executor { m_mainQueue, m_globalQueue };
    const AudioSink::Replacement m_noDevice { [](auto&&...) { return nullptr; } };
    std::shared_ptr<UIApplication> m_application;
    SteppedDisplay m_display;
};

} // namespace

int main(int argc, char** argv)
{
    SteppedDisplay::setEnvironment();
    const QGuiApplication application(argc, argv);
    MainScreenScale::set(SteppedDisplay::geometry.scale);
    const int frames = argc > 1 ? std::max(std::atoi(argv[1]), 1) : 4 * refreshesASecond;
    PlayingList list;
    list.begin();

    const int drawn = list.framesDrawn();
    const std::int64_t uploads = list.uploads();
    Timings all;
    Timings steps;
    Timings glides;
    for (int frame = 0; frame < frames; ++frame) {
        const double position = list.position();
        InstructionCount::begin();
        const auto start = Timings::Clock::now();
        list.step();
        const double seconds = Timings::secondsSince(start);
        const bool isStep = list.position() != position;
        InstructionCount::end(isStep ? "a record plays, position reported" : "a record plays, gliding on");
        all.add(seconds);
        (isStep ? steps : glides).add(seconds);
    }
    Timings::printHeading();
    all.print("a record plays, a frame");
    steps.print("  position reported");
    glides.print("  gliding on");
    std::printf("%d frames drawn, %lld pictures made\n", list.framesDrawn() - drawn,
        static_cast<long long>(list.uploads() - uploads));
    return list.framesDrawn() - drawn == frames ? 0 : 1;
}
