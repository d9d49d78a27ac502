#include "platform/controls/UIButton.h"
#include "platform/controls/UIToolbar.h"
#include "platform/views/UIAppearance.h"
#include "tests/platform/controls/BarScene.h"

namespace {

using ::testing::ElementsAre;

class UIBarButtonItemTest : public BarScene {
protected:
    static const UIButton& button(const UIBarButtonItem& item)
    {
        return dynamic_cast<const UIButton&>(*item.view());
    }

    const std::shared_ptr<UIToolbar> bar = addView<UIToolbar>({ 0, 100, 390, 44 });
    const std::shared_ptr<PressTarget> target = make<PressTarget>();
};

TEST_F(UIBarButtonItemTest, APressTellsTheTargetWithTheItemAsSender)
{
    const auto item = pictureItem(24, target->action());
    bar->setItems({ item });
    runFrames();
    touch.tap({ 10, 104 }); // a corner of the 44 points
    EXPECT_THAT(target->senders, ElementsAre(item.get()));
    item->setAction({});
    touch.tap({ 10, 104 });
    EXPECT_EQ(target->senders.size(), 1U);
}

TEST_F(UIBarButtonItemTest, AnActionMayGiveTheItemAnotherOne)
{
    const auto item = pictureItem(24, target->action());
    const auto second = make<PressTarget>();
    target->onPress = [&] { item->setAction(second->action()); };
    bar->setItems({ item });
    runFrames();
    touch.tap({ 20, 120 });
    touch.tap({ 20, 120 });
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_EQ(second->senders.size(), 1U);
}

TEST_F(UIBarButtonItemTest, ATargetThatIsGoneIsNotTold)
{
    auto gone = make<PressTarget>();
    const std::weak_ptr<PressTarget> watch = gone;
    bar->setItems({ pictureItem(24, gone->action()) });
    runFrames();
    gone = nullptr;
    EXPECT_TRUE(watch.expired());
    touch.tap({ 20, 120 });
}

TEST_F(UIBarButtonItemTest, ShowsANewPictureAndMakesRoomForIt)
{
    const auto item = pictureItem(24);
    const auto next = pictureItem(24);
    bar->setItems({ item, next });
    runFrames();
    const auto wide = picture(100);
    item->setImage(wide);
    runFrames();
    EXPECT_EQ(button(*item).imageForState(UIControlState::Normal), wide);
    EXPECT_THAT(frames(bar->items()), ElementsAre(CGRect(6, 0, 100, 44), CGRect(114, 0, 44, 44)));
}

TEST_F(UIBarButtonItemTest, WithoutAPictureItStillHasItsPlace)
{
    const auto item = make<UIBarButtonItem>(nullptr, UIBarButtonItemStyle::Plain, target->action());
    bar->setItems({ item });
    runFrames();
    EXPECT_EQ(item->view()->frame(), CGRect(6, 0, 44, 44));
    touch.tap({ 20, 120 });
    EXPECT_EQ(target->senders.size(), 1U);
}

TEST_F(UIBarButtonItemTest, ItsPictureIsATemplateInTheTintOfTheBar)
{
    const auto item = pictureItem(24);
    bar->setItems({ item });
    EXPECT_EQ(button(*item).buttonType(), UIButtonType::System);
    bar->setTintColor(red);
    EXPECT_EQ(item->view()->tintColor(), red);
}

TEST_F(UIBarButtonItemTest, ItsPictureIsSafeFromThoseRecordedForButtons)
{
    const UIAppearance::Replacement nothingRecorded;
    UIAppearance::of<UIButton>().set(&UIButton::setImage, picture(99), UIControlState::Normal);
    const auto item = pictureItem(24);
    bar->setItems({ item });
    EXPECT_EQ(button(*item).imageForState(UIControlState::Normal), item->image());

    const auto plain = addView<UIButton>({});
    EXPECT_EQ(plain->imageForState(UIControlState::Normal)->size().width(), 99);
}

TEST_F(UIBarButtonItemTest, AViewThatWasSqueezedGetsItsSizeBack)
{
    const auto item = viewItem(500, 80);
    bar->setItems({ item });
    runFrames();
    EXPECT_EQ(item->view()->frame(), CGRect(6, 0, 378, 44));
    bar->setFrame({ 0, 100, 800, 100 });
    runFrames();
    EXPECT_EQ(item->view()->frame(), CGRect(6, 10, 500, 80));
    item->view()->setBounds({ 0, 0, 20, 20 }); // its owner has changed its mind
    bar->setNeedsLayout();
    runFrames();
    EXPECT_EQ(item->view()->frame(), CGRect(6, 40, 20, 20));
}

TEST_F(UIBarButtonItemTest, ItsButtonTellsWhatTheItemSaysAtTheMomentOfAsking)
{
    const auto item = pictureItem(24);
    const auto view = item->view();
    EXPECT_TRUE(view->isAccessibilityElement());
    EXPECT_TRUE(view->accessibilityLabel().isNull());
    item->setAccessibilityLabel(QStringLiteral("List"));
    item->setAccessibilityHint(QStringLiteral("Switches to the records list"));
    item->setAccessibilityValue(QStringLiteral("12 records"));
    EXPECT_EQ(view->accessibilityLabel(), QStringLiteral("List"));
    EXPECT_EQ(view->accessibilityHint(), QStringLiteral("Switches to the records list"));
    EXPECT_EQ(view->accessibilityValue(), QStringLiteral("12 records"));
    item->setAccessibilityLabel(QStringLiteral("Map"));
    EXPECT_EQ(view->accessibilityLabel(), QStringLiteral("Map"));
    item->setIsAccessibilityElement(false);
    EXPECT_FALSE(view->isAccessibilityElement());
}

TEST_F(UIBarButtonItemTest, AnItemsLabelMayFollowItsState)
{
    class Switching final : public UIBarButtonItem {
    public:
        using UIBarButtonItem::UIBarButtonItem;
        NSString accessibilityLabel() const override
        {
            return on ? QStringLiteral("Pause") : QStringLiteral("Play");
        }
        bool on = false;
    };
    const auto item = make<Switching>(picture(24), UIBarButtonItemStyle::Plain, Action());
    EXPECT_EQ(item->view()->accessibilityLabel(), QStringLiteral("Play"));
    item->on = true;
    EXPECT_EQ(item->view()->accessibilityLabel(), QStringLiteral("Pause"));
}

TEST_F(UIBarButtonItemTest, ACustomViewSpeaksForItself)
{
    const auto item = viewItem(30);
    item->setAccessibilityLabel(QStringLiteral("the item"));
    item->view()->setAccessibilityLabel(QStringLiteral("the view"));
    EXPECT_EQ(item->view()->accessibilityLabel(), QStringLiteral("the view"));
    EXPECT_FALSE(item->isAccessibilityElement());
}

TEST_F(UIBarButtonItemTest, AButtonThatOutlivesItsItemHasNothingToTell)
{
    auto item = pictureItem(24);
    item->setAccessibilityLabel(QStringLiteral("List"));
    const auto view = item->view();
    item = nullptr;
    EXPECT_TRUE(view->accessibilityLabel().isNull());
    EXPECT_FALSE(view->isAccessibilityElement());
}

TEST_F(UIBarButtonItemTest, MayBeDroppedFromInsideItsAction)
{
    const std::weak_ptr<UIBarButtonItem> watch = [&] {
        const auto item = pictureItem(24, target->action());
        bar->setItems({ item });
        return item;
    }();
    runFrames();
    target->onPress = [&] {
        bar->setItems({});
        bar->removeFromSuperview();
    };
    touch.tap({ 20, 120 });
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_TRUE(watch.expired());
}

} // namespace
