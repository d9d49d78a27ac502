#include "platform/graphics/FontCatalogue.h"

#include "platform/graphics/TextLayout.h"
#include "tests/platform/graphics/Drawing.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

namespace {

const NSString family = QStringLiteral("Inter");
const NSString emojiFamily = QStringLiteral("Noto Color Emoji");
const NSString latin = QStringLiteral("Queen Street 17 – Łódź, Ève…");
const NSString chinese = QStringLiteral("录音");

QImage drawnText(const NSString& text)
{
    const TextLayout layout(text, { UIFont::systemFontOfSize(20) });
    return drawn({ 300, 40 }, 2, [&](CGContext& context) {
        layout.draw(context, { 0, 0 }, *UIColor::blackColor());
    });
}

// Those that Qt knows, without the three that it has for every system.
QStringList otherFamilies()
{
    QStringList families = QFontDatabase::families();
    families.removeIf([](const QString& it) {
        return it.startsWith(family)
            || QStringList { QStringLiteral("Monospace"), QStringLiteral("Sans Serif"),
                   QStringLiteral("Serif") }
                   .contains(it);
    });
    return families;
}

class FontCatalogueTest : public testing::Test {
protected:
    // Whatever other tests have read: the fonts' own catalogue exists, so that it changes nothing later.
    void SetUp() override { UIFont::systemFontOfSize(20)->ascender(); }
    // What is known holds for the process.
    void TearDown() override { FontCatalogue(std::vector { family }).readAll(); }
};

TEST_F(FontCatalogueTest, KnowsTheNamedFamiliesAloneAtFirst)
{
    const FontCatalogue catalogue(std::vector { family });
    EXPECT_FALSE(catalogue.isWhole());
    EXPECT_TRUE(QFontDatabase::hasFamily(family));
    EXPECT_EQ(otherFamilies(), QStringList());
}

TEST_F(FontCatalogueTest, ReadsNothingForCharactersThatTheFamilyHas)
{
    FontCatalogue catalogue(std::vector { family });
    catalogue.readFor(latin, family);
    catalogue.readFor(QStringLiteral("Ελληνικά, Русский"), family);
    catalogue.readFor(NSString(), family);
    EXPECT_FALSE(catalogue.isWhole());
    EXPECT_EQ(otherFamilies(), QStringList());
}

TEST_F(FontCatalogueTest, ReadsAllForACharacterThatItLacks)
{
    for (const NSString& text :
        { chinese, QStringLiteral("Tram 🚋"), QStringLiteral("ກ"), latin + QStringLiteral("ع") }) {
        FontCatalogue catalogue(std::vector { family });
        catalogue.readFor(text, family);
        EXPECT_TRUE(catalogue.isWhole()) << qPrintable(text);
        EXPECT_TRUE(QFontDatabase::hasFamily(emojiFamily)) << qPrintable(text);
    }
}

TEST_F(FontCatalogueTest, CharactersThatAreNotSeenNeedNoFont)
{
    FontCatalogue catalogue(std::vector { family });
    for (const char32_t character : { U'\n', U'\t', U'\u200D', U'\u200F', U'\u2028', U'\u2029', U'\uFE0F' })
        catalogue.readFor(QString::fromUcs4(&character, 1), family);
    EXPECT_FALSE(catalogue.isWhole());
}

TEST_F(FontCatalogueTest, TheFirstFamilyStandsInForTheOthers)
{
    const NSString sign = QStringLiteral("⌘"); // Inter has it, Lato has not
    FontCatalogue withInter(std::vector { family, QStringLiteral("Lato") });
    withInter.readFor(sign, QStringLiteral("Lato"));
    EXPECT_FALSE(withInter.isWhole());
    FontCatalogue alone(std::vector { QStringLiteral("Lato") });
    alone.readFor(sign, QStringLiteral("Lato"));
    EXPECT_TRUE(alone.isWhole());
}

TEST_F(FontCatalogueTest, AFamilyThatIsNotInstalledLeavesTheChoiceToTheSystem)
{
    FontCatalogue(std::vector { family }).readAll(); // as the system has it
    const FontCatalogue catalogue(std::vector { family, QStringLiteral("No Such Family") });
    EXPECT_TRUE(catalogue.isWhole());
    EXPECT_TRUE(QFontDatabase::hasFamily(emojiFamily));
}

TEST_F(FontCatalogueTest, AConfigurationInTheEnvironmentIsKeptTo)
{
    for (const char* name : { "FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT" }) {
        qputenv(name, "");
        EXPECT_TRUE(FontCatalogue(std::vector { family }).isWhole()) << name;
        qunsetenv(name);
    }
}

TEST_F(FontCatalogueTest, ATextIsDrawnTheSameOnceAllAreRead)
{
    FontCatalogue catalogue(std::vector { family });
    const TextLayout before(latin, { UIFont::systemFontOfSize(20) });
    const QImage picture = drawnText(latin);
    catalogue.readAll();
    EXPECT_EQ(drawnText(latin), picture);
    EXPECT_EQ(drawn({ 300, 40 }, 2,
                  [&](CGContext& context) {
                      before.draw(context, { 0, 0 }, *UIColor::blackColor());
                  }),
        picture);
}

TEST_F(FontCatalogueTest, ManyThreadsMayAskAtOnce)
{
    FontCatalogue catalogue(std::vector { family });
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index)
        threads.emplace_back([&] {
            catalogue.readFor(latin, family);
            catalogue.readFor(chinese, family);
            EXPECT_TRUE(catalogue.isWhole());
            EXPECT_FALSE(inkBounds(drawnText(chinese)).isNull());
        });
    for (std::thread& thread : threads)
        thread.join();
}

// In a process of its own, where no test has read anything before.
using FontCatalogueDeathTest = FontCatalogueTest;

void drawChineseInAFreshProcess()
{
    drawnText(latin);
    if (QFontDatabase::hasFamily(emojiFamily))
        std::_Exit(2);
    bool isEqual = false;
    std::thread([&] {
        drawnText(latin);
        QImage expected;
        std::thread([&] { expected = drawnText(chinese); }).join();
        isEqual = QFontDatabase::hasFamily(emojiFamily) && drawnText(chinese) == expected;
    }).join();
    std::_Exit(isEqual && drawnText(chinese) != drawnText(QString(2, QChar(0xE555))) ? 0 : 3);
}

TEST_F(FontCatalogueDeathTest, AThreadThatHasDrawnBeforeFindsTheLettersToo)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(drawChineseInAFreshProcess(), testing::ExitedWithCode(0), "");
}

} // namespace
