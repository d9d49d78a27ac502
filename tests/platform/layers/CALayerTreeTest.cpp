#include "platform/layers/CALayerTree.h"

#include "platform/layers/CAShapeLayer.h"
#include "platform/layers/CATransaction.h"
#include "tests/platform/layers/LayersFixture.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/Pictures.h"

namespace {

// A tree that makes a frame whenever the scheduler has one, as a window does.
class CALayerTreeTest : public LayersFixture {
protected:
    CALayerTreeTest()
    {
        CATransaction::begin();
        CATransaction::setDisableActions(true);
        child->setBounds({ 0, 0, 10, 10 });
        child->setBackgroundColor(UIColor::blackColor());
        layer->addSublayer(child);
        scheduler.setFrameHandler([this] {
            tree.beginFrame();
            whileLaidOut();
            tree.layoutIfNeeded();
            tree.displayIfNeeded();
            frames.push_back(tree.makeFrame({ 100, 100 }, 1));
        });
        settle();
    }
    ~CALayerTreeTest() override
    {
        scheduler.setFrameHandler(nullptr);
        CATransaction::commit();
    }

    void settle()
    {
        scheduler.advance(0.1);
        frames.clear();
    }
    std::size_t framesIn(double seconds)
    {
        frames.clear();
        scheduler.advance(seconds);
        return frames.size();
    }

    std::shared_ptr<CALayer> child = CALayer::layer();
    CALayerTree tree { layer };
    std::function<void()> whileLaidOut = [] {};
    std::vector<FrameList> frames;
};

TEST_F(CALayerTreeTest, NothingChangedMeansNoFrame)
{
    EXPECT_EQ(framesIn(10), 0u);
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(CALayerTreeTest, ANewTreeWantsAFrame)
{
    const CALayerTree fresh(CALayer::layer());
    EXPECT_TRUE(fresh.needsFrame());
    EXPECT_TRUE(scheduler.isFrameRequested());
}

TEST_F(CALayerTreeTest, EveryChangeAsksForOneFrame)
{
    const auto image = plainImage({ 1, 1 }, Qt::red);
    const auto other = CALayer::layer();
    const std::vector<std::function<void()>> changes = {
        [&] {
            child->setPosition({ 5, 5 });
        },
        [&] {
            child->setBounds({ 0, 0, 20, 20 });
        },
        [&] { child->setOpacity(0.5); },
        [&] { child->setTransform(CGAffineTransform::fromScale(2, 2)); },
        [&] { child->setCornerRadius(3); },
        [&] { child->setMasksToBounds(true); },
        [&] { child->setBackgroundColor(UIColor::whiteColor()); },
        [&] { child->setContents(image); },
        [&] { child->setContentsGravity(CAContentsGravity::Center); },
        [&] { child->setContentsTintColor(UIColor::whiteColor()); },
        [&] { child->setNeedsDisplay(); },
        [&] { child->setNeedsLayout(); },
        [&] { child->addSublayer(other); },
        [&] { other->removeFromSuperlayer(); },
        [&] { child->setHidden(true); },
        [&] { child->setHidden(false); },
    };
    for (std::size_t index = 0; index < changes.size(); ++index) {
        changes[index]();
        EXPECT_EQ(framesIn(1), 1u) << "change " << index;
    }
}

TEST_F(CALayerTreeTest, ManyChangesMakeOneFrame)
{
    for (int count = 0; count < 100; ++count)
        child->setPosition({ 1.0 * count, 0 });
    EXPECT_EQ(framesIn(1), 1u);
}

TEST_F(CALayerTreeTest, ChangesThatPrepareAFrameAskForNoOther)
{
    whileLaidOut = [this] { child->setPosition(child->position() + CGPoint(1, 0)); };
    child->setBackgroundColor(UIColor::whiteColor());
    EXPECT_EQ(framesIn(1), 1u);
    whileLaidOut = [] {};
    child->setPosition({ 50, 50 });
    EXPECT_EQ(framesIn(1), 1u);
}

TEST_F(CALayerTreeTest, SettingTheSameValueIsNoChange)
{
    child->setPosition(child->position());
    child->setBackgroundColor(UIColor::blackColor()); // equal, though another object
    child->setHidden(false);
    child->setMasksToBounds(false);
    EXPECT_EQ(framesIn(1), 0u);
}

TEST_F(CALayerTreeTest, ChangesOfLayersThatCannotBeSeenAskForNoFrame)
{
    layer->setHidden(true);
    settle();
    child->setPosition({ 5, 5 });
    child->setOpacity(0.5);
    EXPECT_EQ(framesIn(1), 0u);
    layer->setHidden(false);
    EXPECT_EQ(framesIn(1), 1u);
    EXPECT_EQ(frames[0].items.at(1).opacity, 0.5);
    child->removeFromSuperlayer();
    settle();
    child->setPosition({ 6, 6 });
    EXPECT_EQ(framesIn(1), 0u);
}

TEST_F(CALayerTreeTest, AnAnimationAsksForFramesWhileItRuns)
{
    child->addAnimation(basic("opacity", 0.0, 1.0, {}, 0.5), QStringLiteral("key"));
    EXPECT_NEAR(static_cast<double>(framesIn(5)), 31, 2); // and the one after its end
    EXPECT_EQ(frames.back().items.at(1).opacity, 1);
}

TEST_F(CALayerTreeTest, ADelayedAnimationWakesTheScreenWhenItBegins)
{
    const auto animation = basic("opacity", 0.0, 1.0, {}, 0.1);
    animation->setBeginTime(scheduler.now() + 3);
    child->addAnimation(animation, QStringLiteral("key"));
    EXPECT_EQ(framesIn(2.9), 1u);
    EXPECT_GT(framesIn(0.2), 3u);
    EXPECT_LE(framesIn(5), 2u);
}

TEST_F(CALayerTreeTest, AnEndlessAnimationRunsOnlyWhereItCanBeSeen)
{
    const auto spin = basic("transform.rotation.z", 0.0, 6.28, {}, 0.6);
    spin->setRepeatCount(forever);
    child->addAnimation(spin, QStringLiteral("spin"));
    EXPECT_GT(framesIn(1), 55u);
    child->setHidden(true);
    settle();
    EXPECT_EQ(framesIn(10), 0u);
    child->setHidden(false);
    EXPECT_GT(framesIn(1), 55u);
    child->setOpacity(0);
    settle();
    EXPECT_EQ(framesIn(10), 0u);
    child->setOpacity(1);
    EXPECT_GT(framesIn(1), 55u);
    child->removeFromSuperlayer();
    settle();
    EXPECT_EQ(framesIn(10), 0u);
    layer->addSublayer(child);
    EXPECT_GT(framesIn(1), 55u);
    EXPECT_TRUE(child->hasAnimations());
}

TEST_F(CALayerTreeTest, AHeldSubtreeAsksForFramesOnlyWhenItIsMoved)
{
    child->addAnimation(basic("opacity", 0.0, 0.5, {}, 1), QStringLiteral("key"));
    const double start = layer->convertTimeFromMedia(scheduler.now());
    layer->setSpeed(0);
    layer->setTimeOffset(start);
    settle();
    EXPECT_EQ(framesIn(10), 0u);
    layer->setTimeOffset(start + 0.5);
    EXPECT_EQ(framesIn(10), 1u);
    EXPECT_DOUBLE_EQ(frames[0].items.at(1).opacity, 0.25);
}

TEST_F(CALayerTreeTest, AnInvisibleLayerThatFadesInAsksForFrames)
{
    child->setOpacity(0);
    settle();
    child->addAnimation(basic("opacity", {}, 1.0, {}, 0.5), QStringLiteral("key"));
    EXPECT_GT(framesIn(1), 25u);
}

TEST_F(CALayerTreeTest, LayoutsThatForEverAskForOneAnotherGoOnInTheNextFrame)
{
    struct Restless : CALayerDelegate {
        void layoutSublayersOfLayer(CALayer& restless) override
        {
            if (--rounds > 0)
                restless.setNeedsLayout();
        }
        int rounds = 250;
    };
    const auto delegate = std::make_shared<Restless>();
    child->setDelegate(delegate);
    child->setNeedsLayout();
    EXPECT_GE(framesIn(1), 3u);
    EXPECT_EQ(delegate->rounds, 0);
    EXPECT_EQ(framesIn(1), 0u);
}

TEST_F(CALayerTreeTest, LayersKnowTheirTree)
{
    EXPECT_EQ(child->tree(), &tree);
    child->removeFromSuperlayer();
    EXPECT_EQ(child->tree(), nullptr);
    {
        const CALayerTree short_lived(child);
        EXPECT_EQ(child->tree(), &short_lived);
    }
    EXPECT_EQ(child->tree(), nullptr);
}

TEST_F(CALayerTreeTest, AnEndTimerAfterTheTreeIsGoneDoesNoHarm)
{
    const auto root = CALayer::layer();
    root->setBackgroundColor(UIColor::blackColor());
    root->setBounds({ 0, 0, 1, 1 });
    auto shortLived = std::make_unique<CALayerTree>(root);
    const auto animation = basic("opacity", 0.0, 1.0, {}, 0.1);
    animation->setBeginTime(scheduler.now() + 1);
    root->addAnimation(animation, QStringLiteral("key"));
    shortLived->makeFrame({ 1, 1 }, 1);
    shortLived = nullptr;
    scheduler.advance(5);
    EXPECT_FALSE(root->hasAnimations());
}

TEST_F(CALayerTreeTest, ARootInAnotherLayerIsAProgrammingError)
{
    const AssertionRecorder assertions;
    const CALayerTree second(child);
    EXPECT_THAT(assertions.messages(),
        ::testing::ElementsAre(
            QStringLiteral("Invalid parameter not satisfying: root && !root.superlayer && !root.tree")));
}

} // namespace
