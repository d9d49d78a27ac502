#include "platform/controls/UILabel.h"
#include "platform/controls/UINavigationBar.h"
#include "platform/controls/UIToolbar.h"
#include "tests/gallery/Gallery.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/UIColor+ORVTheme.h"
#include "theme/UIFont+ORVTheme.h"

namespace {

class BarsGallery : public Gallery {
protected:
    static std::shared_ptr<UIBarButtonItem> item(const char* name)
    {
        return make<UIBarButtonItem>(picture(name), UIBarButtonItemStyle::Plain, Action());
    }
    static std::shared_ptr<UINavigationItem> titled(const char* title)
    {
        const auto navigationItem = make<UINavigationItem>();
        navigationItem->setTitle(QString::fromUtf8(title));
        return navigationItem;
    }
    static std::shared_ptr<UINavigationItem> withItems(const char* title)
    {
        const auto navigationItem = titled(title);
        navigationItem->setLeftBarButtonItems({ item("ov_locateme") });
        navigationItem->setRightBarButtonItems({ item("ov_navbar_list"), item("ov_navbar_map") });
        return navigationItem;
    }
    template <typename Bar = UINavigationBar>
    std::shared_ptr<Bar> addBar(std::shared_ptr<UINavigationItem> top, double y)
    {
        const auto bar = add(make<Bar>(), { 0, y, width, UINavigationBar::height });
        bar->setTopItem(std::move(top));
        return bar;
    }
    static NSTextAttributes themedTitle()
    {
        return { { NSFontAttributeName, orv_oruvaneNavigationBarTitleFont() },
            { NSForegroundColorAttributeName, UIColor::whiteColor() } };
    }
    // The application's look.
    static void giveTheme(UINavigationBar& bar)
    {
        const auto looks = make<UINavigationBarAppearance>();
        looks->configureWithOpaqueBackground();
        looks->setBackgroundColor(orv_oruvaneNavigationBarColor());
        looks->setTitleTextAttributes(themedTitle());
        bar.setStandardAppearance(looks);
        bar.setTintColor(orv_oruvaneNavigationBarItemsColor());
    }
};

TEST_P(BarsGallery, NavigationBars)
{
    // What shines through a translucent bar.
    const auto stripe = add(make<UIView>(), { 0, 60, width, 24 });
    stripe->setBackgroundColor(UIColor::colorWithRed(0.2, 0.7, 0.4, 1));

    addBar(withItems("Plain"), 8);
    addBar(withItems("Translucent"), 60);
    const auto opaque = addBar(titled("Opaque"), 112);
    opaque->setTranslucent(false);
    addBar(withItems("Black"), 164)->setBarStyle(UIBarStyle::Black);
    giveTheme(*addBar(withItems("Records Near By"), 216));
    giveTheme(*addBar(withItems("A title much too long to stand between them"), 268));
    const auto own = addBar(withItems("A colour of its own"), 320);
    giveTheme(*own);
    own->setBarTintColor(UIColor::colorWithRed(0.3, 0.2, 0.6, 1));
    // Below a popup the whole screen is dimmed, and the bar's colour follows it.
    const auto screen = add(make<UIView>(), { 0, 372, width, UINavigationBar::height });
    screen->setTintColor(orv_oruvaneMainColor());
    const auto dimmed = addBar<ORVAutoTintNavigationBar>(withItems("Dimmed"), 0);
    screen->addSubview(dimmed);
    giveTheme(*dimmed);
    screen->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    expectPicture("navigation-bars", 424);
}

TEST_P(BarsGallery, ToolbarsAndTheStatusBar)
{
    UIScreen::mainScreen()->setGeometry({ screenGeometry.size, GetParam().scale, { 47, 0, 34, 0 } });
    giveTheme(*addBar(withItems("Below the Status Bar"), 47));

    const auto plain = add(make<UIToolbar>(), { 0, 108, width, 44 });
    plain->setItems({ item("ov_locateme"), item("ov_navbar_list"), item("ov_navbar_map") });
    const auto coloured = add(make<UIToolbar>(), { 0, 160, width, 44 });
    coloured->setBarTintColor(orv_oruvaneNavigationBarColor());
    coloured->setTintColor(UIColor::whiteColor());
    const auto status = make<UILabel>(CGRect(0, 0, 100, 30));
    status->setAutoresizingMask(UIViewAutoresizing::FlexibleWidth);
    status->setText(QStringLiteral("takes what is left"));
    status->setTextAlignment(NSTextAlignment::Center);
    status->setBackgroundColor(UIColor::colorWithWhite(1, 0.7));
    status->setTextColor(UIColor::blackColor());
    coloured->setItems({ item("ov_locateme"), make<UIBarButtonItem>(status), item("ov_navbar_map") });
    const auto dimmed = add(make<UIToolbar>(), { 0, 212, width, 44 });
    dimmed->setItems({ item("ov_locateme"), item("ov_navbar_list") });
    dimmed->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    expectPicture("toolbars", 264);
}

GALLERY_LOOKS(BarsGallery);

} // namespace
