#include "tests/platform/views/ViewLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

namespace {

class TreeView : public UIView {
public:
    using UIView::UIView;
    void willMoveToSuperview(UIView* view) override
    {
        log(view ? "willMoveToSuperview" : "willLeaveSuperview");
    }
    void didMoveToSuperview() override { log(superview() ? "didMoveToSuperview" : "didLeaveSuperview"); }
    void willMoveToWindow(UIWindow* next) override { log(next ? "willMoveToWindow" : "willLeaveWindow"); }
    void didMoveToWindow() override
    {
        log(window() ? "didMoveToWindow" : "didLeaveWindow");
        if (onWindow)
            onWindow();
    }

    std::string name;
    Lines* lines = nullptr;
    std::function<void()> onWindow;

private:
    void log(const std::string& what)
    {
        if (lines)
            lines->push_back(name + what);
    }
};

class UIViewTreeTest : public SceneFixture {
protected:
    std::shared_ptr<TreeView> makeLogged(const std::string& name)
    {
        auto view = make<TreeView>(CGRect(0, 0, 10, 10));
        view->name = name;
        view->lines = &lines;
        return view;
    }
    static std::vector<UIView*> subviewsOf(const UIView& view)
    {
        std::vector<UIView*> all;
        for (const auto& subview : view.subviews())
            all.push_back(subview.get());
        return all;
    }
    // The layers of the subviews, in the layer's order.
    static std::vector<CALayer*> layersOf(const UIView& view)
    {
        std::vector<CALayer*> all;
        for (const auto& sublayer : view.layer()->sublayers())
            all.push_back(sublayer.get());
        return all;
    }

    Lines lines;
    std::shared_ptr<UIView> outer = addView({ 0, 0, 100, 100 });
    std::shared_ptr<UIView> a = make<UIView>();
    std::shared_ptr<UIView> b = make<UIView>();
    std::shared_ptr<UIView> c = make<UIView>();
};

using Views = std::vector<UIView*>;

TEST_F(UIViewTreeTest, TheLaterViewLiesAbove)
{
    outer->addSubview(a);
    outer->addSubview(b);
    EXPECT_EQ(subviewsOf(*outer), (Views { a.get(), b.get() }));
    EXPECT_EQ(layersOf(*outer), (std::vector<CALayer*> { a->layer().get(), b->layer().get() }));
}

TEST_F(UIViewTreeTest, AddingAgainMovesToTheTop)
{
    outer->addSubview(a);
    outer->addSubview(b);
    outer->addSubview(a);
    EXPECT_EQ(subviewsOf(*outer), (Views { b.get(), a.get() }));
    EXPECT_EQ(layersOf(*outer), (std::vector<CALayer*> { b->layer().get(), a->layer().get() }));
}

TEST_F(UIViewTreeTest, AViewCanBeAddedThroughTheListThatHoldsIt)
{
    outer->addSubview(a);
    outer->addSubview(b);
    outer->addSubview(outer->subviews().front());
    EXPECT_EQ(subviewsOf(*outer), (Views { b.get(), a.get() }));
}

TEST_F(UIViewTreeTest, InsertsAtAnIndexAndBesideASibling)
{
    outer->addSubview(a);
    outer->insertSubview(b, 0);
    EXPECT_EQ(subviewsOf(*outer), (Views { b.get(), a.get() }));
    outer->insertSubviewAbove(c, *b);
    EXPECT_EQ(subviewsOf(*outer), (Views { b.get(), c.get(), a.get() }));
    outer->insertSubviewBelow(a, *b);
    EXPECT_EQ(subviewsOf(*outer), (Views { a.get(), b.get(), c.get() }));
    outer->insertSubviewAbove(a, *b);
    EXPECT_EQ(subviewsOf(*outer), (Views { b.get(), a.get(), c.get() }));
    outer->insertSubview(b, 99);
    EXPECT_EQ(subviewsOf(*outer), (Views { a.get(), c.get(), b.get() }));
    EXPECT_EQ(
        layersOf(*outer), (std::vector<CALayer*> { a->layer().get(), c->layer().get(), b->layer().get() }));
}

TEST_F(UIViewTreeTest, BringsToTheFrontAndSendsToTheBack)
{
    outer->addSubview(a);
    outer->addSubview(b);
    outer->addSubview(c);
    outer->bringSubviewToFront(*a);
    EXPECT_EQ(subviewsOf(*outer), (Views { b.get(), c.get(), a.get() }));
    outer->sendSubviewToBack(*c);
    EXPECT_EQ(subviewsOf(*outer), (Views { c.get(), b.get(), a.get() }));
    outer->bringSubviewToFront(*window); // no subview of it: nothing happens
    EXPECT_EQ(subviewsOf(*outer), (Views { c.get(), b.get(), a.get() }));
}

TEST_F(UIViewTreeTest, LayersOfNoViewKeepTheirPlaces)
{
    const auto decoration = CALayer::layer();
    outer->addSubview(a);
    outer->layer()->addSublayer(decoration);
    outer->addSubview(b);
    outer->insertSubviewBelow(c, *a);
    EXPECT_EQ(layersOf(*outer),
        (std::vector<CALayer*> { c->layer().get(), a->layer().get(), decoration.get(), b->layer().get() }));
}

TEST_F(UIViewTreeTest, NilAddsNothing)
{
    outer->addSubview(nullptr);
    EXPECT_TRUE(outer->subviews().empty());
}

TEST_F(UIViewTreeTest, AViewCannotBeAddedToItselfOrIntoItself)
{
    outer->addSubview(a);
    AssertionRecorder recorder;
    a->addSubview(a);
    a->addSubview(outer);
    EXPECT_EQ(recorder.messages(),
        (std::vector<NSString>(
            2, QStringLiteral("A view cannot be added to itself or to a view inside it."))));
    EXPECT_EQ(a->superview(), outer.get());
    EXPECT_TRUE(a->subviews().empty());
}

TEST_F(UIViewTreeTest, ASiblingOfElsewhereIsAProgrammingError)
{
    AssertionRecorder recorder;
    outer->insertSubviewAbove(a, *b);
    outer->insertSubviewBelow(c, *b);
    EXPECT_EQ(recorder.messages(),
        (std::vector<NSString>(2, QStringLiteral("Invalid parameter not satisfying: sibling is a subview"))));
    EXPECT_EQ(subviewsOf(*outer), (Views { a.get(), c.get() })); // on top, where no place is known
}

TEST_F(UIViewTreeTest, ARemovedViewLivesOnWithoutASuperview)
{
    outer->addSubview(a);
    a->removeFromSuperview();
    EXPECT_EQ(a->superview(), nullptr);
    EXPECT_EQ(a->window(), nullptr);
    EXPECT_EQ(a->layer()->superlayer(), nullptr);
    a->removeFromSuperview();
    EXPECT_TRUE(outer->subviews().empty());
}

TEST_F(UIViewTreeTest, ASuperviewThatGoesLeavesItsSubviewsAlone)
{
    auto temporary = make<UIView>();
    temporary->addSubview(a);
    temporary = nullptr;
    EXPECT_EQ(a->superview(), nullptr);
    EXPECT_EQ(a->layer()->superlayer(), nullptr);
}

TEST_F(UIViewTreeTest, FindsByTagItselfFirstThenInOrder)
{
    outer->addSubview(a);
    outer->addSubview(b);
    a->addSubview(c);
    b->setTag(5);
    c->setTag(5);
    EXPECT_EQ(outer->viewWithTag(5), c.get());
    EXPECT_EQ(outer->viewWithTag(6), nullptr);
    EXPECT_EQ(outer->viewWithTag(0), outer.get());
}

TEST_F(UIViewTreeTest, TellsOfTheWindowToSuperviewsFirst)
{
    const auto first = makeLogged("1 ");
    const auto second = makeLogged("2 ");
    first->addSubview(second);
    lines.clear();
    outer->addSubview(first);
    EXPECT_EQ(lines,
        (Lines { "1 willMoveToWindow", "2 willMoveToWindow", "1 willMoveToSuperview", "1 didMoveToWindow",
            "2 didMoveToWindow", "1 didMoveToSuperview" }));
    lines.clear();
    outer->removeFromSuperview();
    EXPECT_EQ(
        lines, (Lines { "1 willLeaveWindow", "2 willLeaveWindow", "1 didLeaveWindow", "2 didLeaveWindow" }));
}

TEST_F(UIViewTreeTest, MovingWithinAWindowIsNoChangeOfTheWindow)
{
    const auto view = makeLogged("");
    outer->addSubview(view);
    lines.clear();
    window->addSubview(view);
    EXPECT_EQ(lines, (Lines { "willMoveToSuperview", "didMoveToSuperview" }));
    EXPECT_EQ(view->superview(), window.get());
    EXPECT_TRUE(outer->subviews().empty());
}

TEST_F(UIViewTreeTest, AViewMayLeaveFromInsideItsOwnMessage)
{
    const auto view = makeLogged("1 ");
    const auto inner = makeLogged("2 ");
    view->addSubview(inner);
    view->onWindow = [&] {
        if (view->window())
            view->removeFromSuperview();
    };
    lines.clear();
    outer->addSubview(view);
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_EQ(inner->window(), nullptr);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "2 didMoveToWindow"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "2 didLeaveWindow"), 1);
}

TEST_F(UIViewTreeTest, ALastReferenceMayGoFromInsideAMessage)
{
    auto view = make<TreeView>();
    const std::weak_ptr<TreeView> watched = view;
    view->onWindow = [&] { view = nullptr; };
    outer->addSubview(view);
    EXPECT_FALSE(watched.expired()); // the superview still holds it
    outer->subviews().front()->removeFromSuperview();
    EXPECT_TRUE(watched.expired());
}

TEST_F(UIViewTreeTest, AWindowThatGoesTakesItsViewsOutFirst)
{
    const auto view = makeLogged("");
    window->addSubview(view);
    lines.clear();
    window = nullptr;
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_EQ(
        lines, (Lines { "willLeaveWindow", "willLeaveSuperview", "didLeaveWindow", "didLeaveSuperview" }));
}

} // namespace
