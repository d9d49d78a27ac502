#include "platform/views/UIScreen.h"

#include "platform/graphics/MainScreenScale.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

namespace {

class UIScreenTest : public SceneFixture { };

class SafeAreaView : public UIView {
public:
    using UIView::UIView;
    void safeAreaInsetsDidChange() override { ++changes; }
    void layoutSubviews() override { ++layouts; }
    int changes = 0;
    int layouts = 0;
};

TEST_F(UIScreenTest, TellsItsSizeDensityAndInsets)
{
    const auto& screen = UIScreen::mainScreen();
    EXPECT_EQ(screen->bounds(), CGRect(0, 0, 390, 844));
    EXPECT_EQ(screen->scale(), 2);
    EXPECT_EQ(screen->safeAreaInsets().top, 47);
    EXPECT_EQ(MainScreenScale::get(), 2);
}

TEST_F(UIScreenTest, AWindowFollowsItsRotation)
{
    const auto view = addView<SafeAreaView>({ 0, 0, 10, 10 });
    runFrames();
    view->layouts = 0;
    UIScreen::mainScreen()->setGeometry({ { 844, 390 }, 2, { 0, 47, 21, 47 } });
    EXPECT_EQ(window->frame(), CGRect(0, 0, 844, 390));
    EXPECT_EQ(window->safeAreaInsets().left, 47);
    EXPECT_EQ(view->changes, 1);
    runFrames();
    EXPECT_EQ(view->layouts, 1);
    EXPECT_EQ(frame.size, CGSize(844, 390));
}

TEST_F(UIScreenTest, AnotherDensityReachesEveryLayer)
{
    const auto view = addView({ 0, 0, 10, 10 });
    UIScreen::mainScreen()->setGeometry({ { 390, 844 }, 3, {} });
    EXPECT_EQ(view->layer()->contentsScale(), 3);
    const auto later = make<UIView>();
    EXPECT_EQ(later->layer()->contentsScale(), 3);
    runFrames();
    EXPECT_EQ(frame.scale, 3);
}

TEST_F(UIScreenTest, TheSameGeometryTellsNobody)
{
    const auto view = addView<SafeAreaView>({ 0, 0, 10, 10 });
    UIScreen::mainScreen()->setGeometry(screenGeometry);
    EXPECT_EQ(view->changes, 0);
}

TEST_F(UIScreenTest, ADensityThatIsNoPositiveNumberIsAProgrammingError)
{
    AssertionRecorder recorder;
    UIScreen::mainScreen()->setGeometry({ { 10, 10 }, 0, {} });
    UIScreen::mainScreen()->setGeometry({ { 10, 10 }, std::nan(""), {} });
    EXPECT_EQ(recorder.messages(),
        (std::vector<NSString>(2, QStringLiteral("Invalid parameter not satisfying: scale > 0"))));
    EXPECT_EQ(UIScreen::mainScreen()->scale(), 2);
}

} // namespace
