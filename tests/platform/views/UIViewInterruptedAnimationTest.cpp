// A motion that another one interrupts: what is on the screen at that moment stays, and the new motion goes
// on from there.
#include "platform/graphics/UIColor.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"

#include <array>
#include <functional>

namespace {

// One property of a view, and three values of it: where it is, where it is sent, where it is sent next.
struct Property {
    const char* name;
    std::function<void(UIView&, int value)> set;
};
void PrintTo(const Property& property, std::ostream* out) { *out << property.name; }

double length(int value) { return std::array { 40.0, 120.0, 75.0 }.at(static_cast<std::size_t>(value)); }
double share(int value) { return std::array { 1.0, 0.1, 0.6 }.at(static_cast<std::size_t>(value)); }
std::shared_ptr<UIColor> color(int value)
{
    return UIColor::colorWithRed(share(value), 1 - share(value), share(value) / 2, share(value));
}

CGAffineTransform turned(int value)
{
    return CGAffineTransform().rotate(length(value)).scale(share(value), 1 + share(value));
}

const Property properties[] = {
    { "Frame",
        [](UIView& view, int value) {
            view.setFrame({ length(value), 2 * length(value), length(value), 3 * length(value) });
        } },
    { "Center",
        [](UIView& view, int value) {
            view.setCenter({ length(value), 2 * length(value) });
        } },
    { "BoundsSize",
        [](UIView& view, int value) {
            view.setBounds({ 0, 0, length(value), 2 * length(value) });
        } },
    { "BoundsOrigin",
        [](UIView& view, int value) {
            view.setBounds({ length(value), 2 * length(value), 40, 40 });
        } },
    { "Transform", [](UIView& view, int value) { view.setTransform(turned(value)); } },
    { "Alpha", [](UIView& view, int value) { view.setAlpha(share(value)); } },
    { "BackgroundColor", [](UIView& view, int value) { view.setBackgroundColor(color(value)); } },
    { "TintColor", [](UIView& view, int value) { view.setTintColor(color(value)); } },
    { "TintAdjustmentMode",
        [](UIView& view, int value) {
            view.setTintAdjustmentMode(
                value == 1 ? UIViewTintAdjustmentMode::Dimmed : UIViewTintAdjustmentMode::Normal);
        } },
    { "CornerRadius", [](UIView& view, int value) { view.layer()->setCornerRadius(length(value) / 10); } },
    { "AnchorPoint",
        [](UIView& view, int value) {
            view.layer()->setAnchorPoint({ share(value), 1 - share(value) });
        } },
};

// Shows a picture in its tint.
class StencilView : public UIView {
public:
    using UIView::UIView;
    void tintColorDidChange() override { layer()->setContentsTintColor(tintColor()); }
};

class UIViewInterruptedAnimationTest : public SceneFixture, public ::testing::WithParamInterface<Property> {
protected:
    UIViewInterruptedAnimationTest()
    {
        view->layer()->setContents(plainImage({ 8, 8 }, Qt::black));
        view->setBackgroundColor(color(0));
        view->setTintColor(color(0));
        view->addSubview(make<UIView>(CGRect(10, 10, 10, 10)));
        view->subviews().front()->setBackgroundColor(UIColor::blackColor());
        runFrames();
    }
    void send(int value, double duration = 0.4)
    {
        UIView::animate(duration, [&] { GetParam().set(*view, value); });
    }
    // The frame of this very moment.
    FrameList shown()
    {
        window->layer()->setNeedsFrame();
        runFrames();
        return frame;
    }

    const std::shared_ptr<StencilView> view = addView<StencilView>({ 40, 80, 40, 40 });
};

TEST_P(UIViewInterruptedAnimationTest, ShowsNoJumpAtAnyMoment)
{
    for (int moment = 0; moment < 10; ++moment) {
        UIView::performWithoutAnimation([&] {
            view->layer()->removeAllAnimations();
            GetParam().set(*view, 0);
        });
        scheduler.advance(1);
        const FrameList atRest = shown();
        send(1);
        scheduler.advance(0.02 + 0.04 * moment);
        const FrameList before = shown();
        EXPECT_NE(before, atRest) << "it moves, moment " << moment;
        send(2);
        EXPECT_EQ(shown(), before) << "moment " << moment;
        scheduler.advance(0.013);
        send(0, 0.1);
        const FrameList again = shown();
        send(1, 3);
        EXPECT_EQ(shown(), again) << "interrupted twice, moment " << moment;
    }
}

INSTANTIATE_TEST_SUITE_P(AllProperties, UIViewInterruptedAnimationTest, ::testing::ValuesIn(properties),
    [](const auto& property) { return property.param.name; });

} // namespace
