// Required constraints that contradict each other: they are named, one is left out, and nothing else suffers.
#include "tests/platform/layout/LayoutFixture.h"

namespace {

class LayoutConflictTest : public LayoutFixture {
protected:
    std::shared_ptr<UIView> view = addTo(*container);

    static std::shared_ptr<NSLayoutConstraint> named(
        const char* name, const std::shared_ptr<NSLayoutConstraint>& constraint)
    {
        constraint->setIdentifier(QString::fromLatin1(name));
        return activate(constraint);
    }
};

TEST_F(LayoutConflictTest, TheNewestIsLeftOutAndBothAreNamed)
{
    named("narrow", view->widthAnchor().constraintEqualToConstant(10));
    const auto wide = named("wide", view->widthAnchor().constraintEqualToConstant(20));
    runFrames();
    EXPECT_EQ(view->frame().width(), 10);
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].broken, QStringLiteral("'wide' UIView.width == 20 @1000"));
    EXPECT_EQ(conflicts[0].constraints,
        (std::vector<NSString> { QStringLiteral("'narrow' UIView.width == 10 @1000"),
            QStringLiteral("'wide' UIView.width == 20 @1000") }));
    EXPECT_TRUE(wide->isActive()) << "it is only left out";
}

TEST_F(LayoutConflictTest, OneThatWasLeftOutComesBackWhenItFits)
{
    const auto narrow = named("narrow", view->widthAnchor().constraintEqualToConstant(10));
    named("wide", view->widthAnchor().constraintEqualToConstant(20));
    runFrames();
    narrow->setActive(false);
    runFrames();
    EXPECT_EQ(view->frame().width(), 20);
    EXPECT_EQ(conflicts.size(), 1U);
}

TEST_F(LayoutConflictTest, ContradictionsByANewConstantAreFoundAndHealed)
{
    named("least", view->widthAnchor().constraintGreaterThanOrEqualToConstant(30));
    const auto exact = named("exact", view->widthAnchor().constraintEqualToConstant(40));
    runFrames();
    exact->setConstant(20);
    runFrames();
    EXPECT_EQ(view->frame().width(), 30);
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].broken, QStringLiteral("'exact' UIView.width == 20 @1000"));
    exact->setConstant(50);
    runFrames();
    EXPECT_EQ(view->frame().width(), 50);
}

TEST_F(LayoutConflictTest, AContainerThatIsTooSmallIsNamedAndTheLayoutHealsWhenItGrows)
{
    named("left", view->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 8));
    named("right", view->rightAnchor().constraintEqualToAnchor(container->rightAnchor(), -8));
    named("width", view->widthAnchor().constraintGreaterThanOrEqualToConstant(100));
    runFrames();
    EXPECT_TRUE(conflicts.empty());
    container->setFrame({ 0, 0, 60, 200 });
    runFrames();
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].broken, QStringLiteral("'width' UIView.width >= 100 @1000"));
    EXPECT_TRUE(std::count(conflicts[0].constraints.begin(), conflicts[0].constraints.end(),
        QStringLiteral("UIView.width is 60")));
    EXPECT_EQ(view->frame(), CGRect(8, 0, 44, 0));
    container->setFrame({ 0, 0, 400, 200 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(8, 0, 384, 0));
    container->setFrame({ 0, 0, 70, 200 });
    runFrames();
    EXPECT_EQ(conflicts.size(), 1U) << "reported once, not at every size";
}

TEST_F(LayoutConflictTest, OtherViewsKeepTheirFrames)
{
    const auto other = addTo(*container);
    place(*other, *container, { 1, 2, 3, 4 });
    named("narrow", view->widthAnchor().constraintEqualToConstant(10));
    named("wide", view->widthAnchor().constraintEqualToAnchor(other->widthAnchor(), 10));
    runFrames();
    EXPECT_EQ(other->frame(), CGRect(1, 2, 3, 4));
    EXPECT_EQ(conflicts.size(), 1U);
}

TEST_F(LayoutConflictTest, AConstraintThatContradictsAGivenFrameIsLeftOut)
{
    named("root", container->widthAnchor().constraintEqualToConstant(1));
    runFrames();
    EXPECT_EQ(container->frame().width(), 300);
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].broken, QStringLiteral("'root' UIView.width == 1 @1000"));
}

TEST_F(LayoutConflictTest, RequiredContentGivesWayToConstraints)
{
    const auto content = addTo<ContentView>(*container);
    content->setContentSize({ 40, 40 });
    content->setContentHuggingPriority(UILayoutPriorityRequired, UILayoutConstraintAxis::Horizontal);
    content->setContentCompressionResistancePriority(
        UILayoutPriorityRequired, UILayoutConstraintAxis::Horizontal);
    named("wide", content->widthAnchor().constraintEqualToConstant(90));
    runFrames();
    EXPECT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(content->frame().width(), 40);
}

TEST_F(LayoutConflictTest, WeakerConstraintsNeverConflict)
{
    activate(view->widthAnchor().constraintEqualToConstant(10), 999);
    activate(view->widthAnchor().constraintEqualToConstant(20), 998);
    runFrames();
    EXPECT_TRUE(conflicts.empty());
    EXPECT_EQ(view->frame().width(), 10);
}

TEST_F(LayoutConflictTest, AThousandContradictionsAreAllSurvived)
{
    for (int value = 0; value < 1000; ++value)
        activate(view->widthAnchor().constraintEqualToConstant(value));
    runFrames();
    EXPECT_EQ(conflicts.size(), 999U);
    EXPECT_EQ(view->frame().width(), 0);
}

TEST_F(LayoutConflictTest, AHandlerThatRemovesTheConstraintIsHeard)
{
    const auto narrow = named("narrow", view->widthAnchor().constraintEqualToConstant(10));
    const auto wide = named("wide", view->widthAnchor().constraintEqualToConstant(20));
    runFrames();
    wide->setActive(false);
    narrow->setConstant(12);
    runFrames();
    EXPECT_EQ(view->frame().width(), 12);
    EXPECT_EQ(conflicts.size(), 1U);
}

} // namespace
