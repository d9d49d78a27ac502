// Random programs of motions: started together, held, moved to and fro, run to an end, settled; beside them
// others that nobody holds. What is shown, and who is told of which end, is held against the definitions,
// written out a second time.
#include "platform/layers/CAMotionGroup.h"
#include "tests/platform/layers/LayersFixture.h"

#include <array>
#include <map>
#include <random>

namespace {

using Outcome = CAMotionGroup::Outcome;
using State = CAMotionGroup::State;

enum Property { PositionX, PositionY, Opacity, Corner, Width };
constexpr std::array paths { "position.x", "position.y", "opacity", "cornerRadius", "bounds.size.width" };
using Values = std::array<double, paths.size()>;

// A cubic pace by halving: slow, and right.
double pacedBySearch(const std::array<double, 4>& points, double share)
{
    const auto bezier = [](double first, double second, double at) {
        const double rest = 1 - at;
        return 3 * rest * rest * at * first + 3 * rest * at * at * second + at * at * at;
    };
    double low = 0;
    double high = 1;
    for (int step = 0; step < 100; ++step) {
        const double middle = (low + high) / 2;
        (bezier(points[0], points[2], middle) < share ? low : high) = middle;
    }
    return bezier(points[1], points[3], low);
}

struct Motion {
    int number = 0;
    std::size_t layer = 0;
    int key = 0;
    Property property = PositionX;
    std::optional<double> from;
    std::optional<double> to;
    std::optional<double> by;
    std::array<double, 4> pace { 0, 0, 1, 1 };
    int delay = 0; // all times in hundredths of a second
    int duration = 1;
    int offset = 0;
    int speed = 1;
    double count = 1; // 0: for ever
    bool autoreverses = false;
    CAFillMode fill = kCAFillModeRemoved;
    // The time line that it runs on: the group's while it is in it, else the layer's.
    bool isHeld = false;
    double begin = 0;
    bool isOver = false; // told, though it may still be seen

    // Of its own time, in seconds.
    double length() const { return count == 0 ? 1e9 : duration * count * (autoreverses ? 2 : 1) / 100; }
    // On its time line.
    double end() const
    {
        return delay / 100.0 + (speed > 0 ? length() - offset / 100.0 : offset / 100.0) / std::abs(speed);
    }
    std::shared_ptr<CAAnimation> animation() const
    {
        const auto made = CABasicAnimation::animationWithKeyPath(QLatin1String(paths.at(property)));
        const auto value
            = [](const std::optional<double>& given) { return given ? CAValue(*given) : CAValue(); };
        made->setFromValue(value(from));
        made->setToValue(value(to));
        made->setByValue(value(by));
        made->setTimingFunction(
            CAMediaTimingFunction::functionWithControlPoints({ pace[0], pace[1] }, { pace[2], pace[3] }));
        made->setDelay(delay / 100.0);
        made->setDuration(duration / 100.0);
        made->setTimeOffset(offset / 100.0);
        made->setSpeed(speed);
        made->setRepeatCount(count == 0 ? 3.4028235e38 : count);
        made->setAutoreverses(autoreverses);
        made->setFillMode(fill);
        return made;
    }
    // Where the current run stands at a time of the line; nothing where nothing is shown. Within a rounding
    // of a jump it is not known.
    struct Standing {
        std::optional<double> share;
        bool isKnown = true;
    };
    Standing at(double time, bool standsStill) const
    {
        const double local = (time - delay / 100.0) * speed + offset / 100.0;
        const bool filled = fill == kCAFillModeBoth;
        const double total = length();
        // Exact where it matters: a line that stands still shows both ends.
        const bool nearStart = std::abs(local) < 1e-9;
        const bool nearEnd = std::abs(local - total) < 1e-9;
        if ((nearStart || nearEnd) && !standsStill)
            return { std::nullopt, false };
        // Before the run and after it, along the direction of time.
        const bool isBelow = local < 0 && !nearStart;
        const bool isAbove = local > total && !nearEnd;
        const bool isBefore = standsStill || speed > 0 ? isBelow : isAbove;
        const bool isAfter = standsStill || speed > 0 ? isAbove : isBelow;
        if (isBefore && !filled && fill != kCAFillModeBackwards)
            return {};
        if (isAfter && !filled && fill != kCAFillModeForwards)
            return {};
        const double one = duration / 100.0;
        if (nearEnd || isAbove) {
            const double runs = autoreverses ? 2 * count : count;
            const double whole = std::floor(runs);
            const double part = runs - whole;
            const double share = part > 0 ? part : 1;
            const auto lastRun = static_cast<long>(part > 0 ? whole : whole - 1);
            return { autoreverses && lastRun % 2 == 1 ? 1 - share : share };
        }
        if (nearStart || isBelow)
            return { 0 };
        const auto run = static_cast<long>(local / one);
        const double share = local / one - static_cast<double>(run);
        const bool isAtATurn = share < 1e-9 || share > 1 - 1e-9;
        return { autoreverses && run % 2 == 1 ? 1 - share : share, !isAtATurn || autoreverses };
    }
    void apply(Values& shown, const Values& model, double share) const
    {
        double first = shown.at(property);
        double last = 0;
        if (from && to)
            std::tie(first, last) = std::pair(*from, *to);
        else if (from && by)
            std::tie(first, last) = std::pair(*from, *from + *by);
        else if (by && to)
            std::tie(first, last) = std::pair(*to - *by, *to);
        else if (from)
            std::tie(first, last) = std::pair(*from, model.at(property));
        else if (to)
            last = *to;
        else if (by)
            last = first + *by;
        else
            return;
        const double way = share <= 0 ? 0 : share >= 1 ? 1 : pacedBySearch(pace, share);
        shown.at(property) = way == 0 ? first : way == 1 ? last : first + (last - first) * way;
    }
};

class RandomMotionsTest : public LayersFixture, public ::testing::WithParamInterface<int> {
protected:
    RandomMotionsTest()
    {
        random.seed(static_cast<unsigned>(GetParam()));
        for (std::size_t index = 0; index < layers.size(); ++index) {
            layers.at(index) = CALayer::layer();
            layers.at(index)->setSpeed(index == 2 ? 0.5 : index == 3 ? 2 : 1);
            models.at(index) = { 0, 0, 1, 0, 0 };
            if (index > 0)
                layers.at(index / 2)->addSublayer(layers.at(index));
        }
    }
    int whole(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
    bool oneOutOf(int count) { return whole(count) == 0; }
    double number() { return std::uniform_real_distribution<double>(-100, 100)(random); }
    double share() { return std::uniform_real_distribution<double>(0, 1)(random); }

    double layerTime(std::size_t index) const
    {
        return layers.at(index)->convertTimeFromMedia(scheduler.now());
    }
    double valueFor(Property property) { return property == Opacity ? share() : number(); }

    Motion someMotion()
    {
        Motion motion;
        motion.number = static_cast<int>(told.size());
        motion.layer = static_cast<std::size_t>(whole(static_cast<int>(layers.size())));
        motion.key = whole(4);
        motion.property = static_cast<Property>(whole(static_cast<int>(paths.size())));
        if (!oneOutOf(4))
            motion.from = valueFor(motion.property);
        if (oneOutOf(3))
            motion.to = valueFor(motion.property);
        if (oneOutOf(3))
            motion.by = valueFor(motion.property);
        if (oneOutOf(2))
            motion.pace = { share(), number() / 50, share(), number() / 50 };
        motion.delay = oneOutOf(2) ? 0 : whole(30);
        motion.duration = 1 + whole(40);
        motion.count = oneOutOf(6) ? 0 : oneOutOf(3) ? (1 + whole(10)) / 2.0 : 1;
        motion.autoreverses = oneOutOf(4);
        if (oneOutOf(8))
            motion.speed = 2;
        else if (motion.count == 1 && !motion.autoreverses && oneOutOf(6)) {
            motion.speed = -1;
            motion.offset = motion.duration;
        }
        motion.fill = static_cast<CAFillMode>(whole(4));
        return motion;
    }
    // Adds it to its layer, in the group where that collects.
    void start(Motion motion)
    {
        if (!layers.at(motion.layer))
            return;
        told.emplace_back();
        const auto animation = motion.animation();
        animation->setCompletion([this, number = motion.number](bool finished) {
            told.at(static_cast<std::size_t>(number)).push_back(finished);
        });
        stop([&](const Motion& other) { return other.layer == motion.layer && other.key == motion.key; });
        motion.isHeld = CAMotionGroup::collecting() != nullptr;
        motion.begin = motion.isHeld ? 0 : layerTime(motion.layer);
        motions.push_back(motion);
        layers.at(motion.layer)->addAnimation(animation, QString::number(motion.key));
    }
    // What was added and not yet told is now told that it has not finished.
    template <typename Which> void stop(Which which)
    {
        std::erase_if(motions, [&](const Motion& motion) {
            if (which(motion) && !motion.isOver)
                expected[motion.number] = false;
            return which(motion);
        });
    }
    // Free ones that have ended by now.
    void endFree()
    {
        std::erase_if(motions, [this](const Motion& motion) {
            if (motion.isHeld || layerTime(motion.layer) - motion.begin < motion.end())
                return false;
            if (!motion.isOver)
                expected[motion.number] = true;
            return true;
        });
    }
    bool isOnAnEdge() const
    {
        return std::any_of(motions.begin(), motions.end(), [this](const Motion& motion) {
            const double time = layerTime(motion.layer) - motion.begin;
            return !motion.isHeld && std::abs(time - motion.end()) < 1e-5;
        });
    }
    void advance(double seconds)
    {
        scheduler.advance(seconds);
        while (isOnAnEdge()) // where rounding decides
            scheduler.advance(1e-5);
        endFree();
    }

    void expectShown(double groupTime, const char* when)
    {
        for (std::size_t index = 0; index < layers.size(); ++index) {
            if (!layers.at(index))
                continue;
            Values shown = models.at(index);
            std::array<bool, paths.size()> isKnown {};
            isKnown.fill(true);
            for (const Motion& motion : motions) {
                if (motion.layer != index)
                    continue;
                const double time = motion.isHeld ? groupTime : layerTime(index) - motion.begin;
                const Motion::Standing standing = motion.at(time, motion.isHeld);
                if (!standing.isKnown)
                    isKnown.at(motion.property) = false;
                else if (standing.share)
                    motion.apply(shown, models.at(index), *standing.share);
            }
            shown[Opacity] = std::clamp(shown[Opacity], 0.0, 1.0);
            const CALayerValues real = layers.at(index)->presentationValues();
            const Values seen { real.position.x(), real.position.y(), real.opacity, real.cornerRadius,
                real.bounds.width() };
            for (std::size_t property = 0; property < paths.size(); ++property) {
                if (!isKnown.at(property))
                    continue;
                ++compared;
                EXPECT_NEAR(seen.at(property), shown.at(property), 1e-6)
                    << when << ": layer " << index << ", " << paths.at(property);
            }
        }
    }
    void setModel(std::size_t index, Property property, double value)
    {
        models.at(index).at(property) = value;
        layers.at(index)->setValueForKeyPath(value, QLatin1String(paths.at(property)));
    }
    // One of the things that may happen while the group is held or runs.
    void disturb()
    {
        const auto index = static_cast<std::size_t>(whole(static_cast<int>(layers.size())));
        switch (whole(6)) {
        case 0:
            if (layers.at(index)) {
                const auto property = static_cast<Property>(whole(static_cast<int>(paths.size())));
                setModel(index, property, valueFor(property));
            }
            break;
        case 1:
            if (layers.at(index)) {
                const int key = whole(4);
                stop([&](const Motion& motion) { return motion.layer == index && motion.key == key; });
                layers.at(index)->removeAnimationForKey(QString::number(key));
            }
            break;
        case 2:
            if (oneOutOf(4) && index == 3 && layers.at(index)) { // a leaf of the tree
                stop([&](const Motion& motion) { return motion.layer == index; });
                layers.at(index)->removeFromSuperlayer();
                layers.at(index) = nullptr;
            }
            break;
        case 3:
            start(someMotion());
            break;
        default:
            advance(share() / 10);
        }
    }
    double lastHeldEnd() const
    {
        double end = 0;
        for (const Motion& motion : motions)
            if (motion.isHeld && motion.count != 0)
                end = std::max(end, motion.end());
        return end;
    }

    std::mt19937 random;
    std::array<std::shared_ptr<CALayer>, 4> layers;
    std::array<Values, 4> models {};
    std::vector<Motion> motions; // in the order of their adding
    std::vector<std::vector<bool>> told; // by number
    std::map<int, bool> expected;
    std::shared_ptr<CAMotionGroup> group = make<CAMotionGroup>();
    int compared = 0;
};

TEST_P(RandomMotionsTest, AreTheClosedFormsAndTellTheirEndsOnce)
{
    advance(share());
    for (int count = whole(4); count > 0; --count)
        start(someMotion());
    advance(share() / 5);
    {
        const CAMotionGroup::Collection collection(group);
        for (int count = 2 + whole(5); count > 0; --count)
            start(someMotion());
    }
    double duration = lastHeldEnd();
    EXPECT_GE(group->duration(), duration - 1e-12);
    if (oneOutOf(3)) {
        duration = (1 + whole(50)) / 100.0;
        group->setDuration(duration);
    } else {
        duration = group->duration(); // of a motion that was replaced at once, too
    }

    double fraction = 0;
    expectShown(0, "at the start");
    for (int step = 0; step < 12; ++step) {
        disturb();
        if (oneOutOf(2)) {
            fraction = std::array { 0.0, 1.0, share(), share() }.at(static_cast<std::size_t>(whole(4)));
            group->setFraction(fraction);
        }
        EXPECT_EQ(group->fraction(), fraction);
        expectShown(fraction * duration, "held");
    }

    const bool finishes = oneOutOf(2);
    const double speed = 0.5 + 1.5 * share();
    const double seconds = (finishes ? 1 - fraction : fraction) * duration / speed;
    const double start = scheduler.now();
    finishes ? group->finish(speed) : group->cancel(speed);
    const double to = finishes ? 1 : 0;
    while (scheduler.now() - start + 0.02 < seconds) {
        disturb();
        const double passed = scheduler.now() - start;
        if (passed >= seconds)
            break;
        const double way = fraction + (to - fraction) * passed / seconds;
        EXPECT_NEAR(group->fraction(), way, 1e-9);
        expectShown(group->fraction() * duration, "on the way");
    }
    advance(std::max(start + seconds - scheduler.now(), 0.0) + 1e-6);
    EXPECT_EQ(group->state(), finishes ? State::Finished : State::Cancelled);
    for (Motion& motion : motions)
        if (motion.isHeld && (!finishes || motion.end() <= duration + 1e-9)) {
            motion.isOver = true;
            expected[motion.number] = finishes;
        }
    for (int step = 0; step < 4; ++step) {
        expectShown(to * duration, "arrived");
        disturb();
    }

    const Outcome outcome = oneOutOf(2) ? Outcome::Kept : Outcome::TakenBack;
    group->settle(outcome);
    if (outcome == Outcome::TakenBack)
        stop([](const Motion& motion) { return motion.isHeld; });
    std::erase_if(motions, [](const Motion& motion) { return motion.isHeld && motion.isOver; });
    for (Motion& motion : motions)
        if (motion.isHeld) {
            motion.isHeld = false;
            motion.begin = layerTime(motion.layer) - to * duration;
        }
    for (int step = 0; step < 4; ++step) {
        advance(share() / 10);
        expectShown(0, "settled");
    }
    EXPECT_GT(compared, 200);

    stop([](const Motion&) { return true; });
    for (const auto& left : layers)
        if (left)
            left->removeAllAnimations();
    advance(1);
    for (std::size_t index = 0; index < told.size(); ++index) {
        ASSERT_EQ(told.at(index).size(), 1U) << "motion " << index;
        EXPECT_EQ(told.at(index).front(), expected.at(static_cast<int>(index))) << "motion " << index;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomMotionsTest, ::testing::Range(0, 200));

} // namespace
