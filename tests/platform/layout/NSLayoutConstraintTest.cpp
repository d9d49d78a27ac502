#include "tests/platform/layout/LayoutFixture.h"

#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class NSLayoutConstraintTest : public LayoutFixture {
protected:
    std::shared_ptr<UIView> first = addTo(*container);
    std::shared_ptr<UIView> second = addTo(*container);
    AssertionRecorder assertions;

    std::shared_ptr<NSLayoutConstraint> between(NSLayoutAttribute attribute, NSLayoutAttribute other)
    {
        return NSLayoutConstraint::constraintWithItem(
            *first, attribute, NSLayoutRelation::Equal, second.get(), other, 1, 0);
    }
};

TEST_F(NSLayoutConstraintTest, KeepsWhatItWasMadeOf)
{
    const auto constraint = NSLayoutConstraint::constraintWithItem(
        *first, CenterX, NSLayoutRelation::GreaterThanOrEqual, container.get(), Right, 0.25, -3);
    EXPECT_EQ(constraint->firstItem(), first);
    EXPECT_EQ(constraint->secondItem(), container);
    EXPECT_EQ(constraint->firstAttribute(), CenterX);
    EXPECT_EQ(constraint->secondAttribute(), Right);
    EXPECT_EQ(constraint->relation(), NSLayoutRelation::GreaterThanOrEqual);
    EXPECT_EQ(constraint->multiplier(), 0.25);
    EXPECT_EQ(constraint->constant(), -3);
    EXPECT_EQ(constraint->priority(), UILayoutPriorityRequired);
    EXPECT_FALSE(constraint->isActive());
    EXPECT_EQ(constraint->holder(), nullptr);
}

TEST_F(NSLayoutConstraintTest, AttributesAndRelationsHaveTheirFixedNumbers)
{
    EXPECT_EQ(static_cast<int>(NSLayoutAttribute::CenterX), 9);
    EXPECT_EQ(static_cast<int>(NSLayoutAttribute::Right), 2);
    EXPECT_EQ(static_cast<int>(NSLayoutRelation::Equal), 0);
}

TEST_F(NSLayoutConstraintTest, IsHeldByTheNearestViewAroundBothItems)
{
    const auto deep = addTo(*first);
    const auto sideways = activate(deep->leftAnchor().constraintEqualToAnchor(second->leftAnchor()));
    EXPECT_EQ(sideways->holder(), container.get());
    const auto upwards = activate(deep->leftAnchor().constraintEqualToAnchor(first->leftAnchor()));
    EXPECT_EQ(upwards->holder(), first.get());
    const auto alone = activate(deep->widthAnchor().constraintEqualToConstant(10));
    EXPECT_EQ(alone->holder(), deep.get());
    EXPECT_EQ(container->constraints(), NSLayoutConstraint::List { sideways });
}

TEST_F(NSLayoutConstraintTest, ActivatingTwiceHoldsItOnce)
{
    const auto constraint = activate(first->widthAnchor().constraintEqualToConstant(10));
    constraint->setActive(true);
    EXPECT_EQ(first->constraints().size(), 1U);
    constraint->setActive(false);
    constraint->setActive(false);
    EXPECT_TRUE(first->constraints().empty());
    EXPECT_FALSE(constraint->isActive());
}

TEST_F(NSLayoutConstraintTest, ListsOfConstraintsMayHoldNull)
{
    const NSLayoutConstraint::List list { first->widthAnchor().constraintEqualToConstant(10), nullptr };
    NSLayoutConstraint::activateConstraints(list);
    EXPECT_TRUE(list[0]->isActive());
    NSLayoutConstraint::deactivateConstraints(list);
    EXPECT_FALSE(list[0]->isActive());
}

TEST_F(NSLayoutConstraintTest, ViewsWithoutACommonContainerCannotBeTied)
{
    const auto stranger = make<UIView>();
    const auto constraint = first->leftAnchor().constraintEqualToAnchor(stranger->leftAnchor());
    constraint->setActive(true);
    EXPECT_FALSE(constraint->isActive());
    EXPECT_EQ(assertions.messages(),
        std::vector { QStringLiteral("The items of a constraint need a view that contains both: "
                                     "UIView.left == UIView.left @1000") });
    container->addSubview(stranger);
    constraint->setActive(true);
    EXPECT_TRUE(constraint->isActive());
}

TEST_F(NSLayoutConstraintTest, AViewHoldsNothingThatReachesOutOfIt)
{
    const auto constraint = first->leftAnchor().constraintEqualToAnchor(second->leftAnchor());
    first->addConstraint(constraint);
    EXPECT_FALSE(constraint->isActive());
    EXPECT_EQ(assertions.messages(),
        std::vector { QStringLiteral("A view holds constraints only between itself and views inside it: "
                                     "UIView.left == UIView.left @1000") });
}

TEST_F(NSLayoutConstraintTest, AConstraintAddedToAnotherViewMovesThere)
{
    const auto constraint = activate(first->widthAnchor().constraintEqualToConstant(10));
    container->addConstraint(constraint);
    EXPECT_EQ(constraint->holder(), container.get());
    EXPECT_TRUE(first->constraints().empty());
    first->removeConstraint(*constraint);
    EXPECT_TRUE(constraint->isActive()) << "it is held elsewhere";
    container->removeConstraint(*constraint);
    EXPECT_FALSE(constraint->isActive());
}

TEST_F(NSLayoutConstraintTest, RemovingAListTakesOutThoseThatAreHeldHere)
{
    const auto own = activate(first->leftAnchor().constraintEqualToAnchor(container->leftAnchor()));
    const auto foreign = activate(first->widthAnchor().constraintEqualToConstant(10));
    container->removeConstraints(NSLayoutConstraint::List { own, foreign, nullptr });
    EXPECT_FALSE(own->isActive());
    EXPECT_TRUE(foreign->isActive());
}

TEST_F(NSLayoutConstraintTest, AnItemThatGoesTakesItsConstraintsOutOfForce)
{
    const auto constraint = activate(second->leftAnchor().constraintEqualToAnchor(first->leftAnchor()));
    first->removeFromSuperview();
    EXPECT_FALSE(constraint->isActive());
    first = nullptr;
    EXPECT_EQ(constraint->secondItem(), nullptr);
    constraint->setActive(true);
    EXPECT_FALSE(constraint->isActive());
    EXPECT_EQ(assertions.messages(),
        std::vector {
            QStringLiteral("A constraint cannot outlive its items: UIView.left == (gone).left @1000") });
}

TEST_F(NSLayoutConstraintTest, DoesNotKeepItsItemsAlive)
{
    const auto constraint = first->leftAnchor().constraintEqualToAnchor(second->leftAnchor());
    const std::weak_ptr<UIView> watched = second;
    second->removeFromSuperview();
    second = nullptr;
    EXPECT_TRUE(watched.expired());
}

struct Pair {
    NSLayoutAttribute first;
    NSLayoutAttribute second;
    bool comparable;
};

TEST_F(NSLayoutConstraintTest, OnlyWhatLiesOnOneAxisCanBeCompared)
{
    const Pair pairs[] = {
        { Left, Right, true },
        { Left, CenterX, true },
        { Leading, Trailing, true },
        { Leading, CenterX, true },
        { Leading, Left, false },
        { Right, TrailingMargin, false },
        { RightMargin, Right, true },
        { Top, CenterYWithinMargins, true },
        { FirstBaseline, LastBaseline, true },
        { Top, Left, false },
        { Width, Height, true },
        { Width, Left, false },
        { Left, Width, false },
        { NotAnAttribute, Left, false },
        { Left, NotAnAttribute, false },
    };
    for (const Pair& pair : pairs)
        EXPECT_EQ(between(pair.first, pair.second) != nullptr, pair.comparable)
            << static_cast<int>(pair.first) << " with " << static_cast<int>(pair.second);
    EXPECT_EQ(assertions.failures().size(), 7U);
    EXPECT_EQ(assertions.messages()[0], QStringLiteral("A constraint cannot compare leading with left."));
}

TEST_F(NSLayoutConstraintTest, APlaceNeedsAnotherItem)
{
    EXPECT_EQ(NSLayoutConstraint::constraintWithItem(
                  *first, Left, NSLayoutRelation::Equal, nullptr, NotAnAttribute, 1, 10),
        nullptr);
    EXPECT_EQ(
        assertions.messages(), std::vector { QStringLiteral("A constraint cannot compare left with ?.") });
}

TEST_F(NSLayoutConstraintTest, NumbersThatNoScreenHasAreRefused)
{
    for (const double number : { nan, infinity, -infinity, 1e300, -2e7 }) {
        EXPECT_EQ(first->widthAnchor().constraintEqualToConstant(number), nullptr);
        EXPECT_EQ(first->widthAnchor().constraintEqualToAnchor(second->widthAnchor(), number), nullptr);
    }
    EXPECT_EQ(assertions.failures().size(), 10U);
    EXPECT_EQ(
        assertions.messages()[0], QStringLiteral("Invalid parameter not satisfying: isReasonable(constant)"));
    EXPECT_EQ(assertions.messages()[1],
        QStringLiteral("Invalid parameter not satisfying: isReasonable(multiplier)"));
}

TEST_F(NSLayoutConstraintTest, ARelationThatThereIsNotIsRefused)
{
    for (const int relation : { -2, 2, 7 })
        EXPECT_EQ(NSLayoutConstraint::constraintWithItem(
                      *first, Width, static_cast<NSLayoutRelation>(relation), second.get(), Width, 1, 0),
            nullptr);
    const auto message = QStringLiteral("Invalid parameter not satisfying: relation is one of the three");
    EXPECT_EQ(assertions.messages(), (std::vector { message, message, message }));
}

TEST_F(NSLayoutConstraintTest, ANewConstantThatNoScreenHasLeavesTheOldOne)
{
    const auto constraint = activate(first->widthAnchor().constraintEqualToConstant(10));
    for (const double number : { nan, infinity, 1e300 })
        constraint->setConstant(number);
    EXPECT_EQ(constraint->constant(), 10);
    EXPECT_EQ(assertions.failures().size(), 3U);
    container->layoutIfNeeded();
    EXPECT_EQ(first->frame().width(), 10);
}

TEST_F(NSLayoutConstraintTest, PrioritiesLieAboveNoneAndUpToRequired)
{
    const auto constraint = first->widthAnchor().constraintEqualToConstant(10);
    for (const double priority : { 0.0, -1.0, 1000.5, nan, infinity })
        constraint->setPriority(priority);
    EXPECT_EQ(constraint->priority(), UILayoutPriorityRequired);
    EXPECT_EQ(assertions.failures().size(), 5U);
    EXPECT_EQ(assertions.messages()[0],
        QStringLiteral(
            "Invalid parameter not satisfying: priority > 0 && priority <= UILayoutPriorityRequired"));
    constraint->setPriority(999.5);
    EXPECT_EQ(constraint->priority(), 999.5);
}

TEST_F(NSLayoutConstraintTest, PrioritiesOfContentAreHeldToTheSameRange)
{
    first->setContentHuggingPriority(0, UILayoutConstraintAxis::Horizontal);
    first->setContentCompressionResistancePriority(nan, UILayoutConstraintAxis::Vertical);
    EXPECT_EQ(assertions.failures().size(), 2U);
    EXPECT_EQ(first->contentHuggingPriority(UILayoutConstraintAxis::Horizontal), 250);
    EXPECT_EQ(first->contentCompressionResistancePriority(UILayoutConstraintAxis::Vertical), 750);
}

TEST_F(NSLayoutConstraintTest, EveryAnchorRefusesNumbersThatNoScreenHas)
{
    for (const double number : { nan, infinity, -infinity, 1e300 }) {
        EXPECT_EQ(first->leftAnchor().constraintEqualToAnchor(second->rightAnchor(), number), nullptr);
        EXPECT_EQ(
            first->topAnchor().constraintLessThanOrEqualToAnchor(second->bottomAnchor(), number), nullptr);
        EXPECT_EQ(first->centerXAnchor().constraintGreaterThanOrEqualToAnchor(second->leftAnchor(), number),
            nullptr);
        EXPECT_EQ(first->heightAnchor().constraintLessThanOrEqualToConstant(number), nullptr);
        EXPECT_EQ(first->heightAnchor().constraintGreaterThanOrEqualToConstant(number), nullptr);
        EXPECT_EQ(first->widthAnchor().constraintLessThanOrEqualToAnchor(second->widthAnchor(), 1, number),
            nullptr);
        EXPECT_EQ(first->widthAnchor().constraintGreaterThanOrEqualToAnchor(second->widthAnchor(), number),
            nullptr);
    }
    EXPECT_EQ(assertions.failures().size(), 28U);
    NSLayoutConstraint::activateConstraints(NSLayoutConstraint::List { nullptr });
    container->addConstraint(nullptr);
    EXPECT_TRUE(container->constraints().empty());
}

TEST_F(NSLayoutConstraintTest, DescribesItselfAsAnEquation)
{
    const auto thumb = NSLayoutConstraint::constraintWithItem(
        *first, CenterX, NSLayoutRelation::Equal, container.get(), Right, 0.5, 0);
    EXPECT_EQ(thumb->description(), QStringLiteral("UIView.centerX == UIView.right * 0.5 @1000"));
    const auto narrow = first->widthAnchor().constraintLessThanOrEqualToConstant(66);
    narrow->setPriority(750);
    narrow->setIdentifier(QStringLiteral("narrow"));
    EXPECT_EQ(narrow->description(), QStringLiteral("'narrow' UIView.width <= 66 @750"));
    const auto gap = first->leftAnchor().constraintGreaterThanOrEqualToAnchor(second->rightAnchor(), -8);
    EXPECT_EQ(gap->description(), QStringLiteral("UIView.left >= UIView.right - 8 @1000"));
}

} // namespace
