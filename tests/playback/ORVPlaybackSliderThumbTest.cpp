#include "tests/playback/PlaybackSliderFixture.h"

namespace {

class ORVPlaybackSliderThumbTest : public PlaybackSliderFixture {
protected:
    double alpha() const { return slider->thumbView()->imageView()->alpha(); }
};

TEST_F(ORVPlaybackSliderThumbTest, IsHalfTransparentAtRest) { EXPECT_EQ(alpha(), 0.5); }

TEST_F(ORVPlaybackSliderThumbTest, IsOpaqueAtOnceWhenAFingerComesDown)
{
    touch.down(place(thumbCenter() + 5));
    EXPECT_TRUE(slider->thumbView()->isHighlighted());
    EXPECT_EQ(alpha(), 1);
    EXPECT_EQ(shownAlphaOfThumb(), 1);
}

TEST_F(ORVPlaybackSliderThumbTest, FadesBackOverAFifthOfASecondWhenTheFingerLeaves)
{
    setPosition(0.5);
    touch.down(place(thumbCenter()));
    scheduler.advance(0.6); // no tap any more
    touch.up();
    EXPECT_EQ(alpha(), 0.5);
    EXPECT_EQ(shownAlphaOfThumb(), 1);
    scheduler.advance(0.1);
    EXPECT_NEAR(shownAlphaOfThumb(), 0.75, 0.001);
    scheduler.advance(0.099);
    EXPECT_GT(shownAlphaOfThumb(), 0.5);
    scheduler.advance(0.002);
    EXPECT_EQ(shownAlphaOfThumb(), 0.5);
}

TEST_F(ORVPlaybackSliderThumbTest, StaysOpaqueWhileItIsDragged)
{
    setPosition(0.5);
    beginDragging();
    touch.glideTo(place(300), 0.3);
    EXPECT_EQ(slider->isDraggingThumb(), true);
    EXPECT_EQ(shownAlphaOfThumb(), 1);
    touch.up();
    scheduler.advance(0.25);
    EXPECT_EQ(shownAlphaOfThumb(), 0.5);
}

TEST_F(ORVPlaybackSliderThumbTest, AHighlightThatNoFingerAsksForIsPassedOver)
{
    slider->thumbView()->setHighlighted(true);
    EXPECT_FALSE(slider->thumbView()->isHighlighted());
    EXPECT_EQ(alpha(), 0.5);
}

TEST_F(ORVPlaybackSliderThumbTest, TheHighlightCanBeTakenAwayWhileAFingerIsDown)
{
    touch.down(place(thumbCenter() + 5));
    slider->thumbView()->setHighlighted(false);
    EXPECT_FALSE(slider->thumbView()->isHighlighted());
    EXPECT_EQ(alpha(), 0.5);
    slider->thumbView()->setHighlighted(true);
    EXPECT_EQ(alpha(), 1);
}

TEST_F(ORVPlaybackSliderThumbTest, ACancelledTouchFadesItToo)
{
    touch.down(place(thumbCenter() + 5));
    touch.cancel();
    EXPECT_EQ(alpha(), 0.5);
    scheduler.advance(0.3);
    EXPECT_EQ(shownAlphaOfThumb(), 0.5);
}

TEST_F(ORVPlaybackSliderThumbTest, ItsPictureLiesInItsMiddle)
{
    slider->setThumbImage(plainImage({ 40, 88 }, Qt::black, 2));
    runFrames();
    const auto& thumb = slider->thumbView();
    EXPECT_EQ(thumb->imageView()->center().x(), thumb->bounds().width() / 2);
    EXPECT_EQ(thumb->imageView()->frame().height(), height);
    EXPECT_EQ(thumb->imageView()->image(), slider->thumbImage());
}

TEST_F(ORVPlaybackSliderThumbTest, AThumbWithoutAPictureTakesTouchesWhereItIs)
{
    slider->setThumbImage(nullptr);
    setPosition(0.5);
    EXPECT_EQ(thumbCenter(), width / 2);
    EXPECT_FALSE(slider->thumbView()->imageView()->image());
}

} // namespace
