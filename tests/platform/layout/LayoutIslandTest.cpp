// Which constraints are solved together, and what an island tells of itself.
#include "platform/layout/LayoutIsland.h"

#include "tests/platform/layout/LayoutFixture.h"

namespace {

class LayoutIslandTest : public LayoutFixture {
protected:
    std::shared_ptr<UIView> first = addTo(*container);
    std::shared_ptr<UIView> second = addTo(*container);

    static LayoutIsland* islandOf(const std::shared_ptr<NSLayoutConstraint>& constraint)
    {
        return LayoutIsland::islandOf(*constraint).get();
    }
    std::shared_ptr<NSLayoutConstraint> pin(UIView& view)
    {
        return activate(view.leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 5));
    }
};

TEST_F(LayoutIslandTest, ViewsThatOnlyShareAGivenFrameAreSolvedApart)
{
    const auto one = pin(*first);
    const auto other = pin(*second);
    EXPECT_NE(islandOf(one), islandOf(other));
    EXPECT_EQ(islandOf(one)->itemCount(), 1U);
}

TEST_F(LayoutIslandTest, AConstraintBetweenThemBringsThemTogetherForGood)
{
    const auto one = pin(*first);
    const auto other = pin(*second);
    runFrames(); // solved before they meet
    const auto tie = activate(first->widthAnchor().constraintEqualToAnchor(second->widthAnchor()));
    activate(second->widthAnchor().constraintEqualToConstant(30));
    EXPECT_EQ(islandOf(one), islandOf(other));
    EXPECT_EQ(islandOf(one), islandOf(tie));
    EXPECT_EQ(islandOf(one)->itemCount(), 2U);
    EXPECT_EQ(islandOf(one)->constraintCount(), 4U);
    runFrames();
    EXPECT_EQ(first->frame().width(), 30);
    EXPECT_EQ(first->frame().left(), 5);
    tie->setActive(false);
    EXPECT_EQ(islandOf(one), islandOf(other));
}

TEST_F(LayoutIslandTest, AnItemLeavesWithItsLastConstraint)
{
    const auto one = pin(*first);
    const auto tie = activate(second->leftAnchor().constraintEqualToAnchor(first->leftAnchor()));
    runFrames();
    tie->setActive(false);
    EXPECT_EQ(islandOf(one)->itemCount(), 1U);
    EXPECT_EQ(islandOf(tie), nullptr);
    second->removeFromSuperview();
    second = nullptr;
    runFrames();
    EXPECT_EQ(first->frame().left(), 5);
}

TEST_F(LayoutIslandTest, TellsItsItemsItsConstraintsAndWhatIsLeftOut)
{
    const auto one = pin(*first);
    const auto contrary = activate(first->leftAnchor().constraintEqualToAnchor(container->rightAnchor(), -9));
    first->setFrame({ 1, 2, 3, 4 });
    runFrames();
    const QStringList lines = islandOf(one)->description().split(QLatin1Char('\n'));
    EXPECT_TRUE(lines.contains(QStringLiteral("UIView (5 2; 3 4)")));
    EXPECT_TRUE(lines.contains(QStringLiteral("UIView.width is 300")));
    EXPECT_TRUE(lines.contains(QStringLiteral("UIView.left == UIView.left + 5 @1000")));
    EXPECT_TRUE(lines.contains(QStringLiteral("UIView.left == UIView.right - 9 @1000 (not in force)")));
}

TEST_F(LayoutIslandTest, ATwelfthOfAScreenIsSolvedForAMoveInOneRow)
{
    std::vector<std::shared_ptr<NSLayoutConstraint>> places;
    for (int row = 0; row < 12; ++row) {
        const auto cell = make<UIView>(CGRect(0, row * 10.0, 300, 10));
        container->addSubview(cell);
        const auto knob = addTo(*cell);
        places.push_back(activate(knob->centerXAnchor().constraintEqualToAnchor(cell->centerXAnchor())));
    }
    for (std::size_t row = 1; row < places.size(); ++row)
        EXPECT_NE(islandOf(places[row]), islandOf(places[row - 1]));
}

} // namespace
