#include "platform/application/UIDevice.h"

#include "tests/support/SceneFixture.h"

namespace {

class UIDeviceTest : public SceneFixture {
protected:
    static UIUserInterfaceIdiom idiomOf(double width, double height)
    {
        UIScreen::mainScreen()->setGeometry({ { width, height }, 2, {} });
        return UIDevice::currentDevice()->userInterfaceIdiom();
    }
};

TEST_F(UIDeviceTest, IsATabletFromSixHundredPointsOnTheShorterSide)
{
    EXPECT_EQ(idiomOf(390, 844), UIUserInterfaceIdiom::Phone);
    EXPECT_EQ(idiomOf(844, 390), UIUserInterfaceIdiom::Phone);
    EXPECT_EQ(idiomOf(599.5, 2000), UIUserInterfaceIdiom::Phone);
    EXPECT_EQ(idiomOf(600, 800), UIUserInterfaceIdiom::Pad);
    EXPECT_EQ(idiomOf(1180, 820), UIUserInterfaceIdiom::Pad);
}

TEST_F(UIDeviceTest, IsUnspecifiedWithoutAScreen)
{
    EXPECT_EQ(idiomOf(0, 0), UIUserInterfaceIdiom::Unspecified);
}

TEST_F(UIDeviceTest, TheRawValuesAreTheWrittenOnes)
{
    EXPECT_EQ(static_cast<int>(UIUserInterfaceIdiom::Phone), 0);
    EXPECT_EQ(static_cast<int>(UIUserInterfaceIdiom::Pad), 1);
}

} // namespace
