// What formats come to: texts and the size of the view around, against the frames of the views in it.
#include "tests/platform/layout/LayoutFixture.h"

#include <map>

namespace {

using enum NSLayoutFormatOptions;

struct Row {
    std::vector<NSString> formats;
    CGSize size; // of the view around
    std::map<NSString, CGRect> frames;
    NSLayoutFormatOptions options = None; // of the first format
};

// Margins are at least as wide as the safe area, which these tests are not about.
constexpr CGPoint belowSafeArea { 0, 100 };

class VisualFormatLayoutTest : public LayoutFixture {
protected:
    // Lays out one row of a table with views of its own.
    void check(const Row& row)
    {
        SCOPED_TRACE(qPrintable(row.formats.front()));
        const auto outer = addView({ belowSafeArea, row.size });
        NSLayoutConstraint::Views views;
        std::map<NSString, std::shared_ptr<ContentView>> viewsByName;
        for (const auto& [name, expected] : row.frames) {
            const auto view = addTo<ContentView>(*outer);
            if (contentSizes.contains(name))
                view->setContentSize(contentSizes.at(name));
            views.emplace_back(name, view);
            viewsByName[name] = view;
        }
        NSLayoutFormatOptions options = row.options;
        for (const NSString& format : row.formats)
            NSLayoutConstraint::activateConstraints(NSLayoutConstraint::constraintsWithVisualFormat(
                format, std::exchange(options, None), metrics, views));
        outer->layoutIfNeeded();
        for (const auto& [name, expected] : row.frames)
            EXPECT_EQ(viewsByName[name]->frame(), expected) << qPrintable(name);
        EXPECT_TRUE(conflicts.empty());
        outer->removeFromSuperview();
    }
    void checkAll(const std::vector<Row>& rows)
    {
        for (const Row& row : rows)
            check(row);
    }

    NSLayoutConstraint::Metrics metrics;
    std::map<NSString, CGSize> contentSizes;
};

TEST_F(VisualFormatLayoutTest, FillsTheViewAround)
{
    for (const NSString name : { "childView", "imageView", "mapView" }) {
        const auto sides = QStringLiteral("H:|-(0)-[%1]-(0)-|").arg(name);
        const auto ends = QStringLiteral("V:|-(0)-[%1]-(0)-|").arg(name);
        check({ { sides, ends }, { 320, 480 }, { { name, { 0, 0, 320, 480 } } } });
        check({ { ends, sides }, { 0, 12.5 }, { { name, { 0, 0, 0, 12.5 } } } });
    }
}

TEST_F(VisualFormatLayoutTest, KeepsInsetsThatMetricsName)
{
    metrics = { { "insetLeft", 3 }, { "insetRight", 5.5 }, { "insetTop", 0 }, { "insetBottom", -2 } };
    check({ { "H:|-insetLeft-[progressView]-insetRight-|", "V:|-insetTop-[progressView]-insetBottom-|" },
        { 44, 40 }, { { "progressView", { 3, 0, 35.5, 42 } } } });
}

TEST_F(VisualFormatLayoutTest, TwoTracksShareTheWidthUnderAThumb)
{
    const std::vector<NSString> formats { "V:|-(0)-[minimumTrack]-(0)-|", "V:|-(0)-[maximumTrack]-(0)-|",
        "V:|-(0)-[thumb]-(0)-|", "H:|-(0)-[minimumTrack]-(0)-[maximumTrack]-(0)-|", "H:[minimumTrack(120)]",
        "H:|-80-[thumb(66)]" };
    check({ formats, { 300, 44 },
        { { "minimumTrack", { 0, 0, 120, 44 } }, { "maximumTrack", { 120, 0, 180, 44 } },
            { "thumb", { 80, 0, 66, 44 } } } });
}

TEST_F(VisualFormatLayoutTest, AnImageKeepsItsWidthWithinTheEdgesUntilItDoesNotFit)
{
    contentSizes = { { "imageView", { 40, 30 } } };
    const NSString ends = "V:|-(0)-[imageView]-(0)-|";
    const NSString sides = "H:|-(>=0)-[imageView]-(>=0)-|";
    const NSString wish = "H:|-25@1-[imageView]"; // where it would like to be
    checkAll({
        { { ends, sides, wish }, { 100, 44 }, { { "imageView", { 25, 0, 40, 44 } } } },
        { { ends, sides, wish }, { 50, 44 }, { { "imageView", { 10, 0, 40, 44 } } } },
        { { ends, sides, wish }, { 30, 44 }, { { "imageView", { 0, 0, 30, 44 } } } },
    });
}

TEST_F(VisualFormatLayoutTest, ASliderHangsUnderTheInformation)
{
    const std::vector<NSString> formats { "H:|-(0)-[slider]-(0)-|", "V:[infoView]-(0)-[slider(44)]",
        "V:|-(0)-[infoView(60)]", "H:|-(0)-[infoView]-(0)-|" };
    check({ formats, { 320, 60 }, { { "infoView", { 0, 0, 320, 60 } }, { "slider", { 0, 60, 320, 44 } } } });
}

TEST_F(VisualFormatLayoutTest, ASliderHangsUnderInformationWithAFrameOfItsOwn)
{
    const auto infoView = make<UIView>(CGRect(0, 10, 200, 50));
    container->addSubview(infoView);
    const auto slider = addTo(*container);
    NSLayoutConstraint::activateConstraints(NSLayoutConstraint::constraintsWithVisualFormat(
        "V:[infoView]-(0)-[slider(44)]", None, {}, { { "infoView", infoView }, { "slider", slider } }));
    container->layoutIfNeeded();
    EXPECT_EQ(slider->frame(), CGRect(0, 60, 0, 44));
    infoView->setFrame({ 0, 0, 200, 70 });
    container->layoutIfNeeded();
    EXPECT_EQ(slider->frame(), CGRect(0, 70, 0, 44));
}

TEST_F(VisualFormatLayoutTest, AToolbarReachesFromSideToSideAtTheHeightOfItsContent)
{
    contentSizes = { { "searchToolbar", { UIViewNoIntrinsicMetric, 44 } } };
    check({ { "H:|-(0)-[searchToolbar]-(0)-|", "V:|[searchToolbar]" }, { 390, 844 },
        { { "searchToolbar", { 0, 0, 390, 44 } } } });
}

TEST_F(VisualFormatLayoutTest, BareDashesLeaveTheStandardGaps)
{
    checkAll({
        { { "|-[a]-[b(==a)]-|", "V:|-[a]-|", "V:|-[b]-|" }, { 124, 100 },
            { { "a", { 8, 8, 50, 84 } }, { "b", { 66, 8, 50, 84 } } } },
        { { "V:|-[a(10)]-[b]-|", "|[a]|", "|[b]|" }, { 30, 100 },
            { { "a", { 0, 8, 30, 10 } }, { "b", { 0, 26, 30, 66 } } } },
    });
}

TEST_F(VisualFormatLayoutTest, BareDashesAtTheEdgesFollowTheMargins)
{
    const auto view = addTo(*container);
    container->setFrame({ belowSafeArea, CGSize(300, 200) });
    container->setLayoutMargins({ 1, 20, 3, 40 }); // top, left, bottom, right
    for (const NSString format : { "|-[v]-|", "V:|-[v]-|" })
        NSLayoutConstraint::activateConstraints(
            NSLayoutConstraint::constraintsWithVisualFormat(format, None, {}, { { "v", view } }));
    container->layoutIfNeeded();
    EXPECT_EQ(view->frame(), CGRect(20, 1, 240, 196));
    container->setLayoutMargins({ 10, 10, 10, 10 });
    container->layoutIfNeeded();
    EXPECT_EQ(view->frame(), CGRect(10, 10, 280, 180));
}

TEST_F(VisualFormatLayoutTest, SizesGapsAndPrioritiesWorkTogether)
{
    const NSString top = "V:|[a(10)]";
    checkAll({
        { { "|-10-[a(50)]", top }, { 200, 50 }, { { "a", { 10, 0, 50, 10 } } } },
        { { "[a(50)]-10-|", top }, { 200, 50 }, { { "a", { 140, 0, 50, 10 } } } },
        { { "|-(-5)-[a]-(-5)-|", top }, { 200, 50 }, { { "a", { -5, 0, 210, 10 } } } },
        { { "|[a(>=50,<=100,300@500)]", top }, { 200, 50 }, { { "a", { 0, 0, 100, 10 } } } },
        { { "|[a(>=50,<=100,10@500)]", top }, { 200, 50 }, { { "a", { 0, 0, 50, 10 } } } },
        { { "|[a(80@500)]-(0@400)-|", top }, { 200, 50 }, { { "a", { 0, 0, 80, 10 } } } },
        { { "|[a(80@400)]-(0@500)-|", top }, { 200, 50 }, { { "a", { 0, 0, 200, 10 } } } },
        { { "|-(>=12,<=40,90@1)-[a]-1e1-|", top }, { 200, 50 }, { { "a", { 40, 0, 150, 10 } } } },
    });
}

TEST_F(VisualFormatLayoutTest, OptionsAlignAndDirect)
{
    checkAll({
        { { "|[a(20)]-10-[b(30)]", "V:|-5-[a(40)]" }, { 200, 50 },
            { { "a", { 0, 5, 20, 40 } }, { "b", { 30, 5, 30, 40 } } }, AlignAllTop | AlignAllBottom },
        { { "|[a(20)]-10-[b(30)]", "V:|-5-[a(40)]", "V:[b(10)]" }, { 200, 50 },
            { { "a", { 0, 5, 20, 40 } }, { "b", { 30, 20, 30, 10 } } }, AlignAllCenterY },
        { { "V:|[a(10)][b(10)]", "[a(50)]-7-|", "[b(20)]" }, { 200, 50 },
            { { "a", { 143, 0, 50, 10 } }, { "b", { 173, 10, 20, 10 } } }, AlignAllRight },
        { { "|-5-[a(20)]-10-[b(30)]", "V:|[a(9)]", "V:|[b(9)]" }, { 200, 50 },
            { { "a", { 175, 0, 20, 9 } }, { "b", { 135, 0, 30, 9 } } }, DirectionRightToLeft },
        { { "|-5-[a(20)]-10-[b(30)]", "V:|[a(9)]", "V:|[b(9)]" }, { 200, 50 },
            { { "a", { 5, 0, 20, 9 } }, { "b", { 35, 0, 30, 9 } } }, DirectionLeftToRight },
    });
}

TEST_F(VisualFormatLayoutTest, ALongChainIsARow)
{
    Row row { { "H:|" }, { 1000, 10 }, {} };
    for (int index = 0; index < 40; ++index) {
        const NSString name = QStringLiteral("v%1").arg(index);
        row.formats[0] += index == 0 ? QStringLiteral("[v0]") : QStringLiteral("-5-[%1(==v0)]").arg(name);
        row.formats.push_back(QStringLiteral("V:|[%1]|").arg(name));
        row.frames[name] = { index * 25.125, 0, 20.125, 10 };
    }
    row.formats[0] += u'|';
    check(row);
}

} // namespace
