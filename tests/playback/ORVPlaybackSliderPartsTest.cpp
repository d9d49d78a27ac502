// What the slider is made of: its recognisers, and exactly which constraints hold its parts.
#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::UnorderedElementsAre;

class ORVPlaybackSliderPartsTest : public PlaybackSliderFixture {
protected:
    static Lines constraintsOf(const UIView& view)
    {
        Lines described;
        for (const auto& constraint : view.constraints())
            described.push_back(constraint->description().toStdString());
        return described;
    }
};

TEST_F(ORVPlaybackSliderPartsTest, TapsBelongToTheBarAndDragsToTheThumb)
{
    EXPECT_EQ(slider->trackTapRecognizer()->view(), slider.get());
    EXPECT_EQ(slider->gestureRecognizers().size(), 1U);
    EXPECT_EQ(slider->thumbPanRecognizer()->view(), slider->thumbView().get());
    EXPECT_EQ(slider->thumbView()->gestureRecognizers().size(), 1U);
    EXPECT_FALSE(slider->thumbPanRecognizer()->cancelsTouchesInView());
}

TEST_F(ORVPlaybackSliderPartsTest, TheSlidersConstraintsAreTheseAndNoOthers)
{
    setPosition(0.25);
    EXPECT_THAT(constraintsOf(*slider),
        UnorderedElementsAre("ORVPlaybackSliderWaveformView.top == ORVPlaybackSlider.top @1000",
            "ORVPlaybackSlider.bottom == ORVPlaybackSliderWaveformView.bottom @1000",
            "ORVPlaybackSliderWaveformView.top == ORVPlaybackSlider.top @1000",
            "ORVPlaybackSlider.bottom == ORVPlaybackSliderWaveformView.bottom @1000",
            "ORVPlaybackSliderThumb.top == ORVPlaybackSlider.top @1000",
            "ORVPlaybackSlider.bottom == ORVPlaybackSliderThumb.bottom @1000",
            "ORVPlaybackSliderWaveformView.leading == ORVPlaybackSlider.leading @1000",
            "ORVPlaybackSliderWaveformView.leading == ORVPlaybackSliderWaveformView.trailing @1000",
            "ORVPlaybackSlider.trailing == ORVPlaybackSliderWaveformView.trailing @1000",
            "ORVPlaybackSliderWaveformView.right == ORVPlaybackSliderThumb.centerX @1000",
            "ORVPlaybackSliderThumb.centerX == ORVPlaybackSlider.right * 0.25 @1000"));
}

TEST_F(ORVPlaybackSliderPartsTest, OnlyTheCentreConstraintIsEverMadeAnew)
{
    const auto before = slider->constraints();
    const auto centre = slider->thumbCenterConstraint();
    setPosition(0.25);
    slider->setFrame({ 0, 0, 200, 60 });
    slider->setNeedsUpdateConstraints();
    runFrames();
    ASSERT_EQ(slider->constraints().size(), before.size());
    for (const auto& constraint : before)
        EXPECT_EQ(constraint->isActive(), constraint != centre) << constraint->description().toStdString();
}

TEST_F(ORVPlaybackSliderPartsTest, TheThumbsConstraintsAreTheseAndNoOthers)
{
    EXPECT_THAT(constraintsOf(*slider->thumbView()),
        UnorderedElementsAre("UIImageView.top == ORVPlaybackSliderThumb.top @1000",
            "ORVPlaybackSliderThumb.bottom == UIImageView.bottom @1000",
            "UIImageView.leading >= ORVPlaybackSliderThumb.leading @1000",
            "ORVPlaybackSliderThumb.trailing >= UIImageView.trailing @1000",
            "UIImageView.centerX == ORVPlaybackSliderThumb.centerX @1000",
            "ORVPlaybackSliderThumb.width <= 66 @1000"))
        << "the last one is the slider's";
}

TEST_F(ORVPlaybackSliderPartsTest, TheHalvesHoldTheirPicturesAtTheirOuterEdges)
{
    const std::string top = "UIImageView.top == ORVPlaybackSliderWaveformView.top @1000";
    const std::string bottom = "ORVPlaybackSliderWaveformView.bottom == UIImageView.bottom @1000";
    EXPECT_THAT(constraintsOf(*slider->minimumTrackView()),
        UnorderedElementsAre(top, bottom, "UIImageView.left == ORVPlaybackSliderWaveformView.left @1000"));
    EXPECT_THAT(constraintsOf(*slider->maximumTrackView()),
        UnorderedElementsAre(top, bottom, "UIImageView.right == ORVPlaybackSliderWaveformView.right @1000"));
    const auto stretched = make<ORVPlaybackSliderWaveformView>();
    stretched->updateConstraintsIfNeeded();
    EXPECT_THAT(constraintsOf(*stretched),
        UnorderedElementsAre(top, bottom,
            "UIImageView.leading == ORVPlaybackSliderWaveformView.leading @1000",
            "ORVPlaybackSliderWaveformView.trailing == UIImageView.trailing @1000"));
}

TEST_F(ORVPlaybackSliderPartsTest, TheModesHaveTheirNumbers)
{
    EXPECT_EQ(static_cast<unsigned long>(ORVPlaybackSliderWaveformViewModeStretch), 0U);
    EXPECT_EQ(static_cast<unsigned long>(ORVPlaybackSliderWaveformViewModeAlignLeft), 1U);
    EXPECT_EQ(static_cast<unsigned long>(ORVPlaybackSliderWaveformViewModeAlignRight), 2U);
}

} // namespace
