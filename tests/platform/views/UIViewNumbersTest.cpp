// What views answer to numbers that are none, or huge.
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <gmock/gmock.h>

#include <limits>
#include <optional>

namespace {

using ::testing::ElementsAre;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

QString refused(const char* condition)
{
    return QStringLiteral("Invalid parameter not satisfying: ") + QLatin1String(condition);
}

class UIViewNumbersTest : public SceneFixture {
protected:
    // The view's item in a fresh frame, if it shows anything.
    const FrameItem* item()
    {
        window->layer()->setNeedsFrame();
        runFrames();
        for (const FrameItem& shown : frame.items)
            if (shown.layer == view->layer()->layerID())
                return &shown;
        return nullptr;
    }

    const std::shared_ptr<UIView> view = addView({ 10, 20, 30, 40 });
};

TEST_F(UIViewNumbersTest, GeometryThatIsNotFiniteIsAProgrammingErrorAndChangesNothing)
{
    for (const double bad : { notANumber, infinity, -infinity }) {
        const AssertionRecorder assertions;
        view->setFrame({ 0, 0, bad, 1 });
        view->setFrame({ bad, 0, 1, 1 });
        view->setBounds({ 0, 0, 1, bad });
        view->setCenter({ 0, bad });
        view->setTransform(CGAffineTransform::fromScale(bad, 1));
        view->setAlpha(bad);
        EXPECT_THAT(assertions.messages(),
            ElementsAre(refused("isfinite(frame)"), refused("isfinite(frame)"), refused("isfinite(bounds)"),
                refused("isfinite(center)"), refused("isfinite(transform)"), refused("isfinite(alpha)")));
    }
    EXPECT_EQ(view->frame(), CGRect(10, 20, 30, 40));
    EXPECT_EQ(view->bounds(), CGRect(0, 0, 30, 40));
    EXPECT_TRUE(view->transform().isIdentity());
    EXPECT_EQ(view->alpha(), 1);
}

TEST_F(UIViewNumbersTest, RefusedBoundsResizeNoSubviews)
{
    const auto inner = make<UIView>(CGRect(0, 0, 30, 40));
    inner->setAutoresizingMask(UIViewAutoresizing::FlexibleWidth | UIViewAutoresizing::FlexibleHeight);
    view->addSubview(inner);
    const AssertionRecorder assertions;
    view->setBounds({ 0, 0, infinity, notANumber });
    EXPECT_EQ(assertions.failures().size(), 1U);
    EXPECT_EQ(inner->frame(), CGRect(0, 0, 30, 40));
}

TEST_F(UIViewNumbersTest, AFrameWhoseCentreIsOutOfReachIsRefused)
{
    const AssertionRecorder assertions;
    view->setFrame({ 1.7e308, 0, 1.7e308, 1 });
    EXPECT_THAT(assertions.messages(), ElementsAre(refused("isfinite(frame)")));
    EXPECT_EQ(view->frame(), CGRect(10, 20, 30, 40));
}

TEST_F(UIViewNumbersTest, HugeGeometryIsKeptAndHarmsNoFrame)
{
    view->setBackgroundColor(nullptr);
    view->setFrame({ -1e300, -1e300, 2e300, 2e300 });
    EXPECT_EQ(view->bounds().width(), 2e300);
    view->addSubview(make<UIView>(CGRect(0, 0, 10, 10)));
    item();
    view->setFrame({ 1e300, 1e300, 10, 10 });
    EXPECT_EQ(view->center().x(), 1e300);
    item();
    view->setTransform(CGAffineTransform::fromScale(1e200, 1e200));
    EXPECT_EQ(item(), nullptr);
    EXPECT_EQ(window->hitTest({ 15, 25 }), window.get());
}

TEST_F(UIViewNumbersTest, AnAlphaOutsideItsRangeIsKeptAndShownAsTheNearerEnd)
{
    view->setBackgroundColor(UIColor::blackColor());
    view->setAlpha(3);
    EXPECT_EQ(view->alpha(), 3);
    ASSERT_NE(item(), nullptr);
    EXPECT_EQ(item()->opacity, 1);
    view->setAlpha(-3);
    EXPECT_EQ(view->alpha(), -3);
    EXPECT_EQ(item(), nullptr);
}

TEST_F(UIViewNumbersTest, ADurationThatIsNotFiniteIsAProgrammingErrorAndChangesAtOnce)
{
    for (const double bad : { notANumber, infinity, -infinity }) {
        const AssertionRecorder assertions;
        std::optional<bool> finished;
        view->setAlpha(1);
        UIView::animate(
            bad, [&] { view->setAlpha(0.5); }, [&](bool done) { finished = done; });
        EXPECT_THAT(assertions.messages(), ElementsAre(refused("isfinite(duration)")));
        EXPECT_EQ(view->alpha(), 0.5);
        EXPECT_FALSE(view->layer()->hasAnimations());
        scheduler.runDue();
        EXPECT_EQ(finished, true);
    }
}

TEST_F(UIViewNumbersTest, ADelayThatIsNotFiniteIsAProgrammingErrorAndIsNone)
{
    for (const double bad : { notANumber, infinity, -infinity }) {
        const AssertionRecorder assertions;
        std::optional<bool> finished;
        view->setAlpha(1);
        UIView::animate(
            1, bad, UIViewAnimationOptions::None, [&] { view->setAlpha(0.5); },
            [&](bool done) { finished = done; });
        EXPECT_THAT(assertions.messages(), ElementsAre(refused("isfinite(delay)")));
        scheduler.advance(1.1);
        EXPECT_EQ(finished, true);
    }
}

TEST_F(UIViewNumbersTest, DurationsAndDelaysBelow0CountAs0)
{
    std::optional<bool> finished;
    UIView::animate(
        -1, -5, UIViewAnimationOptions::None, [&] { view->setAlpha(0.5); },
        [&](bool done) { finished = done; });
    EXPECT_FALSE(view->layer()->hasAnimations());
    scheduler.runDue();
    EXPECT_EQ(finished, true);
    UIView::animate(1, -5, UIViewAnimationOptions::None, [&] { view->setAlpha(1); });
    EXPECT_EQ(view->layer()->presentationValues().opacity, 0.5);
}

TEST_F(UIViewNumbersTest, AHugeDurationHoldsTheStartAndMayBeInterrupted)
{
    std::optional<bool> finished;
    UIView::animate(
        1e300, [&] { view->setAlpha(0); }, [&](bool done) { finished = done; });
    scheduler.advance(1);
    EXPECT_EQ(view->layer()->presentationValues().opacity, 1);
    view->layer()->removeAllAnimations();
    scheduler.runDue();
    EXPECT_EQ(finished, false);
}

TEST_F(UIViewNumbersTest, SpringsTakeAnyDampingAndVelocity)
{
    for (const double bad : { notANumber, infinity, -infinity, 1e300, -1.0, 0.0 }) {
        view->setCenter({ 10, 10 });
        UIView::animate(0.4, 0, bad, bad, UIViewAnimationOptions::None, [&] {
            view->setCenter({ 110, 10 });
        });
        scheduler.advance(0.5);
        EXPECT_EQ(view->layer()->presentationValues().position, CGPoint(110, 10));
    }
}

} // namespace
