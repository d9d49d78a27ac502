// A playback button in a window with its two icons, and short ways to what it shows.
#pragma once

#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/NSBundle.h"
#include "platform/graphics/UIColor.h"
#include "platform/views/UIAppearance.h"
#include "playback/ORVPlaybackButton.h"
#include "tests/playback/ChangeLog.h"
#include "tests/playback/Course.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"
#include "tests/support/SourcePath.h"

class PlaybackButtonFixture : public SceneFixture {
protected:
    PlaybackButtonFixture()
    {
        ClassRegistry::runLoadHooks();
        button = addView<ORVPlaybackButton>({ 100, 100, 44, 44 });
        runFrames();
    }
    ~PlaybackButtonFixture() override { EXPECT_EQ(assertions.messages(), expectedAssertions); }

    void putBack()
    {
        window->addSubview(button);
        runFrames();
    }
    static std::shared_ptr<UIImage> iconNamed(const char* name)
    {
        return UIImage::imageNamed(QLatin1String(name));
    }
    bool shows(const std::shared_ptr<UIImage>& image) const
    {
        const auto& shown = button->imageView()->image();
        return shown && image && shown->qImage().cacheKey() == image->qImage().cacheKey();
    }
    bool showsPlay() const { return shows(play); }
    bool showsPause() const { return shows(pause); }
    bool showsNoIcon() const { return button->imageView()->image() == nullptr; }
    bool isSwitching() const
    {
        return button->imageView()->layer()->animationForKey(QStringLiteral("imageViewSwitch")) != nullptr;
    }

    // What is shown of the icon so many seconds from now.
    CALayerValues iconIn(double seconds) const
    {
        return button->imageView()->layer()->presentationValuesAt(scheduler.now() + seconds);
    }
    void expectScale(const Course& course) const
    {
        expectCourse([this](double seconds) { return iconIn(seconds).transform.m11(); }, course);
        expectCourse([this](double seconds) { return iconIn(seconds).transform.m22(); }, course);
    }
    // The alpha of icon and ring.
    void expectAlpha(const Course& course) const
    {
        expectCourse([this](double seconds) { return iconIn(seconds).opacity; }, course);
        const auto& ring = *button->progressView()->layer();
        expectCourse(
            [&](double seconds) { return ring.presentationValuesAt(scheduler.now() + seconds).opacity; },
            course);
    }
    void expectAlpha(double alpha) const { expectAlpha({ { 0, alpha } }); }
    void expectPlaces(const CGRect& ring, const CGRect& icon)
    {
        runFrames();
        EXPECT_EQ(button->progressView()->frame(), ring);
        EXPECT_EQ(button->imageView()->frame(), icon);
    }

    static constexpr double pale = 0.20000000298023224; // 0.2 in single precision
    static constexpr double fade = 0.4699999988079071; // 0.47 s in single precision
    static constexpr CGPoint middle { 122, 122 };
    static constexpr CGRect wholeButton { 0, 0, 44, 44 };
    static constexpr CGRect iconInTheMiddle { 12, 12, 20, 20 };

    const NSBundle::MainReplacement mainBundle { make<NSBundle>(
        sourcePath("resources"), std::vector<NSString> { QStringLiteral("en") }) };
    const AssertionRecorder assertions;
    std::vector<NSString> expectedAssertions;
    const std::shared_ptr<UIImage> play = iconNamed("ov_icon_play");
    const std::shared_ptr<UIImage> pause = iconNamed("ov_icon_pause");
    std::shared_ptr<ORVPlaybackButton> button;
};
