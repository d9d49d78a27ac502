#include "tests/support/PictureComparison.h"

#include <QDir>

#include <algorithm>
#include <cstdlib>

namespace {

int distance(QRgb first, QRgb second)
{
    return std::max({ std::abs(qRed(first) - qRed(second)), std::abs(qGreen(first) - qGreen(second)),
        std::abs(qBlue(first) - qBlue(second)) });
}

std::string runningTestName()
{
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string name = test ? std::string(test->test_suite_name()) + "." + test->name() : "picture";
    return QString::fromStdString(name).replace('/', '_').toStdString();
}

} // namespace

PictureDifference differenceOf(const QImage& actual, const QImage& expected, int channelTolerance)
{
    PictureDifference difference;
    const QSize size = actual.size().expandedTo(expected.size());
    difference.picture = QImage(size, QImage::Format_RGB32);
    difference.picture.fill(Qt::black);
    if (actual.size() != expected.size()) {
        difference.pixels = size.width() * size.height();
        difference.largest = 255;
        difference.area = QRect(QPoint(), size);
        difference.picture.fill(Qt::white);
        return difference;
    }
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int away = distance(actual.pixel(x, y), expected.pixel(x, y));
            difference.largest = std::max(difference.largest, away);
            if (away <= channelTolerance)
                continue;
            ++difference.pixels;
            difference.area |= QRect(x, y, 1, 1);
            difference.picture.setPixel(x, y, qRgb(255, 255, 255));
        }
    }
    return difference;
}

testing::AssertionResult picturesMatch(
    const QImage& actual, const QImage& expected, PictureTolerance tolerance, const std::string& pictureName)
{
    const PictureDifference difference = differenceOf(actual, expected, tolerance.channel);
    if (difference.pixels <= tolerance.pixels)
        return testing::AssertionSuccess();
    const QDir folder("failed_pictures");
    QDir().mkpath(folder.path());
    const QString name
        = QString::fromStdString(runningTestName() + (pictureName.empty() ? "" : "-" + pictureName));
    actual.save(folder.filePath(name + "-actual.png"));
    expected.save(folder.filePath(name + "-expected.png"));
    difference.picture.save(folder.filePath(name + "-difference.png"));
    const QRect area = difference.area;
    return testing::AssertionFailure()
        << difference.pixels << " pixels differ, by up to " << difference.largest << ", inside " << area.x()
        << "," << area.y() << " " << area.width() << "x" << area.height() << "; see "
        << folder.absoluteFilePath(name + "-*.png").toStdString();
}
