#include "platform/layers/CAKeyPath.h"

#include "platform/graphics/UIColor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;

CALayerValues sample()
{
    CALayerValues values;
    values.bounds = { 1, 2, 30, 40 };
    values.position = { 5, 6 };
    values.anchorPoint = { 0.25, 0.75 };
    values.opacity = 0.5;
    values.cornerRadius = 4;
    values.strokeStart = 0.1;
    values.strokeEnd = 0.9;
    values.lineWidth = 3;
    return values;
}

TEST(CAKeyPathTest, ReadsEveryPath)
{
    const struct {
        const char* path;
        CAValue value;
    } rows[] = {
        { "bounds", CGRect(1, 2, 30, 40) },
        { "bounds.origin", CGPoint(1, 2) },
        { "bounds.origin.x", 1.0 },
        { "bounds.origin.y", 2.0 },
        { "bounds.size", CGSize(30, 40) },
        { "bounds.size.width", 30.0 },
        { "bounds.size.height", 40.0 },
        { "position", CGPoint(5, 6) },
        { "position.x", 5.0 },
        { "position.y", 6.0 },
        { "anchorPoint", CGPoint(0.25, 0.75) },
        { "anchorPoint.x", 0.25 },
        { "anchorPoint.y", 0.75 },
        { "transform", CGAffineTransform() },
        { "transform.scale", 1.0 },
        { "transform.scale.xy", 1.0 },
        { "transform.scale.x", 1.0 },
        { "transform.scale.y", 1.0 },
        { "transform.rotation", 0.0 },
        { "transform.rotation.z", 0.0 },
        { "transform.translation", CGPoint(0, 0) },
        { "transform.translation.x", 0.0 },
        { "transform.translation.y", 0.0 },
        { "opacity", 0.5 },
        { "cornerRadius", 4.0 },
        { "backgroundColor", std::shared_ptr<UIColor>() },
        { "contentsTintColor", std::shared_ptr<UIColor>() },
        { "strokeStart", 0.1 },
        { "strokeEnd", 0.9 },
        { "lineWidth", 3.0 },
        { "strokeColor", std::shared_ptr<UIColor>() },
        { "fillColor", std::shared_ptr<UIColor>() },
    };
    for (const auto& row : rows)
        EXPECT_EQ(CAKeyPath(QLatin1String(row.path)).value(sample()), row.value) << row.path;
}

TEST(CAKeyPathTest, WritesEveryNumberSoThatItReadsBack)
{
    for (const char* text : { "bounds.origin.x", "bounds.origin.y", "bounds.size.width", "bounds.size.height",
             "position.x", "position.y", "anchorPoint.x", "anchorPoint.y", "transform.scale",
             "transform.scale.xy", "transform.scale.x", "transform.scale.y", "transform.rotation",
             "transform.rotation.z", "transform.translation.x", "transform.translation.y", "opacity",
             "cornerRadius", "strokeStart", "strokeEnd", "lineWidth" }) {
        CALayerValues values = sample();
        const CAKeyPath path { QLatin1String(text) };
        path.setValue(values, 0.375);
        ASSERT_TRUE(std::holds_alternative<double>(path.value(values))) << text;
        EXPECT_NEAR(std::get<double>(path.value(values)), 0.375, 1e-15) << text;
    }
}

TEST(CAKeyPathTest, WritingAPartLeavesTheOthers)
{
    CALayerValues values = sample();
    CAKeyPath(QStringLiteral("bounds.origin.x")).setValue(values, 10.0);
    CAKeyPath(QStringLiteral("bounds.size")).setValue(values, CGSize(7, 8));
    CAKeyPath(QStringLiteral("position.y")).setValue(values, 60.0);
    EXPECT_EQ(values.bounds, CGRect(10, 2, 7, 8));
    EXPECT_EQ(values.position, CGPoint(5, 60));
}

TEST(CAKeyPathTest, ScaleRotationAndTranslationDoNotDisturbOneAnother)
{
    CALayerValues values;
    CAKeyPath(QStringLiteral("transform.rotation.z")).setValue(values, pi / 3);
    CAKeyPath(QStringLiteral("transform.scale.x")).setValue(values, 2.0);
    CAKeyPath(QStringLiteral("transform.scale.y")).setValue(values, 3.0);
    CAKeyPath(QStringLiteral("transform.translation")).setValue(values, CGPoint(7, 8));
    EXPECT_NEAR(
        std::get<double>(CAKeyPath(QStringLiteral("transform.rotation")).value(values)), pi / 3, 1e-15);
    EXPECT_NEAR(std::get<double>(CAKeyPath(QStringLiteral("transform.scale.x")).value(values)), 2, 1e-14);
    EXPECT_NEAR(std::get<double>(CAKeyPath(QStringLiteral("transform.scale.y")).value(values)), 3, 1e-14);
    const CGPoint moved = values.transform.map(CGPoint(1, 0)); // scaled, turned, then moved
    EXPECT_NEAR(moved.x(), 7 + 2 * std::cos(pi / 3), 1e-14);
    EXPECT_NEAR(moved.y(), 8 + 2 * std::sin(pi / 3), 1e-14);
}

TEST(CAKeyPathTest, AScaleOfZeroIsWrittenAndReadWithoutHarm)
{
    CALayerValues values;
    CAKeyPath(QStringLiteral("transform.scale.xy")).setValue(values, 0.0);
    EXPECT_EQ(values.transform.map(CGPoint(100, 100)), CGPoint(0, 0));
    CAKeyPath(QStringLiteral("transform.rotation")).setValue(values, 1.0);
    EXPECT_EQ(std::get<double>(CAKeyPath(QStringLiteral("transform.scale.xy")).value(values)), 0);
}

TEST(CAKeyPathTest, TheCentreOfAViewIsThePositionOfItsLayer)
{
    CALayerValues values = sample();
    EXPECT_EQ(CAKeyPath(QStringLiteral("center")).property(), CAProperty::Position);
    EXPECT_EQ(std::get<double>(CAKeyPath(QStringLiteral("center.x")).value(values)), values.position.x());
    CAKeyPath(QStringLiteral("center.y")).setValue(values, 77.0);
    EXPECT_EQ(values.position, CGPoint(5, 77));
    EXPECT_FALSE(CAKeyPath(QStringLiteral("center.z")).isValid());
    EXPECT_FALSE(CAKeyPath(QStringLiteral("centerx")).isValid());
}

TEST(CAKeyPathTest, AnUnknownPathNamesNothing)
{
    for (const char* text : { "", "nonsense", "position.z", "position.", "opacity.x", "bounds.size.depth",
             ".x", "Position", "transform.scale.z.w", "positionx" }) {
        const CAKeyPath path { QLatin1String(text) };
        CALayerValues values = sample();
        EXPECT_FALSE(path.isValid()) << text;
        path.setValue(values, 1.0);
        EXPECT_TRUE(CAValues::isMissing(path.value(values))) << text;
    }
    EXPECT_FALSE(CAKeyPath(NSString()).isValid());
}

TEST(CAKeyPathTest, AValueOfAnotherKindIsNotWritten)
{
    CALayerValues values = sample();
    for (const char* text : { "opacity", "position", "position.x", "bounds", "bounds.size",
             "bounds.size.width", "transform", "transform.scale", "backgroundColor" }) {
        CAKeyPath(QLatin1String(text)).setValue(values, std::monostate {});
        CAKeyPath(QLatin1String(text))
            .setValue(values, text == std::string("bounds.size") ? CAValue(1.0) : CAValue(CGSize(9, 9)));
    }
    EXPECT_EQ(values.opacity, 0.5);
    EXPECT_EQ(values.position, CGPoint(5, 6));
    EXPECT_EQ(values.bounds, CGRect(1, 2, 30, 40));
    EXPECT_TRUE(values.transform.isIdentity());
}

TEST(CAKeyPathTest, KeysNameTheProperties)
{
    for (const auto property :
        { CAProperty::Bounds, CAProperty::Position, CAProperty::Opacity, CAProperty::FillColor })
        EXPECT_EQ(CAKeyPath(CAKeyPath::key(property)).property(), property);
    EXPECT_EQ(CAKeyPath::key(CAProperty::Position), QStringLiteral("position"));
}

} // namespace
