#include "platform/views/UIView.h"

#include "platform/graphics/CGContext.h"
#include "tests/support/SceneFixture.h"

namespace {

class UIViewTest : public SceneFixture { };

class DrawingView : public UIView {
public:
    using UIView::UIView;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect, CGContext& context) override
    {
        ++drawn;
        lastRect = rect;
        context.fillRect(rect, *UIColor::colorWithRed(1, 0, 0, 1));
    }
    void userInterfaceStyleDidChange() override { ++styleChanges; }

    int drawn = 0;
    int styleChanges = 0;
    CGRect lastRect;
};

class SizedView : public UIView {
public:
    using UIView::UIView;
    void setBounds(const CGRect& bounds) override
    {
        UIView::setBounds(bounds);
        ++boundsSet;
    }
    CGSize sizeThatFits(const CGSize& size) const override { return { size.width() / 2, 33 }; }
    int boundsSet = 0;
};

const FrameItem* itemOf(const FrameList& frame, const UIView& view)
{
    for (const FrameItem& item : frame.items)
        if (item.layer == view.layer()->layerID())
            return &item;
    return nullptr;
}

TEST_F(UIViewTest, APlainViewHasNoSizeAndIsVisible)
{
    const auto view = make<UIView>();
    EXPECT_EQ(view->frame(), CGRect());
    EXPECT_FALSE(view->isHidden());
    EXPECT_EQ(view->alpha(), 1);
    EXPECT_TRUE(view->isUserInteractionEnabled());
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(view->window(), nullptr);
}

TEST_F(UIViewTest, TheFrameFollowsFromBoundsAndCenter)
{
    const auto view = make<UIView>(CGRect(10, 20, 100, 50));
    EXPECT_EQ(view->bounds(), CGRect(0, 0, 100, 50));
    EXPECT_EQ(view->center(), CGPoint(60, 45));
    view->setBounds({ 0, 0, 20, 10 });
    EXPECT_EQ(view->frame(), CGRect(50, 40, 20, 10));
    view->setCenter({ 0, 0 });
    EXPECT_EQ(view->frame(), CGRect(-10, -5, 20, 10));
}

TEST_F(UIViewTest, SettingTheFrameKeepsTheBoundsOrigin)
{
    const auto view = make<UIView>(CGRect(0, 0, 100, 50));
    view->setBounds({ 0, 300, 100, 50 });
    view->setFrame({ 5, 5, 80, 40 });
    EXPECT_EQ(view->bounds(), CGRect(0, 300, 80, 40));
    EXPECT_EQ(view->frame(), CGRect(5, 5, 80, 40));
}

TEST_F(UIViewTest, ASubclassSeesEveryNewSizeInSetBounds)
{
    const auto view = make<SizedView>();
    view->setFrame({ 1, 2, 3, 4 });
    view->setBounds({ 0, 0, 5, 6 });
    EXPECT_EQ(view->boundsSet, 2);
}

TEST_F(UIViewTest, SizeToFitKeepsTheTopLeftCorner)
{
    const auto view = make<SizedView>(CGRect(10, 20, 100, 100));
    view->sizeToFit();
    EXPECT_EQ(view->frame(), CGRect(10, 20, 50, 33));
}

TEST_F(UIViewTest, APlainViewFitsAsItIsAndHasNoIntrinsicSize)
{
    const auto view = make<UIView>(CGRect(0, 0, 12, 34));
    EXPECT_EQ(view->sizeThatFits({ 5, 5 }), CGSize(12, 34));
    EXPECT_EQ(view->intrinsicContentSize(), CGSize(UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric));
}

TEST_F(UIViewTest, PointsConvertBetweenViewsThroughScrolledAndScaledOnes)
{
    const auto outer = addView({ 10, 20, 200, 200 });
    outer->setBounds({ 0, 50, 200, 200 });
    const auto inner = make<UIView>(CGRect(30, 60, 50, 50));
    outer->addSubview(inner);
    EXPECT_EQ(inner->convertPointToView({ 1, 2 }, window.get()), CGPoint(41, 32));
    EXPECT_EQ(inner->convertPointToView({ 1, 2 }, nullptr), CGPoint(41, 32));
    EXPECT_EQ(inner->convertPointFromView({ 41, 32 }, window.get()), CGPoint(1, 2));
    inner->setTransform(CGAffineTransform::fromScale(2, 2));
    EXPECT_EQ(inner->convertPointToView({ 25, 25 }, outer.get()), CGPoint(55, 85));
    EXPECT_EQ(inner->convertRectToView({ 0, 0, 50, 50 }, outer.get()), CGRect(5, 35, 100, 100));
    EXPECT_EQ(outer->convertRectFromView({ 0, 0, 50, 50 }, inner.get()), CGRect(5, 35, 100, 100));
}

TEST_F(UIViewTest, SubviewsFollowANewSizeByTheirMasks)
{
    const auto outer = make<UIView>(CGRect(0, 0, 100, 100));
    const auto filling = make<UIView>(CGRect(0, 0, 100, 100));
    filling->setAutoresizingMask(UIViewAutoresizing::FlexibleWidth | UIViewAutoresizing::FlexibleHeight);
    const auto fixed = make<UIView>(CGRect(10, 10, 20, 20));
    outer->addSubview(filling);
    outer->addSubview(fixed);
    outer->setFrame({ 0, 0, 300, 50 });
    EXPECT_EQ(filling->frame(), CGRect(0, 0, 300, 50));
    EXPECT_EQ(fixed->frame(), CGRect(10, 10, 20, 20));
}

TEST_F(UIViewTest, TheRawValuesOfTheMaskAreTheWrittenOnes)
{
    EXPECT_EQ(static_cast<unsigned>(UIViewAutoresizing::FlexibleWidth), 2u);
    EXPECT_EQ(static_cast<unsigned>(UIViewAutoresizing::FlexibleHeight), 16u);
    EXPECT_EQ(static_cast<int>(UIViewTintAdjustmentMode::Dimmed), 2);
}

TEST_F(UIViewTest, LooksReachTheFrame)
{
    const auto view = addView({ 10, 10, 50, 50 });
    view->setBackgroundColor(UIColor::colorWithRed(0, 1, 0, 1));
    view->setAlpha(0.5);
    view->setClipsToBounds(true);
    runFrames();
    const FrameItem* item = itemOf(frame, *view);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->backgroundColor, QColor(0, 255, 0));
    EXPECT_EQ(item->opacity, 0.5);
    EXPECT_TRUE(item->clipsToBounds);
    view->setHidden(true);
    runFrames();
    EXPECT_FALSE(itemOf(frame, *view));
}

TEST_F(UIViewTest, DrawsOnceAndAgainOnlyWhenAskedOrResized)
{
    const auto view = addView<DrawingView>({ 10, 10, 50, 50 });
    view->setNeedsDisplay();
    runFrames();
    EXPECT_EQ(view->drawn, 1);
    EXPECT_EQ(view->lastRect, CGRect(0, 0, 50, 50));
    view->setCenter({ 200, 200 });
    view->setAlpha(0.3);
    runFrames();
    EXPECT_EQ(view->drawn, 1);
    view->setBounds({ 0, 0, 60, 50 });
    runFrames();
    EXPECT_EQ(view->drawn, 2);
    view->setNeedsDisplay();
    view->setNeedsDisplay();
    runFrames();
    EXPECT_EQ(view->drawn, 3);
}

TEST_F(UIViewTest, DrawsInTheScreensDensity)
{
    const auto view = addView<DrawingView>({ 10, 10, 50, 50 });
    view->setNeedsDisplay();
    runFrames();
    const FrameItem* item = itemOf(frame, *view);
    ASSERT_TRUE(item);
    const auto* picture = std::get_if<FrameImage>(&item->content);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->image.size(), QSize(100, 100));
    EXPECT_EQ(picture->image.pixelColor(50, 50), QColor(255, 0, 0));
}

TEST_F(UIViewTest, EverythingThatDrawsIsDrawnAgainForTheOtherAppearance)
{
    const auto view = addView<DrawingView>({ 10, 10, 50, 50 });
    view->setNeedsDisplay();
    runFrames();
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    EXPECT_TRUE(scheduler.isFrameRequested());
    runFrames();
    EXPECT_EQ(view->drawn, 2);
    EXPECT_EQ(view->styleChanges, 1);
}

TEST_F(UIViewTest, ADynamicBackgroundFollowsTheAppearance)
{
    const auto view = addView({ 10, 10, 50, 50 });
    view->setBackgroundColor(UIColor::colorWithLight(UIColor::whiteColor(), UIColor::blackColor()));
    runFrames();
    EXPECT_EQ(itemOf(frame, *view)->backgroundColor, QColor(255, 255, 255));
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    runFrames();
    EXPECT_EQ(itemOf(frame, *view)->backgroundColor, QColor(0, 0, 0));
}

TEST_F(UIViewTest, TheSafeAreaIsWhatReachesIntoTheView)
{
    EXPECT_EQ(window->safeAreaInsets(), (UIEdgeInsets { 47, 0, 34, 0 }));
    const auto lower = addView({ 0, 20, 390, 824 });
    EXPECT_EQ(lower->safeAreaInsets(), (UIEdgeInsets { 27, 0, 34, 0 }));
    const auto middle = make<UIView>(CGRect(0, 40, 390, 100));
    lower->addSubview(middle);
    EXPECT_EQ(middle->safeAreaInsets(), UIEdgeInsets());
    middle->removeFromSuperview();
    EXPECT_EQ(middle->safeAreaInsets(), UIEdgeInsets());
}

TEST_F(UIViewTest, ZeroSizesDrawNothingAndFailNothing)
{
    const auto view = addView<DrawingView>({ 10, 10, 0, 0 });
    view->setBackgroundColor(UIColor::blackColor());
    view->setNeedsDisplay();
    runFrames();
    EXPECT_EQ(view->drawn, 0);
}

TEST_F(UIViewTest, PrintsItsTree)
{
    const auto outer = make<UIView>(CGRect(1, 2, 30, 40));
    const auto inner = make<UIView>(CGRect(0, 0, 5, 5));
    inner->setTag(7);
    inner->setHidden(true);
    const auto innermost = make<UIView>(CGRect(0, 0, 1, 1));
    innermost->setAlpha(0.5);
    outer->addSubview(inner);
    inner->addSubview(innermost);
    EXPECT_EQ(outer->treeDescription().toStdString(),
        "<UIView; frame = (1 2; 30 40)>\n"
        "   | <UIView; frame = (0 0; 5 5); hidden; tag = 7>\n"
        "   |    | <UIView; frame = (0 0; 1 1); alpha = 0.5>\n");
}

} // namespace
