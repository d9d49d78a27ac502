// In which order a layout runs, whom it visits, and that it ends.
#include "platform/views/UIViewOwner.h"
#include "tests/platform/layout/LayoutFixture.h"

namespace {

using Log = std::vector<std::string>;

class LoggingView : public UIView {
public:
    using UIView::UIView;

    void updateConstraints() override
    {
        log->push_back(name + " updates");
        if (inUpdate)
            inUpdate(*this);
        UIView::updateConstraints();
    }
    void layoutSubviews() override
    {
        log->push_back(name + " lays out");
        if (inLayout)
            inLayout(*this);
    }
    bool drawsContent() const override { return drawn; }
    void drawRect(const CGRect&, CGContext&) override { log->push_back(name + " draws"); }

    std::string name;
    Log* log = nullptr;
    bool drawn = false;
    std::function<void(LoggingView&)> inUpdate;
    std::function<void(LoggingView&)> inLayout;
};

class DemandingView : public LoggingView {
public:
    using LoggingView::LoggingView;
    bool requiresConstraintBasedLayout() const override { return true; }
};

class LayoutPassTest : public LayoutFixture {
protected:
    template <typename View = LoggingView>
    std::shared_ptr<View> addLogging(UIView& superview, const char* name)
    {
        auto view = make<View>();
        view->name = name;
        view->log = &log;
        superview.addSubview(view);
        return view;
    }
    std::string logged() const
    {
        std::string text;
        for (const std::string& line : log)
            text += line + "; ";
        return text;
    }

    Log log;
    std::shared_ptr<LoggingView> parent = addLogging(*container, "parent");
    std::shared_ptr<LoggingView> child = addLogging(*parent, "child");
};

TEST_F(LayoutPassTest, RunsUpdatesFromTheInsideThenLayoutsFromTheOutsideThenDrawing)
{
    runFrames();
    log.clear();
    child->drawn = true;
    child->setBounds({ 0, 0, 10, 10 });
    child->setNeedsDisplay();
    parent->setNeedsLayout();
    child->setNeedsLayout();
    parent->setNeedsUpdateConstraints();
    child->setNeedsUpdateConstraints();
    runFrames();
    EXPECT_EQ(logged(), "child updates; parent updates; parent lays out; child lays out; child draws; ");
}

TEST_F(LayoutPassTest, AViewThatLivesByConstraintsIsUpdatedWithoutBeingAsked)
{
    log.clear();
    const auto demanding = addLogging<DemandingView>(*container, "demanding");
    EXPECT_TRUE(demanding->needsUpdateConstraints());
    runFrames();
    EXPECT_EQ(std::count(log.begin(), log.end(), "demanding updates"), 1);
    EXPECT_FALSE(demanding->needsUpdateConstraints());
}

TEST_F(LayoutPassTest, AnUpdateIsRememberedUntilTheViewIsInAWindow)
{
    const auto alone = make<UIView>();
    const auto inner = addLogging(*alone, "inner");
    inner->setNeedsUpdateConstraints();
    runFrames();
    EXPECT_EQ(std::count(log.begin(), log.end(), "inner updates"), 0);
    container->addSubview(alone);
    runFrames();
    EXPECT_EQ(std::count(log.begin(), log.end(), "inner updates"), 1);
}

TEST_F(LayoutPassTest, LayingOutNowUpdatesConstraintsFirst)
{
    runFrames();
    child->setTranslatesAutoresizingMaskIntoConstraints(false);
    child->inUpdate = [](LoggingView& view) { activate(view.widthAnchor().constraintEqualToConstant(33)); };
    child->setNeedsUpdateConstraints();
    parent->layoutIfNeeded();
    EXPECT_EQ(child->frame().width(), 33);
}

TEST_F(LayoutPassTest, AnUpdateThatAsksForAnotherOneForEverEnds)
{
    child->inUpdate = [](LoggingView& view) { view.setNeedsUpdateConstraints(); };
    child->setNeedsUpdateConstraints();
    log.clear();
    window->layoutIfNeeded();
    EXPECT_GT(log.size(), 10U);
    child->inUpdate = nullptr;
    runFrames();
    EXPECT_FALSE(child->needsUpdateConstraints());
}

TEST_F(LayoutPassTest, ALayoutThatChangesItsConstraintsForEverEnds)
{
    child->setTranslatesAutoresizingMaskIntoConstraints(false);
    const auto width = activate(child->widthAnchor().constraintEqualToConstant(10));
    parent->inLayout = [&](LoggingView&) { width->setConstant(width->constant() == 10 ? 20 : 10); };
    parent->setNeedsLayout();
    window->layoutIfNeeded();
    parent->inLayout = nullptr;
    width->setConstant(15);
    runFrames();
    EXPECT_EQ(child->frame().width(), 15);
}

TEST_F(LayoutPassTest, ConstraintsChangedInALayoutHoldBeforeTheFrame)
{
    child->setTranslatesAutoresizingMaskIntoConstraints(false);
    const auto width = activate(child->widthAnchor().constraintEqualToConstant(10));
    runFrames();
    parent->inLayout = [&](LoggingView&) { width->setConstant(25); };
    parent->setNeedsLayout();
    runFrames();
    EXPECT_EQ(child->frame().width(), 25);
}

TEST_F(LayoutPassTest, AViewRemovedByAnUpdateOrALayoutDisturbsNobody)
{
    runFrames();
    parent->inUpdate = [&](LoggingView&) { child->removeFromSuperview(); };
    parent->setNeedsUpdateConstraints();
    child->setNeedsUpdateConstraints();
    runFrames();
    EXPECT_EQ(child->superview(), nullptr);
    parent->addSubview(child);
    parent->inUpdate = nullptr;
    parent->inLayout = [&](LoggingView&) {
        child = nullptr;
        if (!parent->subviews().empty()) // the removal asks for another layout
            parent->subviews().front()->removeFromSuperview();
    };
    parent->setNeedsLayout();
    runFrames();
    EXPECT_TRUE(parent->subviews().empty());
}

// Twelve rows, each an island of its own: a bar split at a knob, as wide as the screen.
class IslandsTest : public LayoutPassTest {
protected:
    struct Row {
        std::shared_ptr<LoggingView> row;
        std::shared_ptr<LoggingView> knob;
        std::shared_ptr<LoggingView> bar;
        std::shared_ptr<NSLayoutConstraint> place;
    };

    Row makeRow(int index)
    {
        Row made { addLogging(*container, ""), nullptr, nullptr, nullptr };
        made.row->name = "row" + std::to_string(index);
        made.row->setFrame({ 0, index * 50.0, 300, 50 });
        made.knob = addLogging(*made.row, "knob");
        made.bar = addLogging(*made.row, "bar");
        made.knob->setTranslatesAutoresizingMaskIntoConstraints(false);
        made.bar->setTranslatesAutoresizingMaskIntoConstraints(false);
        place(*made.bar, *made.row, { 0, 0, 0, 50 });
        made.bar->removeConstraint(*made.bar->constraints()[0]);
        activate(made.bar->rightAnchor().constraintEqualToAnchor(made.knob->centerXAnchor()));
        activate(made.knob->widthAnchor().constraintEqualToConstant(44));
        move(made, 0.5);
        return made;
    }
    static void move(Row& row, double position)
    {
        if (row.place)
            row.row->removeConstraint(*row.place);
        row.place = activate(NSLayoutConstraint::constraintWithItem(
            *row.knob, CenterX, NSLayoutRelation::Equal, row.row.get(), Right, position, 0));
    }

    std::vector<Row> rows = [this] {
        std::vector<Row> made;
        for (int index = 0; index < 12; ++index)
            made.push_back(makeRow(index));
        runFrames();
        log.clear();
        return made;
    }();
};

TEST_F(IslandsTest, ALayoutInWhichNothingChangedVisitsNobody)
{
    window->layoutIfNeeded();
    EXPECT_EQ(runFrames(), 0);
    EXPECT_EQ(logged(), "");
}

TEST_F(IslandsTest, AKnobThatMovesVisitsItsRowAlone)
{
    move(rows[4], 0.75);
    runFrames();
    EXPECT_EQ(rows[4].knob->center().x(), 225);
    EXPECT_EQ(rows[4].bar->frame().right(), 225);
    EXPECT_EQ(logged(), "row4 lays out; bar lays out; ") << "the knob keeps its size";
}

TEST_F(IslandsTest, LayingOutAViewHonoursConstraintsThatAreHeldAboveIt)
{
    Row& row = rows[4];
    container->addConstraint(row.place);
    row.row->layoutIfNeeded();
    row.place->setConstant(10);
    row.row->layoutIfNeeded();
    EXPECT_EQ(row.knob->center().x(), 160);
    EXPECT_EQ(row.bar->frame().right(), 160);
}

TEST_F(IslandsTest, RowsThatScrollVisitNobody)
{
    for (Row& row : rows)
        row.row->setCenter({ row.row->center().x(), row.row->center().y() - 30 });
    runFrames();
    EXPECT_EQ(logged(), "");
}

TEST_F(IslandsTest, AReplacedConstraintThatComesToTheSameMovesNobody)
{
    move(rows[4], 0.5);
    runFrames();
    EXPECT_EQ(rows[4].knob->center().x(), 150);
    EXPECT_EQ(logged(), "row4 lays out; ");
}

// A view whose controller updates its constraints for it.
class ConstraintOwner : public UIViewOwner {
public:
    std::shared_ptr<UIView> view() override { return m_view; }
    void updateViewConstraints() override
    {
        ++updates;
        UIViewOwner::updateViewConstraints();
    }
    int updates = 0;
    std::shared_ptr<LoggingView> m_view;
};

TEST_F(LayoutPassTest, AControllerUpdatesTheConstraintsOfItsView)
{
    const auto owner = make<ConstraintOwner>();
    owner->m_view = child;
    child->setOwner(owner.get());
    log.clear();
    child->setNeedsUpdateConstraints();
    runFrames();
    EXPECT_EQ(owner->updates, 1);
    EXPECT_EQ(std::count(log.begin(), log.end(), "child updates"), 1);
    child->setOwner(nullptr);
}

} // namespace
