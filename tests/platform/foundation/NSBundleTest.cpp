#include "platform/foundation/NSBundle.h"

#include "tests/platform/foundation/TemporaryFolder.h"
#include "tests/support/SourcePath.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <thread>

namespace {

const NSString accessibility = QStringLiteral("Accessibility");

class NSBundleTest : public testing::Test {
protected:
    std::shared_ptr<NSBundle> bundle(const std::vector<NSString>& languages = { QStringLiteral("en") }) const
    {
        return make<NSBundle>(folder.path(), languages);
    }
    void writeTable(const char* language, const char* table, const char* text) const
    {
        folder.write(
            QStringLiteral("%1.lproj/%2.strings").arg(QLatin1String(language), QLatin1String(table)), text);
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(NSBundleTest, FindsFilesInItsFolderAndItsSubfolders)
{
    const NSString list = folder.write(QStringLiteral("FakePeople.plist"));
    const NSString sound = folder.write(QStringLiteral("sounds/tram_bell.m4a"));
    const auto resources = bundle();
    EXPECT_EQ(resources->pathForResource(QStringLiteral("FakePeople"), QStringLiteral("plist")), list);
    EXPECT_EQ(resources->pathForResource(QStringLiteral("tram_bell"), QStringLiteral("m4a")), sound);
    EXPECT_EQ(resources->urlForResource(QStringLiteral("tram_bell"), QStringLiteral("m4a")),
        NSURL::fromLocalFile(sound));
    EXPECT_EQ(resources->pathForResource(QStringLiteral("tram_bell.m4a"), NSString()), sound);
}

TEST_F(NSBundleTest, NamesWithPointsAndSignsAreFound)
{
    const NSString large = folder.write(QStringLiteral("images/ov_icon.play@2x.png"));
    const NSString percent = folder.write(QStringLiteral("images/100% #1.png"));
    const auto resources = bundle();
    EXPECT_EQ(resources->pathForResource(QStringLiteral("ov_icon.play@2x"), QStringLiteral("png")), large);
    EXPECT_EQ(
        resources->urlForResource(QStringLiteral("100% #1"), QStringLiteral("png")).toLocalFile(), percent);
}

TEST_F(NSBundleTest, TheFoldersOwnFileComesFirstThenSubfoldersByName)
{
    folder.write(QStringLiteral("b/same.txt"));
    const NSString inA = folder.write(QStringLiteral("a/same.txt"));
    folder.write(QStringLiteral("a/top.txt"));
    const NSString top = folder.write(QStringLiteral("top.txt"));
    EXPECT_EQ(bundle()->pathForResource(QStringLiteral("same"), QStringLiteral("txt")), inA);
    EXPECT_EQ(bundle()->pathForResource(QStringLiteral("top"), QStringLiteral("txt")), top);
}

TEST_F(NSBundleTest, WhatIsMissingIsNil)
{
    folder.write(QStringLiteral("a/b/deep.txt"));
    folder.write(QStringLiteral("present.txt"));
    const auto resources = bundle();
    EXPECT_TRUE(resources->pathForResource(QStringLiteral("absent"), QStringLiteral("txt")).isNull());
    EXPECT_TRUE(resources->pathForResource(QStringLiteral("present"), QStringLiteral("plist")).isNull());
    EXPECT_TRUE(resources->pathForResource(QStringLiteral("Present"), QStringLiteral("txt")).isNull());
    EXPECT_TRUE(resources->pathForResource(QStringLiteral("deep"), QStringLiteral("txt")).isNull());
    EXPECT_TRUE(resources->urlForResource(QStringLiteral("absent"), QStringLiteral("txt")).isEmpty());
}

TEST_F(NSBundleTest, ANilOrEmptyNameIsNil)
{
    folder.write(QStringLiteral(".txt"));
    EXPECT_TRUE(bundle()->pathForResource(NSString(), QStringLiteral("txt")).isNull());
    EXPECT_TRUE(bundle()->pathForResource(QStringLiteral(""), NSString()).isNull());
}

TEST_F(NSBundleTest, ANameCannotLeaveTheFolder)
{
    folder.write(QStringLiteral("inner/sounds/bell.m4a"));
    folder.write(QStringLiteral("secret.txt"));
    const auto resources = make<NSBundle>(folder.pathOf(QStringLiteral("inner")));
    const NSString absolute = folder.pathOf(QStringLiteral("secret.txt"));
    for (const NSString& name : { QStringLiteral("../secret"), QStringLiteral("../secret.txt"), absolute,
             QStringLiteral("sounds/bell"), QStringLiteral(".."), QStringLiteral("./bell") })
        for (const NSString& type : { NSString(), QStringLiteral("txt"), QStringLiteral("m4a") })
            EXPECT_TRUE(resources->pathForResource(name, type).isNull()) << name.toStdString();
}

TEST_F(NSBundleTest, AFolderThatDoesNotExistIsAnEmptyBundle)
{
    for (const NSString& path : { folder.pathOf(QStringLiteral("none")), NSString() }) {
        const auto resources = make<NSBundle>(path);
        EXPECT_TRUE(resources->pathForResource(QStringLiteral("CMakeLists"), QStringLiteral("txt")).isNull());
        EXPECT_EQ(resources->localizedStringForKey(QStringLiteral("OK"), QStringLiteral(""), NSString()),
            QStringLiteral("OK"));
    }
}

TEST_F(NSBundleTest, TheFolderIsReadOnceOnTheFirstQuestion)
{
    const auto resources = bundle();
    const NSString early = folder.write(QStringLiteral("early.txt"));
    EXPECT_EQ(resources->pathForResource(QStringLiteral("early"), QStringLiteral("txt")), early);
    folder.write(QStringLiteral("late.txt"));
    EXPECT_TRUE(resources->pathForResource(QStringLiteral("late"), QStringLiteral("txt")).isNull());
}

TEST_F(NSBundleTest, ATextWithoutTranslationIsTheDefaultOrElseTheKey)
{
    const auto resources = bundle();
    const NSString key = QStringLiteral("Suffix Format");
    const NSString table = QStringLiteral("ORVCountFormatter");
    EXPECT_EQ(resources->localizedStringForKey(key, QStringLiteral("%@%@"), table), QStringLiteral("%@%@"));
    EXPECT_EQ(resources->localizedStringForKey(key, QStringLiteral(""), table), key);
    EXPECT_EQ(resources->localizedStringForKey(key, NSString(), table), key);
    EXPECT_EQ(resources->localizedStringForKey(NSString(), QStringLiteral("x"), table), QStringLiteral("x"));
}

TEST_F(NSBundleTest, ATranslationWinsOverTheDefault)
{
    writeTable("en", "Localizable", "\"OK\" = \"Fine\"; \"Empty\" = \"\";");
    writeTable("en", "Accessibility", "\"Play\" = \"Plays\";");
    const auto resources = bundle();
    EXPECT_EQ(resources->localizedStringForKey(QStringLiteral("OK"), QStringLiteral("no"), NSString()),
        QStringLiteral("Fine"));
    EXPECT_EQ(
        resources->localizedStringForKey(QStringLiteral("OK"), QStringLiteral("no"), QStringLiteral("")),
        QStringLiteral("Fine"));
    EXPECT_EQ(resources->localizedStringForKey(QStringLiteral("Empty"), QStringLiteral("no"), NSString()),
        QStringLiteral(""));
    EXPECT_EQ(resources->localizedStringForKey(QStringLiteral("Play"), NSString(), accessibility),
        QStringLiteral("Plays"));
    EXPECT_EQ(resources->localizedStringForKey(QStringLiteral("Play"), NSString(), NSString()),
        QStringLiteral("Play"));
}

TEST_F(NSBundleTest, LanguagesAreAskedInOrderAndEnglishLast)
{
    writeTable("en", "Localizable", "\"a\" = \"en\"; \"b\" = \"en\"; \"c\" = \"en\"; \"d\" = \"en\";");
    writeTable("de", "Localizable", "\"a\" = \"de\"; \"b\" = \"de\";");
    writeTable("de-AT", "Localizable", "\"a\" = \"de-AT\";");
    writeTable("fr", "Localizable", "\"a\" = \"fr\"; \"c\" = \"fr\";");
    const auto resources = bundle({ QStringLiteral("de_AT.UTF-8"), QStringLiteral("fr") });
    const auto text = [&](const char* key) {
        return resources->localizedStringForKey(QLatin1String(key), NSString(), NSString()).toStdString();
    };
    EXPECT_EQ(text("a"), "de-AT");
    EXPECT_EQ(text("b"), "de");
    EXPECT_EQ(text("c"), "fr");
    EXPECT_EQ(text("d"), "en");
}

TEST_F(NSBundleTest, AnUnknownLanguageIsEnglish)
{
    writeTable("en", "Localizable", "\"a\" = \"en\";");
    EXPECT_EQ(
        bundle({ QStringLiteral("tlh") })->localizedStringForKey(QStringLiteral("a"), NSString(), NSString()),
        QStringLiteral("en"));
    EXPECT_EQ(
        bundle({})->localizedStringForKey(QStringLiteral("a"), NSString(), NSString()), QStringLiteral("en"));
}

TEST_F(NSBundleTest, TheUsersLanguagesAreTheDefault)
{
    writeTable("de", "Localizable", "\"a\" = \"de\";");
    NSLocale::setPreferredLanguages({ QStringLiteral("de-CH") });
    const auto resources = make<NSBundle>(folder.path());
    NSLocale::setPreferredLanguages({});
    EXPECT_EQ(
        resources->localizedStringForKey(QStringLiteral("a"), NSString(), NSString()), QStringLiteral("de"));
}

TEST_F(NSBundleTest, ATableOrALanguageCannotLeaveTheFolder)
{
    folder.write(QStringLiteral("outside/en.lproj/Localizable.strings"), "\"a\" = \"outside\";");
    folder.write(QStringLiteral("inner/en.lproj/Localizable.strings"), "\"b\" = \"inside\";");
    const auto resources = make<NSBundle>(
        folder.pathOf(QStringLiteral("inner")), std::vector { QStringLiteral("../outside/en") });
    EXPECT_EQ(
        resources->localizedStringForKey(QStringLiteral("a"), NSString(), NSString()), QStringLiteral("a"));
    EXPECT_EQ(resources->localizedStringForKey(
                  QStringLiteral("a"), NSString(), QStringLiteral("../../outside/en.lproj/Localizable")),
        QStringLiteral("a"));
}

TEST_F(NSBundleTest, ABrokenTableIsReportedOnceAndItsFirstEntriesCount)
{
    writeTable("en", "Localizable", "\"a\" = \"A\";\n\"b\" = oops;");
    const auto resources = bundle();
    testing::internal::CaptureStderr();
    EXPECT_EQ(
        resources->localizedStringForKey(QStringLiteral("a"), NSString(), NSString()), QStringLiteral("A"));
    EXPECT_EQ(
        resources->localizedStringForKey(QStringLiteral("b"), NSString(), NSString()), QStringLiteral("b"));
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_EQ(
        report, folder.path().toStdString() + "/en.lproj/Localizable.strings:2: expected a text in quotes\n");
}

TEST_F(NSBundleTest, ATableBeyondTheCapIsToldOfAndNotRead)
{
    writeTable("en", "Localizable", "\"a\" = \"A\";");
    const NSString path = folder.pathOf(QStringLiteral("en.lproj/Localizable.strings"));
    ASSERT_TRUE(QFile::resize(path, qint64 { 3 } << 30)); // sparse: it takes no room
    const auto resources = bundle();
    testing::internal::CaptureStderr();
    EXPECT_EQ(resources->localizedStringForKey(QStringLiteral("a"), QStringLiteral("b"), NSString()),
        QStringLiteral("b"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        path.toStdString() + ": 3221225472 bytes are more than the 4194304 that are read\n");
}

TEST_F(NSBundleTest, AnswersSeveralThreadsAtOnce)
{
    const NSString path = folder.write(QStringLiteral("a.txt"));
    writeTable("en", "Localizable", "\"a\" = \"A\";");
    const auto resources = bundle();
    const NSBundle::MainReplacement replacement(resources);
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index)
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                const auto main = NSBundle::mainBundle();
                EXPECT_EQ(main->pathForResource(QStringLiteral("a"), QStringLiteral("txt")), path);
                EXPECT_EQ(main->localizedStringForKey(QStringLiteral("a"), NSString(), NSString()),
                    QStringLiteral("A"));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST_F(NSBundleTest, TheMainBundleLiesBesideTheExecutableOrIsInstalled)
{
    const NSString path = NSBundle::mainBundle()->resourcePath();
    const QFileInfo executable(QCoreApplication::applicationFilePath());
    const NSString beside = executable.dir().filePath(QStringLiteral("resources"));
    const NSString installed = QDir::cleanPath(
        executable.dir().filePath(QStringLiteral("../share/tests_platform_foundation/resources")));
    EXPECT_EQ(path, QFileInfo(beside).isDir() ? beside : installed);
    EXPECT_EQ(NSBundle::mainBundle(), NSBundle::mainBundle());
}

TEST_F(NSBundleTest, AReplacementOfTheMainBundleGivesWayToTheOneBefore)
{
    const auto before = NSBundle::mainBundle();
    const auto outer = bundle();
    {
        const NSBundle::MainReplacement replacement(outer);
        EXPECT_EQ(NSBundle::mainBundle(), outer);
        {
            const NSBundle::MainReplacement inner(bundle());
            EXPECT_NE(NSBundle::mainBundle(), outer);
        }
        EXPECT_EQ(NSBundle::mainBundle(), outer);
    }
    EXPECT_EQ(NSBundle::mainBundle(), before);
}

TEST_F(NSBundleTest, TheProductsOwnTextsAreFound)
{
    const auto product = make<NSBundle>(sourcePath("resources"), std::vector<NSString> {});
    EXPECT_EQ(product->localizedStringForKey(
                  QStringLiteral("Kilo"), QStringLiteral("x"), QStringLiteral("ORVCountFormatter")),
        QStringLiteral("k"));
    EXPECT_FALSE(product->pathForResource(QStringLiteral("FakeRecords"), QStringLiteral("plist")).isNull());
}
