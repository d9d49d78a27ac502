#include "platform/controls/UINavigationBar.h"

#include "platform/views/UIAppearance.h"
#include "tests/platform/controls/BarScene.h"

namespace {

using ::testing::ElementsAre;

class UINavigationBarTest : public BarScene {
protected:
    UINavigationBarTest()
    {
        bar->setTopItem(item);
        runFrames();
    }
    static UILabel& titleLabel(const UINavigationBar& bar)
    {
        for (const auto& view : bar.subviews())
            if (auto* label = dynamic_cast<UILabel*>(view.get()))
                return *label;
        throw std::logic_error("a bar without a label");
    }
    UILabel& title() const { return titleLabel(*bar); }
    CGRect titleFrame()
    {
        runFrames();
        return title().frame();
    }
    // Where a subview of the bar begins in the last frame, from the bar's left edge.
    double drawnLeft(const UIView& subview) const
    {
        const auto drawn = std::ranges::find(frame.items, subview.layer()->layerID(), &FrameItem::layer);
        EXPECT_NE(drawn, frame.items.end());
        return drawn->transform.dx() + drawn->bounds.left();
    }
    static std::shared_ptr<UINavigationBarAppearance> appearance(std::shared_ptr<UIColor> color)
    {
        auto made = make<UINavigationBarAppearance>();
        made->configureWithOpaqueBackground();
        made->setBackgroundColor(std::move(color));
        return made;
    }

    const UIAppearance::Replacement nothingRecorded;
    const std::shared_ptr<UINavigationBar> bar = addView<UINavigationBar>({ 0, 47, 390, 44 });
    const std::shared_ptr<UINavigationItem> item = make<UINavigationItem>();
};

// --- The title ---------------------------------------------------------------------------------------

TEST_F(UINavigationBarTest, ShowsTheTitleOfItsItemAndFollowsIt)
{
    item->setTitle(QStringLiteral("Here"));
    EXPECT_EQ(title().text(), QStringLiteral("Here"));
    item->setTitle({});
    EXPECT_TRUE(title().text().isNull());
}

TEST_F(UINavigationBarTest, FollowsNoItemThatItNoLongerShows)
{
    const auto next = make<UINavigationItem>();
    next->setTitle(QStringLiteral("There"));
    bar->setTopItem(next);
    item->setTitle(QStringLiteral("Here"));
    EXPECT_EQ(title().text(), QStringLiteral("There"));
    bar->setTopItem(nullptr);
    next->setTitle(QStringLiteral("Nowhere"));
    EXPECT_TRUE(title().text().isNull());
}

TEST_F(UINavigationBarTest, MayGoBeforeItsItem)
{
    auto second = make<UINavigationBar>();
    second->setTopItem(item);
    second = nullptr;
    item->setTitle(QStringLiteral("Here"));
    EXPECT_EQ(title().text(), QStringLiteral("Here"));
}

TEST_F(UINavigationBarTest, ATitleStandsInTheMiddleOfTheBarOnWholePixels)
{
    for (const char* text : { "A", "Here", "Somewhere else" }) {
        item->setTitle(QLatin1String(text));
        const CGRect place = titleFrame();
        EXPECT_EQ(place.width(), title().sizeThatFits({ 390, 44 }).width()) << text;
        EXPECT_DOUBLE_EQ(place.center().x(), 195) << text;
        EXPECT_NEAR(drawnLeft(title()), place.left(), 0.25) << text;
        EXPECT_EQ(drawnLeft(title()) * 2, std::round(drawnLeft(title()) * 2)) << text;
        EXPECT_EQ(place.top(), 0) << text;
        EXPECT_EQ(place.height(), 44) << text;
    }
}

TEST_F(UINavigationBarTest, ATitleGivesWayToAWideItem)
{
    item->setTitle(QStringLiteral("Here"));
    item->setRightBarButtonItems({ viewItem(200) });
    const CGRect place = titleFrame();
    EXPECT_EQ(place.width(), title().sizeThatFits({ 390, 44 }).width());
    EXPECT_NEAR(place.right(), 390 - 6 - 200 - 8, 0.25);
}

TEST_F(UINavigationBarTest, ATitleThatDoesNotFitEndsBetweenTheItems)
{
    item->setTitle(QString(100, QLatin1Char('W')));
    EXPECT_EQ(titleFrame(), CGRect(16, 0, 390 - 2 * 16, 44));
    item->setLeftBarButtonItems({ pictureItem(24) });
    EXPECT_EQ(titleFrame(), CGRect(58, 0, 390 - 58 - 16, 44));
    item->setRightBarButtonItems({ pictureItem(24), pictureItem(24) });
    EXPECT_EQ(titleFrame(), CGRect(58, 0, 390 - 58 - 110, 44));
}

TEST_F(UINavigationBarTest, WithoutRoomATitleHasNoWidth)
{
    item->setTitle(QStringLiteral("Here"));
    item->setLeftBarButtonItems({ viewItem(1000) });
    EXPECT_EQ(titleFrame().width(), 0);
}

// --- The items ---------------------------------------------------------------------------------------

// Every item a view of its own width and a height of 30; rectangles from the outermost item inwards.
TEST_F(UINavigationBarTest, PlacesItemsFromItsEndsInwards)
{
    struct Row {
        std::vector<double> left;
        std::vector<double> right;
        std::vector<CGRect> leftFrames;
        std::vector<CGRect> rightFrames;
    };
    const Row table[] = {
        { { 50 }, {}, { { 6, 7, 50, 30 } }, {} },
        { {}, { 50 }, {}, { { 334, 7, 50, 30 } } },
        { { 50, 20 }, { 30, 40 }, { { 6, 7, 50, 30 }, { 64, 7, 20, 30 } },
            { { 354, 7, 30, 30 }, { 306, 7, 40, 30 } } },
        // Too wide for the bar: squeezed, the right ones into what the left ones leave.
        { { 1000 }, {}, { { 6, 7, 378, 30 } }, {} },
        { { 100 }, { 1000 }, { { 6, 7, 100, 30 } }, { { 114, 7, 270, 30 } } },
        { {}, { 300, 900 }, {}, { { 291.5, 7, 92.5, 30 }, { 6, 7, 277.5, 30 } } },
    };
    const auto items = [](const std::vector<double>& widths) {
        UIBarButtonItems made;
        for (const double width : widths)
            made.push_back(viewItem(width));
        return made;
    };
    for (const Row& row : table) {
        item->setLeftBarButtonItems(items(row.left));
        item->setRightBarButtonItems(items(row.right));
        runFrames();
        EXPECT_EQ(frames(item->leftBarButtonItems()), row.leftFrames);
        EXPECT_EQ(frames(item->rightBarButtonItems()), row.rightFrames);
    }
}

TEST_F(UINavigationBarTest, APictureIsAFingerWideAndAsHighAsTheBar)
{
    item->setLeftBarButtonItems({ pictureItem(24), pictureItem(80) });
    runFrames();
    EXPECT_THAT(frames(item->leftBarButtonItems()), ElementsAre(CGRect(6, 0, 44, 44), CGRect(58, 0, 80, 44)));
}

TEST_F(UINavigationBarTest, ItemsKeepOutOfTheUnsafeSides)
{
    UIScreen::mainScreen()->setGeometry({ { 844, 390 }, 2, { 0, 47, 21, 50 } });
    bar->setFrame({ 0, 0, 844, 44 });
    item->setLeftBarButtonItems({ pictureItem(24) });
    item->setRightBarButtonItems({ pictureItem(24) });
    runFrames();
    EXPECT_THAT(frames(item->leftBarButtonItems()), ElementsAre(CGRect(53, 0, 44, 44)));
    EXPECT_THAT(frames(item->rightBarButtonItems()), ElementsAre(CGRect(744, 0, 44, 44)));
}

TEST_F(UINavigationBarTest, ItemsComeAndGoWithTheItem)
{
    const auto first = pictureItem(24);
    const auto second = pictureItem(24);
    item->setLeftBarButtonItems({ first, nullptr });
    item->setRightBarButtonItems({ second });
    EXPECT_EQ(first->view()->superview(), bar.get());
    EXPECT_EQ(second->view()->superview(), bar.get());

    item->setRightBarButtonItems({ first }); // while it is still on the left
    item->setLeftBarButtonItems({});
    runFrames();
    EXPECT_EQ(first->view()->superview(), bar.get());
    EXPECT_EQ(first->view()->frame(), CGRect(340, 0, 44, 44));
    EXPECT_EQ(second->view()->superview(), nullptr);

    bar->setTopItem(nullptr);
    EXPECT_EQ(first->view()->superview(), nullptr);
}

TEST_F(UINavigationBarTest, AnItemThatAnotherBarHasTakenStaysThere)
{
    const auto button = pictureItem(24);
    item->setLeftBarButtonItems({ button });
    const auto otherBar = addView<UINavigationBar>({ 0, 200, 390, 44 });
    const auto otherItem = make<UINavigationItem>();
    otherItem->setLeftBarButtonItems({ button });
    otherBar->setTopItem(otherItem);
    item->setLeftBarButtonItems({});
    EXPECT_EQ(button->view()->superview(), otherBar.get());
}

TEST_F(UINavigationBarTest, ItemsAreInTheBarsTint)
{
    const auto button = pictureItem(24);
    item->setLeftBarButtonItems({ button });
    bar->setTintColor(red);
    EXPECT_EQ(button->view()->tintColor(), red);
}

TEST_F(UINavigationBarTest, APressMayTakeTheItemOutAndDropIt)
{
    const auto target = make<PressTarget>();
    item->setRightBarButtonItems({ pictureItem(24, target->action()) });
    target->onPress = [&] { item->setRightBarButtonItems({}); };
    runFrames();
    touch.tap({ 362, 47 + 22 });
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_TRUE(item->rightBarButtonItems().empty());
    touch.tap({ 362, 47 + 22 });
    EXPECT_EQ(target->senders.size(), 1U);
}

// --- Looks -------------------------------------------------------------------------------------------

TEST_F(UINavigationBarTest, AnAppearanceObjectDecidesTheBackgroundAndTheTitle)
{
    const auto looks = appearance(red);
    const auto font = UIFont::boldSystemFontOfSize(22);
    looks->setTitleTextAttributes(
        { { NSFontAttributeName, font }, { NSForegroundColorAttributeName, green } });
    bar->setTitleTextAttributes({ { NSFontAttributeName, UIFont::systemFontOfSize(9) } });
    bar->setStandardAppearance(looks);
    EXPECT_TRUE(isColor(background(*bar), red));
    EXPECT_TRUE(title().font()->isEqual(font.get()));
    EXPECT_TRUE(isColor(title().textColor(), green));
}

TEST_F(UINavigationBarTest, ABarTintColorWinsOverTheAppearanceObject)
{
    bar->setStandardAppearance(appearance(red));
    bar->setBarTintColor(green);
    EXPECT_TRUE(isColor(background(*bar), green));
    bar->setBarTintColor(nullptr);
    EXPECT_TRUE(isColor(background(*bar), red));
}

TEST_F(UINavigationBarTest, TheScrollEdgeAppearanceIsInForceWhileNoContentLiesUnderTheBar)
{
    bar->setStandardAppearance(appearance(red));
    EXPECT_TRUE(isColor(background(*bar), red)); // no other one is there
    bar->setScrollEdgeAppearance(appearance(green));
    EXPECT_TRUE(isColor(background(*bar), green));
    bar->setContentUnderneath(true);
    EXPECT_TRUE(isColor(background(*bar), red));
}

TEST_F(UINavigationBarTest, TakesACopyOfAnAppearanceObject)
{
    const auto looks = appearance(red);
    bar->setStandardAppearance(looks);
    looks->setBackgroundColor(green);
    bar->setTranslucent(false);
    EXPECT_TRUE(isColor(background(*bar), red));
    EXPECT_TRUE(isColor(bar->standardAppearance()->backgroundColor(), red));
    bar->setStandardAppearance(nullptr);
    EXPECT_EQ(bar->standardAppearance(), nullptr);
}

TEST_F(UINavigationBarTest, WithoutAnAppearanceObjectItsOwnLooksCount)
{
    bar->setTranslucent(false);
    EXPECT_TRUE(isColor(background(*bar), UIColor::systemBackgroundColor()));
    EXPECT_TRUE(isColor(title().textColor(), UIColor::labelColor()));
    bar->setBarStyle(UIBarStyle::Black);
    EXPECT_TRUE(isColor(background(*bar), UIColor::blackColor()));
    EXPECT_TRUE(isColor(title().textColor(), UIColor::whiteColor()));
    bar->setTitleTextAttributes({ { NSForegroundColorAttributeName, red } });
    EXPECT_TRUE(isColor(title().textColor(), red));
}

TEST_F(UINavigationBarTest, ATranslucentBarLetsALittleShineThrough)
{
    bar->setBarTintColor(red);
    EXPECT_LT(background(*bar)->getRed()->alpha, 1);
    EXPECT_GT(background(*bar)->getRed()->alpha, 0.8);
    bar->setTranslucent(false);
    EXPECT_EQ(background(*bar)->getRed()->alpha, 1);
}

TEST_F(UINavigationBarTest, FillsTheUnsafeAreaRightAboveIt)
{
    runFrames();
    EXPECT_EQ(bar->subviews().front()->frame(), CGRect(0, -47, 390, 91));
    bar->setFrame({ 0, 200, 390, 44 });
    bar->setNeedsLayout();
    runFrames();
    EXPECT_EQ(bar->subviews().front()->frame(), CGRect(0, 0, 390, 44));
}

TEST_F(UINavigationBarTest, RecordedLooksGiveWayToThoseThatCodeHasSet)
{
    UIAppearance::of<UINavigationBar>()
        .set(&UINavigationBar::setBarTintColor, red)
        .set(&UINavigationBar::setTitleTextAttributes, { { NSForegroundColorAttributeName, red } })
        .set(&UINavigationBar::setStandardAppearance, appearance(red))
        .set(&UINavigationBar::setScrollEdgeAppearance, appearance(red));
    const auto plain = addView<UINavigationBar>({ 0, 200, 390, 44 });
    EXPECT_TRUE(isColor(plain->barTintColor(), red));
    EXPECT_EQ(plain->titleTextAttributes().size(), 1U);
    EXPECT_TRUE(plain->standardAppearance() && plain->scrollEdgeAppearance());

    const auto own = make<UINavigationBar>();
    own->setBarTintColor(nullptr);
    own->setTitleTextAttributes({});
    own->setStandardAppearance(nullptr);
    own->setScrollEdgeAppearance(nullptr);
    window->addSubview(own);
    EXPECT_EQ(own->barTintColor(), nullptr);
    EXPECT_TRUE(own->titleTextAttributes().empty());
    EXPECT_FALSE(own->standardAppearance() || own->scrollEdgeAppearance());
}

} // namespace
