#include "playback/ORVPlaybackButton.h"

#include "tests/playback/PlaybackButtonFixture.h"
#include "tests/support/TemporaryBundle.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using enum UIControlState;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class ORVPlaybackButtonTest : public PlaybackButtonFixture {
protected:
    // A button that joined no window and has no images.
    static std::shared_ptr<ORVPlaybackButton> freshButton() { return make<ORVPlaybackButton>(wholeButton); }
    static std::shared_ptr<UIImage> picture(UIImageRenderingMode mode = UIImageRenderingMode::Automatic)
    {
        return plainImage({ 40, 20 }, Qt::darkGreen, 2)->imageWithRenderingMode(mode);
    }
    static UIControlState stateOf(unsigned bits) { return static_cast<UIControlState>(bits); }
    unsigned stateBits() const { return static_cast<unsigned>(button->state()); }
    // The tint of the icon on the screen; null for an icon in its own colours.
    std::shared_ptr<UIColor> iconTint() const { return button->imageView()->layer()->contentsTintColor(); }
};

// --- A fresh button ----------------------------------------------------------------------------------

TEST_F(ORVPlaybackButtonTest, AFreshButtonDoesNotPlay)
{
    EXPECT_FALSE(button->isPlaying());
    EXPECT_EQ(button->state(), Normal);
    EXPECT_EQ(button->progressView()->progress(), 0);
    EXPECT_TRUE(button->requiresConstraintBasedLayout());
    EXPECT_FALSE(button->adjustsImageWhenHighlighted()) << "it pales itself";
    EXPECT_FALSE(button->adjustsImageWhenDisabled());
}

TEST_F(ORVPlaybackButtonTest, ItHasItsOwnIconAboveItsRingAndNothingElse)
{
    ASSERT_EQ(button->subviews().size(), 2U);
    EXPECT_EQ(button->subviews()[0], button->progressView());
    EXPECT_EQ(button->subviews()[1], button->imageView());
    EXPECT_FALSE(button->progressView()->isUserInteractionEnabled());
    EXPECT_FALSE(button->progressView()->translatesAutoresizingMaskIntoConstraints());
    EXPECT_FALSE(button->imageView()->translatesAutoresizingMaskIntoConstraints());
    EXPECT_TRUE(button->progressView()->backgroundColor()->isEqual(UIColor::clearColor().get()));
    EXPECT_EQ(window->hitTest(middle), button.get());
}

// --- The playing state -------------------------------------------------------------------------------

TEST_F(ORVPlaybackButtonTest, PlayingIsTheStateOfTheApplicationsBitsOnTopOfTheOthers)
{
    button->setPlaying(true, Animated::No);
    EXPECT_EQ(stateBits(), 0xFF0000U);
    button->setHighlighted(true);
    EXPECT_EQ(stateBits(), 0xFF0001U);
    button->setEnabled(false);
    button->setSelected(true);
    EXPECT_EQ(stateBits(), 0xFF0007U);
    button->setPlaying(false, Animated::No);
    EXPECT_EQ(stateBits(), 7U);
}

TEST_F(ORVPlaybackButtonTest, EverySettingOfPlayingAndNothingElseIsAnnouncedOnceAfterItIsStored)
{
    const auto log = logChanges(button, "playing", &ORVPlaybackButton::isPlaying);
    button->setPlaying(true);
    button->setPlaying(true);
    button->setPlaying(true, Animated::No);
    button->setPlaying(false, Animated::Yes);
    scheduler.advance(1);
    button->setHighlighted(true);
    button->setEnabled(false);
    EXPECT_THAT(log->values, ElementsAre(true, true, true, false));
}

TEST_F(ORVPlaybackButtonTest, AnObserverMayDropTheButton)
{
    const std::weak_ptr<ORVPlaybackButton> weak = button;
    const auto log = logChanges(button, "playing", &ORVPlaybackButton::isPlaying);
    log->whenTold = [&] { std::exchange(button, nullptr)->removeFromSuperview(); };
    weak.lock()->setPlaying(true);
    EXPECT_TRUE(weak.expired());
    scheduler.advance(1);
}

// --- Images ------------------------------------------------------------------------------------------

TEST_F(ORVPlaybackButtonTest, AButtonWithoutImagesShowsNone)
{
    const UIAppearance::Replacement nothingRecorded;
    button = addView<ORVPlaybackButton>(wholeButton);
    EXPECT_TRUE(showsNoIcon());
    for (const unsigned state : { 0U, 1U, 2U, 4U, 7U, 0xFF0000U, 0xFF0007U })
        EXPECT_EQ(button->imageForState(stateOf(state)), nullptr);
    button->setPlaying(true);
    scheduler.advance(1);
    EXPECT_TRUE(showsNoIcon());
}

TEST_F(ORVPlaybackButtonTest, EveryButtonGetsItsTwoIconsWhenItJoinsAWindow)
{
    ASSERT_TRUE(play && pause);
    button = freshButton();
    EXPECT_EQ(button->imageForState(Normal), nullptr);
    putBack();
    EXPECT_EQ(button->imageForState(Normal), play);
    EXPECT_EQ(button->imageForState(Application), pause);
    EXPECT_TRUE(showsPlay());
}

TEST_F(ORVPlaybackButtonTest, AnImageThatCodeHasSetStaysWhenItJoinsAWindow)
{
    const auto own = picture();
    button = freshButton();
    button->setImage(own, Application);
    putBack();
    EXPECT_EQ(button->imageForState(Application), own);
    EXPECT_EQ(button->imageForState(Normal), play);
}

TEST_F(ORVPlaybackButtonTest, APlayingButtonThatJoinsAWindowShowsPause)
{
    button = freshButton();
    button->setPlaying(true, Animated::No);
    putBack();
    EXPECT_TRUE(showsPause());
}

TEST_F(ORVPlaybackButtonTest, EachStateTriesFiveKeysAndNoOthers)
{
    const UIAppearance::Replacement nothingRecorded;
    const std::vector<unsigned> all { 0, 1, 2, 3, 4, 5, 6, 7, 0xFF0000, 0xFF0001, 0xFF0002, 0xFF0003,
        0xFF0004, 0xFF0005, 0xFF0006, 0xFF0007, 0x010000 };
    for (const unsigned asked : all) {
        const std::set<unsigned> tried { asked, asked ^ 1, asked ^ 3, asked ^ 7, asked ^ 0xFF0007 };
        for (const unsigned stored : all) {
            const auto other = freshButton();
            other->setImage(play, stateOf(stored));
            EXPECT_EQ(other->imageForState(stateOf(asked)), tried.contains(stored) ? play : nullptr)
                << std::hex << asked << " with an image under " << stored;
        }
    }
}

TEST_F(ORVPlaybackButtonTest, TheKeysAreTriedInTheirOrder)
{
    for (const unsigned asked : { 0U, 1U, 2U, 6U, 0xFF0000U, 0xFF0005U }) {
        const auto other = freshButton();
        for (const unsigned key : { asked ^ 0xFF0007, asked ^ 7, asked ^ 3, asked ^ 1, asked }) {
            const auto nearer = picture();
            other->setImage(nearer, stateOf(key));
            EXPECT_EQ(other->imageForState(stateOf(asked)), nearer) << std::hex << asked << ' ' << key;
        }
    }
}

TEST_F(ORVPlaybackButtonTest, APressedButtonKeepsTheIconThatItHas)
{
    EXPECT_EQ(button->imageForState(stateOf(0xFF0001)), pause);
    EXPECT_EQ(button->imageForState(Highlighted), play);
    button->setHighlighted(true);
    EXPECT_TRUE(showsPlay());
    button->setPlaying(true, Animated::No);
    EXPECT_TRUE(showsPause());
}

TEST_F(ORVPlaybackButtonTest, ADisabledIdleButtonFindsNoneOfItsTwoIcons)
{
    EXPECT_EQ(button->imageForState(Disabled), nullptr);
    button->setEnabled(false);
    EXPECT_TRUE(showsNoIcon());
    button->setEnabled(true);
    EXPECT_TRUE(showsPlay());
}

TEST_F(ORVPlaybackButtonTest, AnImageIsTakenBackWithNone)
{
    button->setImage(nullptr, Normal);
    EXPECT_EQ(button->imageForState(Normal), nullptr) << "the pause icon is too far away";
    EXPECT_TRUE(showsNoIcon());
    button->setImage(nullptr, Application);
    button->setImage(nullptr, Selected);
    EXPECT_EQ(button->imageForState(Application), nullptr);
}

TEST_F(ORVPlaybackButtonTest, TheSuperclassHearsNothingOfTheImages)
{
    EXPECT_EQ(button->UIButton::imageForState(Normal), nullptr);
    EXPECT_EQ(button->subviews().size(), 2U);
}

TEST_F(ORVPlaybackButtonTest, AnImageOfNoParticularModeIsATemplateInTheButtonsTint)
{
    const auto red = UIColor::colorWithRed(1, 0, 0, 1);
    button->setTintColor(red);
    EXPECT_EQ(button->imageView()->image()->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    ASSERT_TRUE(iconTint());
    EXPECT_TRUE(iconTint()->isEqual(red.get()));
    EXPECT_EQ(button->imageForState(Normal)->renderingMode(), UIImageRenderingMode::Automatic);
}

TEST_F(ORVPlaybackButtonTest, AnOriginalImageKeepsItsColours)
{
    const auto original = picture(UIImageRenderingMode::AlwaysOriginal);
    button->setImage(original, Normal);
    EXPECT_EQ(button->imageView()->image(), original);
    EXPECT_EQ(iconTint(), nullptr);
}

TEST_F(ORVPlaybackButtonTest, ASelectedButtonShowsTheImageOfItsState)
{
    const auto selected = picture();
    button->setImage(selected, Selected);
    EXPECT_TRUE(showsPlay());
    button->setSelected(true);
    EXPECT_TRUE(shows(selected));
}

// --- Places ------------------------------------------------------------------------------------------

TEST_F(ORVPlaybackButtonTest, ItsConstraintsAreTheseAndNoOthers)
{
    button->setContentEdgeInsets({ 1, 2, 4, 8 }); // top, left, bottom, right
    button->setImageEdgeInsets({ 10, 20, 40, 80 });
    runFrames();
    std::vector<std::string> described;
    for (const auto& constraint : button->constraints())
        described.push_back(constraint->description().toStdString());
    EXPECT_THAT(described,
        UnorderedElementsAre("ORVCircularProgressView.leading == ORVPlaybackButton.leading + 2 @1000",
            "ORVPlaybackButton.trailing == ORVCircularProgressView.trailing + 8 @1000",
            "ORVCircularProgressView.top == ORVPlaybackButton.top + 1 @1000",
            "ORVPlaybackButton.bottom == ORVCircularProgressView.bottom + 4 @1000",
            "UIImageView.centerX == ORVPlaybackButton.centerX - 66 @1000",
            "UIImageView.centerY == ORVPlaybackButton.centerY - 33 @1000",
            "UIImageView.width <= ORVPlaybackButton.width @1000",
            "UIImageView.height <= ORVPlaybackButton.height @1000"));
}

TEST_F(ORVPlaybackButtonTest, InsetsMoveTheRingIntoThemAndTheIconByTheirWholeDifference)
{
    expectPlaces(wholeButton, iconInTheMiddle);
    button->setImageEdgeInsets({ 1, 2, 4, 8 }); // top, left, bottom, right
    expectPlaces(wholeButton, { 12 + 2 - 8, 12 + 1 - 4, 20, 20 });
    button->setContentEdgeInsets({ 10, 0, 0, 0 });
    expectPlaces({ 0, 10, 44, 34 }, { 6, 12 + 10 + 1 - 4, 20, 20 });
    button->setImageEdgeInsets({});
    button->setContentEdgeInsets({ 1, 2, 4, 8 });
    expectPlaces({ 2, 1, 34, 39 }, { 12 + 2 - 8, 12 + 1 - 4, 20, 20 });
}

TEST_F(ORVPlaybackButtonTest, NewInsetsTakeThePlaceOfTheOldOnes)
{
    const std::size_t count = button->constraints().size();
    for (const double inset : { 3.0, 5.0, 0.0 }) {
        button->setContentEdgeInsets({ inset, inset, inset, inset });
        button->setImageEdgeInsets({ inset, 0, inset, 0 });
        expectPlaces({ inset, inset, 44 - 2 * inset, 44 - 2 * inset }, iconInTheMiddle);
        EXPECT_EQ(button->constraints().size(), count);
    }
}

TEST_F(ORVPlaybackButtonTest, InsetsBeforeTheFirstLayoutCountAsWell)
{
    button = make<ORVPlaybackButton>(CGRect(0, 0, 60, 50));
    button->setContentEdgeInsets({ 5, 5, 5, 5 });
    putBack();
    expectPlaces({ 5, 5, 50, 40 }, { 20, 15, 20, 20 });
}

TEST_F(ORVPlaybackButtonTest, AnIconThatIsLargerThanTheButtonIsMadeToFit)
{
    button->setImage(plainImage({ 200, 120 }, Qt::darkGreen, 2), Normal);
    expectPlaces(wholeButton, wholeButton);
}

TEST_F(ORVPlaybackButtonTest, RingAndIconFollowTheButtonsSize)
{
    button->setFrame({ 0, 0, 60, 50 });
    expectPlaces({ 0, 0, 60, 50 }, { 20, 15, 20, 20 });
    button->setFrame({ 0, 0, 0, 0 });
    expectPlaces({ 0, 0, 0, 0 }, { 0, 0, 0, 0 });
}

// --- Numbers that fit no screen ----------------------------------------------------------------------

TEST_F(ORVPlaybackButtonTest, InsetsThatAreNotFiniteAreAProgrammingErrorAndChangeNothing)
{
    button->setContentEdgeInsets({ 0, std::numeric_limits<double>::infinity(), 0, 0 });
    button->setImageEdgeInsets({ std::nan(""), 0, 0, 0 });
    expectedAssertions.assign(2, QStringLiteral("Invalid parameter not satisfying: insets are finite"));
    expectPlaces(wholeButton, iconInTheMiddle);
}

TEST_F(ORVPlaybackButtonTest, InsetsThatNoButtonHasRoomForLeaveOneThatRecovers)
{
    const NSLayoutConstraint::ConflictReplacement quiet([](const auto&) {});
    for (const double inset : { 30.0, 1e6, -1e6, 1e300 }) {
        button->setContentEdgeInsets({ inset, inset, inset, inset });
        button->setImageEdgeInsets({ inset, 0, 0, 0 });
        runFrames();
        EXPECT_EQ(assertions.messages().empty(), inset != 1e300) << inset;
        button->setContentEdgeInsets({});
        button->setImageEdgeInsets({});
        expectPlaces(wholeButton, iconInTheMiddle);
    }
    expectedAssertions = assertions.messages();
}

TEST_F(ORVPlaybackButtonTest, AButtonBeyondAnyScreenHarmsNothingAndRecovers)
{
    for (const double side : { 1e6, 1e12, 1e300 }) {
        button->setFrame({ 0, 0, side, side });
        runFrames();
        button->setFrame({ 100, 100, 44, 44 });
        expectPlaces(wholeButton, iconInTheMiddle);
    }
}

// --- Accessibility -----------------------------------------------------------------------------------

TEST_F(ORVPlaybackButtonTest, TheAccessibilityLabelFollowsPlaying)
{
    EXPECT_EQ(button->accessibilityLabel(), QStringLiteral("Play"));
    button->setPlaying(true);
    EXPECT_EQ(button->accessibilityLabel(), QStringLiteral("Pause")) << "before the icon has changed";
    button->setPlaying(false, Animated::No);
    EXPECT_EQ(button->accessibilityLabel(), QStringLiteral("Play"));
}

TEST_F(ORVPlaybackButtonTest, TheAccessibilityLabelIsLocalisedWhenItIsReadAndElseEnglish)
{
    TemporaryBundle bundle;
    bundle.makeMain();
    EXPECT_EQ(button->accessibilityLabel(), QStringLiteral("Play"));
    bundle.writeFolder(QStringLiteral("en.lproj"));
    bundle.writeFile(
        QStringLiteral("en.lproj/Accessibility.strings"), "\"Play\" = \"Go on\";\n\"Pause\" = \"Rest\";\n");
    bundle.makeMain();
    EXPECT_EQ(button->accessibilityLabel(), QStringLiteral("Go on"));
    button->setPlaying(true);
    EXPECT_EQ(button->accessibilityLabel(), QStringLiteral("Rest"));
}

} // namespace
