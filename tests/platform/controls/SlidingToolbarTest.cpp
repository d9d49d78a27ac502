// A toolbar that a constraint slides below the screen and back, interrupted on its way: what the frames show
// is held against the curve of the motion.
#include "platform/controls/UIToolbar.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "tests/platform/controls/BarScene.h"

namespace {

constexpr double duration = 0.3;

// The way at a fraction of the time on the curve that eases in and out: a cubic over the control points
// (0.42, 0) and (0.58, 1), found by halving.
double eased(double time)
{
    const auto cubic = [](double first, double second, double at) {
        const double left = 1 - at;
        return 3 * left * left * at * first + 3 * left * at * at * second + at * at * at;
    };
    double low = 0;
    double high = 1;
    for (int step = 0; step < 60; ++step) {
        const double middle = (low + high) / 2;
        (cubic(0.42, 0.58, middle) < time ? low : high) = middle;
    }
    return cubic(0, 1, low);
}

// Where something is on its way between two places.
struct Way {
    double from;
    double to;
    double startTime;

    double at(double now) const
    {
        return from + (to - from) * eased(std::clamp((now - startTime) / duration, 0.0, 1.0));
    }
};

class SlidingToolbarTest : public BarScene {
protected:
    SlidingToolbarTest()
    {
        bar->setItems({ pictureItem(24), viewItem(50) });
        bar->setTranslatesAutoresizingMaskIntoConstraints(false);
        bottom->setActive(true);
        NSLayoutConstraint::activateConstraints(
            std::vector { bar->leftAnchor().constraintEqualToAnchor(window->leftAnchor()),
                bar->rightAnchor().constraintEqualToAnchor(window->rightAnchor()) });
        runFrames();
    }
    // By so many points below its place.
    void slideTo(double distance)
    {
        bottom->setConstant(distance);
        UIView::animate(duration, [this] { window->layoutIfNeeded(); });
    }
    void placeAt(double distance)
    {
        bottom->setConstant(distance);
        window->layoutIfNeeded();
        bar->layer()->removeAllAnimations();
    }
    FrameList shown()
    {
        window->layer()->setNeedsFrame();
        runFrames();
        return frame;
    }
    // The distance of the bar from its place in a frame.
    double distanceIn(const FrameList& list) const
    {
        const auto item = std::ranges::find(list.items, bar->layer()->layerID(), &FrameItem::layer);
        EXPECT_NE(item, list.items.end());
        return item->transform.dy() + item->bounds.height() - window->bounds().height();
    }
    // What is in the bar lies as it does at rest.
    void expectSameInside(const FrameList& list, const FrameList& atRest) const
    {
        const auto inside = [this](const FrameList& one) {
            const auto item = std::ranges::find(one.items, bar->layer()->layerID(), &FrameItem::layer);
            auto items = std::vector(item + 1, one.items.begin() + item->subtreeEnd);
            return items;
        };
        EXPECT_EQ(inside(list), inside(atRest));
    }
    void expectOn(const Way& way, const FrameList& atRest)
    {
        const FrameList now = shown();
        EXPECT_NEAR(distanceIn(now), way.at(scheduler.now()), 1e-4);
        expectSameInside(now, atRest);
    }

    const std::shared_ptr<UIToolbar> bar = addView<UIToolbar>({ 0, 800, 390, 44 });
    const std::shared_ptr<NSLayoutConstraint> bottom
        = bar->bottomAnchor().constraintEqualToAnchor(window->bottomAnchor());
};

TEST_F(SlidingToolbarTest, FollowsTheCurveAndTurnsWithoutAJumpAtAnyMoment)
{
    constexpr int moments = 10;
    for (const auto& [from, to] : { std::pair(0.0, 44.0), std::pair(44.0, 0.0) })
        for (int moment = 0; moment < moments; ++moment) {
            SCOPED_TRACE(testing::Message() << "from " << from << " to " << to << ", moment " << moment);
            placeAt(from);
            const FrameList atRest = shown();
            EXPECT_EQ(distanceIn(atRest), from);
            const Way there { from, to, scheduler.now() };
            slideTo(to);
            expectOn(there, atRest);
            scheduler.advance(duration * (moment + 0.5) / moments);
            expectOn(there, atRest);

            const FrameList before = shown();
            const Way back { there.at(scheduler.now()), from, scheduler.now() };
            slideTo(from);
            EXPECT_EQ(shown(), before) << "turned without a jump";
            for (int step = 0; step < 5; ++step) {
                scheduler.advance(0.027);
                expectOn(back, atRest);
            }

            const FrameList again = shown();
            const Way thereAgain { back.at(scheduler.now()), to, scheduler.now() };
            slideTo(to);
            EXPECT_EQ(shown(), again) << "turned once more without a jump";
            for (int step = 0; step < 5; ++step) {
                scheduler.advance(0.027);
                expectOn(thereAgain, atRest);
            }
            scheduler.advance(duration);
            EXPECT_EQ(distanceIn(shown()), to);
            EXPECT_TRUE(bar->layer()->animationKeys().empty());
        }
}

} // namespace
