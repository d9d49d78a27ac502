#include "platform/controls/UILabel.h"
#include "platform/foundation/ClassRegistry.h"
#include "tests/support/SceneFixture.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/ORVAutoTintToolbar.h"
#include "theme/UIColor+ORVTheme.h"
#include "theme/UIFont+ORVTheme.h"

namespace {

// Nothing here names the load hooks: that they run proves that they are linked.
class BarThemeTest : public SceneFixture {
protected:
    BarThemeTest() { ClassRegistry::runLoadHooks(); }

    static const UILabel& titleLabel(const UIView& bar)
    {
        for (const auto& view : bar.subviews())
            if (const auto* label = dynamic_cast<const UILabel*>(view.get()))
                return *label;
        throw std::logic_error("a bar without a label");
    }
    static bool isWhite(const std::shared_ptr<UIColor>& color)
    {
        return color && color->getWhite() == WhiteAlpha { 1, 1 };
    }
    static bool hasMainColor(const std::shared_ptr<UIColor>& color)
    {
        return color && color->isEqual(orv_oruvaneMainColor().get());
    }
    static void expectThemedTitle(const NSTextAttributes& attributes)
    {
        EXPECT_EQ(attributes.size(), 2U);
        const auto font = fontOfAttributes(attributes);
        EXPECT_TRUE(font && font->isEqual(orv_oruvaneNavigationBarTitleFont().get()));
        EXPECT_TRUE(isWhite(foregroundColorOfAttributes(attributes)));
    }
};

TEST_F(BarThemeTest, ANavigationBarInAWindowHasWhiteItems)
{
    EXPECT_TRUE(isWhite(addView<UINavigationBar>({ 0, 47, 390, 44 })->tintColor()));
}

TEST_F(BarThemeTest, ANavigationBarInAWindowHasAWhiteCondensedBoldTitle)
{
    const auto bar = addView<UINavigationBar>({ 0, 47, 390, 44 });
    EXPECT_EQ(titleLabel(*bar).font()->fontName(), QStringLiteral("AvenirNextCondensed-Bold"));
    EXPECT_EQ(titleLabel(*bar).font()->pointSize(), 22);
    EXPECT_TRUE(isWhite(titleLabel(*bar).textColor()));
    expectThemedTitle(bar->titleTextAttributes());
}

TEST_F(BarThemeTest, ANavigationBarInAWindowIsOpaqueInTheMainColourWithContentUnderneathToo)
{
    const auto bar = addView<UINavigationBar>({ 0, 47, 390, 44 });
    for (const bool underneath : { false, true }) {
        bar->setContentUnderneath(underneath);
        EXPECT_TRUE(hasMainColor(bar->subviews().front()->backgroundColor()));
        EXPECT_EQ(titleLabel(*bar).font()->pointSize(), 22);
    }
    for (const auto& appearance : { bar->standardAppearance(), bar->scrollEdgeAppearance() }) {
        ASSERT_TRUE(appearance);
        EXPECT_TRUE(hasMainColor(appearance->backgroundColor()));
        expectThemedTitle(appearance->titleTextAttributes());
    }
}

TEST_F(BarThemeTest, AToolbarInAWindowHasWhiteItems)
{
    EXPECT_TRUE(isWhite(addView<UIToolbar>({ 0, 47, 390, 44 })->tintColor()));
}

TEST_F(BarThemeTest, ANavigationBarThatHasItsOwnTintKeepsIt)
{
    const auto bar = make<UINavigationBar>();
    bar->setTintColor(UIColor::blackColor());
    window->addSubview(bar);
    EXPECT_FALSE(isWhite(bar->tintColor()));
}

TEST_F(BarThemeTest, AnAutoTintBarInAWindowHasWhiteItemsAndTheColourOfItsSuperview)
{
    const auto tint = UIColor::colorWithRed(0, 0, 1, 1);
    window->setTintColor(tint);
    const auto navigationBar = addView<ORVAutoTintNavigationBar>({ 0, 47, 390, 44 });
    EXPECT_TRUE(isWhite(navigationBar->tintColor()));
    EXPECT_EQ(navigationBar->barTintColor(), tint);
    EXPECT_TRUE(navigationBar->subviews().front()->backgroundColor()->isEqual(tint.get()));
    const auto toolbar = addView<ORVAutoTintToolbar>({ 0, 91, 390, 0 });
    EXPECT_TRUE(isWhite(toolbar->tintColor()));
    EXPECT_EQ(toolbar->barTintColor(), tint);
}

TEST_F(BarThemeTest, AnAutoTintBarGreysOutWithTheInterfaceAndComesBack)
{
    window->setTintColor(orv_oruvaneMainColor());
    const auto bar = addView<ORVAutoTintNavigationBar>({ 0, 47, 390, 44 });
    const auto& background = *bar->subviews().front();

    window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    const auto grey = background.backgroundColor()->getWhite();
    ASSERT_TRUE(grey);
    EXPECT_NEAR(grey->white, 0.39319, 0.00001);
    EXPECT_EQ(grey->alpha, 0.800000011920929);

    window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Automatic);
    EXPECT_TRUE(hasMainColor(background.backgroundColor()));
}

} // namespace
