#include "platform/views/UIViewOwner.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

class LayoutView : public UIView {
public:
    using UIView::UIView;
    void layoutSubviews() override
    {
        ++layouts;
        if (lines)
            lines->push_back(name);
        if (onLayout)
            onLayout();
    }
    void updateForFrame(double now) override
    {
        updates.push_back(now);
        if (onUpdate)
            onUpdate();
    }
    int layouts = 0;
    std::vector<double> updates;
    std::string name;
    Lines* lines = nullptr;
    std::function<void()> onLayout;
    std::function<void()> onUpdate;
};

class Owner : public UIViewOwner {
public:
    std::shared_ptr<UIView> view() override { return m_view; }
    void viewWillLayoutSubviews() override { lines.push_back("will layout"); }
    void viewDidLayoutSubviews() override { lines.push_back("did layout"); }
    void viewDidMoveToWindow() override { lines.push_back(m_view->window() ? "in window" : "out of window"); }

    Lines lines;
    std::shared_ptr<LayoutView> m_view = make<LayoutView>(CGRect(0, 0, 10, 10));
};

class UIViewLayoutTest : public SceneFixture {
protected:
    UIViewLayoutTest()
    {
        outer->addSubview(inner);
        outer->name = "outer";
        inner->name = "inner";
        runFrames();
        outer->layouts = inner->layouts = 0;
        outer->lines = inner->lines = &lines;
    }
    Lines lines;
    const std::shared_ptr<LayoutView> outer = addView<LayoutView>({ 0, 0, 100, 100 });
    const std::shared_ptr<LayoutView> inner = make<LayoutView>(CGRect(0, 0, 50, 50));
};

TEST_F(UIViewLayoutTest, ANewViewIsLaidOutInItsFirstFrame)
{
    const auto view = addView<LayoutView>({ 0, 0, 10, 10 });
    EXPECT_EQ(view->layouts, 0);
    runFrames();
    EXPECT_EQ(view->layouts, 1);
}

TEST_F(UIViewLayoutTest, LaysOutParentsBeforeChildrenOnceAFrame)
{
    inner->setNeedsLayout();
    outer->setNeedsLayout();
    outer->setNeedsLayout();
    runFrames();
    EXPECT_EQ(lines, (Lines { "outer", "inner" }));
}

TEST_F(UIViewLayoutTest, VisitsOnlyWhatAskedForIt)
{
    inner->setNeedsLayout();
    runFrames();
    EXPECT_EQ(lines, (Lines { "inner" }));
}

TEST_F(UIViewLayoutTest, VisitsNothingAndAsksForNoFrameWhenNothingChanged)
{
    EXPECT_FALSE(scheduler.isFrameRequested());
    window->performFrame();
    EXPECT_EQ(lines, Lines());
    EXPECT_FALSE(scheduler.isFrameRequested());
    EXPECT_FALSE(window->needsFrame());
}

TEST_F(UIViewLayoutTest, ALayoutThatResizesIsOneFrame)
{
    outer->onLayout = [&] { inner->setFrame({ 0, 0, 30, 30 }); };
    outer->setNeedsLayout();
    EXPECT_EQ(runFrames(), 1);
    EXPECT_EQ(lines, (Lines { "outer", "inner" }));
}

TEST_F(UIViewLayoutTest, AChangeThatNeedsNoLayoutIsOneFrame)
{
    inner->setAlpha(0.5);
    inner->setCenter({ 40, 40 });
    EXPECT_EQ(runFrames(), 1);
    EXPECT_EQ(lines, Lines());
}

TEST_F(UIViewLayoutTest, ANewSizeAsksForLayoutANewPlaceDoesNot)
{
    inner->setCenter({ 70, 70 });
    inner->setBounds({ 0, 10, 50, 50 });
    runFrames();
    EXPECT_EQ(inner->layouts, 0);
    inner->setBounds({ 0, 10, 60, 50 });
    runFrames();
    EXPECT_EQ(lines, (Lines { "inner" }));
}

TEST_F(UIViewLayoutTest, AddingAndRemovingASubviewAskForLayout)
{
    const auto view = make<UIView>();
    outer->addSubview(view);
    runFrames();
    EXPECT_EQ(outer->layouts, 1);
    view->removeFromSuperview();
    runFrames();
    EXPECT_EQ(outer->layouts, 2);
}

TEST_F(UIViewLayoutTest, LayoutIfNeededLaysOutAtOnceFromTheHighestThatWaits)
{
    outer->setNeedsLayout();
    inner->setNeedsLayout();
    inner->layoutIfNeeded();
    EXPECT_EQ(lines, (Lines { "outer", "inner" }));
    inner->layoutIfNeeded();
    EXPECT_EQ(lines.size(), 2u);
}

TEST_F(UIViewLayoutTest, ASubviewResizedInALayoutIsLaidOutInTheSameFrame)
{
    outer->onLayout = [&] { inner->setFrame(outer->bounds()); };
    outer->setFrame({ 0, 0, 80, 80 });
    runFrames();
    EXPECT_EQ(lines, (Lines { "outer", "inner" }));
    EXPECT_EQ(inner->frame(), CGRect(0, 0, 80, 80));
}

TEST_F(UIViewLayoutTest, AChildMayAskItsParentOnceMoreInTheSameFrame)
{
    inner->onLayout = [&] {
        if (inner->layouts == 1)
            outer->setNeedsLayout();
    };
    inner->setNeedsLayout();
    runFrames();
    EXPECT_EQ(lines, (Lines { "inner", "outer" }));
}

TEST_F(UIViewLayoutTest, AViewThatAlwaysAsksDoesNotHoldTheFrame)
{
    inner->onLayout = [&] { inner->setNeedsLayout(); };
    inner->setNeedsLayout();
    EXPECT_TRUE(scheduler.runFrameIfRequested());
    EXPECT_LT(inner->layouts, 1000);
    EXPECT_TRUE(scheduler.isFrameRequested()); // it goes on in the next one
    inner->onLayout = nullptr;
    runFrames();
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(UIViewLayoutTest, AViewMayGoFromInsideItsLayout)
{
    inner->onLayout = [&] { outer->removeFromSuperview(); };
    inner->setNeedsLayout();
    runFrames();
    EXPECT_EQ(inner->window(), nullptr);
}

TEST_F(UIViewLayoutTest, AnIntrinsicSizeThatChangesAsksTheSuperview)
{
    inner->invalidateIntrinsicContentSize();
    runFrames();
    EXPECT_EQ(lines, (Lines { "outer" }));
}

TEST_F(UIViewLayoutTest, UpdatesComeFirstInTheNextFrameWithItsTime)
{
    inner->onUpdate = [&] { lines.push_back("update"); };
    inner->setNeedsFrameUpdate();
    inner->setNeedsFrameUpdate();
    inner->setNeedsLayout();
    scheduler.advance(0.5);
    EXPECT_EQ(lines, (Lines { "update", "inner" }));
    ASSERT_EQ(inner->updates.size(), 1u);
}

TEST_F(UIViewLayoutTest, AnUpdateMayAskForTheNextOne)
{
    inner->onUpdate = [&] {
        if (inner->updates.size() < 3)
            inner->setNeedsFrameUpdate();
    };
    inner->setNeedsFrameUpdate();
    scheduler.runFrameIfRequested();
    EXPECT_TRUE(window->needsFrame());
    scheduler.advance(1);
    ASSERT_EQ(inner->updates.size(), 3u);
    EXPECT_NEAR(inner->updates[2] - inner->updates[0], 2 / 60.0, 1e-9);
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(UIViewLayoutTest, ViewsOutsideOfAWindowAreNotUpdated)
{
    inner->setNeedsFrameUpdate();
    inner->removeFromSuperview();
    inner->setNeedsFrameUpdate();
    scheduler.advance(0.1);
    EXPECT_TRUE(inner->updates.empty());
}

TEST_F(UIViewLayoutTest, TheOwnerHearsOfLayoutsAndWindows)
{
    const auto owner = make<Owner>();
    owner->m_view->setOwner(owner.get());
    EXPECT_EQ(owner->m_view->nextResponder(), owner.get());
    window->addSubview(owner->m_view);
    runFrames();
    owner->m_view->removeFromSuperview();
    EXPECT_EQ(owner->lines, (Lines { "in window", "will layout", "did layout", "out of window" }));
    owner->m_view->setOwner(nullptr);
}

} // namespace
