// Labels and buttons among constraints.

#include "platform/controls/UIButton.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "tests/platform/controls/ControlLog.h"
#include "tests/support/SceneFixture.h"

namespace {

class UILabelLayoutTest : public SceneFixture {
protected:
    template <typename View> std::shared_ptr<View> addConstrained()
    {
        auto view = make<View>();
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        window->addSubview(view);
        return view;
    }
    void hold(const std::shared_ptr<NSLayoutConstraint>& constraint) { constraint->setActive(true); }
    void placeTopLeft(UIView& view, double top)
    {
        hold(view.leftAnchor().constraintEqualToAnchor(window->leftAnchor(), 10));
        hold(view.topAnchor().constraintEqualToAnchor(window->topAnchor(), top));
    }
    template <typename View> static double baselineInSuperview(const View& view)
    {
        return view.frame().top() + view.firstBaseline();
    }

    const QString longText = QStringLiteral("the quick brown fox jumps over the lazy dog");
    std::shared_ptr<UILabel> label = addConstrained<UILabel>();
};

TEST_F(UILabelLayoutTest, ALabelHasTheSizeOfItsText)
{
    label->setText(QStringLiteral("Hello"));
    placeTopLeft(*label, 100);
    runFrames();
    EXPECT_EQ(label->frame(), CGRect(CGPoint(10, 100), label->sizeThatFits({ 0, 0 })));
    label->setText(QStringLiteral("Hello, hello"));
    runFrames();
    EXPECT_EQ(label->frame(), CGRect(CGPoint(10, 100), label->sizeThatFits({ 0, 0 })));
}

TEST_F(UILabelLayoutTest, AWrappingLabelIsAsHighAsItsWidthMakesItAndAsWideAsItMayBe)
{
    label->setText(longText);
    label->setNumberOfLines(0);
    placeTopLeft(*label, 100);
    const auto narrow = label->widthAnchor().constraintLessThanOrEqualToConstant(120);
    hold(narrow);
    runFrames();
    EXPECT_EQ(label->frame().width(), 120);
    EXPECT_EQ(label->frame().height(), label->sizeThatFits({ 120, 0 }).height());
    narrow->setConstant(200);
    runFrames();
    EXPECT_EQ(label->frame().width(), 200);
    EXPECT_EQ(label->frame().height(), label->sizeThatFits({ 200, 0 }).height());
    narrow->setConstant(1000);
    runFrames();
    EXPECT_EQ(label->frame().size(), label->sizeThatFits({ 0, 0 }));
}

TEST_F(UILabelLayoutTest, AnEmptyLabelTakesNoRoom)
{
    placeTopLeft(*label, 100);
    runFrames();
    EXPECT_EQ(label->frame(), CGRect(10, 100, 0, 0));
}

TEST_F(UILabelLayoutTest, FirstBaselinesHaveExactlyTheirDistance)
{
    const auto below = addConstrained<UILabel>();
    label->setText(QStringLiteral("42"));
    label->setFont(UIFont::boldSystemFontOfSize(33));
    below->setText(QStringLiteral("places"));
    below->setFont(UIFont::systemFontOfSize(11));
    placeTopLeft(*label, 100);
    hold(below->leftAnchor().constraintEqualToAnchor(label->leftAnchor()));
    hold(below->firstBaselineAnchor().constraintEqualToAnchor(label->firstBaselineAnchor(), 17));
    runFrames();
    EXPECT_NEAR(baselineInSuperview(*below) - baselineInSuperview(*label), 17, 1e-9);
    label->setFont(UIFont::boldSystemFontOfSize(21.5));
    runFrames();
    EXPECT_NEAR(baselineInSuperview(*below) - baselineInSuperview(*label), 17, 1e-9);
}

TEST_F(UILabelLayoutTest, TheBaselineOfATallerLabelIsWithinHalfAPixel)
{
    label->setText(QStringLiteral("42"));
    for (const double height : { 30.0, 41.5, 60.0, 77.25 }) {
        label->setFrame({ 0, 0, 100, height });
        const LayoutBaseline place = label->firstBaselinePlace();
        EXPECT_NEAR(place.fraction * height + place.offset, label->firstBaseline(), 0.5) << height;
    }
}

TEST_F(UILabelLayoutTest, ATextOfSeveralLinesHasALastBaseline)
{
    label->setText(QStringLiteral("one\ntwo\nthree"));
    label->setNumberOfLines(0);
    label->sizeToFit();
    const auto at = [this](const LayoutBaseline& place) {
        return place.fraction * label->bounds().height() + place.offset;
    };
    EXPECT_NEAR(at(label->firstBaselinePlace()), label->firstBaseline(), 1e-9);
    EXPECT_NEAR(at(label->lastBaselinePlace()), label->lastBaseline(), 1e-9);
    EXPECT_NEAR(at(label->lastBaselinePlace()) - at(label->firstBaselinePlace()),
        2 * label->font()->lineHeight(), 1e-9);
}

TEST_F(UILabelLayoutTest, AButtonHasTheSizeOfItsContentAndFollowsItsState)
{
    const auto button = addConstrained<UIButton>();
    button->setImage(makePicture(20, 10), UIControlState::Normal);
    button->setImage(makePicture(50, 30), UIControlState::Selected);
    placeTopLeft(*button, 100);
    runFrames();
    EXPECT_EQ(button->frame(), CGRect(10, 100, 20, 10));
    button->setSelected(true);
    runFrames();
    EXPECT_EQ(button->frame(), CGRect(10, 100, 50, 30));
    button->setContentEdgeInsets({ 1, 2, 3, 4 });
    runFrames();
    EXPECT_EQ(button->frame(), CGRect(10, 100, 56, 34));
}

TEST_F(UILabelLayoutTest, AButtonFollowsTheFontOfItsLabel)
{
    const auto button = addConstrained<UIButton>();
    button->setTitle(QStringLiteral("Follow"), UIControlState::Normal);
    placeTopLeft(*button, 100);
    runFrames();
    const CGSize before = button->frame().size();
    button->titleLabel()->setFont(UIFont::systemFontOfSize(36));
    runFrames();
    EXPECT_NEAR(button->frame().width(), 2 * before.width(), 2);
    EXPECT_EQ(button->frame().size(), button->titleLabel()->frame().size());
}

TEST_F(UILabelLayoutTest, AButtonStandsOnTheBaselineOfItsTitle)
{
    const auto button = addConstrained<UIButton>();
    button->setTitle(QStringLiteral("Follow"), UIControlState::Normal);
    button->setContentEdgeInsets({ 12, 5, 3, 5 });
    label->setText(QStringLiteral("Name"));
    label->setFont(UIFont::systemFontOfSize(30));
    placeTopLeft(*button, 100);
    hold(label->leftAnchor().constraintEqualToAnchor(button->rightAnchor()));
    hold(label->firstBaselineAnchor().constraintEqualToAnchor(button->firstBaselineAnchor()));
    runFrames();
    EXPECT_NEAR(baselineInSuperview(*label), baselineInSuperview(*button), 1e-9);
}

} // namespace
