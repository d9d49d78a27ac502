#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;

constexpr double smallest = 1.1920928955078125e-07; // a position above it is worth a multiplier

class ORVPlaybackSliderTest : public PlaybackSliderFixture {
protected:
    // Where the halves and the thumb's centre lie.
    void expectSplit(const CGRect& minimum, const CGRect& maximum)
    {
        EXPECT_EQ(slider->minimumTrackView()->frame(), minimum);
        EXPECT_EQ(slider->maximumTrackView()->frame(), maximum);
        EXPECT_EQ(thumbCenter(), minimum.right());
        EXPECT_EQ(slider->thumbView()->frame().height(), minimum.height());
    }
};

// --- The position ------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTest, APositionIsKeptFrom0To1AndBeyondAnEndBecomesThatEnd)
{
    EXPECT_EQ(slider->currentPosition(), 0) << "at first";
    for (const double position : { 5e-324, 0.1, 1 / 3.0, 1.0, 0.0 }) {
        slider->setCurrentPosition(position);
        EXPECT_EQ(slider->currentPosition(), position);
    }
    for (const double beyond : { 1.7, 1e300, infinity, std::nextafter(1.0, 2.0), notANumber }) {
        slider->setCurrentPosition(beyond);
        EXPECT_EQ(slider->currentPosition(), 1) << beyond;
    }
    setPosition(notANumber);
    EXPECT_EQ(thumbCenter(), width);
    for (const double below : { -0.2, -1e300, -infinity, -5e-324 }) {
        slider->setCurrentPosition(below);
        EXPECT_EQ(slider->currentPosition(), 0) << below;
    }
}

TEST_F(ORVPlaybackSliderTest, ObserversHearOfAPositionByBothMechanismsAndSeeTheNewOne)
{
    const auto changes = logChanges(slider, "currentPosition", &ORVPlaybackSlider::currentPosition);
    slider->setCurrentPosition(0.25);
    slider->setCurrentPosition(0.25); // the same position is told as well
    slider->setCurrentPosition(0.5, Animated::No);
    slider->setCurrentPosition(0.75, Animated::Yes);
    slider->setCurrentPosition(7, 1, UIViewAnimationCurve::EaseIn);
    EXPECT_THAT(changes->values, ElementsAre(0.25, 0.25, 0.25, 0.25, 0.5, 0.5, 0.75, 0.75, 1, 1));
}

TEST_F(ORVPlaybackSliderTest, AnObserverMayDropTheSliderWhileItIsTold)
{
    const std::weak_ptr<ORVPlaybackSlider> weak = slider;
    const auto changes = logChanges(slider, "currentPosition", &ORVPlaybackSlider::currentPosition);
    changes->whenTold = [this] { drop(); };
    weak.lock()->setCurrentPosition(0.5, Animated::Yes);
    EXPECT_EQ(changes->values.size(), 2U);
    scheduler.advance(0.2);
    EXPECT_TRUE(weak.expired());
}

// --- The layout --------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTest, ThePositionIsSeenAfterTheNextLayout)
{
    setPosition(0.5);
    slider->setCurrentPosition(0.75);
    EXPECT_EQ(thumbCenter(), width / 2);
    slider->layoutIfNeeded();
    EXPECT_EQ(thumbCenter(), width * 0.75);
}

TEST_F(ORVPlaybackSliderTest, TheThumbStandsAtItsFractionOfTheWidthAndTheHalvesMeetThere)
{
    for (const double position : { 0.0, 0.001, 0.25, 1 / 3.0, 0.5, 0.999, 1.0 }) {
        setPosition(position);
        EXPECT_NEAR(thumbCenter(), width * position, 1e-9);
        expectHalvesMeetAtTheThumb();
    }
}

TEST_F(ORVPlaybackSliderTest, AtEitherEndHalfOfTheThumbLiesBeyondTheEdge)
{
    for (const double position : { 0.0, smallest }) {
        setPosition(position);
        expectSplit({ 0, 0, 0, height }, { 0, 0, width, height });
        EXPECT_EQ(slider->thumbView()->frame().left(), -slider->thumbView()->frame().width() / 2);
    }
    setPosition(1);
    expectSplit({ 0, 0, width, height }, { width, 0, 0, height });
}

TEST_F(ORVPlaybackSliderTest, TheSplitFollowsANewSizeWithAHiddenThumbToo)
{
    setPosition(0.5);
    resize(200, 60);
    expectSplit({ 0, 0, 100, 60 }, { 100, 0, 100, 60 });
    slider->setThumbHidden(true);
    resize(width);
    setPosition(0.25);
    EXPECT_EQ(slider->minimumTrackView()->frame().width(), width / 4);
    expectHalvesMeetAtTheThumb();
    resize(0, 0);
    expectSplit({ 0, 0, 0, 0 }, { 0, 0, 0, 0 });
}

TEST_F(ORVPlaybackSliderTest, ABarBeyondAnyScreenHarmsNothingAndRecovers)
{
    for (const double wide : { 1e6, 1e12, 1e300 }) {
        resize(wide);
        setPosition(0.3);
        touch.tap({ 100, 210 });
        scheduler.advance(0.5);
        resize(width);
        setPosition(0.5);
        EXPECT_EQ(thumbCenter(), width / 2) << wide;
        expectHalvesMeetAtTheThumb();
        tap(70);
        scheduler.advance(0.5);
        EXPECT_EQ(slider->currentPosition(), 0.2) << wide;
    }
}

TEST_F(ORVPlaybackSliderTest, AFrameThatIsNotFiniteIsAProgrammingErrorAndChangesNothing)
{
    setPosition(0.5);
    for (const double wide : { infinity, -infinity, notANumber }) {
        const AssertionRecorder errors;
        resize(wide);
        EXPECT_FALSE(errors.messages().empty());
        EXPECT_EQ(thumbCenter(), width / 2);
    }
}

// --- The centre's constraint -------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTest, TheCentreConstraintIsMadeAnewForEachPosition)
{
    const auto first = slider->thumbCenterConstraint();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->secondAttribute(), NSLayoutAttribute::Left);
    slider->setCurrentPosition(smallest * 1.01);
    EXPECT_FALSE(slider->thumbCenterConstraint());
    EXPECT_FALSE(first->isActive());
    runFrames();
    const auto second = slider->thumbCenterConstraint();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->firstItem(), slider->thumbView());
    EXPECT_EQ(second->firstAttribute(), NSLayoutAttribute::CenterX);
    EXPECT_EQ(second->relation(), NSLayoutRelation::Equal);
    EXPECT_EQ(second->secondItem(), slider);
    EXPECT_EQ(second->secondAttribute(), NSLayoutAttribute::Right);
    EXPECT_EQ(second->multiplier(), smallest * 1.01);
    EXPECT_EQ(second->constant(), 0);
    EXPECT_TRUE(second->isActive());
}

TEST_F(ORVPlaybackSliderTest, ManyPositionsLeaveOneCentreConstraintBehind)
{
    setPosition(0.5);
    const std::size_t before = slider->constraints().size();
    for (int step = 0; step <= 100; ++step)
        setPosition(step / 100.0);
    EXPECT_EQ(slider->constraints().size(), before);
}

// --- The thumb ---------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTest, TheThumbIsAtLeastAsWideAsItsPictureAndAtMost66PointsWhereverItIs)
{
    for (const int pictureWidth : { 0, 30, 44, 66 }) {
        const auto picture = pictureWidth > 0 ? plainImage({ pictureWidth * 2, 88 }, Qt::black, 2) : nullptr;
        slider->setThumbImage(picture);
        setPosition(0);
        const double thumbWidth = slider->thumbView()->frame().width();
        EXPECT_GE(thumbWidth, pictureWidth);
        EXPECT_LE(thumbWidth, 66);
        if (picture) {
            EXPECT_EQ(slider->thumbView()->imageView()->frame().size(), CGSize(pictureWidth, height));
        }
        for (const double position : { 0.3, 0.9, 1.0, 0.0 }) {
            setPosition(position);
            EXPECT_EQ(slider->thumbView()->frame().width(), thumbWidth);
        }
    }
}

TEST_F(ORVPlaybackSliderTest, AWiderPictureIsSqueezed)
{
    slider->setThumbImage(plainImage({ 200, 88 }, Qt::black, 2));
    runFrames();
    EXPECT_EQ(slider->thumbView()->frame().width(), 66);
    EXPECT_EQ(slider->thumbView()->imageView()->frame(), CGRect(0, 0, 66, height));
}

TEST_F(ORVPlaybackSliderTest, TheThumbLiesAboveBothHalves)
{
    EXPECT_THAT(slider->subviews(),
        ElementsAre(slider->minimumTrackView(), slider->maximumTrackView(), slider->thumbView()));
    EXPECT_EQ(slider->minimumTrackView()->mode(), ORVPlaybackSliderWaveformViewModeAlignLeft);
    EXPECT_EQ(slider->maximumTrackView()->mode(), ORVPlaybackSliderWaveformViewModeAlignRight);
}

TEST_F(ORVPlaybackSliderTest, AHiddenThumbSwitchesTapsOff)
{
    for (const bool hidden : { false, true, false }) {
        slider->setThumbHidden(hidden);
        EXPECT_EQ(slider->isThumbHidden(), hidden);
        EXPECT_EQ(slider->thumbView()->isHidden(), hidden);
        EXPECT_EQ(slider->trackTapRecognizer()->isEnabled(), !hidden);
    }
}

TEST_F(ORVPlaybackSliderTest, ThePositionOfATouchAddsTheBoundsOriginAndIsNotClamped)
{
    EXPECT_EQ(slider->trackPositionFromTouchLocation({ 70, 1000 }), 0.2);
    EXPECT_EQ(slider->trackPositionFromTouchLocation({ 700, 0 }), 2);
    EXPECT_EQ(slider->trackPositionFromTouchLocation({ -35, 0 }), -0.1);
    slider->setBounds({ 35, 0, width, height });
    EXPECT_EQ(slider->trackPositionFromTouchLocation({ 70, 0 }), 0.3);
}

} // namespace
