// That the comparison sees what it is there for, and passes over what it is to pass over.
#include "tests/gallery/PictureCells.h"

#include <QFont>
#include <QPainter>

#include <gmock/gmock.h>

#include <cmath>

namespace {

QImage page()
{
    QImage image(320, 120, QImage::Format_RGB32);
    image.setDevicePixelRatio(2);
    image.fill(Qt::white);
    return image;
}

QImage textPage(
    const QPointF& shift, const QColor& color, QFont::HintingPreference hinting = QFont::PreferNoHinting)
{
    QImage image = page();
    QPainter painter(&image);
    painter.scale(0.5, 0.5); // device pixels
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(30);
    font.setHintingPreference(hinting);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QPointF(16, 48) + shift, QStringLiteral("Recordings nearby"));
    painter.drawText(QPointF(16, 96) + shift, QStringLiteral("27 minutes ago"));
    return image;
}

// Every pixel's ink a little thicker or thinner, as renderers differ in it.
QImage withInk(const QImage& image, double exponent)
{
    QImage changed = image;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const auto level
                = [exponent](int value) { return qRound(std::pow(value / 255.0, exponent) * 255); };
            const QRgb pixel = image.pixel(x, y);
            changed.setPixel(x, y, qRgb(level(qRed(pixel)), level(qGreen(pixel)), level(qBlue(pixel))));
        }
    return changed;
}

QImage withMark(QImage image, const QRect& place, const QColor& color)
{
    QPainter painter(&image);
    painter.scale(0.5, 0.5);
    painter.fillRect(place, color);
    return image;
}

TEST(PictureCellsTest, MeansAreTakenCellByCellToTheVeryEdge)
{
    const QImage cells = meanCells(withMark(page(), { 0, 0, 4, 8 }, Qt::black), 7);
    EXPECT_EQ(cells.size(), QSize(46, 18));
    EXPECT_EQ(cells.pixelColor(0, 0), QColor(109, 109, 109)); // 28 of 49 pixels are black
    EXPECT_EQ(cells.pixelColor(0, 1), QColor(234, 234, 234)); // 4 of 49
    EXPECT_EQ(cells.pixelColor(45, 17), QColor(Qt::white));
}

TEST(PictureCellsTest, TheSamePicturesMatch)
{
    EXPECT_TRUE(cellsMatch(textPage({}, Qt::black), textPage({}, Qt::black), { 0, 0 }));
}

TEST(PictureCellsTest, TextByAnotherRendererMatches)
{
    const QImage expected = textPage({}, Qt::black);
    EXPECT_TRUE(cellsMatch(textPage({ 0.25, 0 }, Qt::black), expected)) << "a quarter of a pixel off";
    EXPECT_TRUE(cellsMatch(withInk(expected, 0.8), expected)) << "thinner";
    EXPECT_TRUE(cellsMatch(withInk(expected, 1.3), expected)) << "thicker";
    EXPECT_TRUE(cellsMatch(textPage({}, Qt::black, QFont::PreferVerticalHinting), expected)) << "hinted";
}

TEST(PictureCellsTest, ALostTintIsSeenInOneWord)
{
    const QColor blue(0, 122, 255);
    EXPECT_FALSE(cellsMatch(textPage({}, Qt::black), textPage({}, blue)));
    const QRect icon(100, 20, 24, 24); // of 12 points
    EXPECT_FALSE(cellsMatch(withMark(page(), icon, Qt::black), withMark(page(), icon, blue)));
    const QColor dimmed(255 - 110, 255 - 110, 255 - 110);
    EXPECT_FALSE(cellsMatch(withMark(page(), icon, dimmed), withMark(page(), icon, blue)));
}

TEST(PictureCellsTest, WhatIsMissingOrInAnotherPlaceIsSeen)
{
    const QRect icon(100, 20, 24, 24);
    const QImage expected = withMark(page(), icon, Qt::black);
    EXPECT_FALSE(cellsMatch(page(), expected));
    EXPECT_FALSE(cellsMatch(withMark(page(), icon.translated(4, 0), Qt::black), expected));
    EXPECT_FALSE(cellsMatch(textPage({ 0, 6 }, Qt::black), textPage({}, Qt::black)));
}

TEST(PictureCellsTest, PicturesOfTwoScalesHaveTheSameCells)
{
    const QImage expected = withMark(textPage({}, Qt::black), { 240, 8, 48, 48 }, Qt::red);
    QImage actual = expected.scaled(expected.size() * 1.5, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    actual.setDevicePixelRatio(3);
    EXPECT_TRUE(cellsMatch(actual, expected));
    QImage without
        = textPage({}, Qt::black).scaled(actual.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    without.setDevicePixelRatio(3);
    EXPECT_FALSE(cellsMatch(without, expected));
    without.setDevicePixelRatio(2);
    EXPECT_FALSE(cellsMatch(without, expected)) << "of another size in points";
}

TEST(PictureCellsTest, AnotherSizeIsAnotherPicture)
{
    const auto result = cellsMatch(page().copy(0, 0, 300, 120), page());
    EXPECT_FALSE(result);
    EXPECT_THAT(result.message(), testing::HasSubstr("sizes differ"));
}

TEST(PictureCellsTest, AFailureSaysWhereAndLeavesTheEvidence)
{
    const auto result = cellsMatch(withMark(page(), { 80, 40, 40, 16 }, Qt::red), page());
    ASSERT_FALSE(result);
    EXPECT_THAT(result.message(), testing::HasSubstr("inside the points 40,20 20x8"));
    EXPECT_THAT(result.message(), testing::HasSubstr("AFailureSaysWhereAndLeavesTheEvidence-"));
    for (const char* kind : { "actual", "expected", "difference" }) {
        const QImage left(QStringLiteral("failed_pictures/"
                                         "PictureCellsTest.AFailureSaysWhereAndLeavesTheEvidence-%1.png")
                              .arg(QLatin1String(kind)));
        EXPECT_EQ(left.size(), page().size()) << kind;
    }
}

} // namespace
