// What waveform sliders cost while sounds are played: twelve on the screen, each told its position ten times
// a second and gliding there; and how long the main thread waits for a waveform that is asked for.
//
// Moving a position moves views: no picture is drawn or uploaded for it, and no more views are laid out than
// those whose subviews have moved. Where that is not so the program fails.
//     slider_benchmark [refreshes of each]
#include "benchmarks/HeldQueue.h"
#include "benchmarks/InstructionCount.h"
#include "benchmarks/SteppedScreen.h"
#include "benchmarks/Timings.h"
#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/Executor.h"
#include "platform/foundation/NSBundle.h"
#include "platform/graphics/MainScreenScale.h"
#include "platform/graphics/UIColor.h"
#include "platform/views/UIViewOwner.h"
#include "playback/ORVPlaybackSlider.h"

#include <cstdlib>
#include <ctime>

namespace {

constexpr int manySliders = 12; // as many as the screen has room for
constexpr int refreshesInAStep = 6; // a tenth of a second
constexpr CGSize sliderSize(390, 44);
constexpr double longestHold = 0.001; // seconds that the main thread may wait, one time in a hundred aside

// Counts the layouts of a view.
class LayoutCounter final : public UIViewOwner {
public:
    LayoutCounter(const std::shared_ptr<UIView>& view, int& count)
        : m_view(view)
        , m_count(count)
    {
        view->setOwner(this);
    }
    ~LayoutCounter() override
    {
        if (const auto view = m_view.lock())
            view->setOwner(nullptr);
    }
    std::shared_ptr<UIView> view() override { return m_view.lock(); }
    void viewWillLayoutSubviews() override { ++m_count; }

private:
    const std::weak_ptr<UIView> m_view;
    int& m_count;
};

class Stage {
public:
    explicit Stage(int sliderCount)
    {
        Executor::setCurrent(&m_executor);
        for (int index = 0; index < sliderCount; ++index) {
            const CGPoint corner(0, 10 + index * 68.0);
            const auto slider = make<ORVPlaybackSlider>(CGRect(corner, sliderSize));
            slider->setAsset(AVAsset::assetWithURL(QUrl::fromLocalFile(QStringLiteral("/tram.m4a"))));
            screen.window().addSubview(slider);
            sliders.push_back(slider);
            countLayouts(slider);
        }
        screen.window().setTintColor(UIColor::colorWithRed(1, 0.2, 0.4, 1));
        renderAll();
        setPositions(0.25, Animated::No);
        for (int refresh = 0; refresh < 10; ++refresh)
            screen.step();
        layouts = 0;
    }

    void renderAll()
    {
        for (const auto& slider : sliders)
            slider->renderWafeformIfNecessaryWithCompletion(nullptr);
        globalQueue.run();
        mainQueue.run();
    }
    void setPositions(double position, Animated animated)
    {
        for (const auto& slider : sliders)
            slider->setCurrentPosition(position, animated);
    }

    HeldQueue mainQueue;
    HeldQueue globalQueue;
    SteppedScreen screen;
    std::vector<std::shared_ptr<ORVPlaybackSlider>> sliders;
    int layouts = 0; // of views in the sliders, the sliders themselves included

private:
    void countLayouts(const std::shared_ptr<UIView>& view)
    {
        m_counters.push_back(make<LayoutCounter>(view, layouts));
        for (const auto& subview : view->subviews())
            countLayouts(subview);
    }

    Executor m_executor { mainQueue, globalQueue };
    std::vector<std::shared_ptr<LayoutCounter>> m_counters;
};

double processorSeconds() { return double(std::clock()) / CLOCKS_PER_SEC; }

struct Made {
    std::int64_t uploads;
    int pictures; // that a frame showed and the one before it did not
    double layoutsAStep; // by one slider
};

int newPictures(const FrameList& before, const FrameList& after)
{
    int count = 0;
    for (std::size_t index = 0; index < after.items.size(); ++index) {
        const auto* const shown = std::get_if<FrameImage>(&after.items[index].content);
        const auto* const shownBefore
            = index < before.items.size() ? std::get_if<FrameImage>(&before.items[index].content) : nullptr;
        if (shown && (!shownBefore || shown->image.cacheKey() != shownBefore->image.cacheKey()))
            ++count;
    }
    return count;
}

// Plays for so many refreshes. The positions stay between the ends, where both halves are seen.
Made play(const char* name, int sliderCount, int refreshes, Animated animated)
{
    Stage stage(sliderCount);
    const std::int64_t uploads = stage.screen.uploads();
    Timings times;
    Made made {};
    int steps = 0;
    double processor = 0;
    for (int refresh = 1; refresh <= refreshes; ++refresh) {
        const FrameList before = stage.screen.frameList();
        const double start = processorSeconds();
        InstructionCount::begin();
        times.measure([&] {
            if (refresh % refreshesInAStep == 1) {
                stage.setPositions(0.25 + 0.5 * refresh / refreshes, animated);
                ++steps;
            }
            stage.screen.step();
        });
        InstructionCount::end(name);
        processor += processorSeconds() - start;
        made.pictures += newPictures(before, stage.screen.frameList());
    }
    times.print(name);
    const double seconds = refreshes / SteppedScheduler::refreshRate;
    std::printf("  %.2f %% of one core\n", 100 * processor / seconds);
    made.uploads = stage.screen.uploads() - uploads;
    made.layoutsAStep = double(stage.layouts) / steps / sliderCount;
    return made;
}

// What the layout alone takes: positions are set and views are placed, nothing is drawn.
void layOut(int steps)
{
    Stage stage(manySliders);
    Timings times;
    for (int step = 1; step <= steps; ++step) {
        InstructionCount::begin();
        times.measure([&] {
            stage.setPositions(double(step) / steps, Animated::No);
            stage.screen.window().layoutIfNeeded();
        });
        InstructionCount::end("12 positions laid out");
    }
    times.print("12 positions laid out");
}

// Asks one slider of that width for its waveform. Answers the longest time that the main thread was held up.
double render(const char* name, double width, int times)
{
    Stage stage(1);
    ORVPlaybackSlider& slider = *stage.sliders.front();
    slider.setFrame({ CGPoint(), CGSize(width, sliderSize.height()) });
    stage.screen.step();
    Timings requests;
    Timings pictures;
    Timings ends;
    for (int time = 0; time < times; ++time) {
        requests.measure([&] { slider.renderWafeformIfNecessaryWithCompletion(nullptr); });
        pictures.measure([&] { stage.globalQueue.run(); });
        ends.measure([&] { stage.mainQueue.run(); });
        stage.screen.step();
    }
    std::printf("%s\n", name);
    requests.print("  asked for, on the main thread");
    pictures.print("  made, in the background");
    ends.print("  shown, on the main thread");
    return std::max(requests.at(0.99), ends.at(0.99));
}

} // namespace

int main(int argc, char** argv)
{
    SteppedScreen::setEnvironment();
    const QGuiApplication application(argc, argv);
    const NSBundle::MainReplacement mainBundle { make<NSBundle>(
        QStringLiteral(ORUVANE_SOURCE_DIR "/resources")) };
    MainScreenScale::set(SteppedScreen::geometry.scale);
    ClassRegistry::runLoadHooks();
    const int refreshes = argc > 1 ? std::max(std::atoi(argv[1]), 2 * refreshesInAStep) : 1200;

    Timings::printHeading();
    using enum Animated;
    const std::pair<const char*, Made> plays[] {
        { "1 jumps", play("1 slider jumps, a refresh", 1, refreshes, No) },
        { "1 glides", play("1 slider glides, a refresh", 1, refreshes, Yes) },
        { "12 jump", play("12 sliders jump, a refresh", manySliders, refreshes, No) },
        { "12 glide", play("12 sliders glide, a refresh", manySliders, refreshes, Yes) },
    };
    layOut(refreshes);
    const double heldByFitting = render("a waveform that fits", sliderSize.width(), refreshes);
    const double heldByFitted = render("a waveform that is fitted", 350, refreshes);

    bool keepsItsPromise = std::max(heldByFitting, heldByFitted) < longestHold;
    std::printf("%-34s %9s %10s %16s\n", "made anew", "uploads", "pictures", "layouts a step");
    for (const auto& [name, made] : plays) {
        std::printf("%-34s %9lld %10d %16.2f\n", name, static_cast<long long>(made.uploads), made.pictures,
            made.layoutsAStep);
        keepsItsPromise
            = keepsItsPromise && made.uploads == 0 && made.pictures == 0 && made.layoutsAStep <= 4;
    }
    if (!keepsItsPromise)
        std::printf("more was done than moving positions needs\n");
    return keepsItsPromise ? 0 : 1;
}
