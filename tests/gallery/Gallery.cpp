#include "tests/gallery/Gallery.h"

#include "platform/controls/UILabel.h"
#include "platform/graphics/UIImage.h"
#include "platform/host/FramePainter.h"
#include "tests/gallery/PictureCells.h"
#include "tests/gallery/RendererWindow.h"
#include "tests/support/SourcePath.h"

#include <QFile>
#include <QImageWriter>
#include <QPainter>

namespace {

// The scale of the style's pictures.
double keptScale(const GalleryLook& look) { return look.isDark() ? 3 : 2; }

QString pathOf(const char* scene, const GalleryLook& look)
{
    return sourcePath("tests/gallery/pictures/%1-%2.png")
        .arg(QLatin1String(scene), look.isDark() ? QStringLiteral("dark") : QStringLiteral("light"));
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
    m_captions.push_back(caption->frame());
}

QImage Gallery::painted(double height)
{
    runFrames();
    const QRect shown(0, 0, qRound(width * frame.scale), qRound(height * frame.scale));
    QImage picture = FramePainter(frame).paintScreen().copy(shown).convertToFormat(QImage::Format_RGB32);
    picture.setDevicePixelRatio(frame.scale);
    return picture;
}

void Gallery::blankCaptions(QImage& picture) const
{
    QPainter painter(&picture);
    for (const CGRect& caption : m_captions)
        painter.fillRect(caption.toAlignedRect(), Qt::gray);
}

testing::AssertionResult Gallery::matchesPicture(const char* scene, double height)
{
    const QString path = pathOf(scene, GetParam());
    QImage expected(path);
    if (expected.isNull())
        return testing::AssertionFailure()
            << "no picture " << path.toStdString() << "; Gallery.h says how to make one";
    expected.setDevicePixelRatio(keptScale(GetParam()));
    QImage actual = painted(height);
    blankCaptions(actual);
    blankCaptions(expected);
    const bool isKept = frame.scale == keptScale(GetParam());
    if (m_showsText) // letters stand on whole pixels, which are other places at another scale
        return cellsMatch(actual, expected, isKept ? CellTolerance() : CellTolerance { .cells = 8 });
    return cellsMatch(actual, expected, { .channel = isKept ? 6 : 14, .cells = 0 });
}

void Gallery::expectPicture(const char* scene, double height)
{
    if (isRenewing()) {
        renewPicture(scene, height);
        return;
    }
    EXPECT_TRUE(GetParam().scale == 1 || matchesPicture(scene, height));
    runFrames();
    EXPECT_TRUE(RendererWindow::shared().draws(frame, "renderer", m_turned));
}

void Gallery::renewPicture(const char* scene, double height)
{
    if (GetParam().scale != keptScale(GetParam()))
        return;
    const QString path = pathOf(scene, GetParam());
    const bool written = write(painted(height), path);
    ADD_FAILURE() << path.toStdString() << (written ? " is renewed" : " cannot be written");
}

void Gallery::expectOtherPicture(const char* scene, double height)
{
    ASSERT_TRUE(QFile::exists(pathOf(scene, GetParam())));
    EXPECT_FALSE(matchesPicture(scene, height));
}
