// The constraints that formats give, and what was given with a format but does not fit it.
#include "tests/platform/layout/LayoutFixture.h"

#include <limits>

namespace {

using Lines = std::vector<std::string>;
using Metrics = NSLayoutConstraint::Metrics;
using enum NSLayoutFormatOptions;

class NamedView : public UIView {
public:
    using UIView::UIView;

    NSString layoutName() const override { return name; }

    NSString name = QStringLiteral("super");
};

class VisualFormatConstraintsTest : public LayoutFixture {
protected:
    VisualFormatConstraintsTest()
    {
        for (const char* name : { "a", "b", "c" }) {
            const auto view = addTo<NamedView>(*outer);
            view->name = QLatin1String(name);
            views.emplace_back(view->name, view);
        }
    }

    NSLayoutConstraint::List constraintsOf(const char* format, NSLayoutFormatOptions options = None) const
    {
        return NSLayoutConstraint::constraintsWithVisualFormat(
            QString::fromUtf8(format), options, metrics, views);
    }
    Lines lines(const char* format, NSLayoutFormatOptions options = None) const
    {
        Lines all;
        for (const auto& constraint : constraintsOf(format, options))
            all.push_back(constraint->description().toStdString());
        return all;
    }
    // The one message, without its first words.
    std::string errorOf(const char* format, NSLayoutFormatOptions options = None) const
    {
        AssertionRecorder assertions;
        EXPECT_TRUE(constraintsOf(format, options).empty());
        if (assertions.failures().size() != 1)
            return std::to_string(assertions.failures().size()) + " failures";
        EXPECT_EQ(assertions.failures()[0].source, QStringLiteral("NSLayoutConstraint"));
        const NSString message = assertions.failures()[0].message;
        const NSString start = QStringLiteral("Cannot use the visual format: ");
        EXPECT_TRUE(message.startsWith(start)) << qPrintable(message);
        return message.sliced(start.size()).toStdString();
    }

    std::shared_ptr<NamedView> outer = addView<NamedView>({ 0, 0, 300, 200 });
    Metrics metrics { { QStringLiteral("gap"), 12 }, { QStringLiteral("weak"), 250 } };
    NSLayoutConstraint::Views views;
};

TEST_F(VisualFormatConstraintsTest, TiesNeighboursInTheOrderOfTheText)
{
    EXPECT_EQ(lines("H:|-1-[a(30)]-2-[b(>=a)]-3-|"),
        (Lines { "a.leading == super.leading + 1 @1000", "a.width == 30 @1000",
            "b.leading == a.trailing + 2 @1000", "b.width >= a.width @1000",
            "super.trailing == b.trailing + 3 @1000" }));
    EXPECT_EQ(lines("V:|-1-[a(30)]-2-[b]-3-|"),
        (Lines { "a.top == super.top + 1 @1000", "a.height == 30 @1000", "b.top == a.bottom + 2 @1000",
            "super.bottom == b.bottom + 3 @1000" }));
}

TEST_F(VisualFormatConstraintsTest, AreMadeInactive)
{
    const auto constraints = constraintsOf("|[a]|");
    ASSERT_EQ(constraints.size(), 2U);
    EXPECT_FALSE(constraints[0]->isActive());
    EXPECT_TRUE(outer->constraints().empty());
}

TEST_F(VisualFormatConstraintsTest, NothingBetweenNeighboursLeavesNoGap)
{
    EXPECT_EQ(lines("|[a][b]|"),
        (Lines { "a.leading == super.leading @1000", "b.leading == a.trailing @1000",
            "super.trailing == b.trailing @1000" }));
}

TEST_F(VisualFormatConstraintsTest, ABareDashKeepsTheMarginsAndEightPointsBetweenViews)
{
    EXPECT_EQ(lines("H:|-[a]-[b]-|"),
        (Lines { "a.leading == super.leadingMargin @1000", "b.leading == a.trailing + 8 @1000",
            "super.trailingMargin == b.trailing @1000" }));
    EXPECT_EQ(lines("V:|-[a]-[b]-|"),
        (Lines { "a.top == super.topMargin @1000", "b.top == a.bottom + 8 @1000",
            "super.bottomMargin == b.bottom @1000" }));
}

TEST_F(VisualFormatConstraintsTest, EndsMayStayLoose)
{
    EXPECT_EQ(lines("[a]-5-[b]"), (Lines { "b.leading == a.trailing + 5 @1000" }));
    EXPECT_EQ(lines("|[a]"), (Lines { "a.leading == super.leading @1000" }));
    EXPECT_EQ(lines("[a]|"), (Lines { "super.trailing == a.trailing @1000" }));
}

TEST_F(VisualFormatConstraintsTest, AViewAloneSaysNothingAndIsNoError) { EXPECT_EQ(lines("[a]"), Lines()); }

TEST_F(VisualFormatConstraintsTest, RelationsPrioritiesAndListsReachTheConstraints)
{
    EXPECT_EQ(lines("|-(>=gap,<=40@weak)-[a(>=50@700,<=100)]-(==gap@750)-|"),
        (Lines { "a.leading >= super.leading + 12 @1000", "a.leading <= super.leading + 40 @250",
            "a.width >= 50 @700", "a.width <= 100 @1000", "super.trailing == a.trailing + 12 @750" }));
    EXPECT_EQ(lines("[a]-gap@weak-[b]"), (Lines { "b.leading == a.trailing + 12 @250" }));
    EXPECT_EQ(lines("[a(gap)]"), (Lines { "a.width == 12 @1000" }));
}

TEST_F(VisualFormatConstraintsTest, GapsMayBeNegative)
{
    EXPECT_EQ(lines("[a]-(-8)-[b]"), (Lines { "b.leading == a.trailing - 8 @1000" }));
    metrics.emplace_back(QStringLiteral("overlap"), -4.5);
    EXPECT_EQ(lines("[a]-overlap-|"), (Lines { "super.trailing == a.trailing - 4.5 @1000" }));
}

TEST_F(VisualFormatConstraintsTest, ASizeMayFollowAViewOutsideTheChain)
{
    EXPECT_EQ(lines("V:[a(==b@500)]"), (Lines { "a.height == b.height @500" }));
}

TEST_F(VisualFormatConstraintsTest, AMetricWinsOverAViewOfItsName)
{
    metrics.emplace_back(QStringLiteral("b"), 77);
    EXPECT_EQ(
        lines("[a(==b)]-b-[b]"), (Lines { "a.width == 77 @1000", "b.leading == a.trailing + 77 @1000" }));
}

TEST_F(VisualFormatConstraintsTest, LeftToRightHoldsOnToFixedSides)
{
    EXPECT_EQ(lines("|-1-[a]-[b]-|", DirectionLeftToRight),
        (Lines { "a.left == super.left + 1 @1000", "b.left == a.right + 8 @1000",
            "super.rightMargin == b.right @1000" }));
}

TEST_F(VisualFormatConstraintsTest, RightToLeftBeginsAtTheRight)
{
    EXPECT_EQ(lines("|-[a]-(>=5)-[b]-(<=7@9)-|", DirectionRightToLeft),
        (Lines { "super.rightMargin == a.right @1000", "a.left >= b.right + 5 @1000",
            "b.left <= super.left + 7 @9" }));
}

TEST_F(VisualFormatConstraintsTest, DownwardsThereIsOneDirection)
{
    EXPECT_EQ(lines("V:|[a]", DirectionRightToLeft), (Lines { "a.top == super.top @1000" }));
}

TEST_F(VisualFormatConstraintsTest, AlignmentsTieEachViewToTheOneBefore)
{
    EXPECT_EQ(lines("[a][b][c]", AlignAllTop | AlignAllBottom),
        (Lines { "b.leading == a.trailing @1000", "c.leading == b.trailing @1000", "b.top == a.top @1000",
            "c.top == b.top @1000", "b.bottom == a.bottom @1000", "c.bottom == b.bottom @1000" }));
}

TEST_F(VisualFormatConstraintsTest, EveryAlignmentNamesItsAttribute)
{
    const auto aligned
        = [this](const char* format, NSLayoutFormatOptions option) { return lines(format, option).at(1); };
    EXPECT_EQ(aligned("V:[a][b]", AlignAllLeft), "b.left == a.left @1000");
    EXPECT_EQ(aligned("V:[a][b]", AlignAllRight), "b.right == a.right @1000");
    EXPECT_EQ(aligned("V:[a][b]", AlignAllLeading), "b.leading == a.leading @1000");
    EXPECT_EQ(aligned("V:[a][b]", AlignAllTrailing), "b.trailing == a.trailing @1000");
    EXPECT_EQ(aligned("V:[a][b]", AlignAllCenterX), "b.centerX == a.centerX @1000");
    EXPECT_EQ(aligned("H:[a][b]", AlignAllTop), "b.top == a.top @1000");
    EXPECT_EQ(aligned("H:[a][b]", AlignAllBottom), "b.bottom == a.bottom @1000");
    EXPECT_EQ(aligned("H:[a][b]", AlignAllCenterY), "b.centerY == a.centerY @1000");
    EXPECT_EQ(aligned("H:[a][b]", AlignAllLastBaseline), "b.lastBaseline == a.lastBaseline @1000");
    EXPECT_EQ(aligned("H:[a][b]", AlignAllFirstBaseline), "b.firstBaseline == a.firstBaseline @1000");
}

TEST_F(VisualFormatConstraintsTest, AnAlignmentAlongTheChainIsAnError)
{
    const auto message = [](const char* place, const char* format) {
        return std::string("views in a row along an axis cannot share a place on it: ") + place + '\n'
            + format + "\n^";
    };
    EXPECT_EQ(errorOf("[a][b]", AlignAllLeft), message("left", "[a][b]"));
    EXPECT_EQ(errorOf("[a][b]", AlignAllRight), message("right", "[a][b]"));
    EXPECT_EQ(errorOf("[a][b]", AlignAllLeading), message("leading", "[a][b]"));
    EXPECT_EQ(errorOf("[a][b]", AlignAllTrailing), message("trailing", "[a][b]"));
    EXPECT_EQ(errorOf("[a][b]", AlignAllCenterX), message("centerX", "[a][b]"));
    EXPECT_EQ(errorOf("V:[a][b]", AlignAllTop), message("top", "V:[a][b]"));
    EXPECT_EQ(errorOf("V:[a][b]", AlignAllBottom), message("bottom", "V:[a][b]"));
    EXPECT_EQ(errorOf("V:[a][b]", AlignAllCenterY), message("centerY", "V:[a][b]"));
    EXPECT_EQ(errorOf("V:[a][b]", AlignAllLastBaseline), message("lastBaseline", "V:[a][b]"));
    EXPECT_EQ(errorOf("V:[a][b]", AlignAllFirstBaseline), message("firstBaseline", "V:[a][b]"));
    EXPECT_EQ(errorOf("[a]", AlignAllLeft | AlignAllTop), message("left", "[a]"));
}

TEST_F(VisualFormatConstraintsTest, TwoDirectionsAreAnError)
{
    EXPECT_EQ(errorOf("[a]", DirectionLeftToRight | DirectionRightToLeft),
        "the options ask for two directions\n[a]\n^");
}

TEST_F(VisualFormatConstraintsTest, AFormatThatCannotBeReadIsAnErrorThatPointsAtIt)
{
    EXPECT_EQ(errorOf("H:|-8-[title"), "expected \"(\" or \"]\"\nH:|-8-[title\n            ^");
    EXPECT_EQ(errorOf(""), "the format is empty\n\n^");
    AssertionRecorder assertions;
    EXPECT_TRUE(NSLayoutConstraint::constraintsWithVisualFormat({}, None, {}, {}).empty());
    EXPECT_EQ(assertions.messages(),
        (std::vector { QStringLiteral("Cannot use the visual format: the format is empty\n\n^") }));
}

TEST_F(VisualFormatConstraintsTest, AnUnknownViewIsAnError)
{
    EXPECT_EQ(errorOf("|[a]-[d]|"), "there is no view \"d\"\n|[a]-[d]|\n     ^");
    EXPECT_EQ(errorOf("[a(==d)]"), "there is no metric or view \"d\"\n[a(==d)]\n     ^");
    EXPECT_EQ(errorOf("[gap]"), "there is no view \"gap\"\n[gap]\n^");
    views.clear();
    EXPECT_EQ(errorOf("[a]"), "there is no view \"a\"\n[a]\n^");
}

TEST_F(VisualFormatConstraintsTest, AViewThatIsNullIsAnError)
{
    views[0].second = nullptr;
    EXPECT_EQ(errorOf("[a]"), "the view \"a\" is null\n[a]\n^");
    EXPECT_EQ(errorOf("[b(a)]"), "the view \"a\" is null\n[b(a)]\n   ^");
}

TEST_F(VisualFormatConstraintsTest, ANameForSeveralThingsIsAnErrorWhereItIsUsed)
{
    views.emplace_back(QStringLiteral("a"), views[1].second);
    metrics.emplace_back(QStringLiteral("gap"), 12);
    EXPECT_EQ(lines("[b]-5-[c]"), (Lines { "c.leading == b.trailing + 5 @1000" }));
    EXPECT_EQ(errorOf("[b][a]"), "several views are named \"a\"\n[b][a]\n   ^");
    EXPECT_EQ(errorOf("[b]-gap-[c]"), "several metrics are named \"gap\"\n[b]-gap-[c]\n    ^");
}

TEST_F(VisualFormatConstraintsTest, AViewThatAppearsTwiceIsAnError)
{
    EXPECT_EQ(errorOf("[a]-[b]-[a]"), "the view \"a\" is there already\n[a]-[b]-[a]\n        ^");
    views.emplace_back(QStringLiteral("alias"), views[0].second);
    EXPECT_EQ(errorOf("[a][alias]"), "the view \"alias\" is there already\n[a][alias]\n   ^");
}

TEST_F(VisualFormatConstraintsTest, AnUnknownMetricIsAnError)
{
    EXPECT_EQ(errorOf("|-inset-[a]"), "there is no metric \"inset\"\n|-inset-[a]\n  ^");
    EXPECT_EQ(errorOf("[a]-b-|"), "there is no metric \"b\"\n[a]-b-|\n    ^");
    EXPECT_EQ(errorOf("[a(5@low)]"), "there is no metric \"low\"\n[a(5@low)]\n     ^");
    EXPECT_EQ(errorOf("[a(b@low)]"), "there is no metric \"low\"\n[a(b@low)]\n     ^");
}

TEST_F(VisualFormatConstraintsTest, AMetricThatIsNoUsableNumberIsAnErrorWhereItIsUsed)
{
    const auto errorWith = [this](const char* format, double number) {
        metrics = { { QStringLiteral("m"), number } };
        EXPECT_EQ(lines("[a(5)]"), (Lines { "a.width == 5 @1000" }));
        return errorOf(format);
    };
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(errorWith("|-m-[a]", nan), "the metric \"m\" is not finite\n|-m-[a]\n  ^");
    EXPECT_EQ(errorWith("[a(m)]", infinity), "the metric \"m\" is not finite\n[a(m)]\n   ^");
    EXPECT_EQ(errorWith("[a(5@m)]", -infinity), "the metric \"m\" is not finite\n[a(5@m)]\n     ^");
    EXPECT_EQ(errorWith("[a]-m-|", 1e300), "the metric \"m\" is too large\n[a]-m-|\n    ^");
    EXPECT_EQ(errorWith("[a]-m-|", -10000001), "the metric \"m\" is too large\n[a]-m-|\n    ^");
}

TEST_F(VisualFormatConstraintsTest, APriorityIsAboveZeroAndAtMostAThousand)
{
    EXPECT_EQ(lines("[a(5@1000)]"), (Lines { "a.width == 5 @1000" }));
    EXPECT_EQ(lines("[a(5@0.5)]"), (Lines { "a.width == 5 @0.5" }));
    const std::string message = "a priority is above 0 and at most 1000\n";
    EXPECT_EQ(errorOf("[a(5@0)]"), message + "[a(5@0)]\n     ^");
    EXPECT_EQ(errorOf("[a(5@-1)]"), message + "[a(5@-1)]\n     ^");
    EXPECT_EQ(errorOf("[a(5@1000.5)]"), message + "[a(5@1000.5)]\n     ^");
    EXPECT_EQ(errorOf("|-(>=5@1001)-[a]"), message + "|-(>=5@1001)-[a]\n       ^");
    metrics.emplace_back(QStringLiteral("none"), 0);
    EXPECT_EQ(errorOf("[a]-5@none-|"), message + "[a]-5@none-|\n      ^");
}

TEST_F(VisualFormatConstraintsTest, ASizeIsNotNegative)
{
    EXPECT_EQ(lines("[a(0)]"), (Lines { "a.width == 0 @1000" }));
    EXPECT_EQ(errorOf("[a(-5)]"), "a size cannot be negative\n[a(-5)]\n   ^");
    metrics.emplace_back(QStringLiteral("less"), -1);
    EXPECT_EQ(errorOf("[a(>=less)]"), "a size cannot be negative\n[a(>=less)]\n     ^");
}

TEST_F(VisualFormatConstraintsTest, AViewDoesNotFollowItsOwnSize)
{
    EXPECT_EQ(errorOf("[a(>=a)]"), "a view cannot follow its own size\n[a(>=a)]\n     ^");
}

TEST_F(VisualFormatConstraintsTest, AnEdgeNeedsASuperview)
{
    const std::shared_ptr<UIView> view = std::dynamic_pointer_cast<UIView>(views[0].second);
    view->removeFromSuperview();
    EXPECT_EQ(errorOf("|[a]"), "the view \"a\" has no superview\n|[a]\n^");
    EXPECT_EQ(errorOf("[b][a]-|"), "the view \"a\" has no superview\n[b][a]-|\n       ^");
    EXPECT_EQ(lines("[a(5)]"), (Lines { "a.width == 5 @1000" }));
}

TEST_F(VisualFormatConstraintsTest, BothEdgesAreOfOneSuperview)
{
    const std::shared_ptr<UIView> view = std::dynamic_pointer_cast<UIView>(views[0].second);
    container->addSubview(view);
    EXPECT_EQ(errorOf("|[b][a]|"), "the views at both ends have different superviews\n|[b][a]|\n       ^");
    EXPECT_EQ(
        lines("|[b][a]"), (Lines { "b.leading == super.leading @1000", "a.leading == b.trailing @1000" }));
}

TEST_F(VisualFormatConstraintsTest, AGuideIsAViewLikeAnyOther)
{
    const auto guide = make<UILayoutGuide>();
    guide->setIdentifier(QStringLiteral("space"));
    views.emplace_back(QStringLiteral("space"), guide);
    EXPECT_EQ(errorOf("|[space]"), "the view \"space\" has no superview\n|[space]\n^");
    outer->addLayoutGuide(guide);
    EXPECT_EQ(lines("|[space(a)][a]"),
        (Lines { "space.leading == super.leading @1000", "space.width == a.width @1000",
            "a.leading == space.trailing @1000" }));
}

TEST_F(VisualFormatConstraintsTest, AnErrorLeavesNothingOfItsFormat)
{
    EXPECT_EQ(errorOf("|-1-[a(5)]-nothing-|"),
        "there is no metric \"nothing\"\n|-1-[a(5)]-nothing-|\n           ^");
    EXPECT_TRUE(outer->constraints().empty());
}

TEST_F(VisualFormatConstraintsTest, SeveralFormatsShareTheirViewsAndMetrics)
{
    const auto linesOf = [](const NSLayoutConstraint::List& constraints) {
        Lines all;
        for (const auto& constraint : constraints)
            all.push_back(constraint->description().toStdString());
        return all;
    };
    const Lines expected { "a.leading == super.leading + 12 @1000", "a.top == super.top @1000",
        "b.top == a.bottom + 12 @1000" };
    const auto made = NSLayoutConstraint::constraintsWithVisualFormats(
        { "H:|-gap-[a]", "V:|-(0)-[a]-gap-[b]" }, views, metrics);
    EXPECT_EQ(linesOf(made), expected);
    EXPECT_TRUE(outer->constraints().empty());
    const auto active
        = NSLayoutConstraint::activateVisualFormats({ "H:|-gap-[a]", "V:|-(0)-[a]-gap-[b]" }, views, metrics);
    EXPECT_EQ(linesOf(active), expected);
    EXPECT_EQ(outer->constraints(), active);
}

TEST_F(VisualFormatConstraintsTest, OneOfSeveralFormatsThatCannotBeUsedLeavesTheOthers)
{
    AssertionRecorder assertions;
    EXPECT_EQ(NSLayoutConstraint::activateVisualFormats({ "|[a]", "|[nobody]", "|[b]" }, views).size(), 2U);
    EXPECT_EQ(assertions.failures().size(), 1U);
}

} // namespace
