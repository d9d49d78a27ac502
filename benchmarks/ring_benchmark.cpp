// What a ring costs in a frame that is drawn into a real window: while it spins, and while it grows ten times
// a second, slowly and in jumps.
//
// Beside the times of the frames it counts what was made anew for them. A ring that spins is one picture that
// is turned, and no ring needs a new path; where that is not so the program fails.
//     ring_benchmark [frames of each]
#include "benchmarks/InstructionCount.h"
#include "benchmarks/SteppedScreen.h"
#include "benchmarks/Timings.h"
#include "playback/ORVCircularProgressView.h"

#include <cstdlib>

namespace {

constexpr int framesInAStep = 6; // a tenth of a second
constexpr int tilesAtAnEnd = 4; // of its picture; no more of them meet in one place

struct Made {
    int frames;
    std::int64_t pictures;
    bool newPath;
};

CGPathRef pathOf(const ORVCircularProgressView& ring)
{
    return dynamic_cast<const CAShapeLayer&>(*ring.layer()->sublayers().back()).path();
}

// Lets a ring do something for so many refreshes, numbered from 0.
template <typename Change> Made watch(const char* name, int refreshes, Change change)
{
    SteppedScreen screen;
    const auto ring = make<ORVCircularProgressView>(CGRect(173, 400, 44, 44));
    screen.window().addSubview(ring);
    change(*ring, 0);
    screen.step(); // the first frame makes what the others are to keep
    const CGPathRef path = pathOf(*ring);
    const int drawn = screen.framesDrawn();
    const std::int64_t uploads = screen.uploads();
    Timings times;
    for (int refresh = 1; refresh <= refreshes; ++refresh) {
        InstructionCount::begin();
        times.measure([&] {
            change(*ring, refresh);
            screen.step();
        });
        InstructionCount::end(name);
    }
    times.print(name);
    return { screen.framesDrawn() - drawn, screen.uploads() - uploads, pathOf(*ring) != path };
}

Made grow(const char* name, int refreshes, Animated animated)
{
    return watch(name, refreshes, [&](ORVCircularProgressView& ring, int refresh) {
        if (refresh % framesInAStep == 0)
            ring.setProgress(double(refresh) / refreshes, animated);
    });
}

} // namespace

int main(int argc, char** argv)
{
    SteppedScreen::setEnvironment();
    const QGuiApplication application(argc, argv);
    const int refreshes = argc > 1 ? std::max(std::atoi(argv[1]), framesInAStep) : 1200;
    Timings::printHeading();
    const Made still = watch("a ring at rest", refreshes, [](auto&, int) {});
    const Made spinning
        = watch("a ring spins", refreshes, [](auto& ring, int) { ring.setIndeterminate(true); });
    const Made jumping = grow("a ring jumps ten times a second", refreshes, Animated::No);
    const Made growing = grow("a ring grows ten times a second", refreshes, Animated::Yes);

    std::printf("%-34s %7s %10s %10s\n", "made anew", "frames", "pictures", "paths");
    bool keepsItsPromise = still.frames == 0 && spinning.pictures == 0;
    for (const auto& [name, made] : { std::pair { "at rest", still }, std::pair { "spinning", spinning },
             std::pair { "jumping", jumping }, std::pair { "growing", growing } }) {
        std::printf("%-34s %7d %10lld %10d\n", name, made.frames, static_cast<long long>(made.pictures),
            int(made.newPath));
        keepsItsPromise = keepsItsPromise && !made.newPath && made.pictures <= tilesAtAnEnd * made.frames;
    }
    keepsItsPromise = keepsItsPromise && jumping.frames <= refreshes / framesInAStep;
    if (!keepsItsPromise)
        std::printf("more was made anew than the motions need\n");
    return keepsItsPromise ? 0 : 1;
}
