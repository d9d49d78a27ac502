// Constraints inside view animations: what a layout moves in the block, moves there over time.
#include "platform/layers/CALayerValues.h"
#include "tests/platform/layout/LayoutFixture.h"

namespace {

class LayoutAnimationTest : public LayoutFixture {
protected:
    std::shared_ptr<UIView> knob = addTo(*container);
    std::shared_ptr<UIView> bar = addTo(*container);
    std::shared_ptr<NSLayoutConstraint> left;

    LayoutAnimationTest()
    {
        place(*knob, *container, { 0, 0, 20, 20 });
        left = container->constraints()[0];
        activate(bar->leftAnchor().constraintEqualToAnchor(container->leftAnchor()));
        activate(bar->rightAnchor().constraintEqualToAnchor(knob->centerXAnchor()));
        activate(bar->heightAnchor().constraintEqualToConstant(20));
        runFrames();
    }
    double shownKnob() const { return knob->layer()->presentationValues().position.x(); }
    double shownBarEnd() const
    {
        const auto shown = bar->layer()->presentationValues();
        return shown.position.x() + shown.bounds.width() / 2;
    }
};

TEST_F(LayoutAnimationTest, ViewsGlideToTheirNewFramesTogether)
{
    left->setConstant(100);
    UIView::animate(1, 0, optionsOfCurve(UIViewAnimationCurve::Linear), [&] { container->layoutIfNeeded(); });
    EXPECT_EQ(knob->center().x(), 110);
    for (const double time : { 0.0, 0.25, 0.5, 0.75, 1.0 }) {
        EXPECT_NEAR(shownKnob(), 10 + 100 * time, 1e-9) << time;
        EXPECT_NEAR(shownBarEnd(), shownKnob(), 1e-9) << time;
        scheduler.advance(0.25);
    }
}

TEST_F(LayoutAnimationTest, WithoutALayoutInTheBlockNothingGlides)
{
    UIView::animate(1, [&] { left->setConstant(100); });
    runFrames();
    EXPECT_EQ(shownKnob(), 110);
}

TEST_F(LayoutAnimationTest, ASecondMoveStartsFromWhatIsShown)
{
    const auto options
        = optionsOfCurve(UIViewAnimationCurve::Linear) | UIViewAnimationOptions::BeginFromCurrentState;
    left->setConstant(100);
    UIView::animate(1, 0, options, [&] { container->layoutIfNeeded(); });
    scheduler.advance(0.5);
    EXPECT_NEAR(shownKnob(), 60, 1e-9);
    left->setConstant(0);
    UIView::animate(1, 0, options, [&] { container->layoutIfNeeded(); });
    for (const double time : { 0.0, 0.25, 0.5, 0.75, 1.0 }) {
        EXPECT_NEAR(shownKnob(), 60 - 50 * time, 1e-9) << time;
        EXPECT_NEAR(shownBarEnd(), shownKnob(), 1e-9) << time;
        scheduler.advance(0.25);
    }
}

TEST_F(LayoutAnimationTest, AViewTakenOutInFlightEndsItsAnimation)
{
    std::vector<bool> ends;
    left->setConstant(100);
    UIView::animate(
        1, [&] { container->layoutIfNeeded(); }, [&](bool finished) { ends.push_back(finished); });
    scheduler.advance(0.5);
    knob->removeFromSuperview();
    bar->removeFromSuperview();
    scheduler.advance(1);
    EXPECT_EQ(ends, std::vector { false });
}

} // namespace
