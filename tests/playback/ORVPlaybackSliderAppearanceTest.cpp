#include "platform/foundation/ClassRegistry.h"
#include "platform/graphics/MainScreenScale.h"
#include "platform/views/UIAppearance.h"
#include "tests/playback/PlaybackSliderFixture.h"
#include "tests/support/SourcePath.h"
#include "theme/UIColor+ORVTheme.h"

namespace {

// The looks of the classes are recorded once in a program, so the pictures that they name must be there then.
class RecordedLooks final : public testing::Environment {
public:
    void SetUp() override
    {
        const NSBundle::MainReplacement mainBundle { make<NSBundle>(sourcePath("resources")) };
        MainScreenScale::set(2);
        ClassRegistry::runLoadHooks();
        MainScreenScale::set(1);
    }
};
const testing::Environment* const recordedLooks = testing::AddGlobalTestEnvironment(new RecordedLooks);

class ORVPlaybackSliderAppearanceTest : public PlaybackSliderFixture {
protected:
    static bool areEqual(const std::shared_ptr<UIColor>& first, const std::shared_ptr<UIColor>& second)
    {
        return first && second && first->isEqual(second.get());
    }

    const std::shared_ptr<ORVPlaybackSlider> fresh = make<ORVPlaybackSlider>(CGRect(0, 0, width, height));
    const std::shared_ptr<UIImage> handle = plainImage({ 20, 20 }, Qt::black, 2);
};

TEST_F(ORVPlaybackSliderAppearanceTest, OutsideOfAWindowThereIsNoHandleAndTheRightHalfIsGrey)
{
    EXPECT_FALSE(fresh->thumbImage());
    EXPECT_FALSE(fresh->thumbView()->imageView()->image());
    EXPECT_TRUE(areEqual(fresh->maximumWaveformTintColor(), UIColor::grayColor()));
    EXPECT_TRUE(areEqual(fresh->maximumTrackView()->tintColor(), UIColor::grayColor()));
    EXPECT_TRUE(areEqual(fresh->thumbView()->backgroundColor(), UIColor::clearColor()));
}

TEST_F(ORVPlaybackSliderAppearanceTest, InAWindowTheHandleIsATemplateAndTheRightHalfHasTheTracksColour)
{
    window->addSubview(fresh);
    const auto image = fresh->thumbImage();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    const auto resource = UIImage::imageNamed(QStringLiteral("ov_progress_grabhandle"));
    EXPECT_EQ(image->qImage(), resource->qImage());
    EXPECT_EQ(fresh->thumbView()->imageView()->image(), image);
    EXPECT_TRUE(areEqual(fresh->maximumWaveformTintColor(), orv_oruvanePlaybackSliderTrackColor()));
    EXPECT_TRUE(areEqual(fresh->maximumTrackView()->tintColor(), orv_oruvanePlaybackSliderTrackColor()));
}

TEST_F(ORVPlaybackSliderAppearanceTest, TheHandleIsAsHighAsTheBarAndNoWiderThanTheThumbMayBe)
{
    const auto resource = UIImage::imageNamed(QStringLiteral("ov_progress_grabhandle"));
    ASSERT_TRUE(resource);
    EXPECT_EQ(resource->size().height(), 44);
    EXPECT_LE(resource->size().width(), 66);
    EXPECT_GE(resource->size().width(), 44); // a fingertip
    runFrames();
    EXPECT_EQ(slider->thumbView()->imageView()->frame().size(), resource->size());
}

TEST_F(ORVPlaybackSliderAppearanceTest, WhatCodeHasSetWinsBeforeTheWindowAndInIt)
{
    for (const auto& each : { fresh, slider }) {
        each->setThumbImage(handle);
        each->setMaximumWaveformTintColor(red);
        each->removeFromSuperview();
        window->addSubview(each);
        EXPECT_EQ(each->thumbImage(), handle);
        EXPECT_EQ(each->thumbView()->imageView()->image(), handle);
        EXPECT_EQ(each->maximumWaveformTintColor(), red);
        EXPECT_TRUE(areEqual(each->maximumTrackView()->tintColor(), red));
    }
}

TEST_F(ORVPlaybackSliderAppearanceTest, HandleAndLeftHalfInheritTheTintAndTheRightHalfWithoutOneOfItsOwn)
{
    window->setTintColor(red);
    EXPECT_TRUE(areEqual(slider->minimumTrackView()->tintColor(), red));
    EXPECT_TRUE(areEqual(slider->thumbView()->imageView()->tintColor(), red));
    EXPECT_TRUE(areEqual(slider->maximumTrackView()->tintColor(), orv_oruvanePlaybackSliderTrackColor()));
    slider->setMaximumWaveformTintColor(nullptr);
    EXPECT_FALSE(slider->maximumWaveformTintColor());
    EXPECT_TRUE(areEqual(slider->maximumTrackView()->tintColor(), red));
}

TEST_F(ORVPlaybackSliderAppearanceTest, IsLaidOutByConstraints)
{
    EXPECT_TRUE(slider->requiresConstraintBasedLayout());
    EXPECT_TRUE(slider->thumbView()->requiresConstraintBasedLayout());
    for (const auto& view : slider->subviews())
        EXPECT_FALSE(view->translatesAutoresizingMaskIntoConstraints());
}

} // namespace
