#include "platform/foundation/XMLText.h"

#include "platform/foundation/NSPropertyList.h"

#include <QStringEncoder>

#include <gmock/gmock.h>

namespace {

NSString document(const char* encoding, const NSString& content)
{
    const NSString declaration = encoding
        ? QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?>").arg(QLatin1String(encoding))
        : QStringLiteral("<?xml version=\"1.0\"?>");
    return declaration + QStringLiteral("\n<plist><string>%1</string></plist>").arg(content);
}

const NSString everyScript = QStringLiteral("Größe, размер, 大小, حجم, 😀");

NSData encoded(QStringConverter::Encoding encoding, const NSString& text, bool hasMark)
{
    using Flag = QStringConverter::Flag;
    QStringEncoder encoder(encoding, hasMark ? Flag::WriteBom : Flag::Default);
    return encoder.encode(text);
}

NSString stringIn(const NSData& data) { return NSPropertyList::propertyListWithData(data).stringValue(); }

} // namespace

TEST(XMLTextTest, UnicodeIsReadInEveryFormAndOrderWithAndWithoutAMarkOrADeclaration)
{
    struct Form {
        QStringConverter::Encoding encoding;
        std::vector<const char*> names; // by which it may call itself; null for none
    };
    const std::vector<Form> forms {
        { QStringConverter::Utf8, { nullptr, "UTF-8", "utf-8", "utf8" } },
        { QStringConverter::Utf16LE, { nullptr, "UTF-16", "utf-16", "UTF-16LE" } },
        { QStringConverter::Utf16BE, { nullptr, "UTF-16", "UTF-16BE" } },
        { QStringConverter::Utf32LE, { nullptr, "UTF-32", "UTF-32LE" } },
        { QStringConverter::Utf32BE, { nullptr, "UTF-32", "UTF-32BE" } },
    };
    for (const Form& form : forms)
        for (const char* name : form.names)
            for (const bool hasMark : { false, true }) {
                const NSData data = encoded(form.encoding, document(name, everyScript), hasMark);
                EXPECT_EQ(stringIn(data), everyScript)
                    << QStringConverter::nameForEncoding(form.encoding) << " as " << (name ? name : "nothing")
                    << (hasMark ? " with" : " without") << " a mark";
            }
}

TEST(XMLTextTest, OtherEncodingsThatAreDeclaredAreReadRight)
{
    const auto bytes = [](const char* encoding, const NSData& content) {
        return document(encoding, QStringLiteral("@")).toLatin1().replace("@", content);
    };
    EXPECT_EQ(stringIn(bytes("ISO-8859-1",
                  "Gr\xF6\xDF"
                  "e")),
        QStringLiteral("Größe"));
    EXPECT_EQ(stringIn(bytes("windows-1252", "\x80 5")), QStringLiteral("€ 5"));
    EXPECT_EQ(stringIn(bytes("ISO-8859-15", "\xA4 5")), QStringLiteral("€ 5"));
    EXPECT_EQ(stringIn(bytes("KOI8-R", "\xD2\xC1\xDA\xCD\xC5\xD2")), QStringLiteral("размер"));
    EXPECT_EQ(stringIn(bytes("Shift_JIS", "\x91\xE5\x8F\xAC")), QStringLiteral("大小"));
    EXPECT_EQ(stringIn(bytes("GB18030", "\xB4\xF3\xD0\xA1")), QStringLiteral("大小"));
    EXPECT_EQ(stringIn(bytes("US-ASCII", "plain")), QStringLiteral("plain"));
    EXPECT_EQ(stringIn("<?xml version='1.0' encoding='ISO-8859-1'?><plist><string>\xF6</string></plist>"),
        QStringLiteral("ö"));
}

TEST(XMLTextTest, WhatIsNotInTheEncodingThatItNamesIsRefusedByName)
{
    const auto problem = [](const NSData& data) {
        const XMLText text = XMLText::decode(data);
        EXPECT_TRUE(text.text.isEmpty());
        EXPECT_TRUE(stringIn(data).isNull());
        return std::to_string(text.problemLine) + ": " + text.problem.toStdString();
    };
    const auto declared = [](const char* encoding, const char* content) {
        return document(encoding, QStringLiteral("@")).toLatin1().replace("@", content);
    };
    EXPECT_EQ(problem(declared("no-such", "a")), "1: the encoding \"no-such\" is not known");
    // An even number of bytes makes units of sixteen bits, an odd one does not.
    EXPECT_EQ(problem(declared("UTF-16", "a")), "1: the text is not in its encoding, \"UTF-16\"");
    EXPECT_EQ(
        problem(declared("UTF-16", "ab")), "1: the text is not in the encoding that it declares, \"UTF-16\"");
    EXPECT_EQ(
        problem(declared("IBM037", "a")), "1: the text is not in the encoding that it declares, \"IBM037\"");
    EXPECT_EQ(problem(declared("UTF-8", "\xE4")), "2: the text is not in its encoding, \"UTF-8\"");
    EXPECT_EQ(problem(declared("US-ASCII", "\xE4")), "2: the text is not in its encoding, \"US-ASCII\"");
    EXPECT_EQ(problem(declared("Shift_JIS", "\x91")), "2: the text is not in its encoding, \"Shift_JIS\"");
    EXPECT_EQ(problem("\xEF\xBB\xBF" + declared("ISO-8859-1", "a")),
        "1: the text declares the encoding \"ISO-8859-1\", but is in \"UTF-8\"");
    EXPECT_EQ(problem(encoded(QStringConverter::Utf16LE, document("UTF-8", "a"), true)),
        "1: the text declares the encoding \"UTF-8\", but is in \"UTF-16LE\"");
    EXPECT_EQ(problem(encoded(QStringConverter::Utf16LE, document("UTF-16BE", "a"), false)),
        "1: the text declares the encoding \"UTF-16BE\", but is in \"UTF-16LE\"");
    const NSData cut = encoded(QStringConverter::Utf16LE, document(nullptr, everyScript), true).chopped(1);
    EXPECT_EQ(problem(cut), "2: the text is not in its encoding, \"UTF-16LE\"");
    const NSData halfPair = NSData("\xFF\xFE<\0\x3D\xD8>\0", 8);
    EXPECT_EQ(problem(halfPair), "1: the text is not in its encoding, \"UTF-16LE\"");
}

TEST(XMLTextTest, NoBytesAreNoText)
{
    EXPECT_TRUE(XMLText::decode({}).text.isEmpty());
    EXPECT_TRUE(XMLText::decode("\xEF\xBB\xBF").text.isEmpty());
    EXPECT_TRUE(XMLText::decode("\xFF\xFE").text.isEmpty());
}
