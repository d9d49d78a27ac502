#include "tests/playback/PlaybackSliderFixture.h"

namespace {

class ORVPlaybackSliderThumbTest : public PlaybackSliderFixture {
protected:
    double alpha() const { return slider->thumbView()->imageView()->alpha(); }
    void putFingerOnThumb() { touch.down(place(thumbCenter() + 5)); }
    // From opaque, which it is still, to half transparent.
    void expectFadeFromNowOn() const
    {
        EXPECT_EQ(alpha(), 0.5);
        const auto& layer = *slider->thumbView()->imageView()->layer();
        expectCourse(
            [&](double seconds) { return layer.presentationValuesAt(scheduler.now() + seconds).opacity; },
            { { 0, 1 }, { 0.05, 1 - 0.5 * easeInOut(0.25) }, { 0.1, 1 - 0.5 * easeInOut(0.5) },
                { 0.2, 0.5 } });
    }
};

TEST_F(ORVPlaybackSliderThumbTest, IsHalfTransparentAtRestAndOpaqueAtOnceUnderAFinger)
{
    EXPECT_EQ(alpha(), 0.5);
    putFingerOnThumb();
    EXPECT_TRUE(slider->thumbView()->isHighlighted());
    EXPECT_EQ(shownAlphaOfThumb(), 1);
}

TEST_F(ORVPlaybackSliderThumbTest, FadesBackOverAFifthOfASecondHoweverTheTouchEnds)
{
    putFingerOnThumb();
    touch.cancel();
    expectFadeFromNowOn();
    scheduler.advance(1);
    setPosition(0.5);
    takeThumb();
    touch.glideTo(place(300), 0.3);
    EXPECT_TRUE(slider->isDraggingThumb());
    EXPECT_EQ(shownAlphaOfThumb(), 1) << "all the while";
    touch.up();
    expectFadeFromNowOn();
}

TEST_F(ORVPlaybackSliderThumbTest, TheHighlightCanBeTakenAwayUnderAFingerAndIsPassedOverWithoutOne)
{
    slider->thumbView()->setHighlighted(true);
    EXPECT_FALSE(slider->thumbView()->isHighlighted());
    EXPECT_EQ(alpha(), 0.5);
    putFingerOnThumb();
    slider->thumbView()->setHighlighted(false);
    EXPECT_FALSE(slider->thumbView()->isHighlighted());
    EXPECT_EQ(alpha(), 0.5);
    slider->thumbView()->setHighlighted(true);
    EXPECT_EQ(alpha(), 1);
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

TEST_F(ORVPlaybackSliderThumbTest, AThumbWithoutAPictureStandsWhereItShould)
{
    slider->setThumbImage(nullptr);
    setPosition(0.5);
    EXPECT_EQ(thumbCenter(), width / 2);
    EXPECT_FALSE(slider->thumbImage());
    EXPECT_FALSE(slider->thumbView()->imageView()->image());
}

} // namespace
