#include "tests/gallery/Gallery.h"

#include "platform/controls/UILabel.h"
#include "platform/graphics/UIImage.h"
#include "platform/host/FramePainter.h"
#include "tests/gallery/PictureCells.h"

#include <QImageWriter>

namespace {

QString pathOf(const std::string& name)
{
    return QStringLiteral(ORUVANE_SOURCE_DIR "/tests/gallery/pictures/") + QString::fromStdString(name)
        + QStringLiteral(".png");
}

bool isRenewing() { return qEnvironmentVariableIntValue("ORUVANE_RENEW_PICTURES") != 0; }

// As small as the format allows.
bool write(const QImage& picture, const QString& path)
{
    QImageWriter writer(path, "png");
    writer.setCompression(100);
    return writer.write(picture);
}

} // namespace

std::string GalleryLook::name() const
{
    return std::to_string(qRound(scale)) + (isDark() ? "x_dark" : "x_light");
}

void PrintTo(const GalleryLook& look, std::ostream* out) { *out << look.name(); }

Gallery::Gallery()
{
    UIScreen::mainScreen()->setGeometry({ screenGeometry.size, GetParam().scale, {} });
    CurrentUserInterfaceStyle::set(GetParam().style);
    window->setBackgroundColor(UIColor::systemBackgroundColor());
    runFrames();
}

Gallery::~Gallery()
{
    EXPECT_EQ(assertions.messages(), std::vector<NSString> {});
    EXPECT_EQ(conflicts, 0);
}

std::shared_ptr<UIImage> Gallery::picture(const char* name)
{
    const auto image = UIImage::imageNamed(QLatin1String(name));
    EXPECT_TRUE(image) << name;
    return image;
}

void Gallery::addCaption(const char* text, double x, double y)
{
    const auto caption = make<UILabel>();
    caption->setFont(UIFont::systemFontOfSize(10));
    caption->setTextColor(UIColor::secondaryLabelColor());
    caption->setText(QString::fromUtf8(text));
    caption->sizeToFit();
    add(caption, { CGPoint(x, y), caption->bounds().size() });
}

void Gallery::expectPicture(const char* scene, double height)
{
    runFrames();
    const QRect shown(0, 0, qRound(width * frame.scale), qRound(height * frame.scale));
    QImage actual = FramePainter(frame).paintScreen().copy(shown).convertToFormat(QImage::Format_RGB32);
    actual.setDevicePixelRatio(frame.scale);
    const QString path = pathOf(std::string(scene) + (GetParam().isDark() ? "-dark" : "-light"));
    const double keptScale = GetParam().isDark() ? 3 : 2;
    if (isRenewing()) {
        const bool isKept = frame.scale == keptScale;
        ASSERT_TRUE(!isKept || write(actual, path)) << path.toStdString();
        GTEST_SKIP() << "renewed";
    }
    QImage expected(path);
    ASSERT_FALSE(expected.isNull()) << "no picture " << path.toStdString()
                                    << "; Gallery.h says how to make one";
    expected.setDevicePixelRatio(keptScale);
    // Letters stand on whole pixels, which are other places at another scale.
    const CellTolerance otherScale { .cells = 8 };
    EXPECT_TRUE(cellsMatch(actual, expected, frame.scale == keptScale ? CellTolerance() : otherScale));
}
