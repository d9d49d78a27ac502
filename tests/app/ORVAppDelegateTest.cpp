#include "app/ORVAppDelegate.h"

#include "platform/application/UIApplication.h"
#include "platform/controls/UINavigationItem.h"
#include "platform/foundation/ClassRegistry.h"
#include "tests/list/RecordsListFixture.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/UIColor+ORVTheme.h"

namespace {

class ORVAppDelegateTest : public RecordsListFixture {
protected:
    bool launch() { return delegate->applicationDidFinishLaunchingWithOptions(*application, {}); }

    std::shared_ptr<UIApplication> application = make<UIApplication>();
    std::shared_ptr<ORVAppDelegate> delegate = make<ORVAppDelegate>();
};

TEST_F(ORVAppDelegateTest, IsMadeByTheNameOfItsClass)
{
    const auto made = ClassRegistry::makeObject(NSObject::nameOfClass(typeid(ORVAppDelegate)));
    EXPECT_NE(std::dynamic_pointer_cast<ORVAppDelegate>(made), nullptr);
}

TEST_F(ORVAppDelegateTest, OpensABlackWindowInTheMainColour)
{
    ASSERT_TRUE(launch());
    EXPECT_EQ(delegate->window()->frame(), UIScreen::mainScreen()->bounds());
    EXPECT_TRUE(delegate->window()->backgroundColor()->isEqual(UIColor::blackColor().get()));
    EXPECT_TRUE(delegate->window()->tintColor()->isEqual(orv_oruvaneMainColor().get()));
    EXPECT_TRUE(delegate->window()->isKeyWindow());
}

TEST_F(ORVAppDelegateTest, GivesTheListTheStoreAndItsOneLocation)
{
    launch();
    EXPECT_EQ(delegate->listViewController()->userLocation(), delegate->recordsStorage()->fakeUserLocation());
    EXPECT_EQ(delegate->listViewController()->fetchedRecords().size(), 30u);
    EXPECT_EQ(delegate->listViewController()->navigationItem()->title(), QStringLiteral("ORUVANE"));
    EXPECT_EQ(delegate->listViewController()->title(), QStringLiteral("Records List"));
}

TEST_F(ORVAppDelegateTest, ShowsTheFilledListInTheFirstFrame)
{
    launch();
    const FrameList first = delegate->window()->performFrame();
    EXPECT_GT(first.items.size(), 60u); // a dozen rows of five parts
    EXPECT_EQ(executor.global().size(), 0u);
    EXPECT_FALSE(delegate->listViewController()->tableView()->visibleCells().empty());
}

TEST_F(ORVAppDelegateTest, ThemesAnEmptyNavigationControllerToo)
{
    const auto navigation = ORVAppDelegate::themedNavigationController(nullptr);
    EXPECT_TRUE(navigation->viewControllers().empty());
    EXPECT_TRUE(navigation->navigationBar()->isMemberOfClass<ORVAutoTintNavigationBar>());
    EXPECT_FALSE(navigation->navigationBar()->isTranslucent());
    EXPECT_EQ(navigation->navigationBar()->barStyle(), UIBarStyle::Black);
}

TEST_F(ORVAppDelegateTest, ReportsADeviceThatIsNeitherPhoneNorTablet)
{
    UIScreen::mainScreen()->setGeometry({});
    const AssertionRecorder recorder;
    launch();
    ASSERT_EQ(recorder.failures().size(), 1u);
    EXPECT_EQ(recorder.failures()[0].message, QStringLiteral("Wat."));
    EXPECT_EQ(recorder.failures()[0].source, QStringLiteral("ORVAppDelegate"));
}

} // namespace
