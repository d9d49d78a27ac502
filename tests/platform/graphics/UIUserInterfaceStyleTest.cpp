#include "platform/graphics/UIUserInterfaceStyle.h"

#include <gtest/gtest.h>

namespace {

class Listener final : public UserInterfaceStyleObserver {
public:
    void userInterfaceStyleDidChange(UIUserInterfaceStyle style) override { heard.push_back(style); }

    std::vector<UIUserInterfaceStyle> heard;
};

class UIUserInterfaceStyleTest : public testing::Test {
protected:
    UIUserInterfaceStyleTest() { CurrentUserInterfaceStyle::addObserver(listener); }
    ~UIUserInterfaceStyleTest() override
    {
        CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light);
        CurrentUserInterfaceStyle::removeObserver(*listener);
    }

    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
};

TEST_F(UIUserInterfaceStyleTest, TellsItsObserversOfAChange)
{
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    EXPECT_EQ(listener->heard, std::vector { UIUserInterfaceStyle::Dark });
    EXPECT_EQ(CurrentUserInterfaceStyle::get(), UIUserInterfaceStyle::Dark);
}

TEST_F(UIUserInterfaceStyleTest, TellsNobodyWhenNothingChanges)
{
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light);
    EXPECT_TRUE(listener->heard.empty());
}

TEST_F(UIUserInterfaceStyleTest, TellsARemovedObserverNothing)
{
    CurrentUserInterfaceStyle::removeObserver(*listener);
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    EXPECT_TRUE(listener->heard.empty());
}

} // namespace
