#include "tests/gallery/PictureCells.h"

#include "tests/support/PictureComparison.h"

namespace {

constexpr double cellPoints = 4;

QRgb meanColor(const QImage& picture, const QRect& cell)
{
    long red = 0;
    long green = 0;
    long blue = 0;
    for (int y = cell.top(); y <= cell.bottom(); ++y)
        for (int x = cell.left(); x <= cell.right(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            red += qRed(pixel);
            green += qGreen(pixel);
            blue += qBlue(pixel);
        }
    const long pixels = long(cell.width()) * cell.height();
    return qRgb(int(red / pixels), int(green / pixels), int(blue / pixels));
}

QImage cellsOf(const QImage& picture)
{
    return meanCells(picture, qRound(cellPoints * picture.devicePixelRatio()));
}

} // namespace

QImage meanCells(const QImage& picture, int side)
{
    QImage cells(
        (picture.width() + side - 1) / side, (picture.height() + side - 1) / side, QImage::Format_RGB32);
    for (int y = 0; y < cells.height(); ++y)
        for (int x = 0; x < cells.width(); ++x) {
            const QRect cell(x * side, y * side, side, side);
            cells.setPixel(x, y, meanColor(picture, cell & picture.rect()));
        }
    return cells;
}

testing::AssertionResult cellsMatch(const QImage& actual, const QImage& expected, CellTolerance tolerance)
{
    // Seen side by side they have one size.
    const QImage beside = expected.scaled(actual.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (actual.deviceIndependentSize() != expected.deviceIndependentSize())
        return testing::AssertionFailure() << "The sizes differ. " << picturesMatch(actual, beside).message();
    const PictureDifference cells = differenceOf(cellsOf(actual), cellsOf(expected), tolerance.channel);
    if (cells.pixels <= tolerance.cells)
        return testing::AssertionSuccess();
    const QRect area = cells.area;
    return testing::AssertionFailure()
        << cells.pixels << " cells differ, by up to " << cells.largest << ", inside the points "
        << area.x() * cellPoints << ',' << area.y() * cellPoints << ' ' << area.width() * cellPoints << 'x'
        << area.height() * cellPoints << ". " << picturesMatch(actual, beside).message();
}
