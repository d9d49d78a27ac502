// A screen that dims: whatever is in the tint shifts at one time by one share of its way.
//
// Colours are mixed as light, so each pixel of a picture on the way is a mix of the same pixel before and
// after, whatever draws it: a ring, a picture, a title, a bar. Only where one dimming thing lies on another
// is it a little off.
#include "platform/controllers/UINavigationController.h"
#include "platform/controls/UIButton.h"
#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIImage.h"
#include "platform/host/FramePainter.h"
#include "platform/layers/CAMotionGroup.h"
#include "tests/list/RecordsListFixture.h"
#include "tests/support/PictureComparison.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/UIColor+ORVTheme.h"

namespace {

QImage mixOf(const QImage& first, const QImage& second, double share)
{
    const auto mixed = [share](int from, int to) { return qRound(from + (to - from) * share); };
    QImage result(first.size(), QImage::Format_RGB32);
    for (int y = 0; y < first.height(); ++y)
        for (int x = 0; x < first.width(); ++x) {
            const QRgb from = first.pixel(x, y);
            const QRgb to = second.pixel(x, y);
            result.setPixel(x, y,
                qRgb(mixed(qRed(from), qRed(to)), mixed(qGreen(from), qGreen(to)),
                    mixed(qBlue(from), qBlue(to))));
        }
    return result;
}

class DimmingTest : public RecordsListFixture, public ::testing::WithParamInterface<UIUserInterfaceStyle> {
protected:
    // The list with a half played row that is open, under a bar with an item; a title in the tint.
    DimmingTest()
    {
        UIScreen::mainScreen()->setGeometry({ { 390, 300 }, 1, { 20, 0, 0, 0 } });
        CurrentUserInterfaceStyle::set(GetParam());
        window->setTintColor(orv_oruvaneMainColor());
        controller->setUserLocation(storage->fakeUserLocation());
        controller->updateRecordsIfNecessary();
        const auto navigation = make<UINavigationController>([] { return make<ORVAutoTintNavigationBar>(); });
        navigation->navigationBar()->setTranslucent(false);
        navigation->navigationBar()->setBarStyle(UIBarStyle::Black);
        controller->navigationItem()->setTitle(QStringLiteral("ORUVANE"));
        const auto map = UIImage::imageNamed(QStringLiteral("ov_navbar_map"));
        controller->navigationItem()->setRightBarButtonItems(
            { make<UIBarButtonItem>(map, UIBarButtonItemStyle::Plain, Action()) });
        navigation->setViewControllers({ controller });
        window->setRootViewController(navigation);
        const auto button = make<UIButton>(UIButtonType::System);
        button->setTitle(QStringLiteral("A title in the tint"), UIControlState::Normal);
        button->setFrame({ 20, 250, 300, 40 });
        window->addSubview(button);
        runFrames();
        executor.runAll();
        tapButton(1);
        scheduler.advance(2);
        tapButton(1);
        scheduler.advance(3);
        plain = shown();
        window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
        scheduler.advance(1);
        dimmed = shown();
        window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Automatic);
        scheduler.advance(1);
    }
    void move(UIViewTintAdjustmentMode mode)
    {
        UIView::animate(0.4, [&] { window->setTintAdjustmentMode(mode); });
    }
    void dim() { move(UIViewTintAdjustmentMode::Dimmed); }
    void undim() { move(UIViewTintAdjustmentMode::Automatic); }
    // The share of the way after so many of its 0.4 s.
    static double after(double seconds)
    {
        return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut)
            ->valueAt(seconds / 0.4);
    }
    // The picture of this very moment.
    QImage shown()
    {
        window->layer()->setNeedsFrame();
        runFrames();
        return FramePainter(frame).paintScreen().convertToFormat(QImage::Format_RGB32);
    }
    void expectMix(double share, const char* when)
    {
        const PictureTolerance oneOnAnother { .channel = 12 };
        EXPECT_TRUE(picturesMatch(shown(), mixOf(plain, dimmed, share), oneOnAnother, when))
            << when << ", share " << share;
    }

    QImage plain;
    QImage dimmed;
};

TEST_P(DimmingTest, InterruptedAndReversedItStaysOneMotion)
{
    ASSERT_GT(differenceOf(plain, dimmed, 40).pixels, 2000);
    for (const double moment : { 0.05, 0.19, 0.37 }) {
        dim();
        scheduler.advance(moment);
        const double there = after(moment);
        expectMix(there, "dimming");
        undim();
        expectMix(there, "reversed");
        scheduler.advance(0.2);
        const double back = there * (1 - after(0.2));
        expectMix(back, "on the way back");
        dim();
        scheduler.advance(0.1);
        expectMix(back + (1 - back) * after(0.1), "reversed again");
        undim();
        scheduler.advance(0.4);
        EXPECT_TRUE(picturesMatch(shown(), plain, {}, "at rest"));
    }
}

TEST_P(DimmingTest, HeldItStandsAtOneShareAndGoesBackWhole)
{
    const auto group = make<CAMotionGroup>();
    {
        const CAMotionGroup::Collection collection(group);
        dim();
    }
    for (const double fraction : { 0.3, 1.0, 0.6, 0.0 }) {
        group->setFraction(fraction);
        scheduler.advance(0.3);
        expectMix(after(0.4 * fraction), "held");
    }
    group->setFraction(0.8);
    group->cancel();
    scheduler.advance(1);
    EXPECT_TRUE(picturesMatch(shown(), plain, {}, "cancelled"));
    group->settle(CAMotionGroup::Outcome::TakenBack);
    EXPECT_TRUE(picturesMatch(shown(), plain, {}, "settled"));
}

INSTANTIATE_TEST_SUITE_P(
    Styles, DimmingTest, ::testing::Values(UIUserInterfaceStyle::Light, UIUserInterfaceStyle::Dark));

} // namespace
