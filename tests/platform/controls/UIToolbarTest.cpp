#include "platform/controls/UIToolbar.h"

#include "platform/views/UIAppearance.h"
#include "tests/platform/controls/BarScene.h"

namespace {

class UIToolbarTest : public BarScene {
protected:
    const std::shared_ptr<UIToolbar> bar = addView<UIToolbar>({ 0, 100, 390, 44 });
};

TEST_F(UIToolbarTest, GrowsFromNoHeightToTheStandardOne)
{
    EXPECT_EQ(make<UIToolbar>()->bounds().height(), 44);
    EXPECT_EQ(make<UIToolbar>(CGRect(10, 20, 390, 0))->frame(), CGRect(10, 20, 390, 44));
    EXPECT_EQ(make<UIToolbar>(CGRect(0, 0, 390, 60))->bounds().height(), 60);
    bar->setFrame({ 0, 200, 300, 0 });
    runFrames();
    EXPECT_EQ(bar->frame(), CGRect(0, 200, 300, 44));
    EXPECT_EQ(bar->intrinsicContentSize().height(), 44);
}

TEST_F(UIToolbarTest, PlacesItemsSideBySide)
{
    struct Row {
        UIBarButtonItems items;
        std::vector<CGRect> frames;
    };
    const Row table[] = {
        { {}, {} },
        { { viewItem(50), pictureItem(24) }, { { 6, 7, 50, 30 }, { 64, 0, 44, 44 } } },
        // What there is too little of, is taken from the views in proportion; buttons keep theirs.
        { { viewItem(1000) }, { { 6, 7, 378, 30 } } },
        { { viewItem(1000, 50), pictureItem(24) }, { { 6, 0, 326, 44 }, { 340, 0, 44, 44 } } },
        { { viewItem(100), viewItem(900) }, { { 6, 7, 37, 30 }, { 51, 7, 333, 30 } } },
        // What there is too much of, goes to those of flexible width.
        { { flexibleItem(10) }, { { 6, 7, 378, 30 } } },
        { { flexibleItem(50), pictureItem(24), flexibleItem(150) },
            { { 6, 7, 109, 30 }, { 123, 0, 44, 44 }, { 175, 7, 209, 30 } } },
    };
    for (const Row& row : table) {
        bar->setItems(row.items);
        runFrames();
        EXPECT_EQ(frames(row.items), row.frames);
    }
}

TEST_F(UIToolbarTest, ViewsThatHaveNoRoomAtAllHaveNoWidth)
{
    bar->setFrame({ 0, 100, 40, 44 });
    const UIBarButtonItems items { pictureItem(24), viewItem(100), viewItem(0) };
    bar->setItems(items);
    runFrames();
    EXPECT_EQ(items[0]->view()->bounds().width(), 44);
    EXPECT_EQ(items[1]->view()->bounds().width(), 0);
    EXPECT_EQ(items[2]->view()->bounds().width(), 0);
}

TEST_F(UIToolbarTest, ItemsComeAndGo)
{
    const auto first = viewItem(10);
    const auto second = viewItem(10);
    bar->setItems({ first, nullptr, second });
    runFrames();
    EXPECT_EQ(second->view()->frame(), CGRect(24, 7, 10, 30));
    bar->setItems({ second });
    runFrames();
    EXPECT_EQ(first->view()->superview(), nullptr);
    EXPECT_EQ(second->view()->frame(), CGRect(6, 7, 10, 30));
}

TEST_F(UIToolbarTest, ItsBackgroundIsItsBarTintColorElseTheSystems)
{
    bar->setTranslucent(false);
    EXPECT_TRUE(isColor(background(*bar), UIColor::systemBackgroundColor()));
    bar->setBarTintColor(red);
    EXPECT_TRUE(isColor(background(*bar), red));
    bar->setTranslucent(true);
    EXPECT_LT(background(*bar)->getRed()->alpha, 1);
    bar->setBarTintColor(nullptr);
    bar->setTranslucent(false);
    EXPECT_TRUE(isColor(background(*bar), UIColor::systemBackgroundColor()));
    runFrames();
    EXPECT_EQ(bar->subviews().front()->frame(), bar->bounds());
}

TEST_F(UIToolbarTest, ARecordedBarTintColorGivesWayToOneThatCodeHasSet)
{
    const UIAppearance::Replacement nothingRecorded;
    UIAppearance::of<UIToolbar>().set(&UIToolbar::setBarTintColor, red);
    EXPECT_EQ(addView<UIToolbar>({})->barTintColor(), red);
    const auto own = make<UIToolbar>();
    own->setBarTintColor(green);
    window->addSubview(own);
    EXPECT_EQ(own->barTintColor(), green);
}

} // namespace
