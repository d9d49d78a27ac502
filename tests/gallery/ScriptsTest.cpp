// Texts in the scripts of the world, with the fonts of scripts/packages: letters, and never the box that
// stands for a letter that no font has.
#include "platform/graphics/TextLayout.h"
#include "platform/graphics/UIGraphics.h"
#include "platform/graphics/UIImage.h"

#include <gtest/gtest.h>

namespace {

constexpr double scale = 2;

// The text's ink alone, wherever it was put.
QImage inkOf(const QString& text)
{
    const TextLayout layout(text, { UIFont::systemFontOfSize(30) });
    UIGraphicsBeginImageContextWithOptions(
        { std::max(layout.size().width(), 1.0) + 20, layout.size().height() + 20 }, false, scale);
    layout.draw(*UIGraphicsGetCurrentContext(), { 10, 10 }, QColor(Qt::black));
    const QImage picture = UIGraphicsGetImageFromCurrentImageContext()->qImage();
    UIGraphicsEndImageContext();
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qAlpha(picture.pixel(x, y)) > 0)
                ink |= QRect(x, y, 1, 1);
    return picture.copy(ink);
}

// What is shown for a character that means nothing and so is in no font.
const QImage& missingLetter()
{
    static const QImage box = inkOf(QString::fromUcs4(U"\U000E5555"));
    return box;
}

bool hasColor(const QImage& picture)
{
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (const QColor color = picture.pixelColor(x, y);
                color.alpha() > 200 && color.saturation() > 128)
                return true;
    return false;
}

struct Script {
    const char* name;
    std::vector<const char*> letters;
};

const Script scripts[] = {
    { "Chinese", { "中", "国", "书", "龍" } },
    { "Japanese", { "あ", "カ", "録", "々" } },
    { "Korean", { "한", "글", "녹" } },
    { "Thai", { "ก", "ข", "ฮ", "เ" } },
    { "Hindi", { "क", "ह", "अ", "न्दी" } },
    { "Arabic", { "ع", "ب", "ك", "لا" } },
    { "Hebrew", { "ש", "ל", "ם" } },
    { "Emoji", { "😀", "🎙", "🚋", "👩‍🎤", "🇯🇵" } },
};

TEST(GalleryScriptsTest, AMissingLetterIsSeen)
{
    EXPECT_GT(missingLetter().width(), 8);
    EXPECT_EQ(inkOf(QString::fromUcs4(U"\U000E5556")), missingLetter());
}

TEST(GalleryScriptsTest, EveryScriptIsDrawnWithLettersOfItsOwn)
{
    for (const Script& script : scripts) {
        std::vector<QImage> drawn;
        for (const char* letter : script.letters) {
            const QImage ink = inkOf(QString::fromUtf8(letter));
            EXPECT_FALSE(ink.isNull()) << script.name << ' ' << letter;
            EXPECT_NE(ink, missingLetter()) << script.name << ' ' << letter;
            for (const QImage& other : drawn)
                EXPECT_NE(ink, other) << script.name << ' ' << letter;
            drawn.push_back(ink);
        }
    }
}

TEST(GalleryScriptsTest, EmojiHaveTheirColours)
{
    for (const char* letter : scripts[std::size(scripts) - 1].letters)
        EXPECT_TRUE(hasColor(inkOf(QString::fromUtf8(letter)))) << letter;
    EXPECT_FALSE(hasColor(inkOf(QStringLiteral("a"))));
}

TEST(GalleryScriptsTest, LettersAmongLatinOnesAreDrawnToo)
{
    const QImage plain = inkOf(QStringLiteral("Tram"));
    for (const Script& script : scripts)
        EXPECT_GT(
            inkOf(QStringLiteral("Tram ") + QString::fromUtf8(script.letters[0])).width(), plain.width() + 10)
            << script.name;
}

} // namespace
