#include "platform/layers/CAMotionGroup.h"

#include "platform/layers/CATransaction.h"
#include "tests/platform/layers/LayersFixture.h"

#include <random>

namespace {

using State = CAMotionGroup::State;
using Outcome = CAMotionGroup::Outcome;

class CAMotionGroupTest : public LayersFixture {
protected:
    // A motion of the x position from the shown one to the model.
    static void move(CALayer& moved, double from, double duration, double delay = 0)
    {
        const auto motion = CABasicAnimation::animationWithKeyPath(QStringLiteral("position.x"));
        motion->setFromValue(from);
        motion->setDuration(duration);
        motion->setDelay(delay);
        motion->setFillMode(kCAFillModeBoth);
        motion->setTimingFunction(easing());
        moved.addAnimation(motion, QStringLiteral("position"));
    }
    static std::shared_ptr<CAMediaTimingFunction> easing()
    {
        return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn);
    }
    // What move() shows after so many seconds, written out.
    static double closedForm(double from, double to, double duration, double delay, double seconds)
    {
        const double local = seconds - delay;
        if (local <= 0)
            return from;
        if (local >= duration)
            return to;
        return from + (to - from) * easing()->valueAt(local / duration);
    }
    static double shownX(const CALayer& shown) { return shown.presentationValues().position.x(); }
    void collect(const std::function<void()>& motions)
    {
        const CAMotionGroup::Collection collection(group);
        motions();
    }
    // One layer on its way from 0 to 844 in 0.2 s, at an even pace.
    void collectOne()
    {
        layer->setPosition({ 844, 0 });
        collect([this] {
            auto motion = basic("position.x", 0.0, {}, {}, 0.2);
            logEnd(*motion, "motion");
            layer->addAnimation(motion, QStringLiteral("position"));
        });
    }

    std::shared_ptr<CAMotionGroup> group = make<CAMotionGroup>();
    std::shared_ptr<CALayer> other = CALayer::layer();
};

TEST_F(CAMotionGroupTest, StandsAtItsStartUntilItIsMoved)
{
    collectOne();
    scheduler.advance(5);
    EXPECT_EQ(group->state(), State::Held);
    EXPECT_EQ(group->fraction(), 0);
    EXPECT_EQ(shownX(*layer), 0);
    EXPECT_EQ(log, Lines());
    group->setFraction(0.25);
    EXPECT_EQ(shownX(*layer), 211);
    scheduler.advance(5);
    EXPECT_EQ(shownX(*layer), 211);
}

TEST_F(CAMotionGroupTest, LastsAsLongAsItsLastMotionUnlessTold)
{
    collect([this] {
        move(*layer, 0, 0.25, 0.1);
        move(*other, 0, 0.2);
        layer->addAnimation(basic("opacity", 0.0, 1.0), QStringLiteral("opacity"));
        auto endless = basic("cornerRadius", 0.0, 1.0);
        endless->setRepeatCount(forever);
        layer->addAnimation(endless, QStringLiteral("spin"));
    });
    EXPECT_EQ(group->duration(), 1);
    group->setDuration(0.5);
    EXPECT_EQ(group->duration(), 0.5);
}

TEST_F(CAMotionGroupTest, AMotionThatRunsBackwardsCountsWithItsWholeLength)
{
    collect([this] {
        const auto backwards = basic("position.x", 0.0, 10.0, {}, 0.5);
        backwards->setSpeed(-1);
        backwards->setTimeOffset(0.5);
        logEnd(*backwards, "motion");
        layer->addAnimation(backwards, QStringLiteral("position"));
    });
    EXPECT_EQ(group->duration(), 0.5);
    for (const double fraction : { 0.0, 0.25, 1.0 }) {
        group->setFraction(fraction);
        EXPECT_EQ(shownX(*layer), 10 * (1 - fraction));
    }
    group->finish();
    scheduler.advance(0.1);
    EXPECT_EQ(log, Lines { "motion finished" });
}

TEST_F(CAMotionGroupTest, IsTheClosedFormAtEveryFractionWhereverItsLayersAre)
{
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same tries every time
    std::uniform_real_distribution<double> number(0, 1);
    for (int attempt = 0; attempt < 200; ++attempt) {
        scheduler.advance(number(random)); // another start on the clock each time
        group = make<CAMotionGroup>();
        const auto deep = CALayer::layer();
        layer->addSublayer(deep);
        deep->setSpeed(0.5); // whatever its layer's own time
        const double delay = attempt % 3 == 0 ? 0 : number(random);
        layer->setPosition({ 844, 0 });
        other->setPosition({ -50, 0 });
        deep->setPosition({ 100, 0 });
        collect([&] {
            move(*layer, 0, 0.25);
            move(*other, 10, 0.2, delay);
            move(*deep, 300, 0.2);
        });
        const double duration = group->duration();
        EXPECT_EQ(duration, std::max(0.25, delay + 0.2));
        for (const double fraction : { 0.0, 1.0, number(random), number(random), 0.5, 1.0, 0.0 }) {
            group->setFraction(fraction);
            scheduler.advance(number(random) / 10);
            const double seconds = fraction * duration;
            const bool atEnd = fraction == 1;
            EXPECT_EQ(shownX(*layer), closedForm(0, 844, 0.25, 0, seconds));
            EXPECT_EQ(
                shownX(*other), atEnd && duration > 0.25 ? -50 : closedForm(10, -50, 0.2, delay, seconds));
            EXPECT_EQ(shownX(*deep), closedForm(300, 100, 0.2, 0, seconds));
        }
        group->settle(Outcome::Kept);
        deep->removeFromSuperlayer();
    }
}

TEST_F(CAMotionGroupTest, TheLongerMotionBelowNeverShowsThroughTheShorterOneOnTop)
{
    layer->setPosition({ 844, 0 });
    collect([this] {
        auto below = basic("position.x", 0.0, {}, {}, 0.25);
        layer->addAnimation(below, QStringLiteral("below"));
        move(*layer, 0, 0.2);
    });
    group->setDuration(0.2);
    for (const double fraction : { 0.999, 1.0 }) {
        group->setFraction(fraction);
        EXPECT_EQ(shownX(*layer), closedForm(0, 844, 0.2, 0, fraction * 0.2));
    }
    EXPECT_EQ(shownX(*layer), 844);
}

TEST_F(CAMotionGroupTest, HoldsNeitherWhatRanBeforeNorWhatComesLater)
{
    layer->addAnimation(basic("opacity", 0.0, 1.0), QStringLiteral("opacity"));
    other->setPosition({ 100, 0 });
    collect([this] { move(*other, 0, 1); });
    layer->addAnimation(basic("cornerRadius", 0.0, 10.0), QStringLiteral("cornerRadius"));
    scheduler.advance(0.5);
    EXPECT_EQ(layer->presentationValues().opacity, 0.5);
    EXPECT_EQ(layer->presentationValues().cornerRadius, 5);
    EXPECT_EQ(shownX(*other), 0);
    scheduler.advance(0.6);
    EXPECT_FALSE(layer->hasAnimations());
    EXPECT_TRUE(other->hasAnimations());
}

TEST_F(CAMotionGroupTest, TheInnermostCollectionTakesWhatIsStarted)
{
    const auto inner = make<CAMotionGroup>();
    collect([&] {
        {
            const CAMotionGroup::Collection innerCollection(inner);
            move(*layer, 0, 1);
        }
        move(*other, 0, 2);
    });
    EXPECT_EQ(inner->duration(), 1);
    EXPECT_EQ(group->duration(), 2);
    EXPECT_EQ(CAMotionGroup::collecting(), nullptr);
}

TEST_F(CAMotionGroupTest, OneThatIsSettledWhileItCollectsTakesNothingMore)
{
    collect([this] {
        group->settle(Outcome::Kept);
        EXPECT_EQ(CAMotionGroup::collecting(), nullptr);
        layer->addAnimation(basic("position.x", 0.0, 10.0), QStringLiteral("position"));
    });
    group = nullptr;
    scheduler.advance(0.5);
    EXPECT_EQ(shownX(*layer), 5);
    scheduler.advance(0.5);
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CAMotionGroupTest, AMotionWithOnlyAFromValueFollowsAModelThatIsChangedWhileItIsHeld)
{
    collectOne();
    group->setFraction(0.5);
    EXPECT_EQ(shownX(*layer), 422);
    layer->setPosition({ -844, 0 });
    EXPECT_EQ(shownX(*layer), -422);
    group->setFraction(1);
    EXPECT_EQ(shownX(*layer), -844);
}

TEST_F(CAMotionGroupTest, FinishesTheRestOverItsTimeAtTheSpeed)
{
    collectOne();
    group->setFraction(0.25);
    group->finish(2); // 0.75 of 0.2 s at twice the speed: 0.075 s
    EXPECT_EQ(group->state(), State::Finishing);
    scheduler.advance(0.0375);
    EXPECT_NEAR(group->fraction(), 0.625, 1e-9);
    EXPECT_NEAR(shownX(*layer), 844 * 0.625, 1e-6);
    scheduler.advance(0.0374);
    EXPECT_EQ(log, Lines());
    scheduler.advance(0.0002);
    EXPECT_EQ(group->state(), State::Finished);
    EXPECT_EQ(group->fraction(), 1);
    EXPECT_EQ(log, Lines { "motion finished" });
}

TEST_F(CAMotionGroupTest, ThePaceMapsTheShareOfTheTimeToTheWayThatIsLeft)
{
    collectOne();
    group->setFraction(0.2);
    group->finish(1, easing());
    scheduler.advance(0.04); // of 0.16
    EXPECT_NEAR(group->fraction(), 0.2 + 0.8 * easing()->valueAt(0.25), 1e-9);

    group = make<CAMotionGroup>();
    collectOne();
    group->setFraction(0.6);
    group->cancel(0.5, easing()); // 0.12 s at half the speed: 0.24 s
    scheduler.advance(0.18);
    EXPECT_NEAR(group->fraction(), 0.6 * (1 - easing()->valueAt(0.75)), 1e-9);
}

TEST_F(CAMotionGroupTest, APaceThatSwingsBeyondItsEndsStaysAtThem)
{
    const auto swinging = CAMediaTimingFunction::functionWithControlPoints({ 0.3, -1 }, { 0.6, 2 });
    collectOne();
    group->setFraction(0.1);
    group->finish(1, swinging);
    bool hasStood = false;
    for (int step = 0; step < 18; ++step) {
        scheduler.advance(0.01);
        EXPECT_GE(group->fraction(), 0);
        EXPECT_LE(group->fraction(), 1);
        hasStood = hasStood || group->fraction() == 0;
    }
    EXPECT_TRUE(hasStood) << "where the pace leads below the start";
    EXPECT_EQ(group->state(), State::Finished);
}

TEST_F(CAMotionGroupTest, ATreeThatIsSlowedAsAWholeSlowsTheRun)
{
    const auto root = CALayer::layer();
    root->setSpeed(0.1);
    root->addSublayer(layer);
    collectOne();
    group->setFraction(0.5);
    EXPECT_EQ(shownX(*layer), 422);
    group->finish();
    scheduler.advance(0.5);
    EXPECT_NEAR(group->fraction(), 0.75, 1e-9);
    scheduler.advance(0.51);
    EXPECT_EQ(group->state(), State::Finished);
}

TEST_F(CAMotionGroupTest, CancelledItStaysAtItsStartUntilItIsSettled)
{
    collectOne();
    group->setFraction(0.5);
    group->cancel();
    scheduler.advance(0.05);
    EXPECT_NEAR(shownX(*layer), 211, 1e-6);
    scheduler.advance(0.06);
    EXPECT_EQ(group->state(), State::Cancelled);
    EXPECT_EQ(log, Lines { "motion stopped" });
    EXPECT_EQ(shownX(*layer), 0);
    scheduler.advance(3);
    EXPECT_EQ(shownX(*layer), 0);
    EXPECT_TRUE(layer->hasAnimations());
    group->settle(Outcome::TakenBack);
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CAMotionGroupTest, FinishedItStaysAtItsEndUntilItIsSettled)
{
    collectOne();
    group->finish();
    scheduler.advance(1);
    EXPECT_TRUE(layer->hasAnimations());
    EXPECT_EQ(shownX(*layer), 844);
    group->settle(Outcome::Kept);
    EXPECT_FALSE(layer->hasAnimations());
    EXPECT_EQ(log, Lines { "motion finished" });
}

TEST_F(CAMotionGroupTest, AfterTheReleaseItTakesNoMoreOrders)
{
    collectOne();
    group->setFraction(0.5);
    group->finish();
    group->setFraction(0.1);
    group->cancel();
    scheduler.advance(0.2);
    EXPECT_EQ(group->state(), State::Finished);
    group->setFraction(0);
    EXPECT_EQ(group->fraction(), 1);
    group->settle(Outcome::Kept);
    group->finish();
    scheduler.advance(1);
    EXPECT_EQ(group->state(), State::Settled);
    EXPECT_EQ(log, Lines { "motion finished" });
}

TEST_F(CAMotionGroupTest, AListenerMaySettleAndDropIt)
{
    layer->setPosition({ 100, 0 });
    collect([this] {
        auto motion = basic("position.x", 0.0, {}, {}, 0.2);
        motion->setCompletion([this](bool) {
            group->settle(Outcome::Kept);
            group = nullptr;
        });
        layer->addAnimation(motion, QStringLiteral("position"));
        auto second = basic("opacity", 0.0, {}, {}, 0.2);
        logEnd(*second, "second");
        layer->addAnimation(second, QStringLiteral("opacity"));
    });
    group->finish();
    scheduler.advance(0.3);
    EXPECT_EQ(log, Lines { "second finished" });
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CAMotionGroupTest, WhatLastsLongerThanTheGroupGoesOnByItselfWhenItIsSettled)
{
    collect([this] {
        auto motion = basic("opacity", 0.0, 1.0, {}, 1);
        logEnd(*motion, "long");
        layer->addAnimation(motion, QStringLiteral("opacity"));
    });
    group->setDuration(0.25);
    group->finish();
    scheduler.advance(0.25);
    scheduler.advance(0.3);
    EXPECT_EQ(layer->presentationValues().opacity, 0.25);
    group->settle(Outcome::Kept);
    EXPECT_EQ(layer->presentationValues().opacity, 0.25);
    scheduler.advance(0.25);
    EXPECT_NEAR(layer->presentationValues().opacity, 0.5, 1e-9);
    scheduler.advance(0.51);
    EXPECT_EQ(log, Lines { "long finished" });
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CAMotionGroupTest, OneThatIsDroppedLetsItsMotionsGoOn)
{
    collectOne();
    group->setFraction(0.5);
    group = nullptr;
    EXPECT_NEAR(shownX(*layer), 422, 1e-9);
    scheduler.advance(0.05);
    EXPECT_NEAR(shownX(*layer), 633, 1e-6);
    scheduler.advance(0.06);
    EXPECT_EQ(log, Lines { "motion finished" });
}

TEST_F(CAMotionGroupTest, AReplacedMotionLeavesIt)
{
    collectOne();
    group->setFraction(0.5);
    layer->addAnimation(basic("position.x", 422.0, {}, {}, 1), QStringLiteral("position"));
    scheduler.advance(0.5);
    EXPECT_EQ(log, Lines { "motion stopped" });
    EXPECT_EQ(shownX(*layer), 633);
    group->setFraction(0);
    EXPECT_EQ(shownX(*layer), 633);
}

TEST_F(CAMotionGroupTest, AMotionThatFollowsOneOfItsOwnIsHeldWithIt)
{
    collectOne();
    group->setFraction(0.5);
    const auto follower = std::dynamic_pointer_cast<CABasicAnimation>(
        layer->animationForKey(QStringLiteral("position"))->copy());
    follower->setCompletion(nullptr);
    follower->setFromValue(100.0);
    other->addAnimation(follower, QStringLiteral("position"));
    scheduler.advance(1);
    EXPECT_EQ(shownX(*other), 50);
    group->setFraction(0.75);
    EXPECT_NEAR(shownX(*other), 25, 1e-9);
}

TEST_F(CAMotionGroupTest, ALayerThatGoesAwayTellsItsEndAndIsForgotten)
{
    collectOne();
    layer = nullptr;
    scheduler.advance(0.1);
    EXPECT_EQ(log, Lines { "motion stopped" });
    group->setFraction(0.5);
    group->finish();
    scheduler.advance(1);
    EXPECT_EQ(group->state(), State::Finished);
}

TEST_F(CAMotionGroupTest, WhatLeavesItsWindowStaysHeld)
{
    collectOne();
    layer->removeEndingAnimationsOfSubtree();
    EXPECT_TRUE(layer->hasAnimations());
    EXPECT_EQ(log, Lines());
}

TEST_F(CAMotionGroupTest, AsksForFramesWhileItMovesAndWhenItIsMoved)
{
    const CALayerTree tree(layer);
    const auto makeFrame = [&] { return const_cast<CALayerTree&>(tree).makeFrame({ 10, 10 }, 1); };
    collectOne();
    makeFrame();
    EXPECT_FALSE(tree.needsFrame());
    group->setFraction(0.5);
    EXPECT_TRUE(tree.needsFrame());
    makeFrame();
    EXPECT_FALSE(tree.needsFrame());
    group->finish();
    makeFrame();
    EXPECT_TRUE(tree.needsFrame());
    scheduler.advance(1);
    makeFrame();
    EXPECT_FALSE(tree.needsFrame());
}

TEST_F(CAMotionGroupTest, TheBlockOfATransactionWaitsForTheArrival)
{
    CATransaction::begin();
    CATransaction::setCompletionBlock([this] { log.push_back("block"); });
    collectOne();
    CATransaction::commit();
    scheduler.advance(1);
    EXPECT_EQ(log, Lines());
    group->finish();
    scheduler.advance(1);
    EXPECT_EQ(log, (Lines { "motion finished", "block" }));
}

TEST_F(CAMotionGroupTest, TakesBackWhatWasRecordedAndNobodyHasChangedSince)
{
    layer->setPosition({ 1, 1 });
    layer->setOpacity(0.5);
    other->setBounds({ 0, 0, 10, 10 });
    {
        const CAModelChanges::Recording recording(&group->changes());
        layer->setPosition({ 2, 2 });
        layer->setPosition({ 3, 3 });
        layer->setOpacity(0.75);
        other->setBounds({ 0, 0, 20, 20 });
        other->setBackgroundColor(UIColor::blackColor());
        other->setHidden(true);
    }
    layer->setCornerRadius(4);
    layer->setOpacity(1);
    group->cancel();
    scheduler.advance(1);
    group->settle(Outcome::TakenBack);
    EXPECT_EQ(layer->position(), CGPoint(1, 1));
    EXPECT_EQ(layer->opacity(), 1);
    EXPECT_EQ(layer->cornerRadius(), 4);
    EXPECT_EQ(other->bounds(), CGRect(0, 0, 10, 10));
    EXPECT_EQ(other->backgroundColor(), nullptr);
    EXPECT_FALSE(other->isHidden());
}

TEST_F(CAMotionGroupTest, WhatIsTakenBackIsBackAtOnceWithoutAnActionOfTheLayer)
{
    const CALayerTree tree(layer);
    layer->addSublayer(other);
    {
        const CAModelChanges::Recording recording(&group->changes());
        other->setPosition({ 2, 2 });
    }
    ASSERT_TRUE(other->hasAnimations()) << "on the screen a layer moves by itself";
    other->removeAllAnimations();
    group->settle(Outcome::TakenBack);
    EXPECT_EQ(other->position(), CGPoint(0, 0));
    EXPECT_FALSE(other->hasAnimations());
}

TEST_F(CAMotionGroupTest, KeepsTheModelWhereItFinishes)
{
    {
        const CAModelChanges::Recording recording(&group->changes());
        layer->setPosition({ 2, 2 });
    }
    group->finish();
    scheduler.advance(1);
    group->settle(Outcome::Kept);
    EXPECT_EQ(layer->position(), CGPoint(2, 2));
}

} // namespace
