#include "platform/controls/UIButton.h"

#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/controls/ControlLog.h"
#include "tests/support/SceneFixture.h"

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

} // namespace
