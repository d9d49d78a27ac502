#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

class Field : public UIView {
public:
    using UIView::UIView;
    bool canBecomeFirstResponder() const override { return accepts; }
    bool canResignFirstResponder() const override
    {
        if (onQuestion)
            onQuestion();
        return releases;
    }
    bool accepts = true;
    bool releases = true;
    std::function<void()> onQuestion;
};

class UIResponderTest : public SceneFixture {
protected:
    std::shared_ptr<Field> first = addView<Field>({ 0, 0, 10, 10 });
    std::shared_ptr<Field> second = addView<Field>({ 0, 20, 10, 10 });
};

TEST_F(UIResponderTest, TheChainLeadsFromViewToWindow)
{
    EXPECT_EQ(first->nextResponder(), window.get());
    EXPECT_EQ(window->nextResponder(), nullptr);
}

TEST_F(UIResponderTest, OneAtATimeIsFirst)
{
    EXPECT_TRUE(first->becomeFirstResponder());
    EXPECT_TRUE(first->isFirstResponder());
    EXPECT_TRUE(first->becomeFirstResponder());
    EXPECT_TRUE(second->becomeFirstResponder());
    EXPECT_FALSE(first->isFirstResponder());
    EXPECT_TRUE(second->isFirstResponder());
    EXPECT_EQ(window->firstResponder(), second);
}

TEST_F(UIResponderTest, TheOneBeforeMayRefuseToResign)
{
    first->becomeFirstResponder();
    first->releases = false;
    EXPECT_FALSE(second->becomeFirstResponder());
    EXPECT_TRUE(first->isFirstResponder());
    EXPECT_FALSE(first->resignFirstResponder());
}

TEST_F(UIResponderTest, OneThatIsAskedToResignMayLeaveTheWindow)
{
    first->becomeFirstResponder();
    first->onQuestion = [this] {
        first->onQuestion = nullptr;
        first->removeFromSuperview();
    };
    EXPECT_TRUE(second->becomeFirstResponder());
    EXPECT_EQ(window->firstResponder(), second);
    EXPECT_EQ(first->superview(), nullptr);
}

TEST_F(UIResponderTest, OneThatBecomesFirstWhileItLeavesIsNotFirstAfterwards)
{
    class Leaving : public Field {
    public:
        using Field::Field;
        void didMoveToSuperview() override { EXPECT_FALSE(isFirstResponder()); }
    };
    class Superview : public UIView {
    public:
        using UIView::UIView;
        void willRemoveSubview(UIView& view) override { EXPECT_TRUE(view.becomeFirstResponder()); }
    };
    const auto superview = addView<Superview>({ 0, 0, 100, 100 });
    const auto view = make<Leaving>(CGRect(0, 0, 10, 10));
    superview->addSubview(view);
    view->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(UIResponderTest, NotEveryResponderCanBeFirst)
{
    first->accepts = false;
    EXPECT_FALSE(first->becomeFirstResponder());
    const auto loose = make<Field>();
    EXPECT_FALSE(loose->becomeFirstResponder());
    EXPECT_TRUE(loose->resignFirstResponder());
}

TEST_F(UIResponderTest, EndEditingAnswersWhetherNothingIsEdited)
{
    EXPECT_TRUE(window->endEditing(false));
    first->becomeFirstResponder();
    EXPECT_TRUE(second->endEditing(false)); // nothing in there is edited
    EXPECT_TRUE(first->isFirstResponder());
    first->releases = false;
    EXPECT_FALSE(window->endEditing(false));
    EXPECT_TRUE(first->isFirstResponder());
    EXPECT_TRUE(window->endEditing(true));
    EXPECT_FALSE(first->isFirstResponder());
}

TEST_F(UIResponderTest, AViewThatLeavesIsNoLongerFirst)
{
    first->becomeFirstResponder();
    first->releases = false;
    first->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), nullptr);
    window->addSubview(first);
    EXPECT_FALSE(first->isFirstResponder());
}

TEST_F(UIResponderTest, TouchesThatAViewDoesNotTakeGoToTheNext)
{
    const auto outer = addView<LoggingView>({ 100, 100, 100, 100 });
    const auto inner = make<UIView>(CGRect(10, 10, 50, 50));
    outer->addSubview(inner);
    touch.down({ 120, 120 });
    touch.moveTo({ 130, 120 });
    touch.up();
    EXPECT_EQ(outer->lines, (Lines { "began 20 20", "moved 30 20", "ended 30 20" }));
    touch.down({ 120, 120 });
    touch.cancel();
    EXPECT_EQ(outer->lines.back(), "cancelled 20 20");
}

} // namespace
