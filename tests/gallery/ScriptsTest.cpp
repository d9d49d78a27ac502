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
    const char* letters; // between blanks
};

// All that the Unicode Standard Annex 31 recommends or knows to be in use, but Thaana; and of what it leaves
// to scholars and musicians, some.
const Script scripts[] = {
    { "Arabic", "ع ب ك لا" },
    { "Armenian", "Հ ա յ" },
    { "Bengali", "ক ল স্ত" },
    { "Bopomofo", "ㄅ ㄆ ㄇ" },
    { "Cyrillic", "Р ж ў" },
    { "Devanagari", "क ह अ न्दी" },
    { "Ethiopic", "አ ማ ኛ" },
    { "Georgian", "ქ ა რ" },
    { "Greek", "Ω λ ύ" },
    { "Gujarati", "ક જ ત્ર" },
    { "Gurmukhi", "ਪ ਜ ਬ" },
    { "Chinese", "中 国 书 龍" },
    { "Korean", "한 글 녹" },
    { "Hebrew", "ש ל ם" },
    { "Hiragana", "あ ら が" },
    { "Kannada", "ಕ ನ ಡ" },
    { "Katakana", "カ タ ナ" },
    { "Japanese", "録 々 峠" },
    { "Khmer", "ភ ស ខ្មែ" },
    { "Lao", "ລ າ ວ" },
    { "Latin", "Ł ễ ß" },
    { "Malayalam", "മ ല ളം" },
    { "Burmese", "မ န ပ" },
    { "Oriya", "ଓ ଡ ଆ" },
    { "Sinhala", "ස ල හ" },
    { "Tamil", "த ம ழ்" },
    { "Telugu", "త ల గ" },
    { "Thai", "ก ข ฮ เ" },
    { "Tibetan", "བ ཡ ག" },
    { "Adlam", "𞤀 𞤣 𞤤" },
    { "Balinese", "ᬅ ᬓ ᬲ" },
    { "Bamum", "ꚠ ꚡ ꚢ" },
    { "Batak", "ᯀ ᯂ ᯅ" },
    { "Canadian syllables", "ᐃ ᓄ ᒃ" },
    { "Chakma", "𑄌 𑄋 𑄟" },
    { "Cham", "ꨌ ꨍ ꨣ" },
    { "Cherokee", "Ꮳ Ꮃ Ꭹ" },
    { "Rohingya", "𐴀 𐴁 𐴂" },
    { "Javanese", "ꦗ ꦮ ꦱ" },
    { "Kayah Li", "ꤊ ꤋ ꤌ" },
    { "Lepcha", "ᰛ ᰕ ᰁ" },
    { "Limbu", "ᤗ ᤁ ᤂ" },
    { "Lisu", "ꓐ ꓑ ꓒ" },
    { "Mandaic", "ࡀ ࡁ ࡂ" },
    { "Meetei Mayek", "ꯃ ꯤ ꯇ" },
    { "Miao", "𖼀 𖼁 𖼂" },
    { "New Tai Lue", "ᦑ ᦟ ᦀ" },
    { "Newa", "𑐣 𑐥 𑐀" },
    { "N'Ko", "ߒ ߞ ߏ" },
    { "Nyiakeng Puachue Hmong", "𞄀 𞄁 𞄂" },
    { "Ol Chiki", "ᱚ ᱞ ᱪ" },
    { "Osage", "𐓏 𐓘 𐓻" },
    { "Saurashtra", "ꢱ ꢬ ꢀ" },
    { "Sundanese", "ᮞ ᮔ ᮃ" },
    { "Syloti Nagri", "ꠍ ꠟ ꠇ" },
    { "Syriac", "ܣ ܘ ܪ" },
    { "Tai Le", "ᥖ ᥭ ᥰ" },
    { "Tai Tham", "ᨲ ᩅ ᨠ" },
    { "Tai Viet", "ꪀ ꪕ ꪒ" },
    { "Tifinagh", "ⵜ ⵉ ⴼ" },
    { "Vai", "ꕙ ꔤ ꔀ" },
    { "Wancho", "𞋒 𞋀 𞋉" },
    { "Yi", "ꆈ ꌠ ꉙ" },
    { "Mongolian", "ᠮ ᠣ ᠩ" },
    { "Buginese", "ᨒ ᨈ ᨀ" },
    { "Tagalog", "ᜊ ᜌ ᜀ" },
    { "Coptic", "ⲁ ⲃ ⲅ" },
    { "Cuneiform", "𒀀 𒀁 𒀂" },
    { "Egyptian hieroglyphs", "𓀀 𓀁 𓀂" },
    { "Gothic", "𐌰 𐌱 𐌲" },
    { "Ogham", "ᚁ ᚂ ᚃ" },
    { "Runes", "ᚠ ᚢ ᚦ" },
    { "Braille", "⠁ ⠃ ⠉" },
    { "mathematics", "∮ 𝔄 𝛼" },
    { "music", "𝄞 ♩ 𝄢" },
};
constexpr const char* emoji = "😀 🎙 🚋 👩‍🎤 🇯🇵";

std::vector<QImage> inksOf(const char* letters)
{
    std::vector<QImage> inks;
    for (const QString& letter : QString::fromUtf8(letters).split(QLatin1Char(' ')))
        inks.push_back(inkOf(letter));
    return inks;
}

// Each of the letters has ink of its own.
void expectLetters(const char* name, const char* letters)
{
    const std::vector<QImage> inks = inksOf(letters);
    for (std::size_t index = 0; index < inks.size(); ++index) {
        const auto here = inks.begin() + static_cast<std::ptrdiff_t>(index);
        EXPECT_FALSE(here->isNull()) << name << ", letter " << index;
        EXPECT_NE(*here, missingLetter()) << name << ", letter " << index;
        EXPECT_EQ(std::find(inks.begin(), here, *here), here) << name << ", letter " << index;
    }
}

TEST(GalleryScriptsTest, AMissingLetterIsSeen)
{
    EXPECT_GT(missingLetter().width(), 8);
    EXPECT_EQ(inkOf(QString::fromUcs4(U"\U000E5556")), missingLetter());
}

TEST(GalleryScriptsTest, EveryScriptIsDrawnWithLettersOfItsOwn)
{
    for (const Script& script : scripts)
        expectLetters(script.name, script.letters);
}

TEST(GalleryScriptsTest, EmojiHaveTheirColours)
{
    expectLetters("emoji", emoji);
    for (const QImage& ink : inksOf(emoji))
        EXPECT_TRUE(hasColor(ink));
    EXPECT_FALSE(hasColor(inkOf(QStringLiteral("a"))));
}

TEST(GalleryScriptsTest, LettersAmongLatinOnesAreDrawnToo)
{
    const int plain = inkOf(QStringLiteral("Tram")).width();
    for (const char* letter : { "中", "あ", "한", "ก", "अ", "ع", "ש", "ა", "አ", "😀" })
        EXPECT_GT(inkOf(QStringLiteral("Tram ") + QString::fromUtf8(letter)).width(), plain + 10) << letter;
}

} // namespace
