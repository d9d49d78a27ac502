#include "platform/layers/CAAnimationGroup.h"

#include "tests/platform/layers/LayersFixture.h"

namespace {

class CAAnimationGroupTest : public LayersFixture {
protected:
    std::shared_ptr<CAAnimationGroup> group(
        std::vector<std::shared_ptr<CAAnimation>> animations, double duration)
    {
        auto result = CAAnimationGroup::animation();
        result->setAnimations(std::move(animations));
        result->setDuration(duration);
        return result;
    }
};

TEST_F(CAAnimationGroupTest, RunsItsAnimationsOnOneTimeLine)
{
    layer->addAnimation(
        group({ basic("opacity", 0.0, 1.0, {}, 2), basic("position.x", 0.0, 10.0, {}, 1) }, 2),
        QStringLiteral("g"));
    EXPECT_DOUBLE_EQ(opacityAt(*layer, 0.5), 0.25);
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.5).x(), 5);
    EXPECT_DOUBLE_EQ(positionAt(*layer, 1.5).x(), 0); // over, while the group goes on
    EXPECT_DOUBLE_EQ(opacityAt(*layer, 2), 1);
}

TEST_F(CAAnimationGroupTest, CutsOffWhatLastsLonger)
{
    layer->addAnimation(group({ basic("position.x", 0.0, 10.0, {}, 4) }, 1), {});
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.999).x(), 10 * 0.999 / 4);
    EXPECT_DOUBLE_EQ(positionAt(*layer, 1).x(), 0);
    scheduler.advance(1);
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CAAnimationGroupTest, GivesItsDurationToWhatHasNone)
{
    layer->addAnimation(group({ basic("position.x", 0.0, 10.0, {}, 0) }, 2), {});
    EXPECT_DOUBLE_EQ(positionAt(*layer, 1).x(), 5);
}

TEST_F(CAAnimationGroupTest, StartsItsAnimationsAtTheirBeginTimes)
{
    const auto later = basic("position.x", 50.0, 60.0, {}, 1);
    later->setBeginTime(1);
    const auto waiting = basic("position.y", 50.0, 60.0, {}, 1);
    waiting->setBeginTime(1);
    waiting->setFillMode(kCAFillModeBackwards);
    scheduler.advance(7);
    layer->addAnimation(group({ later, waiting }, 2), {});
    EXPECT_EQ(positionAt(*layer, 7.5), CGPoint(0, 50));
    EXPECT_EQ(positionAt(*layer, 8.5), CGPoint(55, 55));
}

TEST_F(CAAnimationGroupTest, RepeatsReversesAndPacesAllOfThem)
{
    const auto all = group({ basic("position.x", 0.0, 10.0, {}, 1) }, 1);
    all->setAutoreverses(true);
    all->setRepeatCount(2);
    const auto easeIn = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn);
    all->setTimingFunction(easeIn);
    layer->addAnimation(all, {});
    for (const double time : { 0.25, 1.75, 2.25, 3.75 })
        EXPECT_NEAR(positionAt(*layer, time).x(), 10 * easeIn->valueAt(0.25), 1e-9) << time;
    EXPECT_EQ(positionAt(*layer, 4).x(), 0);
}

TEST_F(CAAnimationGroupTest, KeepsTheEndsOfItsAnimationsWithItsFillMode)
{
    const auto all = group({ basic("position.x", 0.0, 10.0, {}, 0) }, 1);
    all->setFillMode(kCAFillModeForwards);
    all->setRemovedOnCompletion(false);
    layer->addAnimation(all, {});
    scheduler.advance(5);
    EXPECT_DOUBLE_EQ(positionAt(*layer, 5).x(), 10);
}

TEST_F(CAAnimationGroupTest, WhatEndsWithItShowsItsEndHoweverTheirTimesAreRounded)
{
    for (int begin = 1; begin < 100; begin += 3)
        for (int length = 1; length < 100; ++length) {
            const auto child = basic("position.x", 0.0, 10.0, {}, length / 100.0);
            child->setBeginTime(begin / 100.0);
            const auto all = group({ child }, (begin + length) / 100.0);
            all->setFillMode(kCAFillModeForwards);
            all->setRemovedOnCompletion(false);
            layer->addAnimation(all, QStringLiteral("g"));
            EXPECT_EQ(positionAt(*layer, 50).x(), 10) << begin << " " << length;
        }
}

TEST_F(CAAnimationGroupTest, TellsItsOwnEndOnce)
{
    const auto child = basic("position.x", 0.0, 10.0);
    logEnd(*child, "child");
    const auto all = group({ child, nullptr }, 1);
    logEnd(*all, "group");
    layer->addAnimation(all, {});
    scheduler.advance(3);
    EXPECT_EQ(log, (Lines { "group finished" }));
}

TEST_F(CAAnimationGroupTest, ACopyHoldsCopies)
{
    const auto child = basic("position.x", 0.0, 10.0);
    const auto all = group({ child }, 1);
    layer->addAnimation(all, QStringLiteral("g"));
    child->setToValue(1000.0);
    all->setAnimations({});
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.5).x(), 5);
}

TEST_F(CAAnimationGroupTest, AnEmptyGroupOnlyTakesTime)
{
    const auto all = group({}, 1);
    logEnd(*all, "group");
    layer->addAnimation(all, {});
    EXPECT_EQ(positionAt(*layer, 0.5), CGPoint(0, 0));
    scheduler.advance(1);
    EXPECT_EQ(log, (Lines { "group finished" }));
}

} // namespace
