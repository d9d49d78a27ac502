#include "platform/layers/CATransaction.h"

#include "tests/platform/layers/LayersFixture.h"
#include "tests/support/AssertionRecorder.h"

namespace {

class CATransactionTest : public LayersFixture {
protected:
    ~CATransactionTest() override { CATransaction::flush(); }

    std::function<void()> note(const std::string& line)
    {
        return [this, line] { log.push_back(line); };
    }
    void animate(double duration)
    {
        layer->addAnimation(basic("opacity", 0.0, 1.0, {}, duration), NSString());
    }
};

TEST_F(CATransactionTest, HasItsDefaults)
{
    EXPECT_EQ(CATransaction::animationDuration(), 0.25);
    EXPECT_EQ(CATransaction::animationTimingFunction(), nullptr);
    EXPECT_FALSE(CATransaction::disableActions());
    EXPECT_EQ(CATransaction::completion(), nullptr);
}

TEST_F(CATransactionTest, NestedOnesInheritAndGiveBack)
{
    const auto easeIn = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn);
    {
        const CATransaction::Guard outer;
        CATransaction::setAnimationDuration(2);
        CATransaction::setAnimationTimingFunction(easeIn);
        {
            const CATransaction::Guard inner;
            EXPECT_EQ(CATransaction::animationDuration(), 2);
            EXPECT_EQ(CATransaction::animationTimingFunction(), easeIn);
            CATransaction::setAnimationDuration(3);
            CATransaction::setDisableActions(true);
        }
        EXPECT_EQ(CATransaction::animationDuration(), 2);
        EXPECT_FALSE(CATransaction::disableActions());
    }
    EXPECT_EQ(CATransaction::animationDuration(), 0.25);
    EXPECT_EQ(CATransaction::animationTimingFunction(), nullptr);
}

TEST_F(CATransactionTest, TheImplicitOneEndsWithTheFrame)
{
    CATransaction::setAnimationDuration(2);
    CATransaction::setDisableActions(true);
    EXPECT_EQ(CATransaction::animationDuration(), 2);
    EXPECT_TRUE(scheduler.isFrameRequested());
    CATransaction::flush();
    EXPECT_EQ(CATransaction::animationDuration(), 0.25);
    EXPECT_FALSE(CATransaction::disableActions());
}

TEST_F(CATransactionTest, AFrameInsideAnExplicitOneLeavesItAlone)
{
    const CATransaction::Guard transaction;
    CATransaction::setAnimationDuration(2);
    CATransaction::flush();
    EXPECT_EQ(CATransaction::animationDuration(), 2);
}

TEST_F(CATransactionTest, ACommitWithoutABeginIsAProgrammingError)
{
    const AssertionRecorder assertions;
    CATransaction::commit();
    EXPECT_THAT(assertions.messages(), ::testing::ElementsAre(QStringLiteral("Commit without a begin.")));
}

TEST_F(CATransactionTest, DurationsThatAreNoneCountAsNoTime)
{
    const CATransaction::Guard transaction;
    for (const double bad : { -1.0, notANumber, 0.0 }) {
        CATransaction::setAnimationDuration(bad);
        EXPECT_EQ(CATransaction::animationDuration(), 0);
    }
}

TEST_F(CATransactionTest, AnAnimationTakesWhatItDoesNotHave)
{
    const auto easeIn = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn);
    const auto easeOut = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut);
    const auto plain = basic("opacity", 0.0, 1.0, {}, 0);
    const auto own = basic("opacity", 0.0, 1.0, {}, 5);
    own->setTimingFunction(easeOut);
    layer->addAnimation(plain, QStringLiteral("default"));
    {
        const CATransaction::Guard transaction;
        CATransaction::setAnimationDuration(2);
        CATransaction::setAnimationTimingFunction(easeIn);
        layer->addAnimation(plain, QStringLiteral("taken"));
        layer->addAnimation(own, QStringLiteral("own"));
    }
    const auto inDefault = layer->animationForKey(QStringLiteral("default"));
    EXPECT_EQ(inDefault->duration(), 0.25);
    EXPECT_EQ(inDefault->timingFunction(), nullptr);
    const auto taken = layer->animationForKey(QStringLiteral("taken"));
    EXPECT_EQ(taken->duration(), 2);
    EXPECT_EQ(taken->timingFunction(), easeIn);
    const auto kept = layer->animationForKey(QStringLiteral("own"));
    EXPECT_EQ(kept->duration(), 5);
    EXPECT_EQ(kept->timingFunction(), easeOut);
}

TEST_F(CATransactionTest, TheCompletionComesWhenTheLastAnimationHasEnded)
{
    {
        const CATransaction::Guard transaction;
        CATransaction::setCompletionBlock(note("done"));
        animate(0.2);
        animate(0.5);
    }
    scheduler.advance(0.49);
    EXPECT_TRUE(log.empty());
    scheduler.advance(0.01);
    EXPECT_EQ(log, (Lines { "done" }));
}

TEST_F(CATransactionTest, TheCompletionComesWithinTheCommitWhenNothingWasAdded)
{
    CATransaction::begin();
    CATransaction::setCompletionBlock(note("done"));
    EXPECT_TRUE(log.empty());
    CATransaction::commit();
    EXPECT_EQ(log, (Lines { "done" }));
}

TEST_F(CATransactionTest, AnimationsThatEndBeforeTheCommitDoNotCompleteIt)
{
    CATransaction::begin();
    CATransaction::setCompletionBlock(note("done"));
    animate(0.1);
    scheduler.advance(1);
    EXPECT_TRUE(log.empty());
    CATransaction::commit();
    EXPECT_EQ(log, (Lines { "done" }));
}

TEST_F(CATransactionTest, AnimationsAddedBeforeTheBlockAreNotWaitedFor)
{
    const CATransaction::Guard transaction;
    animate(9);
    {
        const CATransaction::Guard inner;
        CATransaction::setCompletionBlock(note("inner"));
        animate(0.1);
    }
    scheduler.advance(0.2);
    EXPECT_EQ(log, (Lines { "inner" }));
}

TEST_F(CATransactionTest, TheOuterCompletionWaitsForTheInnerAnimations)
{
    {
        const CATransaction::Guard outer;
        CATransaction::setCompletionBlock(note("outer"));
        {
            const CATransaction::Guard inner;
            CATransaction::setCompletionBlock(note("inner"));
            animate(0.3);
        }
        const CATransaction::Guard silent;
        animate(0.5);
    }
    scheduler.advance(0.4);
    EXPECT_EQ(log, (Lines { "inner" }));
    scheduler.advance(0.1);
    EXPECT_EQ(log, (Lines { "inner", "outer" }));
}

TEST_F(CATransactionTest, RemovedAnimationsAndLayersThatGoAwayCompleteItToo)
{
    {
        const CATransaction::Guard transaction;
        CATransaction::setCompletionBlock(note("done"));
        animate(5);
        animate(5);
    }
    layer->removeAllAnimations();
    EXPECT_TRUE(log.empty());
    scheduler.advance(0);
    EXPECT_EQ(log, (Lines { "done" }));
    {
        const CATransaction::Guard transaction;
        CATransaction::setCompletionBlock(note("gone"));
        animate(5);
    }
    layer = nullptr;
    scheduler.advance(0);
    EXPECT_EQ(log, (Lines { "done", "gone" }));
}

TEST_F(CATransactionTest, ACompletionMayBeginATransactionOfItsOwn)
{
    {
        const CATransaction::Guard transaction;
        CATransaction::setCompletionBlock([this] {
            log.push_back("first");
            const CATransaction::Guard next;
            CATransaction::setCompletionBlock(note("second"));
            animate(0.1);
        });
        animate(0.1);
    }
    scheduler.advance(1);
    EXPECT_EQ(log, (Lines { "first", "second" }));
}

TEST_F(CATransactionTest, AReplacedBlockStillHearsOfItsAnimations)
{
    {
        const CATransaction::Guard transaction;
        CATransaction::setCompletionBlock(note("first"));
        animate(0.1);
        CATransaction::setCompletionBlock(note("second"));
        animate(0.2);
    }
    scheduler.advance(1);
    EXPECT_EQ(log, (Lines { "first", "second" }));
}

TEST_F(CATransactionTest, TheImplicitOneHasACompletionToo)
{
    CATransaction::setCompletionBlock(note("done"));
    animate(0.1);
    scheduler.advance(1);
    EXPECT_TRUE(log.empty());
    CATransaction::flush();
    EXPECT_EQ(log, (Lines { "done" }));
}

} // namespace
