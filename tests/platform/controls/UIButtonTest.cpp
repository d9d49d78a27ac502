#include "platform/controls/UIButton.h"

#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/controls/ControlLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <limits>

namespace {

using enum UIControlState;

class UIButtonTest : public SceneFixture {
protected:
    std::shared_ptr<UIButton> addButton(UIButtonType type)
    {
        auto button = make<UIButton>(type);
        button->setFrame({ 100, 100, 100, 50 });
        window->addSubview(button);
        return button;
    }
    // The image view's tint on the screen; invalid for a picture in its own colours.
    QColor shownTint(UIButton& button)
    {
        const auto tint = button.imageView()->layer()->contentsTintColor();
        return tint ? tint->qColor() : QColor();
    }

    const std::shared_ptr<UIImage> picture = makePicture(20, 10);
    const std::shared_ptr<UIImage> other = makePicture(20, 10);
    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    std::shared_ptr<UIButton> custom = addButton(UIButtonType::Custom);
};

TEST_F(UIButtonTest, APlainButtonIsACustomOneWithoutSubviews)
{
    const auto button = make<UIButton>();
    EXPECT_EQ(button->buttonType(), UIButtonType::Custom);
    EXPECT_EQ(static_cast<int>(UIButtonType::Custom), 0);
    EXPECT_TRUE(button->subviews().empty());
    EXPECT_EQ(button->intrinsicContentSize(), CGSize(0, 0));
}

TEST_F(UIButtonTest, EachStateHasItsPictureOrTheNormalOne)
{
    custom->setImage(picture, Normal);
    custom->setImage(other, Selected);
    EXPECT_EQ(custom->imageForState(Highlighted), picture);
    EXPECT_EQ(custom->imageForState(Selected), other);
    EXPECT_EQ(custom->imageView()->image(), picture);
    custom->setSelected(true);
    EXPECT_EQ(custom->imageView()->image(), other);
    custom->setImage(nullptr, Selected);
    EXPECT_EQ(custom->imageView()->image(), picture);
    custom->setImage(nullptr, Normal);
    EXPECT_EQ(custom->imageView()->image(), nullptr);
}

TEST_F(UIButtonTest, ApplicationStatesHavePicturesToo)
{
    class Playing : public UIButton {
    public:
        using UIButton::UIButton;
        UIControlState state() const override { return UIButton::state() | Application; }
    };
    const auto button = make<Playing>();
    button->setImage(picture, Normal);
    button->setImage(other, Application);
    EXPECT_EQ(button->imageView()->image(), other);
}

TEST_F(UIButtonTest, EachStateHasItsTitleAndColourOrTheNormalOnes)
{
    custom->setTitle(QStringLiteral("Follow"), Normal);
    custom->setTitle(QStringLiteral("Following"), Selected);
    custom->setTitleColor(red, Selected);
    EXPECT_EQ(custom->titleForState(Disabled), QStringLiteral("Follow"));
    EXPECT_EQ(custom->titleLabel()->text(), QStringLiteral("Follow"));
    EXPECT_TRUE(custom->titleLabel()->textColor()->isEqual(UIColor::labelColor().get()));
    custom->setSelected(true);
    EXPECT_EQ(custom->titleLabel()->text(), QStringLiteral("Following"));
    EXPECT_TRUE(custom->titleLabel()->textColor()->isEqual(red.get()));
    custom->setTitle(NSString(), Selected);
    EXPECT_EQ(custom->titleLabel()->text(), QStringLiteral("Follow"));
    custom->setTitle(NSString(), Normal);
    EXPECT_TRUE(custom->titleLabel()->text().isNull());
}

TEST_F(UIButtonTest, EachStateHasItsBackgroundOrTheNormalOne)
{
    custom->setBackgroundImage(picture, Normal);
    custom->setBackgroundImage(other, Disabled);
    const auto shown = [&] { return std::static_pointer_cast<UIImageView>(custom->subviews()[0])->image(); };
    EXPECT_EQ(shown(), picture);
    custom->setEnabled(false);
    EXPECT_EQ(shown(), other);
    EXPECT_EQ(custom->backgroundImageForState(Highlighted), picture);
    custom->setBackgroundImage(nullptr, Disabled);
    EXPECT_EQ(shown(), picture);
}

TEST_F(UIButtonTest, AStateWithALargerContentLaysTheButtonOutAnew)
{
    custom->setFrame({ 0, 100, 390, 50 });
    custom->setImage(picture, Normal);
    custom->setImage(makePicture(40, 30), Selected);
    custom->setTitle(QStringLiteral("Play"), Normal);
    custom->setTitle(QStringLiteral("Play it again"), Selected);
    runFrames();
    const CGSize small = custom->intrinsicContentSize();
    custom->setSelected(true);
    EXPECT_GT(custom->intrinsicContentSize().width(), small.width() + 20);
    runFrames();
    EXPECT_EQ(custom->imageView()->frame().size(), CGSize(40, 30));
    EXPECT_EQ(custom->titleLabel()->frame().size(), custom->titleLabel()->intrinsicContentSize());
}

TEST_F(UIButtonTest, TheBackgroundFillsTheButtonBelowThePicture)
{
    custom->setImage(picture, Normal);
    custom->setBackgroundImage(other, Normal);
    custom->layoutIfNeeded();
    ASSERT_EQ(custom->subviews().size(), 2u);
    EXPECT_EQ(custom->subviews()[0]->frame(), custom->bounds());
    EXPECT_EQ(custom->subviews()[1], custom->imageView());
    EXPECT_EQ(custom->imageView()->frame(), CGRect(40, 20, 20, 10));
}

TEST_F(UIButtonTest, PictureAndTitleStandSideBySideInTheMiddle)
{
    custom->setImage(picture, Normal);
    custom->setTitle(QStringLiteral("Play"), Normal);
    custom->layoutIfNeeded();
    const CGRect image = custom->imageView()->frame();
    const CGRect title = custom->titleLabel()->frame();
    EXPECT_EQ(image.right(), title.left());
    EXPECT_NEAR(image.left(), 100 - title.right(), 1e-6);
    EXPECT_NEAR(title.center().y(), 25, 1e-6);
    EXPECT_EQ(custom->titleLabel()->text(), QStringLiteral("Play"));
}

TEST_F(UIButtonTest, ATitleThatDoesNotFitStaysInside)
{
    custom->setImage(picture, Normal);
    custom->setTitle(QStringLiteral("A title far too long for so small a button"), Normal);
    custom->layoutIfNeeded();
    EXPECT_NEAR(custom->titleLabel()->frame().right(), 100, 1e-6);
}

TEST_F(UIButtonTest, TheSizeIsThatOfTheContentWithItsInsets)
{
    custom->setImage(picture, Normal);
    EXPECT_EQ(custom->intrinsicContentSize(), CGSize(20, 10));
    custom->setContentEdgeInsets({ 1, 2, 3, 4 });
    EXPECT_EQ(custom->intrinsicContentSize(), CGSize(26, 14));
    custom->sizeToFit();
    EXPECT_EQ(custom->frame(), CGRect(100, 100, 26, 14));
    custom->layoutIfNeeded();
    EXPECT_EQ(custom->imageView()->frame(), CGRect(2, 1, 20, 10));
    custom->setBackgroundImage(makePicture(50, 5), Normal);
    EXPECT_EQ(custom->intrinsicContentSize(), CGSize(50, 14));
}

TEST_F(UIButtonTest, ImageInsetsMoveThePictureWithoutChangingTheSize)
{
    custom->setImage(picture, Normal);
    custom->setImageEdgeInsets({ 0, 6, 0, -6 });
    custom->layoutIfNeeded();
    EXPECT_EQ(custom->imageView()->frame(), CGRect(46, 20, 20, 10));
    EXPECT_EQ(custom->intrinsicContentSize(), CGSize(20, 10));
}

TEST_F(UIButtonTest, InsetsThatAreNotFiniteAreAProgrammingErrorAndChangeNothing)
{
    custom->setImage(picture, Normal);
    custom->setContentEdgeInsets({ 1, 2, 3, 4 });
    custom->setImageEdgeInsets({ 5, 6, 7, 8 });
    AssertionRecorder recorder;
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const UIEdgeInsets& wrong : { UIEdgeInsets { notANumber, 0, 0, 0 }, { 0, infinity, 0, 0 },
             { 0, 0, -infinity, 0 }, { 0, 0, 0, notANumber } }) {
        custom->setContentEdgeInsets(wrong);
        custom->setImageEdgeInsets(wrong);
    }
    const NSString message = QStringLiteral("Invalid parameter not satisfying: insets are finite");
    EXPECT_EQ(recorder.messages(), std::vector<NSString>(8, message));
    EXPECT_EQ(custom->contentEdgeInsets(), (UIEdgeInsets { 1, 2, 3, 4 }));
    EXPECT_EQ(custom->imageEdgeInsets(), (UIEdgeInsets { 5, 6, 7, 8 }));
}

TEST_F(UIButtonTest, HugeInsetsAreTaken)
{
    custom->setImage(picture, Normal);
    custom->setContentEdgeInsets({ 0, 1e9, 0, 0 });
    runFrames();
    EXPECT_EQ(custom->intrinsicContentSize(), CGSize(1e9 + 20, 10));
}

TEST_F(UIButtonTest, TheBaselineIsTheTitles)
{
    EXPECT_EQ(custom->firstBaseline(), 50);
    custom->setTitle(QStringLiteral("Play"), Normal);
    custom->layoutIfNeeded();
    const auto label = custom->titleLabel();
    EXPECT_NEAR(custom->firstBaseline(), label->frame().top() + label->firstBaseline(), 0.5);
}

TEST_F(UIButtonTest, ASystemButtonsPictureTakesTheTint)
{
    const auto system = addButton(UIButtonType::System);
    system->setTintColor(red);
    system->setImage(picture, Normal);
    EXPECT_EQ(shownTint(*system), QColor(255, 0, 0));
    system->setImage(makePicture(20, 10, UIImageRenderingMode::AlwaysOriginal), Normal);
    EXPECT_FALSE(shownTint(*system).isValid());
}

TEST_F(UIButtonTest, ACustomButtonsPictureKeepsItsColoursUnlessItIsATemplate)
{
    custom->setTintColor(red);
    custom->setImage(picture, Normal);
    EXPECT_FALSE(shownTint(*custom).isValid());
    custom->setImage(makePicture(20, 10, UIImageRenderingMode::AlwaysTemplate), Normal);
    EXPECT_EQ(shownTint(*custom), QColor(255, 0, 0));
}

TEST_F(UIButtonTest, TheImageViewsOwnTintWinsUntilItIsNil)
{
    custom->setTintColor(red);
    custom->setImage(makePicture(20, 10, UIImageRenderingMode::AlwaysTemplate), Normal);
    custom->imageView()->setTintColor(UIColor::blackColor());
    EXPECT_EQ(shownTint(*custom), QColor(0, 0, 0));
    custom->imageView()->setTintColor(nullptr);
    EXPECT_EQ(shownTint(*custom), QColor(255, 0, 0));
}

TEST_F(UIButtonTest, TheTitleOfASystemButtonTakesTheTintUnlessItHasAColour)
{
    const auto system = addButton(UIButtonType::System);
    system->setTitle(QStringLiteral("Play"), Normal);
    system->setTintColor(red);
    EXPECT_TRUE(system->titleLabel()->textColor()->isEqual(red.get()));
    system->setTitleColor(UIColor::blackColor(), Highlighted);
    system->setHighlighted(true);
    EXPECT_TRUE(system->titleLabel()->textColor()->isEqual(UIColor::blackColor().get()));
    system->setHighlighted(false);
    EXPECT_TRUE(system->titleLabel()->textColor()->isEqual(red.get()));
}

TEST_F(UIButtonTest, APressShowsWithinAFrameAndGoesWithTheFinger)
{
    const auto system = addButton(UIButtonType::System);
    system->setImage(picture, Normal);
    touch.down({ 150, 120 });
    EXPECT_LT(system->imageView()->alpha(), 0.5);
    EXPECT_TRUE(scheduler.isFrameRequested());
    touch.up();
    EXPECT_EQ(system->imageView()->alpha(), 1);
}

TEST_F(UIButtonTest, ACustomButtonPalesItsPictureUnlessToldNotToOrGivenAnother)
{
    custom->setImage(picture, Normal);
    custom->setHighlighted(true);
    EXPECT_LT(custom->imageView()->alpha(), 1);
    custom->setAdjustsImageWhenHighlighted(false);
    EXPECT_EQ(custom->imageView()->alpha(), 1);
    custom->setHighlighted(false);
    custom->setEnabled(false);
    EXPECT_LT(custom->imageView()->alpha(), 1);
    custom->setImage(other, Disabled);
    EXPECT_EQ(custom->imageView()->alpha(), 1);
    custom->setImage(nullptr, Disabled);
    custom->setAdjustsImageWhenDisabled(false);
    EXPECT_EQ(custom->imageView()->alpha(), 1);
}

TEST_F(UIButtonTest, MayBeDroppedByWhoHearsThatDisablingLetsGoOfTheFinger)
{
    const auto target = make<ControlTarget>();
    custom->setImage(picture, Normal);
    custom->setTitle(QStringLiteral("Play"), Normal);
    custom->addTarget(target->pressedAction(), UIControlEvents::TouchCancel);
    const std::weak_ptr<UIButton> weak = custom;
    target->onEvent = [this] { std::exchange(custom, nullptr)->removeFromSuperview(); };
    touch.down({ 150, 120 });
    UIButton& button = *custom;
    button.setEnabled(false);
    EXPECT_EQ(target->lines, Lines { "pressed" });
    EXPECT_TRUE(weak.expired());
}

TEST_F(UIButtonTest, InsetsBeyondAnyScreenHarmNothing)
{
    custom->setImage(picture, Normal);
    custom->setContentEdgeInsets({ 1e300, 1e300, 1e300, 1e300 });
    custom->setImageEdgeInsets({ 1e300, 1e300, -1e300, -1e300 });
    runFrames();
    custom->sizeToFit();
    custom->setContentEdgeInsets({});
    custom->setImageEdgeInsets({});
    custom->setFrame({ 100, 100, 100, 50 });
    runFrames();
    EXPECT_EQ(custom->imageView()->frame(), CGRect(40, 20, 20, 10));
}

TEST_F(UIButtonTest, ASubclassWithItsOwnPictureHandlingPaysForNoSecondImageView)
{
    class Own : public UIButton {
    public:
        using UIButton::UIButton;
        void setImage(std::shared_ptr<UIImage> image, UIControlState) override { own = std::move(image); }
        std::shared_ptr<UIImage> imageForState(UIControlState) const override { return own; }
        std::shared_ptr<UIImage> own;
    };
    const auto button = make<Own>();
    button->setImage(picture, Normal);
    button->setHighlighted(true);
    button->layoutIfNeeded();
    EXPECT_TRUE(button->subviews().empty());
}

TEST_F(UIButtonTest, APressIsNotATapOfTheViewAround)
{
    const auto target = make<ControlTarget>();
    const auto counter = make<ControlTarget>();
    target->listenTo(*custom);
    const auto tap = make<UITapGestureRecognizer>(Action { counter, &ControlTarget::down });
    window->addGestureRecognizer(tap);
    touch.tap({ 150, 120 });
    EXPECT_EQ(target->lines, (Lines { "down", "up inside" }));
    EXPECT_TRUE(counter->lines.empty());
    touch.tap({ 20, 20 });
    EXPECT_EQ(counter->lines.size(), 1u);
    custom->setEnabled(false);
    touch.tap({ 150, 120 });
    EXPECT_EQ(counter->lines.size(), 2u);
}

// --- Detail disclosure -----------------------------------------------------------------------------------

TEST_F(UIButtonTest, ADetailDisclosureShowsItsOwnPictureInTheTint)
{
    const auto button = addButton(UIButtonType::DetailDisclosure);
    button->setTintColor(red);
    EXPECT_EQ(button->intrinsicContentSize(), CGSize(22, 22));
    EXPECT_EQ(shownTint(*button), QColor(255, 0, 0));
    button->sizeToFit();
    EXPECT_EQ(button->frame().size(), CGSize(22, 22));
    touch.down({ 110, 110 });
    EXPECT_LT(button->imageView()->alpha(), 0.5);
    touch.up();
    EXPECT_EQ(button->imageView()->alpha(), 1);
}

TEST_F(UIButtonTest, AllDetailDisclosuresShareOnePicture)
{
    EXPECT_EQ(addButton(UIButtonType::DetailDisclosure)->imageView()->image(),
        addButton(UIButtonType::DetailDisclosure)->imageView()->image());
}

TEST_F(UIButtonTest, ADetailDisclosureMayBeGivenAnotherPicture)
{
    const auto button = addButton(UIButtonType::DetailDisclosure);
    const auto own = button->imageView()->image();
    button->setImage(picture, Normal);
    EXPECT_EQ(button->imageView()->image(), picture);
    button->setImage(nullptr, Normal);
    EXPECT_EQ(button->imageView()->image(), own);
}

TEST_F(UIButtonTest, ADetailDisclosureFollowsTheDensityOfTheScreen)
{
    const auto button = addButton(UIButtonType::DetailDisclosure);
    runFrames();
    EXPECT_EQ(button->imageView()->image()->qImage().size(), QSize(44, 44));
    UIScreen::Geometry denser = screenGeometry;
    denser.scale = 3;
    UIScreen::mainScreen()->setGeometry(denser);
    runFrames();
    EXPECT_EQ(button->imageView()->image()->qImage().size(), QSize(66, 66));
    EXPECT_EQ(button->intrinsicContentSize(), CGSize(22, 22));
}

} // namespace
