#include "platform/views/ViewInsets.h"

#include "platform/layout/NSLayoutConstraint.h"
#include "platform/layout/UILayoutGuide.h"
#include "tests/support/SceneFixture.h"

#include <random>

namespace {

class Following : public UIView {
public:
    using UIView::UIView;
    void init() override
    {
        UIView::init();
        followSafeArea();
    }
    void safeAreaInsetsDidChange() override { told.push_back(safeAreaInsets()); }
    std::vector<UIEdgeInsets> told;
};

// The screen is 390 by 844 points; 47 at its top and 34 at its bottom are not safe.
class ViewInsetsTest : public SceneFixture {
protected:
    std::shared_ptr<UIView> outer = addView({ 0, 0, 390, 844 });
};

TEST_F(ViewInsetsTest, AreWhatReachesIntoTheView)
{
    const struct {
        CGRect frame;
        UIEdgeInsets insets;
        const char* what;
    } cases[] = {
        { { 0, 0, 390, 844 }, { 47, 0, 34, 0 }, "the whole screen" },
        { { 0, 100, 390, 600 }, {}, "between the bars" },
        { { 10, 20, 100, 100 }, { 27, 0, 0, 0 }, "half below the notch" },
        { { 0, 800, 390, 44 }, { 0, 0, 34, 0 }, "a bar at the bottom" },
        { { 0, 10, 390, 20 }, { 20, 0, 0, 0 }, "all below the notch: no more than there is of it" },
        { { 0, 820, 390, 10 }, { 0, 0, 10, 0 }, "all below the home indicator" },
        { { 0, -10, 390, 100 }, { 57, 0, 0, 0 }, "a part of it above the screen" },
        { { 0, 400, 390, 844 }, { 0, 0, 434, 0 }, "a part of it below the screen" },
        { { 0, 844, 390, 844 }, {}, "a card that waits below the screen" },
        { { 0, 2000, 390, 844 }, {}, "far below the screen" },
        { { 0, -844, 390, 844 }, {}, "right above the screen" },
        { { 0, -900, 390, 50 }, {}, "above the screen" },
        { { 390, 0, 390, 844 }, { 47, 0, 34, 0 }, "beside the screen" },
        { { -400, 0, 390, 844 }, { 47, 0, 34, 0 }, "on the other side" },
        { { 0, 0, 390, 0 }, {}, "nothing" },
        { { 0, 0, 0, 844 }, { 47, 0, 34, 0 }, "without a width" },
    };
    for (const auto& [place, insets, what] : cases) {
        const auto view = make<UIView>(place);
        outer->addSubview(view);
        EXPECT_EQ(view->safeAreaInsets(), insets) << what;
        view->removeFromSuperview();
        EXPECT_EQ(view->safeAreaInsets(), UIEdgeInsets()) << "outside of a window nothing covers it";
    }
}

TEST_F(ViewInsetsTest, AViewThatReachesOutOfAnotherIsMeasuredByTheScreenAndNotByThat)
{
    outer->setFrame({ 0, 0, 100, 20 });
    const auto inner = make<UIView>(CGRect(0, 0, 100, 100));
    outer->addSubview(inner);
    EXPECT_EQ(outer->safeAreaInsets(), (UIEdgeInsets { 20, 0, 0, 0 }));
    EXPECT_EQ(inner->safeAreaInsets(), (UIEdgeInsets { 47, 0, 0, 0 }));
}

TEST_F(ViewInsetsTest, AreInTheViewsOwnUnitsAndDirections)
{
    const auto view = make<UIView>(CGRect(0, 0, 390, 844));
    outer->addSubview(view);
    view->setTransform(CGAffineTransform::fromScale(0.5, 0.5)); // now from 211 to 633
    EXPECT_EQ(view->safeAreaInsets(), UIEdgeInsets());
    view->setCenter({ 195, 211 });
    EXPECT_EQ(view->safeAreaInsets(), (UIEdgeInsets { 94, 0, 0, 0 }));
    view->setTransform(CGAffineTransform().rotate(180));
    view->setCenter({ 195, 422 });
    EXPECT_NEAR(view->safeAreaInsets().top, 34, 1e-9);
    EXPECT_NEAR(view->safeAreaInsets().bottom, 47, 1e-9);
}

// Against rectangles on the screen, which know nothing of views inside views.
TEST_F(ViewInsetsTest, AreNeverNegativeNorLargerThanTheViewWhereverItIs)
{
    std::mt19937 random(7);
    const auto number = [&](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    for (int round = 0; round < 2000; ++round) {
        const auto middle
            = make<UIView>(CGRect(number(-500, 500), number(-900, 900), number(0, 500), number(0, 900)));
        const auto view
            = make<UIView>(CGRect(number(-500, 500), number(-900, 900), number(0, 500), number(0, 900)));
        middle->setBounds({ CGPoint(number(-200, 200), number(-200, 200)), middle->bounds().size() });
        outer->addSubview(middle);
        middle->addSubview(view);
        const CGRect place = view->frame().translated(middle->frame().topLeft() - middle->bounds().topLeft());
        const auto share = [](double begin, double end, double unsafe) {
            return end <= 0 ? 0 : std::clamp(unsafe - begin, 0.0, end - begin);
        };
        const UIEdgeInsets expected { share(place.top(), place.bottom(), 47),
            share(place.left(), place.right(), 0), share(844 - place.bottom(), 844 - place.top(), 34),
            share(390 - place.right(), 390 - place.left(), 0) };
        ASSERT_EQ(view->safeAreaInsets(), expected) << round;
        middle->removeFromSuperview();
    }
}

// --- Followers -------------------------------------------------------------------------------------------

TEST_F(ViewInsetsTest, WhoFollowsThemIsToldOfEveryWayInWhichTheyChange)
{
    const auto view = make<Following>(CGRect(0, 0, 390, 100));
    const auto scrolled = make<UIView>(CGRect(0, 0, 390, 400));
    const auto last = [&] { return view->told.empty() ? UIEdgeInsets { -1, 0, 0, 0 } : view->told.back(); };
    scrolled->addSubview(view);
    outer->addSubview(scrolled);
    EXPECT_EQ(last(), (UIEdgeInsets { 47, 0, 0, 0 })) << "added, in a view around it";
    view->setCenter({ 195, 80 });
    EXPECT_EQ(last(), (UIEdgeInsets { 17, 0, 0, 0 })) << "moved, not resized";
    scrolled->setCenter({ 195, 210 });
    EXPECT_EQ(last(), (UIEdgeInsets { 7, 0, 0, 0 })) << "a view around it moved";
    scrolled->setBounds({ 0, 20, 390, 400 });
    EXPECT_EQ(last(), (UIEdgeInsets { 27, 0, 0, 0 })) << "a view around it scrolled";
    scrolled->setTransform(CGAffineTransform::fromTranslate(0, -5));
    EXPECT_EQ(last(), (UIEdgeInsets { 32, 0, 0, 0 })) << "a view around it shifted by a transform";
    UIScreen::mainScreen()->setGeometry({ { 390, 844 }, 2, { 50, 0, 34, 0 } });
    EXPECT_EQ(last(), (UIEdgeInsets { 35, 0, 0, 0 })) << "another screen";
    scrolled->removeFromSuperview();
    EXPECT_EQ(last(), UIEdgeInsets()) << "out of the window";
    view->told.clear();
    outer->addSubview(make<UIView>(CGRect(0, 0, 5, 5)));
    scrolled->setCenter({ 1, 1 });
    EXPECT_TRUE(view->told.empty()) << "nothing is said while nothing changes";
}

TEST_F(ViewInsetsTest, AGuideFollowsAViewThatIsMovedUnderTheNotch)
{
    outer->setFrame({ 0, 100, 390, 200 });
    EXPECT_EQ(outer->safeAreaLayoutGuide().frame(), CGRect(0, 0, 390, 200));
    runFrames();
    outer->setCenter({ 195, 100 });
    EXPECT_EQ(outer->safeAreaLayoutGuide().frame(), CGRect(0, 47, 390, 153));
    const auto content = make<UIView>();
    content->setTranslatesAutoresizingMaskIntoConstraints(false);
    outer->addSubview(content);
    content->topAnchor().constraintEqualToAnchor(outer->safeAreaLayoutGuide().topAnchor())->setActive(true);
    runFrames();
    EXPECT_EQ(content->frame().top(), 47);
    outer->setCenter({ 195, 120 });
    runFrames();
    EXPECT_EQ(content->frame().top(), 27);
}

TEST_F(ViewInsetsTest, AViewMayGoFromInsideTheMessage)
{
    class Leaving : public Following {
    public:
        using Following::Following;
        void safeAreaInsetsDidChange() override { removeFromSuperview(); }
    };
    auto leaving = make<Leaving>(CGRect(0, 100, 390, 100));
    const std::weak_ptr<Leaving> watched = leaving;
    outer->addSubview(leaving);
    UIView* const raw = leaving.get();
    leaving = nullptr;
    raw->setCenter({ 195, 50 });
    EXPECT_TRUE(watched.expired());
}

TEST_F(ViewInsetsTest, MarginsThatPreserveTheSuperviewsCountTheSafeAreaOnce)
{
    const auto inner = make<UIView>(CGRect(0, 0, 390, 844));
    outer->addSubview(inner);
    inner->setPreservesSuperviewLayoutMargins(true);
    EXPECT_EQ(outer->layoutMargins(), (UIEdgeInsets { 55, 8, 42, 8 }));
    EXPECT_EQ(inner->layoutMargins(), (UIEdgeInsets { 55, 8, 42, 8 }));
    outer->setLayoutMargins({ 20, 20, 20, 20 });
    EXPECT_EQ(inner->layoutMargins(), (UIEdgeInsets { 67, 20, 54, 20 }));
}

} // namespace
