// What constraints find: frames, from places, sizes, multipliers, priorities and what contents ask for.
#include "tests/platform/layout/LayoutFixture.h"

namespace {

class LayoutEngineTest : public LayoutFixture {
protected:
    std::shared_ptr<UIView> view = addTo(*container);
};

TEST_F(LayoutEngineTest, FindsAFrameFromFourEdges)
{
    activate(view->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 10));
    activate(view->topAnchor().constraintEqualToAnchor(container->topAnchor(), 20));
    activate(view->rightAnchor().constraintEqualToAnchor(container->rightAnchor(), -30));
    activate(view->bottomAnchor().constraintEqualToAnchor(container->bottomAnchor(), -40));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(10, 20, 260, 140));
}

TEST_F(LayoutEngineTest, FollowsTheContainersSize)
{
    activate(view->leadingAnchor().constraintEqualToAnchor(container->leadingAnchor(), 10));
    activate(view->trailingAnchor().constraintEqualToAnchor(container->trailingAnchor(), -10));
    activate(view->centerYAnchor().constraintEqualToAnchor(container->centerYAnchor()));
    activate(view->heightAnchor().constraintEqualToAnchor(container->heightAnchor(), 0.5, 4));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(10, 48, 280, 104));
    for (const double width : { 100.0, 500.0, 0.0, 20.0 }) {
        container->setFrame({ 5, 6, width, 100 });
        runFrames();
        EXPECT_EQ(view->frame(), CGRect(10, 23, std::max(width - 20, 0.0), 54)) << width;
    }
}

TEST_F(LayoutEngineTest, ItsOwnRightEdgeIsAContainersWidthWhereverTheContainerIs)
{
    container->setFrame({ 40, 50, 300, 200 });
    activate(NSLayoutConstraint::constraintWithItem(
        *view, CenterX, NSLayoutRelation::Equal, container.get(), Right, 0.25, 0));
    activate(view->widthAnchor().constraintEqualToConstant(20));
    activate(view->topAnchor().constraintEqualToAnchor(container->topAnchor()));
    activate(view->heightAnchor().constraintEqualToConstant(10));
    runFrames();
    EXPECT_EQ(view->center(), CGPoint(75, 5));
}

TEST_F(LayoutEngineTest, TiesViewsOfDifferentDepth)
{
    const auto outer = addTo(*container);
    place(*outer, *container, { 50, 60, 100, 100 });
    const auto deep = addTo(*outer);
    place(*deep, *outer, { 7, 8, 20, 20 });
    activate(view->leftAnchor().constraintEqualToAnchor(deep->rightAnchor(), 5));
    activate(view->topAnchor().constraintEqualToAnchor(deep->bottomAnchor(), 5));
    activate(view->widthAnchor().constraintEqualToAnchor(deep->heightAnchor(), 2));
    activate(view->heightAnchor().constraintEqualToConstant(10));
    runFrames();
    EXPECT_EQ(deep->frame(), CGRect(7, 8, 20, 20));
    EXPECT_EQ(view->frame(), CGRect(82, 93, 40, 10));
}

TEST_F(LayoutEngineTest, ReadsTheGivenFramesOfSiblings)
{
    const auto sibling = make<UIView>(CGRect(30, 40, 50, 60));
    container->addSubview(sibling);
    activate(view->leftAnchor().constraintEqualToAnchor(sibling->rightAnchor()));
    activate(view->topAnchor().constraintEqualToAnchor(sibling->topAnchor()));
    activate(view->widthAnchor().constraintEqualToAnchor(sibling->widthAnchor()));
    activate(view->heightAnchor().constraintEqualToAnchor(sibling->heightAnchor()));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(80, 40, 50, 60));
    sibling->setCenter({ 100, 100 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(125, 70, 50, 60));
    EXPECT_EQ(sibling->frame(), CGRect(75, 70, 50, 60)) << "constraints never move a given frame";
}

TEST_F(LayoutEngineTest, InequalitiesLeaveRoomAndHoldAtTheirEnds)
{
    activate(view->widthAnchor().constraintLessThanOrEqualToConstant(66));
    activate(view->widthAnchor().constraintGreaterThanOrEqualToConstant(20));
    const auto wish = activate(view->widthAnchor().constraintEqualToConstant(44), 500);
    runFrames();
    EXPECT_EQ(view->frame().width(), 44);
    wish->setConstant(100);
    runFrames();
    EXPECT_EQ(view->frame().width(), 66);
    wish->setConstant(3);
    runFrames();
    EXPECT_EQ(view->frame().width(), 20);
}

TEST_F(LayoutEngineTest, AHigherPriorityWinsOverManyLowerOnes)
{
    for (int count = 0; count < 20; ++count)
        activate(view->widthAnchor().constraintEqualToConstant(100), 250);
    activate(view->widthAnchor().constraintEqualToConstant(50), 251);
    runFrames();
    EXPECT_EQ(view->frame().width(), 50);
}

TEST_F(LayoutEngineTest, APriorityMayChangeWhileTheConstraintIsActive)
{
    const auto narrow = activate(view->widthAnchor().constraintEqualToConstant(50), 600);
    activate(view->widthAnchor().constraintEqualToConstant(80), 500);
    runFrames();
    EXPECT_EQ(view->frame().width(), 50);
    narrow->setPriority(400);
    runFrames();
    EXPECT_EQ(view->frame().width(), 80);
    narrow->setPriority(UILayoutPriorityRequired);
    runFrames();
    EXPECT_EQ(view->frame().width(), 50);
}

TEST_F(LayoutEngineTest, AViewWithoutConstraintsIsLeftWhereItIs)
{
    view->setFrame({ 11, 12, 13, 14 });
    runFrames();
    container->setFrame({ 0, 0, 77, 77 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(11, 12, 13, 14));
}

TEST_F(LayoutEngineTest, WhatConstraintsDoNotSayStaysAsItIs)
{
    view->setFrame({ 11, 12, 13, 14 });
    activate(view->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 50));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(50, 12, 13, 14));
}

TEST_F(LayoutEngineTest, AFrameSetByHandLastsUntilTheNextLayout)
{
    place(*view, *container, { 10, 10, 20, 20 });
    runFrames();
    view->setFrame({ 0, 0, 99, 99 });
    EXPECT_EQ(view->frame(), CGRect(0, 0, 99, 99));
    container->setNeedsLayout();
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(10, 10, 20, 20));
}

TEST_F(LayoutEngineTest, ATransformDoesNotDisturbTheFrame)
{
    place(*view, *container, { 10, 10, 20, 20 });
    view->setTransform(CGAffineTransform().rotate(30).scale(2, 2));
    runFrames();
    EXPECT_EQ(view->center(), CGPoint(20, 20));
    EXPECT_EQ(view->bounds().size(), CGSize(20, 20));
}

TEST_F(LayoutEngineTest, TheOriginOfAContainersBoundsDoesNotShiftItsItems)
{
    place(*view, *container, { 10, 10, 20, 20 });
    container->setBounds({ 0, 100, 300, 200 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(10, 10, 20, 20));
}

TEST_F(LayoutEngineTest, SizesNeverFallBelowNothing)
{
    activate(view->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 200));
    activate(view->rightAnchor().constraintEqualToAnchor(container->rightAnchor(), -200));
    runFrames();
    EXPECT_EQ(view->frame().width(), 0);
}

TEST_F(LayoutEngineTest, RemovingAConstraintFreesWhatItHeld)
{
    place(*view, *container, { 10, 10, 20, 20 });
    const auto wide = activate(view->widthAnchor().constraintEqualToConstant(80), 100);
    runFrames();
    ASSERT_EQ(view->frame().width(), 20);
    NSLayoutConstraint::deactivateConstraints(NSLayoutConstraint::List(view->constraints()));
    wide->setActive(true);
    runFrames();
    EXPECT_EQ(view->frame().width(), 80);
}

TEST_F(LayoutEngineTest, ReplacingAConstraintTenThousandTimesKeepsTheFramesExact)
{
    place(*view, *container, { 0, 0, 20, 20 });
    const auto follower = addTo(*container);
    activate(follower->leftAnchor().constraintEqualToAnchor(view->rightAnchor()));
    activate(follower->rightAnchor().constraintEqualToAnchor(container->rightAnchor()));
    const auto left = view->leftAnchor().constraintEqualToAnchor(container->leftAnchor());
    container->removeConstraint(*container->constraints()[0]);
    auto current = activate(left);
    for (int step = 0; step < 10000; ++step) {
        container->removeConstraint(*current);
        const double position = step % 91 / 100.0;
        current = activate(NSLayoutConstraint::constraintWithItem(
            *view, CenterX, NSLayoutRelation::Equal, container.get(), Right, position, 0));
        container->layoutIfNeeded();
        ASSERT_EQ(view->center().x(), position * 300);
        ASSERT_NEAR(follower->frame().left(), view->frame().right(), 1e-9);
        ASSERT_NEAR(follower->frame().right(), 300, 1e-9);
    }
}

TEST_F(LayoutEngineTest, AViewThatIsTakenOutLosesItsTiesToTheOutsideOnly)
{
    const auto inner = addTo(*view);
    place(*view, *container, { 10, 10, 100, 100 });
    place(*inner, *view, { 5, 5, 20, 20 });
    activate(inner->leftAnchor().constraintGreaterThanOrEqualToAnchor(container->leftAnchor()));
    runFrames();
    view->removeFromSuperview();
    EXPECT_TRUE(container->constraints().empty());
    EXPECT_EQ(view->constraints().size(), 4U) << "its own size, and the place of the view inside";
    EXPECT_EQ(inner->constraints().size(), 2U);

    container->addSubview(view);
    runFrames();
    EXPECT_EQ(view->frame().size(), CGSize(100, 100));
    activate(view->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 33));
    runFrames();
    EXPECT_EQ(view->frame().left(), 33);
    EXPECT_EQ(inner->frame(), CGRect(5, 5, 20, 20));
}

TEST_F(LayoutEngineTest, AViewThatGoesFreesItsSiblings)
{
    auto sibling = addTo(*container);
    place(*sibling, *container, { 10, 10, 100, 100 });
    activate(view->leftAnchor().constraintEqualToAnchor(sibling->rightAnchor()));
    activate(view->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 3), 500);
    runFrames();
    EXPECT_EQ(view->frame().left(), 110);
    sibling->removeFromSuperview();
    sibling = nullptr;
    runFrames();
    EXPECT_EQ(view->frame().left(), 3);
}

TEST_F(LayoutEngineTest, AViewMayChangeBetweenAGivenFrameAndAFoundOne)
{
    place(*view, *container, { 10, 10, 100, 100 });
    const auto inner = addTo(*view);
    activate(inner->widthAnchor().constraintEqualToAnchor(view->widthAnchor(), 0.5));
    runFrames();
    EXPECT_EQ(inner->frame().width(), 50);

    conflicts.clear();
    view->setTranslatesAutoresizingMaskIntoConstraints(true);
    view->setFrame({ 0, 0, 40, 40 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(0, 0, 40, 40)) << "constraints that contradict it are left out";
    EXPECT_EQ(inner->frame().width(), 20);
    EXPECT_EQ(conflicts.size(), 4U);

    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(10, 10, 100, 100));
    EXPECT_EQ(inner->frame().width(), 50);
}

TEST_F(LayoutEngineTest, AFoundFrameDoesNotResizeWithItsSuperview)
{
    view->setAutoresizingMask(UIViewAutoresizing::FlexibleWidth);
    place(*view, *container, { 10, 10, 100, 100 });
    runFrames();
    container->setFrame({ 0, 0, 600, 200 });
    EXPECT_EQ(view->frame(), CGRect(10, 10, 100, 100));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(10, 10, 100, 100));
}

TEST_F(LayoutEngineTest, AGivenFrameThatNoScreenHasIsNotFollowed)
{
    activate(view->widthAnchor().constraintEqualToAnchor(container->widthAnchor()));
    runFrames();
    container->setBounds({ 0, 0, 1e200, 10 });
    runFrames();
    EXPECT_EQ(view->frame().width(), 300);
    container->setBounds({ 0, 0, 100, 10 });
    runFrames();
    EXPECT_EQ(view->frame().width(), 100);
}

TEST_F(LayoutEngineTest, AContainerMayLeaveAndComeBackWithItsLayout)
{
    place(*view, *container, { 10, 10, 20, 20 });
    runFrames();
    for (int time = 0; time < 3; ++time) {
        container->removeFromSuperview();
        window->addSubview(container);
    }
    activate(view->widthAnchor().constraintGreaterThanOrEqualToConstant(5));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(10, 10, 20, 20));
}

TEST_F(LayoutEngineTest, WorksWithoutAWindow)
{
    const auto alone = make<UIView>(CGRect(0, 0, 100, 100));
    const auto inner = addTo(*alone);
    place(*inner, *alone, { 1, 2, 3, 4 });
    alone->layoutIfNeeded();
    EXPECT_EQ(inner->frame(), CGRect(1, 2, 3, 4));
}

TEST_F(LayoutEngineTest, ADeepChainOfViewsIsLaidOutInOnePass)
{
    auto outer = container;
    std::vector<std::shared_ptr<UIView>> chain;
    for (int depth = 0; depth < 20; ++depth) {
        chain.push_back(addTo(*outer));
        for (const auto attribute : { Left, Top })
            activate(NSLayoutConstraint::constraintWithItem(
                *chain.back(), attribute, NSLayoutRelation::Equal, outer.get(), attribute, 1, 1));
        for (const auto attribute : { Right, Bottom })
            activate(NSLayoutConstraint::constraintWithItem(
                *chain.back(), attribute, NSLayoutRelation::Equal, outer.get(), attribute, 1, -1));
        outer = chain.back();
    }
    container->layoutIfNeeded();
    EXPECT_EQ(chain.back()->frame(), CGRect(1, 1, 260, 160));
    container->setFrame({ 0, 0, 1000, 900 });
    runFrames();
    EXPECT_EQ(chain.back()->frame(), CGRect(1, 1, 960, 860));
}

} // namespace
