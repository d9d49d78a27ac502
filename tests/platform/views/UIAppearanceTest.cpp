#include "platform/views/UIAppearance.h"

#include "platform/graphics/UIColor.h"
#include "platform/views/UIViewOwner.h"
#include "tests/support/SceneFixture.h"

#include <gmock/gmock.h>

namespace {

using Lines = std::vector<std::string>;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

enum class Side { Front, Back };

// A sheet with looks that take part, and writes down each time one is set.
class Sheet : public UIView {
public:
    using UIView::UIView;

    void setInk(const std::string& ink)
    {
        appearanceNotes().noteSetting(&Sheet::setInk);
        lines.push_back("ink " + ink);
        if (onInk)
            onInk();
    }
    virtual void setPaper(std::string paper)
    {
        appearanceNotes().noteSetting(&Sheet::setPaper);
        lines.push_back("paper " + std::move(paper));
    }
    void setText(const std::string& text, Side side)
    {
        appearanceNotes().noteSetting(&Sheet::setText, side);
        lines.push_back((side == Side::Front ? "front " : "back ") + text);
    }
    void didMoveToWindow() override { lines.push_back(window() ? "in a window" : "in no window"); }
    void tintColorDidChange() override { lines.push_back("tint"); }

    Lines lines;
    std::function<void()> onInk;
};

class Letter final : public Sheet {
public:
    using Sheet::Sheet;

    void setPaper(std::string paper) override { Sheet::setPaper("fine " + std::move(paper)); }
};

class Folder : public UIView {
public:
    using UIView::UIView;
};

class Desk final : public UIViewOwner {
public:
    std::shared_ptr<UIView> view() override { return nullptr; }
};

class UIAppearanceTest : public SceneFixture {
protected:
    // What the sheet has been told since the last call.
    static Lines told(Sheet& sheet) { return std::exchange(sheet.lines, {}); }
    Lines toldOnEntering(UIView& superview)
    {
        sheet->removeFromSuperview();
        told(*sheet);
        superview.addSubview(sheet);
        return told(*sheet);
    }
    Lines toldOnEntering() { return toldOnEntering(*window); }

    const UIAppearance::Replacement nothingRecorded;
    const std::shared_ptr<Sheet> sheet = make<Sheet>();
    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    const std::shared_ptr<UIColor> green = UIColor::colorWithRed(0, 1, 0, 1);
};

TEST_F(UIAppearanceTest, ValuesAreSetWhenAViewEntersAWindowAndNotBefore)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue");
    const auto folder = make<Folder>();
    folder->addSubview(sheet);
    EXPECT_THAT(told(*sheet), IsEmpty());
    window->addSubview(folder);
    EXPECT_THAT(told(*sheet), ElementsAre("ink blue", "in a window"));
}

TEST_F(UIAppearanceTest, ValuesAreSetInTheOrderInWhichTheyWereRecorded)
{
    UIAppearance::of<Sheet>()
        .set(&Sheet::setText, "recto", Side::Front)
        .set(&Sheet::setInk, "blue")
        .set(&Sheet::setPaper, "white");
    EXPECT_THAT(toldOnEntering(), ElementsAre("front recto", "ink blue", "paper white", "in a window"));
}

TEST_F(UIAppearanceTest, SubclassesGetTheValuesOfTheirSuperclassAndNotTheOtherWayRound)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue");
    UIAppearance::of<Letter>().set(&Letter::setText, "Dear", Side::Front);
    const auto letter = addView<Letter>({});
    EXPECT_THAT(letter->lines, ElementsAre("ink blue", "front Dear", "in a window"));
    EXPECT_THAT(toldOnEntering(), ElementsAre("ink blue", "in a window"));
}

TEST_F(UIAppearanceTest, OtherClassesAreLeftAlone)
{
    UIAppearance::of<Folder>().set(&Folder::setTintColor, red);
    toldOnEntering();
    EXPECT_FALSE(sheet->tintColor()->isEqual(red.get()));
    EXPECT_TRUE(addView<Folder>({})->tintColor()->isEqual(red.get()));
}

TEST_F(UIAppearanceTest, AValueRecordedAgainTakesThePlaceOfTheFirst)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue").set(&Sheet::setPaper, "white");
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "black");
    EXPECT_THAT(toldOnEntering(), ElementsAre("paper white", "ink black", "in a window"));
}

TEST_F(UIAppearanceTest, ValuesForDifferentStatesAreDifferentValues)
{
    UIAppearance::of<Sheet>()
        .set(&Sheet::setText, "recto", Side::Front)
        .set(&Sheet::setText, "verso", Side::Back);
    sheet->setText("mine", Side::Front);
    EXPECT_THAT(toldOnEntering(), ElementsAre("back verso", "in a window"));
}

// --- Containers --------------------------------------------------------------------------------------

TEST_F(UIAppearanceTest, InsideTheContainerItsValuesWinWheneverTheyWereRecorded)
{
    UIAppearance::of<Sheet>().whenContainedIn<Folder>().set(&Sheet::setInk, "red");
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue").set(&Sheet::setPaper, "white");
    const auto folder = addView<Folder>({});
    EXPECT_THAT(toldOnEntering(*folder), ElementsAre("paper white", "ink red", "in a window"));
    EXPECT_THAT(toldOnEntering(), ElementsAre("ink blue", "in a window"));
}

TEST_F(UIAppearanceTest, TheContainerMayBeFurtherUpAndOfASubclass)
{
    class Binder final : public Folder { };
    UIAppearance::of<Sheet>().whenContainedIn<Folder>().set(&Sheet::setInk, "red");
    const auto binder = make<Binder>();
    window->addSubview(binder);
    const auto between = make<UIView>();
    binder->addSubview(between);
    EXPECT_THAT(toldOnEntering(*between), ElementsAre("ink red", "in a window"));
}

TEST_F(UIAppearanceTest, NoViewIsInsideItself)
{
    UIAppearance::of<Folder>().whenContainedIn<Folder>().set(&Folder::setTintColor, red);
    const auto outer = addView<Folder>({});
    const auto inner = make<Folder>();
    outer->addSubview(inner);
    EXPECT_FALSE(outer->tintColor()->isEqual(red.get()));
    EXPECT_TRUE(inner->tintColor()->isEqual(red.get()));
}

TEST_F(UIAppearanceTest, AViewIsInsideTheControllersWhoseViewsHoldIt)
{
    UIAppearance::of<Sheet>().whenContainedIn<Desk>().set(&Sheet::setInk, "red");
    const auto desk = make<Desk>();
    const auto top = addView<UIView>({});
    EXPECT_THAT(toldOnEntering(*top), ElementsAre("in a window"));
    top->setOwner(desk.get());
    EXPECT_THAT(toldOnEntering(*top), ElementsAre("ink red", "in a window"));
    top->setOwner(nullptr);
}

TEST_F(UIAppearanceTest, AControllersOwnViewIsInsideTheController)
{
    UIAppearance::of<Sheet>().whenContainedIn<Desk>().set(&Sheet::setInk, "red");
    const auto desk = make<Desk>();
    sheet->setOwner(desk.get());
    EXPECT_THAT(toldOnEntering(), ElementsAre("ink red", "in a window"));
    sheet->setOwner(nullptr);
}

// --- Code and time -----------------------------------------------------------------------------------

TEST_F(UIAppearanceTest, WhatCodeHasSetStays)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue").set(&Sheet::setPaper, "white");
    UIAppearance::of<Sheet>().whenContainedIn<Folder>().set(&Sheet::setInk, "red");
    sheet->setInk("gold");
    EXPECT_THAT(toldOnEntering(*addView<Folder>({})), ElementsAre("paper white", "in a window"));
}

TEST_F(UIAppearanceTest, WhatCodeHasSetInTheWindowStaysWhenTheViewEntersAgain)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue").set(&Sheet::setPaper, "white");
    toldOnEntering();
    sheet->setInk("gold");
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "black").set(&Sheet::setPaper, "grey");
    EXPECT_THAT(toldOnEntering(), ElementsAre("paper grey", "in a window"));
}

TEST_F(UIAppearanceTest, EnteringAgainSetsNothingTwice)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue");
    toldOnEntering();
    EXPECT_THAT(toldOnEntering(), ElementsAre("in a window"));
}

TEST_F(UIAppearanceTest, EnteringASecondWindowBringsWhatIsNewAndWhatItsContainerWants)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue").set(&Sheet::setPaper, "white");
    toldOnEntering();
    UIAppearance::of<Sheet>().whenContainedIn<Folder>().set(&Sheet::setInk, "red");
    const auto second = make<UIWindow>(UIScreen::mainScreen()->bounds());
    second->addSubview(sheet);
    EXPECT_THAT(told(*sheet), ElementsAre("in a window"));
    const auto folder = make<Folder>();
    second->addSubview(folder);
    EXPECT_THAT(toldOnEntering(*folder), ElementsAre("ink red", "in a window"));
    window->addSubview(folder); // the whole subtree enters the first one
    EXPECT_THAT(told(*sheet), ElementsAre("in a window"));
    sheet->removeFromSuperview();
}

TEST_F(UIAppearanceTest, WhatIsRecordedLaterComesWithTheNextWindow)
{
    toldOnEntering();
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue");
    runFrames();
    EXPECT_THAT(told(*sheet), IsEmpty());
    EXPECT_THAT(toldOnEntering(), ElementsAre("ink blue", "in a window"));
}

TEST_F(UIAppearanceTest, WhatASetterSetsElsewhereInTheViewCountsAsCode)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue").set(&Sheet::setPaper, "white");
    sheet->onInk = [&] { sheet->setPaper("matching"); };
    EXPECT_THAT(toldOnEntering(), ElementsAre("ink blue", "paper matching", "in a window"));
}

TEST_F(UIAppearanceTest, AnOverriddenSetterIsTheSameSetter)
{
    UIAppearance::of<Letter>().set(&Letter::setPaper, "white");
    const auto plain = addView<Letter>({});
    EXPECT_THAT(plain->lines, ElementsAre("paper fine white", "in a window"));

    const auto coloured = make<Letter>();
    static_cast<Sheet&>(*coloured).setPaper("blue");
    told(*coloured);
    window->addSubview(coloured);
    EXPECT_THAT(coloured->lines, ElementsAre("in a window"));
}

TEST_F(UIAppearanceTest, ASetterMayRecordAndTakeViewsOut)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue").set(&Sheet::setPaper, "white");
    sheet->onInk = [&] {
        UIAppearance::of<Sheet>().set(&Sheet::setText, "late", Side::Front);
        sheet->removeFromSuperview();
    };
    toldOnEntering();
    EXPECT_EQ(sheet->superview(), nullptr);
    sheet->onInk = nullptr;
    EXPECT_THAT(toldOnEntering(), ElementsAre("front late", "in a window"));
}

TEST_F(UIAppearanceTest, RecordingTenThousandTimesKeepsOneValue)
{
    for (int i = 0; i < 10'000; ++i)
        UIAppearance::of<Sheet>().set(&Sheet::setInk, std::to_string(i));
    EXPECT_THAT(toldOnEntering(), ElementsAre("ink 9999", "in a window"));
}

TEST_F(UIAppearanceTest, AReplacementBringsBackWhatWasRecorded)
{
    UIAppearance::of<Sheet>().set(&Sheet::setInk, "blue");
    {
        const UIAppearance::Replacement inner;
        EXPECT_THAT(toldOnEntering(), ElementsAre("in a window"));
        UIAppearance::of<Sheet>().set(&Sheet::setPaper, "white");
    }
    EXPECT_THAT(toldOnEntering(), ElementsAre("ink blue", "in a window"));
}

// --- Tint --------------------------------------------------------------------------------------------

TEST_F(UIAppearanceTest, ARecordedTintIsInheritedLikeOneThatWasSet)
{
    UIAppearance::of<Folder>().set(&Folder::setTintColor, red);
    const auto folder = make<Folder>();
    folder->addSubview(sheet);
    window->addSubview(folder);
    EXPECT_EQ(sheet->tintColor(), red);
    EXPECT_THAT(told(*sheet), ElementsAre("tint", "in a window"));
    window->setTintColor(green);
    EXPECT_EQ(sheet->tintColor(), red);
}

TEST_F(UIAppearanceTest, ARecordedTintGivesWayToOneThatWasSet)
{
    UIAppearance::of<Sheet>().set(&Sheet::setTintColor, red);
    sheet->setTintColor(green);
    toldOnEntering();
    EXPECT_EQ(sheet->tintColor(), green);
}

TEST_F(UIAppearanceTest, ATintThatCodeTookBackStaysInherited)
{
    UIAppearance::of<Sheet>().set(&Sheet::setTintColor, red);
    sheet->setTintColor(nullptr);
    window->setTintColor(green);
    toldOnEntering();
    EXPECT_EQ(sheet->tintColor(), green);
}

} // namespace
