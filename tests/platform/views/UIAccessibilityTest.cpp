#include "platform/views/UIAccessibility.h"

#include "platform/graphics/UIBezierPath.h"
#include "tests/support/SceneFixture.h"

namespace {

using UIAccessibilityTest = SceneFixture;

TEST_F(UIAccessibilityTest, AViewTellsNothingUntilItIsToldTo)
{
    const auto view = make<UIView>();
    EXPECT_FALSE(view->isAccessibilityElement());
    EXPECT_FALSE(view->accessibilityViewIsModal());
    EXPECT_TRUE(view->accessibilityLabel().isNull());
    EXPECT_TRUE(view->accessibilityHint().isNull());
    EXPECT_TRUE(view->accessibilityValue().isNull());
    EXPECT_EQ(view->accessibilityPath(), nullptr);
    EXPECT_FALSE(view->accessibilityPerformEscape());
}

TEST_F(UIAccessibilityTest, WhatIsSetIsKept)
{
    const auto view = make<UIView>();
    const auto path = UIBezierPath::bezierPath();
    view->setIsAccessibilityElement(true);
    view->setAccessibilityViewIsModal(true);
    view->setAccessibilityLabel(QStringLiteral("Author Portrait"));
    view->setAccessibilityHint(QStringLiteral("Opens the author's profile"));
    view->setAccessibilityValue(QStringLiteral("Ada Noor"));
    view->setAccessibilityPath(path);
    EXPECT_TRUE(view->isAccessibilityElement());
    EXPECT_TRUE(view->accessibilityViewIsModal());
    EXPECT_EQ(view->accessibilityLabel(), QStringLiteral("Author Portrait"));
    EXPECT_EQ(view->accessibilityHint(), QStringLiteral("Opens the author's profile"));
    EXPECT_EQ(view->accessibilityValue(), QStringLiteral("Ada Noor"));
    EXPECT_EQ(view->accessibilityPath(), path);
    view->setAccessibilityLabel({});
    EXPECT_TRUE(view->accessibilityLabel().isNull());
}

TEST_F(UIAccessibilityTest, AnOverrideAnswersFromTheStateOfTheMoment)
{
    class Panel final : public UIView {
    public:
        using UIView::UIView;
        bool isAccessibilityElement() const override { return isRecording; }
        bool accessibilityPerformEscape() override { return std::exchange(isRecording, false); }
        bool isRecording = false;
    };
    const auto panel = make<Panel>();
    UIAccessibility& element = *panel;
    EXPECT_FALSE(element.isAccessibilityElement());
    panel->isRecording = true;
    EXPECT_TRUE(element.isAccessibilityElement());
    EXPECT_TRUE(element.accessibilityPerformEscape());
    EXPECT_FALSE(element.accessibilityPerformEscape());
}

TEST_F(UIAccessibilityTest, APathIsConvertedToWhereTheViewIsOnTheScreen)
{
    const auto outer = addView({ 100, 200, 50, 50 });
    const auto inner = make<UIView>(CGRect(10, 20, 30, 30));
    outer->addSubview(inner);
    const auto path = UIBezierPath::bezierPathWithRoundedRect({ 0, 0, 30, 30 }, 15);
    const auto rect = [&] {
        return UIAccessibilityConvertPathToScreenCoordinates(*path, *inner)->cgPath()->boundingRect();
    };
    EXPECT_EQ(rect(), CGRect(110, 220, 30, 30));
    outer->setBounds({ 0, 15, 50, 50 }); // scrolled
    EXPECT_EQ(rect(), CGRect(110, 205, 30, 30));
    inner->setTransform(CGAffineTransform::fromScale(2, 2));
    EXPECT_EQ(rect(), CGRect(95, 190, 60, 60));
    EXPECT_EQ(path->cgPath()->boundingRect(), CGRect(0, 0, 30, 30)) << "the path itself stays";
}

TEST_F(UIAccessibilityTest, APathOfAViewInNoWindowCountsFromTheRootOfItsTree)
{
    const auto outer = make<UIView>(CGRect(7, 7, 50, 50));
    const auto inner = make<UIView>(CGRect(10, 20, 30, 30));
    outer->addSubview(inner);
    const auto path = UIBezierPath::bezierPathWithRoundedRect({ 0, 0, 30, 30 }, 4);
    EXPECT_EQ(UIAccessibilityConvertPathToScreenCoordinates(*path, *inner)->cgPath()->boundingRect(),
        CGRect(10, 20, 30, 30));
    const auto empty = UIBezierPath::bezierPath();
    EXPECT_TRUE(UIAccessibilityConvertPathToScreenCoordinates(*empty, *inner)->cgPath()->isEmpty());
}

} // namespace
