#include "platform/controls/UIImageView.h"

#include "platform/graphics/UIColor.h"
#include "tests/platform/controls/ControlLog.h"
#include "tests/support/SceneFixture.h"

namespace {

class UIImageViewTest : public SceneFixture {
protected:
    const FrameImage* shown(const UIView& looked)
    {
        runFrames();
        for (const FrameItem& item : frame.items)
            if (item.layer == looked.layer()->layerID())
                return std::get_if<FrameImage>(&item.content);
        return nullptr;
    }

    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    std::shared_ptr<UIImageView> view = addView<UIImageView>({ 0, 0, 80, 40 });
};

TEST_F(UIImageViewTest, HasThePicturesSize)
{
    EXPECT_EQ(view->intrinsicContentSize(), CGSize(UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric));
    view->setImage(makePicture(30, 20));
    EXPECT_EQ(view->intrinsicContentSize(), CGSize(30, 20));
    EXPECT_EQ(make<UIImageView>(makePicture(30, 20))->frame(), CGRect(0, 0, 30, 20));
    EXPECT_EQ(make<UIImageView>(std::shared_ptr<UIImage>())->frame(), CGRect());
}

TEST_F(UIImageViewTest, ShowsThePictureItself)
{
    const auto picture = makePicture(40, 40);
    view->setImage(picture);
    const auto* content = shown(*view);
    ASSERT_TRUE(content);
    EXPECT_EQ(content->image.cacheKey(), picture->qImage().cacheKey());
    EXPECT_EQ(content->rect, CGRect(0, 0, 80, 40)); // stretched
    EXPECT_FALSE(content->tint.isValid());
    view->setImage(nullptr);
    EXPECT_FALSE(shown(*view));
}

TEST_F(UIImageViewTest, TwoViewsMayShareAPicture)
{
    const auto picture = makePicture(40, 40);
    const auto other = addView<UIImageView>({ 0, 100, 80, 40 });
    view->setImage(picture);
    other->setImage(picture);
    EXPECT_EQ(shown(*view)->image.cacheKey(), shown(*other)->image.cacheKey());
}

TEST_F(UIImageViewTest, TheContentModeSaysHowItFills)
{
    view->setImage(makePicture(40, 40));
    view->setContentMode(UIViewContentMode::ScaleAspectFit);
    EXPECT_EQ(shown(*view)->rect, CGRect(20, 0, 40, 40));
    view->setContentMode(UIViewContentMode::ScaleAspectFill);
    EXPECT_EQ(shown(*view)->rect, CGRect(0, -20, 80, 80));
}

TEST_F(UIImageViewTest, TheContentModeMayBeAPlace)
{
    view->setImage(makePicture(20, 20));
    const struct {
        UIViewContentMode mode;
        CGPoint place;
    } rows[] = {
        { UIViewContentMode::Center, { 30, 10 } },
        { UIViewContentMode::Top, { 30, 0 } },
        { UIViewContentMode::Bottom, { 30, 20 } },
        { UIViewContentMode::Left, { 0, 10 } },
        { UIViewContentMode::Right, { 60, 10 } },
        { UIViewContentMode::TopLeft, { 0, 0 } },
        { UIViewContentMode::TopRight, { 60, 0 } },
        { UIViewContentMode::BottomLeft, { 0, 20 } },
        { UIViewContentMode::BottomRight, { 60, 20 } },
    };
    for (const auto& row : rows) {
        view->setContentMode(row.mode);
        EXPECT_EQ(shown(*view)->rect, CGRect(row.place, CGSize(20, 20))) << static_cast<int>(row.mode);
    }
}

TEST_F(UIImageViewTest, TheRawValuesOfTheContentModesAreTheWrittenOnes)
{
    EXPECT_EQ(static_cast<int>(UIViewContentMode::ScaleToFill), 0);
    EXPECT_EQ(static_cast<int>(UIViewContentMode::ScaleAspectFit), 1);
    EXPECT_EQ(static_cast<int>(UIViewContentMode::ScaleAspectFill), 2);
    EXPECT_EQ(static_cast<int>(UIViewContentMode::Center), 4);
    EXPECT_EQ(static_cast<int>(UIViewContentMode::BottomRight), 12);
}

TEST_F(UIImageViewTest, APictureThatRepeatsFillsTheView)
{
    QImage pixels = plainPixels({ 20, 40 }, Qt::red);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 10; ++x)
            pixels.setPixelColor(x, y, Qt::blue); // the left half
    view->setImage(UIImage::imageWithQImage(pixels, 1)->resizableImage({}, UIImageResizingMode::Tile));
    view->setContentMode(UIViewContentMode::Center);
    const auto* content = shown(*view);
    ASSERT_TRUE(content);
    EXPECT_EQ(content->rect, CGRect(0, 0, 80, 40));
    for (int x = 5; x < 80; x += 10) { // in the middle of each half, at two pixels a point
        const QColor expected = x % 20 < 10 ? Qt::blue : Qt::red;
        EXPECT_EQ(content->image.pixelColor(2 * x, 40), expected) << x;
    }
    view->setFrame({ 0, 0, 40, 40 });
    EXPECT_EQ(shown(*view)->rect, CGRect(0, 0, 40, 40));
}

TEST_F(UIImageViewTest, AViewWithoutAreaShowsNothing)
{
    view->setImage(makePicture(20, 20));
    for (const auto mode : { UIViewContentMode::ScaleToFill, UIViewContentMode::ScaleAspectFill,
             UIViewContentMode::BottomRight }) {
        view->setContentMode(mode);
        view->setFrame({ 0, 0, 0, 40 });
        EXPECT_FALSE(shown(*view));
    }
}

TEST_F(UIImageViewTest, TwoViewsOfOneTemplateMayHaveTwoTints)
{
    const auto picture = makePicture(40, 40, UIImageRenderingMode::AlwaysTemplate);
    const auto second = addView<UIImageView>({ 0, 100, 80, 40 });
    view->setImage(picture);
    second->setImage(picture);
    view->setTintColor(red);
    second->setTintColor(UIColor::blackColor());
    EXPECT_EQ(shown(*view)->tint, QColor(255, 0, 0));
    EXPECT_EQ(shown(*second)->tint, QColor(0, 0, 0));
}

TEST_F(UIImageViewTest, ATemplateIsFilledWithTheTint)
{
    view->setTintColor(red);
    view->setImage(makePicture(40, 40, UIImageRenderingMode::AlwaysTemplate));
    EXPECT_EQ(shown(*view)->tint, QColor(255, 0, 0));
    view->setImage(makePicture(40, 40));
    EXPECT_FALSE(shown(*view)->tint.isValid());
    view->setTreatsAutomaticAsTemplate(true);
    EXPECT_EQ(shown(*view)->tint, QColor(255, 0, 0));
    view->setImage(makePicture(40, 40, UIImageRenderingMode::AlwaysOriginal));
    EXPECT_FALSE(shown(*view)->tint.isValid());
}

TEST_F(UIImageViewTest, TheTintFollowsTheSuperviewAndFadesInAnAnimation)
{
    view->setImage(makePicture(40, 40, UIImageRenderingMode::AlwaysTemplate));
    window->setTintColor(UIColor::blackColor());
    EXPECT_EQ(shown(*view)->tint, QColor(0, 0, 0));
    UIView::animate(1, 0, optionsOfCurve(UIViewAnimationCurve::Linear), [&] { view->setTintColor(red); });
    scheduler.advance(0.5);
    EXPECT_NEAR(frame.items.back().layer == view->layer()->layerID()
            ? std::get<FrameImage>(frame.items.back().content).tint.redF()
            : 0,
        0.5, 0.02);
    scheduler.advance(0.6);
    EXPECT_EQ(shown(*view)->tint, QColor(255, 0, 0));
}

TEST_F(UIImageViewTest, TakesNoTouches) { EXPECT_EQ(window->hitTest({ 10, 10 }), window.get()); }

} // namespace
