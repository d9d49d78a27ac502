#include "platform/layers/CALayerAnimations.h"

#include "platform/layers/CATransaction.h"
#include "tests/platform/layers/LayersFixture.h"

namespace {

using CALayerAnimationsTest = LayersFixture;
using ::testing::ElementsAre;

const NSString key = QStringLiteral("key");

TEST_F(CALayerAnimationsTest, AnAnimationBeginsWhenItIsAddedAndIsRemovedAtItsEnd)
{
    scheduler.advance(3);
    layer->addAnimation(basic("opacity", 0.0, 1.0), key);
    EXPECT_DOUBLE_EQ(layer->presentationValues().opacity, 0);
    scheduler.advance(0.5);
    EXPECT_DOUBLE_EQ(layer->presentationValues().opacity, 0.5);
    EXPECT_TRUE(layer->animationForKey(key));
    scheduler.advance(0.5);
    EXPECT_FALSE(layer->animationForKey(key));
    EXPECT_EQ(layer->presentationValues().opacity, 1);
}

TEST_F(CALayerAnimationsTest, TheEndIsToldOnceAtTheExactTime)
{
    const auto animation = basic("opacity", 0.0, 1.0, {}, 0.3);
    double endTime = 0;
    animation->setCompletion([&](bool finished) {
        EXPECT_TRUE(finished);
        endTime = scheduler.now();
        log.push_back("end");
    });
    layer->addAnimation(animation, key);
    scheduler.advance(0.299);
    EXPECT_TRUE(log.empty());
    scheduler.advance(5);
    EXPECT_EQ(log, (Lines { "end" }));
    EXPECT_NEAR(endTime, 0.3, 1e-9);
}

TEST_F(CALayerAnimationsTest, TheDelegateIsToldWithTheLayersOwnCopy)
{
    struct Delegate : CAAnimationDelegate {
        void animationDidStop(const CAAnimation& animation, bool finished) override
        {
            lines.push_back(std::to_string(animation.duration()) + (finished ? " finished" : " stopped"));
        }
        Lines lines;
    };
    const auto delegate = std::make_shared<Delegate>();
    const auto animation = basic("opacity", 0.0, 1.0, {}, 0.5);
    animation->setDelegate(delegate);
    layer->addAnimation(animation, key);
    layer->addAnimation(animation, QStringLiteral("other"));
    layer->removeAnimationForKey(key);
    scheduler.advance(1);
    EXPECT_EQ(delegate->lines, (Lines { "0.500000 stopped", "0.500000 finished" }));
}

TEST_F(CALayerAnimationsTest, AReplacedAnimationIsStoppedAndTheNewOneTakesOver)
{
    const auto first = basic("opacity", 0.0, 1.0);
    logEnd(*first, "first");
    const auto second = basic("opacity", 0.2, 0.6);
    logEnd(*second, "second");
    layer->addAnimation(first, key);
    scheduler.advance(0.5);
    layer->addAnimation(second, key);
    EXPECT_TRUE(log.empty()); // nobody is called from inside the call
    EXPECT_DOUBLE_EQ(layer->presentationValues().opacity, 0.2);
    scheduler.advance(0);
    EXPECT_EQ(log, (Lines { "first stopped" }));
    scheduler.advance(0.75);
    EXPECT_EQ(log, (Lines { "first stopped" }));
    scheduler.advance(0.25);
    EXPECT_EQ(log, (Lines { "first stopped", "second finished" }));
}

TEST_F(CALayerAnimationsTest, ARemovedAnimationIsStoppedAndTheModelIsShown)
{
    const auto animation = basic("opacity", 0.0, 0.5);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    scheduler.advance(0.5);
    layer->removeAnimationForKey(key);
    EXPECT_EQ(layer->presentationValues().opacity, 1);
    scheduler.advance(2);
    EXPECT_EQ(log, (Lines { "it stopped" }));
}

TEST_F(CALayerAnimationsTest, RemovingAnUnknownKeyHasNoEffect)
{
    layer->removeAnimationForKey(key);
    layer->addAnimation(basic("opacity", 0.0, 1.0), key);
    layer->removeAnimationForKey(QStringLiteral("other"));
    layer->removeAnimationForKey(NSString());
    EXPECT_THAT(layer->animationKeys(), ElementsAre(key));
    EXPECT_FALSE(layer->animationForKey(QStringLiteral("other")));
    EXPECT_FALSE(layer->animationForKey(NSString()));
}

TEST_F(CALayerAnimationsTest, AnimationsWithoutAKeyDoNotReplaceOneAnother)
{
    layer->addAnimation(basic("position.x", {}, {}, 10.0), NSString());
    layer->addAnimation(basic("position.x", {}, {}, 10.0), NSString());
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.5).x(), 10);
    EXPECT_TRUE(layer->animationKeys().empty());
    EXPECT_TRUE(layer->hasAnimations());
    layer->removeAllAnimations();
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CALayerAnimationsTest, TheLayerTakesACopy)
{
    const auto animation = basic("position.x", 0.0, 10.0);
    layer->addAnimation(animation, key);
    animation->setToValue(1000.0);
    animation->setDuration(100);
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.5).x(), 5);
    EXPECT_NE(layer->animationForKey(key), animation);
    layer->addAnimation(animation, QStringLiteral("again")); // and the original can be used again
    EXPECT_EQ(animation->beginTime(), 0);
}

TEST_F(CALayerAnimationsTest, OneThatIsNotRemovedShowsItsFillModeAndTellsOnce)
{
    const auto animation = basic("opacity", 0.0, 0.25);
    animation->setRemovedOnCompletion(false);
    animation->setFillMode(kCAFillModeForwards);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    scheduler.advance(10);
    EXPECT_EQ(layer->presentationValues().opacity, 0.25);
    EXPECT_EQ(log, (Lines { "it finished" }));
    layer->removeAnimationForKey(key);
    scheduler.advance(1);
    EXPECT_EQ(log, (Lines { "it finished" }));
    EXPECT_EQ(layer->presentationValues().opacity, 1);
}

TEST_F(CALayerAnimationsTest, ADelayedOneBeginsAtItsTime)
{
    const auto animation = basic("opacity", 0.0, 0.5);
    animation->setBeginTime(2);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    EXPECT_EQ(opacityAt(*layer, 1), 1);
    EXPECT_DOUBLE_EQ(opacityAt(*layer, 2.5), 0.25);
    scheduler.advance(2.9);
    EXPECT_TRUE(log.empty());
    scheduler.advance(0.1);
    EXPECT_EQ(log, (Lines { "it finished" }));
}

TEST_F(CALayerAnimationsTest, OneOfNoTimeEndsAtOnceButNotInsideTheCall)
{
    const CATransaction::Guard transaction;
    CATransaction::setAnimationDuration(0);
    const auto animation = basic("opacity", 0.0, 0.5, {}, 0);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(layer->presentationValues().opacity, 1);
    scheduler.advance(0);
    EXPECT_EQ(log, (Lines { "it finished" }));
}

TEST_F(CALayerAnimationsTest, ACallbackMayAddAndRemoveAnimations)
{
    const auto animation = basic("opacity", 0.0, 1.0);
    animation->setCompletion([this](bool) {
        layer->removeAllAnimations();
        layer->addAnimation(basic("position.x", 0.0, 10.0), key);
        log.push_back("replaced");
    });
    layer->addAnimation(basic("cornerRadius", 0.0, 1.0), QStringLiteral("beside"));
    layer->addAnimation(animation, key);
    scheduler.advance(1.5);
    EXPECT_EQ(log, (Lines { "replaced" }));
    EXPECT_THAT(layer->animationKeys(), ElementsAre(key));
    EXPECT_DOUBLE_EQ(layer->presentationValues().position.x(), 5);
}

TEST_F(CALayerAnimationsTest, ACallbackMayStartTheSameAnimationAgain)
{
    const auto animation = basic("opacity", 0.0, 1.0);
    int rounds = 0;
    animation->setCompletion([&](bool) {
        if (++rounds < 5)
            layer->addAnimation(animation, key);
    });
    layer->addAnimation(animation, key);
    scheduler.advance(20);
    EXPECT_EQ(rounds, 5);
    animation->setCompletion(nullptr);
}

TEST_F(CALayerAnimationsTest, ACallbackMayDropTheLayer)
{
    const auto animation = basic("opacity", 0.0, 1.0);
    animation->setCompletion([this](bool) {
        layer = nullptr;
        log.push_back("dropped");
    });
    const auto beside = basic("position.x", 0.0, 1.0);
    logEnd(*beside, "beside");
    layer->addAnimation(animation, key);
    layer->addAnimation(beside, QStringLiteral("beside"));
    scheduler.advance(2);
    EXPECT_EQ(log, (Lines { "dropped", "beside finished" }));
}

TEST_F(CALayerAnimationsTest, ALayerThatGoesAwayStopsItsAnimations)
{
    const auto animation = basic("opacity", 0.0, 1.0);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    layer = nullptr;
    EXPECT_TRUE(log.empty());
    scheduler.advance(5);
    EXPECT_EQ(log, (Lines { "it stopped" }));
}

TEST_F(CALayerAnimationsTest, LayersMayBeTakenApartAfterTheClockIsGone)
{
    const auto animation = basic("opacity", 0.0, 1.0);
    logEnd(*animation, "it");
    const auto child = CALayer::layer();
    layer->addSublayer(child);
    layer->addAnimation(animation, key);
    child->addAnimation(animation, key);
    Scheduler::setCurrent(nullptr);
    layer = nullptr;
    child->removeAllAnimations();
    Scheduler::setCurrent(&scheduler);
    scheduler.advance(5);
    EXPECT_TRUE(log.empty()); // nobody was left to tell it
}

TEST_F(CALayerAnimationsTest, ALayerInNoWindowEndsItsAnimationsAllTheSame)
{
    const auto animation = basic("opacity", 0.0, 1.0);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    scheduler.advance(1);
    EXPECT_EQ(log, (Lines { "it finished" }));
    EXPECT_EQ(scheduler.framesRun(), 0);
}

TEST_F(CALayerAnimationsTest, EndsComeInTheOrderOfTheirTimes)
{
    for (const auto& [name, duration] :
        { std::pair { "c", 0.3 }, { "a", 0.1 }, { "b", 0.2 }, { "a2", 0.1 } }) {
        const auto animation = basic("opacity", 0.0, 1.0, {}, duration);
        logEnd(*animation, name);
        layer->addAnimation(animation, QLatin1String(name));
    }
    scheduler.advance(1);
    EXPECT_EQ(log, (Lines { "a finished", "a2 finished", "b finished", "c finished" }));
}

TEST_F(CALayerAnimationsTest, TenThousandAnimationsLeaveNothingBehind)
{
    int ends = 0;
    const auto animation = basic("opacity", 0.0, 1.0, {}, 0.3);
    animation->setCompletion([&ends](bool) { ++ends; });
    const std::weak_ptr<CAAnimation> original = animation;
    for (int count = 0; count < 10000; ++count) {
        layer->addAnimation(animation, key);
        if (count % 3 == 0)
            layer->removeAnimationForKey(key);
        if (count % 100 == 0)
            scheduler.advance(0.01);
    }
    scheduler.advance(1);
    EXPECT_EQ(ends, 10000);
    EXPECT_FALSE(layer->hasAnimations());
    EXPECT_EQ(animation.use_count(), 1);
}

TEST_F(CALayerAnimationsTest, TenThousandAtOnceEndTogether)
{
    int ends = 0;
    const auto animation = basic("position.x", {}, {}, 1.0);
    animation->setCompletion([&ends](bool) { ++ends; });
    for (int count = 0; count < 10000; ++count)
        layer->addAnimation(animation, NSString());
    EXPECT_NEAR(positionAt(*layer, 0.5).x(), 5000, 1e-6);
    scheduler.advance(1);
    EXPECT_EQ(ends, 10000);
    EXPECT_FALSE(layer->hasAnimations());
}

// --- The layer's time ------------------------------------------------------------------------------------

TEST_F(CALayerAnimationsTest, ALayerOfDoubleSpeedEndsInHalfTheTime)
{
    const auto child = CALayer::layer();
    layer->addSublayer(child);
    layer->setSpeed(2);
    const auto animation = basic("opacity", 0.0, 1.0);
    logEnd(*animation, "it");
    child->addAnimation(animation, key);
    EXPECT_DOUBLE_EQ(opacityAt(*child, 0.25), 0.5);
    scheduler.advance(0.49);
    EXPECT_TRUE(log.empty());
    scheduler.advance(0.01);
    EXPECT_EQ(log, (Lines { "it finished" }));
}

TEST_F(CALayerAnimationsTest, ASubtreeThatIsHeldIsDrivenByHandAndEndsNothing)
{
    scheduler.advance(10);
    const auto popup = CALayer::layer();
    layer->addSublayer(popup);
    layer->setTimeOffset(layer->convertTimeFromMedia(10));
    layer->setSpeed(0);
    const double start = layer->timeOffset();
    popup->setPosition({ 0, 844 });
    const auto animation = basic("position", CGPoint(0, 0), {}, {}, 0.2);
    logEnd(*animation, "it");
    popup->addAnimation(animation, QStringLiteral("position"));
    for (const double fraction : { 0.0, 0.25, 0.75, 0.5, 1.0, 0.1 }) {
        layer->setTimeOffset(start + fraction * 0.2);
        scheduler.advance(1);
        EXPECT_NEAR(popup->presentationValues().position.y(), 844 * fraction, 1e-6) << fraction;
    }
    popup->setPosition({ 0, -844 }); // the finger changes its mind
    EXPECT_NEAR(popup->presentationValues().position.y(), -84.4, 1e-6);
    EXPECT_TRUE(log.empty());
}

TEST_F(CALayerAnimationsTest, AHeldSubtreePlaysTheRestForwards)
{
    layer->setSpeed(0);
    const auto animation = basic("opacity", 0.0, 0.5, {}, 0.2);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    layer->setTimeOffset(0.05);
    scheduler.advance(3);
    layer->setBeginTime(scheduler.now());
    layer->setSpeed(0.5);
    scheduler.advance(0.1);
    EXPECT_NEAR(layer->presentationValues().opacity, 0.25, 1e-9);
    scheduler.advance(0.19);
    EXPECT_TRUE(log.empty());
    scheduler.advance(0.011);
    EXPECT_EQ(log, (Lines { "it finished" }));
}

TEST_F(CALayerAnimationsTest, AHeldSubtreePlaysBackToItsStart)
{
    scheduler.advance(5);
    const auto child = CALayer::layer();
    layer->addSublayer(child);
    layer->setSpeed(0);
    layer->setTimeOffset(1);
    const auto animation = basic("opacity", 0.0, 0.5, {}, 0.2);
    logEnd(*animation, "it");
    child->addAnimation(animation, key);
    layer->setTimeOffset(1.15);
    layer->setBeginTime(scheduler.now());
    layer->setSpeed(-1);
    scheduler.advance(0.1);
    EXPECT_NEAR(child->presentationValues().opacity, 0.125, 1e-9);
    EXPECT_TRUE(log.empty());
    scheduler.advance(0.051);
    EXPECT_EQ(log, (Lines { "it finished" }));
    for (const double seconds : { 0.0, 0.1, 10.0 }) {
        scheduler.advance(seconds);
        EXPECT_EQ(child->presentationValues().opacity, 0) << "not the model's, which is the other end";
    }
    layer->setSpeed(1);
    EXPECT_FALSE(child->hasAnimations());
    EXPECT_EQ(log, (Lines { "it finished" }));
}

TEST_F(CALayerAnimationsTest, AnAnimationThatRunsBackwardsByItselfIsRemovedAtItsEnd)
{
    const auto animation = basic("opacity", 0.25, 0.75, {}, 0.5);
    animation->setSpeed(-1);
    animation->setTimeOffset(0.5);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    EXPECT_EQ(layer->presentationValues().opacity, 0.75);
    scheduler.advance(0.25);
    EXPECT_EQ(layer->presentationValues().opacity, 0.5);
    scheduler.advance(0.26);
    EXPECT_EQ(log, (Lines { "it finished" }));
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CALayerAnimationsTest, MovingALayerIntoAnotherTimeMovesItsEnd)
{
    const auto slow = CALayer::layer();
    slow->setSpeed(0.5);
    const auto animation = basic("opacity", 0.0, 1.0);
    logEnd(*animation, "it");
    layer->addAnimation(animation, key);
    slow->addSublayer(layer);
    scheduler.advance(1.9);
    EXPECT_TRUE(log.empty());
    scheduler.advance(0.1);
    EXPECT_EQ(log, (Lines { "it finished" }));
}

TEST_F(CALayerAnimationsTest, TellsWhenAFrameWouldDiffer)
{
    CALayerAnimations animations(*layer);
    EXPECT_EQ(animations.secondsUntilChange({ 0, 1 }), infinity);
    const auto later = basic("opacity", 0.0, 1.0);
    later->setBeginTime(3);
    animations.add(*later, key);
    EXPECT_EQ(animations.secondsUntilChange({ 1, 1 }), 2);
    EXPECT_EQ(animations.secondsUntilChange({ 1, 2 }), 1);
    EXPECT_EQ(animations.secondsUntilChange({ 3.5, 1 }), 0);
    EXPECT_EQ(animations.secondsUntilChange({ 3.5, 0 }), infinity); // held
    EXPECT_EQ(animations.secondsUntilChange({ 4, 1 }), infinity); // over
}

} // namespace
