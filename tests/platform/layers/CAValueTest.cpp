#include "platform/layers/CAValue.h"

#include "platform/graphics/UIColor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using Color = std::shared_ptr<UIColor>;

TEST(CAValueTest, InterpolatesEveryKind)
{
    const struct {
        CAValue from;
        CAValue to;
        CAValue quarter;
    } rows[] = {
        { 1.0, 5.0, 2.0 },
        { CGPoint(0, 4), CGPoint(4, 0), CGPoint(1, 3) },
        { CGSize(0, 4), CGSize(4, 0), CGSize(1, 3) },
        { CGRect(0, 4, 8, 12), CGRect(4, 0, 12, 8), CGRect(1, 3, 9, 11) },
        { CGAffineTransform(), CGAffineTransform::fromScale(5, 9), CGAffineTransform::fromScale(2, 3) },
        { std::monostate {}, std::monostate {}, std::monostate {} },
    };
    for (const auto& row : rows)
        EXPECT_EQ(CAValues::interpolate(row.from, row.to, 0.25), row.quarter);
}

TEST(CAValueTest, EndsAreExact)
{
    EXPECT_EQ(CAValues::interpolate(0.1, 0.7, 0), CAValue(0.1));
    EXPECT_EQ(CAValues::interpolate(0.1, 0.7, 1), CAValue(0.7));
    EXPECT_EQ(CAValues::interpolate(1e308, -1e308, 1), CAValue(-1e308));
}

TEST(CAValueTest, FractionsOutsideLeadBeyondTheEnds)
{
    EXPECT_EQ(CAValues::interpolate(0.0, 10.0, 1.5), CAValue(15.0));
    EXPECT_EQ(CAValues::interpolate(0.0, 10.0, -0.5), CAValue(-5.0));
}

TEST(CAValueTest, TransformsTurnOnTheWay)
{
    CGAffineTransform half;
    half.rotate(170);
    const auto middle = std::get<CGAffineTransform>(CAValues::interpolate(CGAffineTransform(), half, 0.5));
    const CGPoint turned = middle.map(CGPoint(1, 0));
    EXPECT_NEAR(std::hypot(turned.x(), turned.y()), 1, 1e-12);
    EXPECT_NEAR(std::atan2(turned.y(), turned.x()), 85 * std::numbers::pi / 180, 1e-12);
}

TEST(CAValueTest, ColoursMixAsLight)
{
    const auto red = UIColor::colorWithRed(1, 0, 0, 1);
    const auto faded = std::get<Color>(CAValues::interpolate(red, UIColor::clearColor(), 0.5));
    EXPECT_EQ(faded->qColor().alpha(), 128);
    EXPECT_EQ(faded->qColor().red(), 255); // not darkened on the way
    const auto grey = std::get<Color>(
        CAValues::interpolate(UIColor::colorWithWhite(0, 1), UIColor::colorWithWhite(1, 1), 0.25));
    EXPECT_NEAR(grey->qColor().redF(), 0.25, 0.001);
}

TEST(CAValueTest, AMissingColourMixesAsAClearOne)
{
    const auto mixed = std::get<Color>(CAValues::interpolate(Color(), UIColor::whiteColor(), 0.25));
    EXPECT_EQ(mixed->qColor().alpha(), 64);
    EXPECT_EQ(mixed->qColor().red(), 255);
    EXPECT_EQ(std::get<Color>(CAValues::interpolate(Color(), Color(), 0.5))->qColor().alpha(), 0);
}

TEST(CAValueTest, SumAndDifferenceUndoOneAnother)
{
    CGAffineTransform turn;
    turn.rotate(30);
    const struct {
        CAValue first;
        CAValue second;
    } rows[] = {
        { 3.0, 4.0 },
        { CGPoint(1, 2), CGPoint(3, 4) },
        { CGSize(1, 2), CGSize(3, 4) },
        { CGRect(1, 2, 3, 4), CGRect(5, 6, 7, 8) },
    };
    for (const auto& row : rows)
        EXPECT_EQ(CAValues::difference(CAValues::sum(row.first, row.second), row.second), row.first);
    const auto back = std::get<CGAffineTransform>(
        CAValues::difference(CAValues::sum(CGAffineTransform::fromScale(2, 3), turn), turn));
    EXPECT_NEAR(back.m11(), 2, 1e-12);
    EXPECT_NEAR(back.m22(), 3, 1e-12);
    EXPECT_NEAR(back.m12(), 0, 1e-12);
}

TEST(CAValueTest, TheNeutralValueChangesNothing)
{
    const CAValue values[]
        = { 3.0, CGPoint(1, 2), CGSize(3, 4), CGRect(1, 2, 3, 4), CGAffineTransform::fromScale(2, 2) };
    for (const CAValue& value : values)
        EXPECT_EQ(CAValues::sum(value, CAValues::neutral(value)), value);
}

TEST(CAValueTest, ValuesOfDifferentKindsAnswerTheFirst)
{
    EXPECT_EQ(CAValues::interpolate(1.0, CGPoint(5, 5), 0.5), CAValue(1.0));
    EXPECT_EQ(CAValues::interpolate(1.0, CGPoint(5, 5), 1), CAValue(1.0));
    EXPECT_EQ(CAValues::sum(1.0, std::monostate {}), CAValue(1.0));
    EXPECT_TRUE(CAValues::isMissing(CAValues::difference(std::monostate {}, 1.0)));
}

} // namespace
