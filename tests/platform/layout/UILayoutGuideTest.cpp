#include "tests/platform/layout/LayoutFixture.h"

#include <limits>

namespace {

class UILayoutGuideTest : public LayoutFixture {
protected:
    std::shared_ptr<UIView> view = addTo(*container);

    static void fill(UIView& view, AnchoredLayoutItem& item)
    {
        activate(view.leftAnchor().constraintEqualToAnchor(item.leftAnchor()));
        activate(view.rightAnchor().constraintEqualToAnchor(item.rightAnchor()));
        activate(view.topAnchor().constraintEqualToAnchor(item.topAnchor()));
        activate(view.bottomAnchor().constraintEqualToAnchor(item.bottomAnchor()));
    }
};

TEST_F(UILayoutGuideTest, TakesPartWithoutBeingSeen)
{
    const auto gap = make<UILayoutGuide>();
    container->addLayoutGuide(gap);
    EXPECT_EQ(gap->owningView(), container.get());
    activate(gap->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 10));
    activate(gap->widthAnchor().constraintEqualToConstant(30));
    activate(view->leftAnchor().constraintEqualToAnchor(gap->rightAnchor()));
    runFrames();
    EXPECT_EQ(view->frame().left(), 40);
    EXPECT_EQ(gap->frame().left(), 10);
    EXPECT_EQ(gap->frame().width(), 30);
}

TEST_F(UILayoutGuideTest, TakesItsConstraintsAlongWhenItGoes)
{
    auto gap = make<UILayoutGuide>();
    container->addLayoutGuide(gap);
    const auto tie = activate(view->leftAnchor().constraintEqualToAnchor(gap->rightAnchor()));
    container->removeLayoutGuide(*gap);
    EXPECT_FALSE(tie->isActive());
    EXPECT_EQ(gap->owningView(), nullptr);
    EXPECT_TRUE(container->layoutGuides().empty());
}

TEST_F(UILayoutGuideTest, OutlivesItsOwnerEmpty)
{
    const auto gap = make<UILayoutGuide>();
    {
        const auto owner = make<UIView>(CGRect(0, 0, 10, 10));
        owner->addLayoutGuide(gap);
        activate(gap->widthAnchor().constraintEqualToAnchor(owner->widthAnchor()));
    }
    EXPECT_EQ(gap->owningView(), nullptr);
    EXPECT_EQ(gap->frame(), CGRect());
}

TEST_F(UILayoutGuideTest, TheSafeAreaIsWhatBarsAndNotchesLeave)
{
    container->setFrame({ 0, 0, 390, 844 });
    fill(*view, container->safeAreaLayoutGuide());
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(0, 47, 390, 763));
    EXPECT_EQ(container->safeAreaLayoutGuide().frame(), CGRect(0, 47, 390, 763));

    container->setFrame({ 0, 20, 390, 100 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(0, 27, 390, 73)) << "what is left of the notch, and no home indicator";
}

TEST_F(UILayoutGuideTest, TheSafeAreaFollowsASuperviewThatMoves)
{
    container->setFrame({ 0, 0, 390, 844 });
    const auto deep = make<UIView>(CGRect(0, 0, 390, 100));
    container->addSubview(deep);
    const auto content = addTo(*deep);
    activate(content->topAnchor().constraintEqualToAnchor(deep->safeAreaLayoutGuide().topAnchor()));
    runFrames();
    EXPECT_EQ(content->frame().top(), 47);
    container->setFrame({ 0, 40, 390, 804 });
    runFrames();
    EXPECT_EQ(content->frame().top(), 7);
    container->removeFromSuperview();
    container->setNeedsLayout();
    container->layoutIfNeeded();
    EXPECT_EQ(content->frame().top(), 0) << "outside of a window nothing covers it";
}

TEST_F(UILayoutGuideTest, MarginsAreEightPointsUnlessSet)
{
    container->setFrame({ 0, 100, 300, 200 });
    EXPECT_EQ(container->layoutMargins(), (UIEdgeInsets { 8, 8, 8, 8 }));
    fill(*view, container->layoutMarginsGuide());
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(8, 8, 284, 184));
    container->setLayoutMargins({ 1, 2, 3, 4 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(2, 1, 294, 196));
}

TEST_F(UILayoutGuideTest, MarginAttributesAreTheEdgesOfTheMargins)
{
    container->setFrame({ 0, 100, 300, 200 });
    container->setLayoutMargins({ 10, 20, 30, 40 });
    const std::pair<NSLayoutAttribute, NSLayoutAttribute> pairs[] = { { Leading, LeadingMargin },
        { Trailing, TrailingMargin }, { Top, TopMargin }, { CenterY, CenterYWithinMargins } };
    for (const auto& [attribute, margin] : pairs)
        activate(NSLayoutConstraint::constraintWithItem(
            *view, attribute, NSLayoutRelation::Equal, container.get(), margin, 1, 0));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(20, 10, 240, 160));
}

TEST_F(UILayoutGuideTest, MarginsMayPreserveThoseOfTheSuperview)
{
    container->setFrame({ 0, 100, 300, 200 });
    container->setLayoutMargins({ 50, 50, 50, 50 });
    const auto inner = make<UIView>(CGRect(10, 0, 290, 200));
    container->addSubview(inner);
    EXPECT_EQ(inner->layoutMargins(), (UIEdgeInsets { 8, 8, 8, 8 }));
    inner->setPreservesSuperviewLayoutMargins(true);
    EXPECT_EQ(inner->layoutMargins(), (UIEdgeInsets { 50, 40, 50, 50 }));
}

TEST_F(UILayoutGuideTest, MarginsThatAreNoNumbersAreRefused)
{
    AssertionRecorder assertions;
    container->setLayoutMargins({ 0, std::nan(""), 0, 0 });
    EXPECT_EQ(assertions.messages(),
        std::vector { QStringLiteral("Invalid parameter not satisfying: isfinite(margins)") });
    container->setFrame({ 0, 100, 300, 200 });
    EXPECT_EQ(container->layoutMargins(), (UIEdgeInsets { 8, 8, 8, 8 }));
}

TEST_F(UILayoutGuideTest, InsetsThatAreNotFiniteAreAProgrammingErrorAndChangeNothing)
{
    const auto guide = make<UILayoutGuide>(UIEdgeInsets { 1, 2, 3, 4 });
    container->addLayoutGuide(guide);
    fill(*view, *guide);
    AssertionRecorder assertions;
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double number : { std::nan(""), infinity, -infinity })
        guide->setInsets({ 0, 0, number, 0 });
    const auto message = QStringLiteral("Invalid parameter not satisfying: insets are finite");
    EXPECT_EQ(assertions.messages(), (std::vector { message, message, message }));
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(2, 1, 294, 196));
}

TEST_F(UILayoutGuideTest, AGuideMadeWithInsetsThatAreNotFiniteHasNone)
{
    AssertionRecorder assertions;
    const auto guide = make<UILayoutGuide>(UIEdgeInsets { std::nan(""), 2, 3, 4 });
    EXPECT_EQ(assertions.messages(),
        std::vector { QStringLiteral("Invalid parameter not satisfying: insets are finite") });
    container->addLayoutGuide(guide);
    EXPECT_EQ(guide->frame(), CGRect(0, 0, 300, 200));
}

TEST_F(UILayoutGuideTest, InsetsBeyondAnyScreenHarmNothing)
{
    const auto guide = make<UILayoutGuide>(UIEdgeInsets { 1, 2, 3, 4 });
    container->addLayoutGuide(guide);
    fill(*view, *guide);
    runFrames();
    for (const double number : { 1e9, -1e9, 1e300, -1e300 }) {
        guide->setInsets({ number, number, number, number });
        container->setLayoutMargins({ number, number, number, number });
        runFrames();
        guide->setInsets({ 1, 2, 3, 4 });
        runFrames();
        EXPECT_EQ(view->frame(), CGRect(2, 1, 294, 196)) << number;
    }
}

TEST_F(UILayoutGuideTest, AGuideThatConstraintsHaveFoundMayBeGivenInsets)
{
    const auto guide = make<UILayoutGuide>();
    container->addLayoutGuide(guide);
    fill(*view, *guide);
    activate(guide->leftAnchor().constraintEqualToAnchor(container->leftAnchor(), 50));
    runFrames();
    EXPECT_EQ(view->frame().left(), 50);
    container->removeConstraints(NSLayoutConstraint::List(container->constraints()));
    fill(*view, *guide);
    guide->setInsets({ 1, 2, 3, 4 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(2, 1, 294, 196));
}

} // namespace
