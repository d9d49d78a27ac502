// What is taken away while a finger holds the thumb, while it glides, or by who hears of it.
#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;

// --- Under a finger ----------------------------------------------------------------------------------

struct Loss {
    const char* name;
    void (*happen)(ORVPlaybackSlider& slider, TouchScript& touch);
    bool touchGoesOn = false; // the thumb still has the finger
};

const Loss losses[] {
    { .name = "TheTouchIsCancelled", .happen = [](auto&, TouchScript& touch) { touch.cancel(); } },
    { .name = "TheRecogniserIsRemoved",
        .happen = [](ORVPlaybackSlider& slider,
                      auto&) { slider.thumbView()->removeGestureRecognizer(*slider.thumbPanRecognizer()); },
        .touchGoesOn = true },
    { .name = "TheThumbIsHidden",
        .happen = [](ORVPlaybackSlider& slider, auto&) { slider.setThumbHidden(true); } },
    { .name = "TheThumbIsRemoved",
        .happen = [](ORVPlaybackSlider& slider, auto&) { slider.thumbView()->removeFromSuperview(); } },
    { .name = "TheSliderIsRemoved",
        .happen = [](ORVPlaybackSlider& slider, auto&) { slider.removeFromSuperview(); } },
};

class ORVPlaybackSliderLossTest : public PlaybackSliderFixture, public testing::WithParamInterface<Loss> { };

INSTANTIATE_TEST_SUITE_P(When, ORVPlaybackSliderLossTest, testing::ValuesIn(losses),
    [](const auto& loss) { return std::string(loss.param.name); });

TEST_P(ORVPlaybackSliderLossTest, TheDragEndsInThatMomentLikeAnyOther)
{
    setPosition(0.5);
    takeThumb();
    moveThumb(35);
    GetParam().happen(*slider, touch);
    EXPECT_THAT(heard(), ElementsAre("drag 0.6", "end 0.6"));
    EXPECT_FALSE(slider->isDraggingThumb());
    EXPECT_EQ(slider->thumbView()->isHighlighted(), GetParam().touchGoesOn);
    touch.moveTo({ 300, 222 });
    EXPECT_EQ(letGo(), Lines());
    EXPECT_EQ(slider->currentPosition(), 0.6);
}

TEST_F(PlaybackSliderFixture, ASliderThatIsReleasedInTheMiddleOfADragIsGone)
{
    const std::weak_ptr<ORVPlaybackSlider> weak = slider;
    takeThumb();
    drop();
    EXPECT_EQ(heard().back().substr(0, 3), "end");
    touch.moveTo({ 300, 222 });
    touch.up();
    scheduler.advance(1);
    EXPECT_TRUE(weak.expired());
}

// --- While it glides ---------------------------------------------------------------------------------

TEST_F(PlaybackSliderFixture, ASliderThatIsTakenAwayWhileItGlidesStandsAtItsEndWhenItComesBack)
{
    tap(280);
    scheduler.advance(0.1);
    slider->removeFromSuperview();
    EXPECT_EQ(shownThumbCenter(), 280);
    window->addSubview(slider);
    runFrames();
    EXPECT_EQ(shownThumbCenter(), 280);
    expectHalvesMeetAtTheThumb();
}

TEST_F(PlaybackSliderFixture, ASliderMayBeDroppedWhileItGlides)
{
    const std::weak_ptr<ORVPlaybackSlider> weak = slider;
    tap(280);
    scheduler.advance(0.1);
    drop();
    scheduler.advance(1);
    EXPECT_TRUE(weak.expired());
}

// --- From inside a message ---------------------------------------------------------------------------

// One of the messages of a drag and a tap; what a test does from inside it.
class ORVPlaybackSliderMessageTest : public PlaybackSliderFixture,
                                     public testing::WithParamInterface<const char*> {
protected:
    void fromInsideTheMessage(const std::function<void()>& action) { fromInside(GetParam(), action); }
    // Drags by a tenth, then taps, as far as there is a slider to do it with; answers what was told.
    Lines dragAndTap()
    {
        Lines told = slider && slider->window() ? dragThumb(35) : Lines();
        scheduler.advance(1);
        const Lines more = slider && slider->window() ? tap(280) : Lines();
        scheduler.advance(1);
        told.insert(told.end(), more.begin(), more.end());
        return told;
    }
    static long count(const Lines& told, const std::string& message)
    {
        return std::count_if(told.begin(), told.end(),
            [&](const std::string& line) { return line.substr(0, message.size()) == message; });
    }
};

INSTANTIATE_TEST_SUITE_P(Each, ORVPlaybackSliderMessageTest, testing::Values("begin", "drag", "end", "tap"),
    [](const auto& message) { return std::string(message.param); });

TEST_P(ORVPlaybackSliderMessageTest, TheDelegateMayBeDropped)
{
    const std::weak_ptr<SliderLog> weak = log;
    fromInsideTheMessage([this] { log = nullptr; });
    dragThumb(35);
    EXPECT_NEAR(slider->currentPosition(), 0.1, 1e-12);
    tap(280);
    EXPECT_EQ(slider->currentPosition(), 0.8);
    EXPECT_TRUE(weak.expired());
    scheduler.advance(1);
}

TEST_P(ORVPlaybackSliderMessageTest, TheSliderMayBeTakenAway)
{
    fromInsideTheMessage([this] { slider->removeFromSuperview(); });
    const Lines told = dragAndTap();
    EXPECT_FALSE(slider->window());
    EXPECT_FALSE(slider->isDraggingThumb());
    EXPECT_EQ(count(told, "begin"), 1);
    EXPECT_EQ(count(told, "end"), 1);
}

TEST_P(ORVPlaybackSliderMessageTest, TheSliderMayBeDropped)
{
    const std::weak_ptr<ORVPlaybackSlider> weak = slider;
    fromInsideTheMessage([this] { drop(); });
    const CGPoint start = place(5);
    const CGPoint tapped = place(280);
    touch.drag(start, start + CGPoint(30, 0), 0.1);
    touch.tap(tapped);
    scheduler.advance(1);
    EXPECT_TRUE(weak.expired());
}

TEST_P(ORVPlaybackSliderMessageTest, TheRecognisersMayBeRemovedOnce)
{
    bool done = false;
    fromInsideTheMessage([this, &done] {
        if (std::exchange(done, true))
            return;
        slider->thumbView()->removeGestureRecognizer(*slider->thumbPanRecognizer());
        slider->removeGestureRecognizer(*slider->trackTapRecognizer());
    });
    setPosition(0.5);
    const Lines told = dragAndTap();
    EXPECT_FALSE(slider->thumbPanRecognizer()->view());
    EXPECT_FALSE(slider->trackTapRecognizer()->view());
    EXPECT_FALSE(slider->isDraggingThumb());
    EXPECT_EQ(count(told, "end"), 1);
    EXPECT_EQ(count(told, "tap"), GetParam() == std::string("tap") ? 1 : 0);
    EXPECT_EQ(shownThumbCenter(), slider->currentPosition() * width);
    EXPECT_EQ(tap(70), Lines());
}

TEST_F(PlaybackSliderFixture, ADragThatEndsInItsFirstMessageLeavesTheThumbWhereItWas)
{
    setPosition(0.5);
    fromInside("begin", [this] { slider->removeFromSuperview(); });
    // The end comes from inside the first message; the beginning makes its update step all the same.
    EXPECT_THAT(takeThumb(), ElementsAre("begin", "drag 0.5", "end 0.5", "drag 0.5"));
    EXPECT_EQ(slider->currentPosition(), 0.5);
}

} // namespace
