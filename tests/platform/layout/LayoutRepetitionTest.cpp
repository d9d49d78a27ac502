// Constraints that say what others say already: any number of them, one taken out, all changed together.
#include "platform/layout/LayoutIsland.h"
#include "tests/platform/layout/LayoutFixture.h"

namespace {

class LayoutRepetitionTest : public LayoutFixture {
protected:
    NSLayoutConstraint::List activateFormat(const char* format)
    {
        auto constraints = NSLayoutConstraint::constraintsWithVisualFormat(QString::fromLatin1(format),
            NSLayoutFormatOptions::None, {}, { { QStringLiteral("slider"), slider } });
        NSLayoutConstraint::activateConstraints(constraints);
        return constraints;
    }
    // How many rows the solver's tableau has after a layout.
    qsizetype rowCount(const NSLayoutConstraint& constraint)
    {
        container->layoutIfNeeded();
        return LayoutIsland::islandOf(constraint)->description().count(QStringLiteral("\nrow "));
    }

    std::shared_ptr<ContentView> slider = addTo<ContentView>(*container);
};

TEST_F(LayoutRepetitionTest, ASizeThatIsAskedForAThousandTimesLeavesTheSolverAsSmallAsBefore)
{
    slider->setContentSize({ 30, 30 });
    const auto first = activateFormat("V:|-(0)-[slider(44)]").front();
    const auto rows = rowCount(*first);
    for (int time = 0; time < 1000; ++time) {
        activateFormat("V:[slider(44)]");
        if (time % 100 == 0) {
            EXPECT_EQ(rowCount(*first), rows);
        }
    }
    EXPECT_EQ(rowCount(*first), rows);
    EXPECT_EQ(slider->frame().height(), 44);
    EXPECT_TRUE(conflicts.empty());
}

TEST_F(LayoutRepetitionTest, WhicheverOfThemGoesTheOthersHold)
{
    slider->setContentSize({ 30, 30 });
    for (std::size_t first = 0; first < 4; ++first) {
        NSLayoutConstraint::List constraints;
        for (int time = 0; time < 4; ++time)
            constraints.push_back(activateFormat("V:[slider(44)]").front());
        for (std::size_t gone = 0; gone < 4; ++gone) {
            container->layoutIfNeeded();
            EXPECT_EQ(slider->frame().height(), 44);
            constraints[(first + gone) % 4]->setActive(false);
        }
        container->layoutIfNeeded();
        EXPECT_EQ(slider->frame().height(), 44) << "nothing finds it any more";
    }
    EXPECT_TRUE(conflicts.empty());
}

TEST_F(LayoutRepetitionTest, AContradictionIsReportedWithOneOfThemAndTheNewestIsLeftOut)
{
    for (int time = 0; time < 3; ++time)
        activateFormat("V:[slider(44)]").front()->setIdentifier(QStringLiteral("equal"));
    container->layoutIfNeeded();
    activateFormat("V:[slider(50)]").front()->setIdentifier(QStringLiteral("other"));
    container->layoutIfNeeded();
    EXPECT_EQ(slider->frame().height(), 44);
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].broken, QStringLiteral("'other' ContentView.height == 50 @1000"));
    EXPECT_EQ(conflicts[0].constraints,
        (std::vector<NSString> { QStringLiteral("'equal' ContentView.height == 44 @1000"),
            QStringLiteral("'other' ContentView.height == 50 @1000") }));
}

TEST_F(LayoutRepetitionTest, TheNewestIsLeftOutWhenAnOlderOneChanges)
{
    NSLayoutConstraint::List constraints;
    for (const char* name : { "first", "second", "third" }) {
        constraints.push_back(activateFormat("V:[slider(44)]").front());
        constraints.back()->setIdentifier(QString::fromLatin1(name));
    }
    container->layoutIfNeeded();
    constraints[0]->setConstant(50);
    container->layoutIfNeeded();
    EXPECT_EQ(slider->frame().height(), 50);
    ASSERT_EQ(conflicts.size(), 2U);
    for (const auto& conflict : conflicts) {
        EXPECT_EQ(conflict.constraints.size(), 2U);
        EXPECT_EQ(conflict.constraints.front(), QStringLiteral("'first' ContentView.height == 50 @1000"));
    }
    constraints[0]->setActive(false);
    container->layoutIfNeeded();
    EXPECT_EQ(slider->frame().height(), 44);
    EXPECT_EQ(conflicts.size(), 2U);
}

TEST_F(LayoutRepetitionTest, TwoThatSayTheSameMayChangeTogether)
{
    const auto one = activateFormat("V:[slider(44)]").front();
    const auto other = activateFormat("V:[slider(44)]").front();
    container->layoutIfNeeded();
    one->setConstant(50);
    other->setConstant(50);
    container->layoutIfNeeded();
    EXPECT_EQ(slider->frame().height(), 50);
    EXPECT_TRUE(conflicts.empty());
}

TEST_F(LayoutRepetitionTest, AConstantMayFollowTheFrameAroundIt)
{
    activateFormat("H:|-(0)-[slider]-(0)-|");
    const auto width = activateFormat("H:[slider(300)]").front();
    container->layoutIfNeeded();
    container->setFrame({ 0, 0, 400, 200 });
    width->setConstant(400);
    container->layoutIfNeeded();
    EXPECT_EQ(slider->frame().width(), 400);
    EXPECT_TRUE(conflicts.empty());
}

} // namespace
