#include "platform/foundation/StringsTable.h"

#include "tests/support/SourcePath.h"

#include <QFile>
#include <QStringEncoder>

#include <gmock/gmock.h>

namespace {

NSString valueOf(const char* text, const char* key)
{
    return StringsTable::parse(text).entries.value(NSString::fromUtf8(key));
}

void expectError(const NSData& text, int line, const char* message)
{
    const StringsTable table = StringsTable::parse(text);
    ASSERT_TRUE(table.error) << text.toStdString();
    EXPECT_EQ(table.error->line, line) << text.toStdString();
    EXPECT_EQ(table.error->message, NSString::fromLatin1(message));
}

} // namespace

TEST(StringsTableTest, ReadsEntriesBetweenComments)
{
    const StringsTable table = StringsTable::parse("/* first\n line */\n\"a\" = \"A\"; // end\n"
                                                   "\n// \"no\" = \"entry\";\n\"b\"=\"B\";/**/");
    EXPECT_FALSE(table.error);
    EXPECT_EQ(table.entries.size(), 2);
    EXPECT_EQ(table.entries.value(QStringLiteral("a")), QStringLiteral("A"));
    EXPECT_EQ(table.entries.value(QStringLiteral("b")), QStringLiteral("B"));
}

TEST(StringsTableTest, AnEmptyTableIsNoError)
{
    for (const char* text : { "", " \n\t\r\n", "// nothing", "/* nothing */", "\xEF\xBB\xBF" })
        EXPECT_FALSE(StringsTable::parse(text).error) << text;
}

TEST(StringsTableTest, SkipsAByteOrderMark)
{
    EXPECT_EQ(valueOf("\xEF\xBB\xBF\"a\" = \"A\";", "a"), QStringLiteral("A"));
}

TEST(StringsTableTest, EveryFormOfUnicodeIsRead)
{
    const NSString text = NSString::fromUtf8("\n/* ö */ \"Größe\" = \"размер, 大小, 😀\\n\";\n\"b\" = \"B\";");
    for (const auto form : { QStringConverter::Utf8, QStringConverter::Utf16LE, QStringConverter::Utf16BE,
             QStringConverter::Utf32LE, QStringConverter::Utf32BE })
        for (const auto mark : { QStringConverter::Flag::Default, QStringConverter::Flag::WriteBom }) {
            const NSData data = QStringEncoder(form, mark).encode(text);
            const StringsTable table = StringsTable::parse(data);
            EXPECT_FALSE(table.error) << QStringConverter::nameForEncoding(form);
            EXPECT_EQ(table.entries.size(), 2) << QStringConverter::nameForEncoding(form);
            EXPECT_EQ(
                table.entries.value(NSString::fromUtf8("Größe")), NSString::fromUtf8("размер, 大小, 😀\n"));
            EXPECT_EQ(table.entries.value(QStringLiteral("b")), QStringLiteral("B"));
        }
}

TEST(StringsTableTest, WhatIsNotInItsEncodingIsRefusedByName)
{
    const NSString text = QStringLiteral("\"a\" = \"A\";\n\"b\" = \"B\";");
    expectError(
        QStringEncoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom).encode(text) + "\n", 2,
        "the text is not in its encoding, \"UTF-16LE\"");
    expectError(QStringEncoder(QStringConverter::Utf16BE).encode(text) + NSData("\xD8", 1), 2,
        "the text is not in its encoding, \"UTF-16BE\"");
    expectError("\"a\" = \"Gr\xF6\xDF"
                "e\";", // in Latin letters of one byte
        1, "the text is not in its encoding, \"UTF-8\"");
}

TEST(StringsTableTest, UnderstandsEscapes)
{
    EXPECT_EQ(valueOf(R"("a" = "1\n2\t3\"4\\5";)", "a"), QStringLiteral("1\n2\t3\"4\\5"));
    EXPECT_EQ(valueOf(R"("a" = "\U00e4\U20AC";)", "a"), QStringLiteral("ä€"));
    EXPECT_EQ(valueOf(R"("a" = "\UD83D\UDE00";)", "a"), NSString::fromUtf8("😀"));
    EXPECT_EQ(valueOf(R"("say \"hi\"" = "x";)", "say \"hi\""), QStringLiteral("x"));
}

TEST(StringsTableTest, KeepsTextInEveryScriptAndAcrossLines)
{
    EXPECT_EQ(valueOf("\"Größe\" = \"размер 大小\";", "Größe"), NSString::fromUtf8("размер 大小"));
    EXPECT_EQ(
        valueOf("\"a\" = \"one\ntwo /* no comment */\";", "a"), QStringLiteral("one\ntwo /* no comment */"));
}

TEST(StringsTableTest, AnEmptyTextIsNotNil)
{
    EXPECT_FALSE(valueOf("\"a\" = \"\";", "a").isNull());
    EXPECT_TRUE(valueOf("\"a\" = \"\";", "b").isNull());
}

TEST(StringsTableTest, OfEqualKeysTheLastCounts)
{
    EXPECT_EQ(valueOf("\"a\" = \"1\"; \"a\" = \"2\";", "a"), QStringLiteral("2"));
}

TEST(StringsTableTest, ErrorsNameTheirLine)
{
    expectError("\"a\" = \"A\";\nb = \"B\";", 2, "expected a text in quotes");
    expectError("\n\n\"a\" \"A\";", 3, "expected \"=\" after the key");
    expectError("\"a\" = \"A\"\n\"b\" = \"B\";", 2, "expected \";\" after the text");
    expectError("\"a\" = ;", 1, "expected a text in quotes");
    expectError("\n\"a\" = \"A\n\n", 2, "a text in quotes does not end");
    expectError("\"a\" = \"A\"; \n/* never", 2, "a comment does not end");
    expectError("\n\"a\" = \"\\q\";", 2, "unknown escape after a backslash");
    expectError("\"a\" = \"\\", 1, "unknown escape after a backslash");
    expectError("\"a\" = \"\\U12G4\";", 1, "\\U needs four hexadecimal digits");
    expectError("\"a\" = \"\\U12", 1, "\\U needs four hexadecimal digits");
    expectError("\"a\" = \"\\UD83D\";", 1, "half of a surrogate pair");
    expectError("\"a\" = \"\xFF\";", 1, "the text is not in its encoding, \"UTF-8\"");
    expectError("\"a\" = \"A\";\n\"b\" = \"\n\xC3\";", 3, "the text is not in its encoding, \"UTF-8\"");
    expectError("\"a\" = \"A\";\n/* \xE4", 2, "the text is not in its encoding, \"UTF-8\"");
    expectError("\"a\" = A;\n\"b\" = \"\xE4\";", 1, "expected a text in quotes");
}

TEST(StringsTableTest, EntriesBeforeAnErrorAreKept)
{
    const StringsTable table = StringsTable::parse("\"a\" = \"A\";\n\"b\" = broken;\n\"c\" = \"C\";");
    EXPECT_TRUE(table.error);
    EXPECT_EQ(table.entries.size(), 1);
    EXPECT_EQ(table.entries.value(QStringLiteral("a")), QStringLiteral("A"));
}

TEST(StringsTableTest, ATableCutAnywhereGivesTheEntriesBeforeTheCut)
{
    const NSData text("\xEF\xBB\xBF/* c */ \"a\\n\" = \"\\U00e4ä\"; // x\n\"b\" = \"B\";\n\"c\" = \"C\";");
    for (qsizetype length = 0; length <= text.size(); ++length) {
        const StringsTable table = StringsTable::parse(text.first(length));
        EXPECT_EQ(table.entries.size(), text.first(length).mid(3).count(';')) << length;
    }
}

TEST(StringsTableTest, AnyByteAnywhereIsSurvived)
{
    const NSData text("/* c */ \"a\\n\" = \"\\U00e4\"; // x\n\"b\" = \"B\";\n");
    for (qsizetype position = 0; position < text.size(); ++position)
        for (int byte = 0; byte < 256; ++byte) {
            NSData changed = text;
            changed[position] = static_cast<char>(byte);
            EXPECT_LE(StringsTable::parse(changed).entries.size(), 2);
        }
}

TEST(StringsTableTest, TheProductsOwnTablesAreFlawless)
{
    for (const char* name : { "Localizable", "Accessibility", "ORVCountFormatter" }) {
        QFile file(sourcePath("resources/en.lproj/%1.strings").arg(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        const StringsTable table = StringsTable::parse(file.readAll());
        EXPECT_FALSE(table.error) << name;
        EXPECT_FALSE(table.entries.isEmpty()) << name;
    }
}
