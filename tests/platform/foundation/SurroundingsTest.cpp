// What every test program does with its environment; see tests/support/Surroundings.h.
#include "platform/foundation/NSLocale.h"
#include "tests/platform/foundation/TemporaryFolder.h"
#include "tests/support/ChildProcess.h"

#include <QLocale>

#include <gmock/gmock.h>

namespace {

const ChildProcess::Environment german { { "LANGUAGE", "de:ar" }, { "LANG", "de_DE.UTF-8" },
    { "LC_ALL", "tr_TR.UTF-8" }, { "LC_NUMERIC", "de_DE.UTF-8" } };
const ChildProcess::Environment desktop { { "QT_SCALE_FACTOR", "2" }, { "QT_FONT_DPI", "144" },
    { "QT_QPA_PLATFORM", "xcb" }, { "QT_QPA_PLATFORMTHEME", "gtk3" }, { "QT_STYLE_OVERRIDE", "fusion" },
    { "QT_IMAGEIO_MAXALLOC", "1" }, { "QSG_RENDER_LOOP", "threaded" }, { "XDG_CURRENT_DESKTOP", "KDE" },
    { "DESKTOP_SESSION", "plasma" }, { "KDE_FULL_SESSION", "true" }, { "FONTCONFIG_FILE", "/dev/null" } };

} // namespace

TEST(SurroundingsTest, NameNoDesktopAndNoLanguage)
{
    for (const auto* environment : { &german, &desktop })
        for (const auto& [name, value] : *environment)
            EXPECT_NE(qgetenv(name.c_str()).toStdString(), value) << name;
    EXPECT_EQ(NSLocale::preferredLanguages(), std::vector { QStringLiteral("en") });
    EXPECT_EQ(QLocale::system().decimalPoint(), QStringLiteral("."));
}

// Runs the test above once more, in a process of its own.
TEST(SurroundingsTest, AreTheSameWhateverTheDesktopSays)
{
    const TemporaryFolder folder;
    for (const auto* environment : { &german, &desktop }) {
        ChildProcess program;
        ASSERT_TRUE(program.start({ "/proc/self/exe", "--gtest_filter=SurroundingsTest.NameNo*" },
            *environment, folder.pathOf(QStringLiteral("output")).toStdString()));
        EXPECT_TRUE(program.succeeds());
    }
}
