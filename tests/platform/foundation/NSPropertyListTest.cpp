#include "platform/foundation/NSPropertyList.h"

#include "tests/platform/foundation/TemporaryFolder.h"
#include "tests/support/SourcePath.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

constexpr auto largestUnsigned = std::numeric_limits<std::uint64_t>::max();

NSData xml(const NSData& content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<plist version=\"1.0\">"
        + content + "</plist>\n";
}

NSPropertyList parsed(const NSData& content) { return NSPropertyList::propertyListWithData(xml(content)); }

const NSData allKinds
    = "<dict><key>string</key><string>tram &amp; bell</string><key>empty</key><string></string>"
      "<key>integer</key><integer>348</integer><key>real</key><real>-37.817541</real>"
      "<key>yes</key><true/><key>no</key><false/><key>date</key><date>2024-05-17T12:00:00Z</date>"
      "<key>data</key><data>AAEC</data><key>array</key><array><string>a</string><integer>2</integer>"
      "</array><key>inner</key><dict><key>deep</key><integer>7</integer></dict></dict>";

void expectNil(const NSPropertyList& list)
{
    EXPECT_TRUE(list.isNil());
    EXPECT_TRUE(list.stringValue().isNull());
    EXPECT_TRUE(list.dateValue().isNull());
    EXPECT_TRUE(list.dataValue().isNull());
    EXPECT_EQ(list.doubleValue(), 0.0);
    EXPECT_EQ(list.integerValue(), 0);
    EXPECT_EQ(list.unsignedIntegerValue(), 0u);
    EXPECT_EQ(list.count(), 0u);
    EXPECT_TRUE(list.array().empty());
    EXPECT_TRUE(list.dictionary().empty());
}

} // namespace

TEST(NSPropertyListTest, ReadsEveryKindOfValue)
{
    const NSPropertyList list = parsed(allKinds);
    ASSERT_TRUE(list.isDictionary());
    EXPECT_EQ(list.count(), 10u);
    EXPECT_EQ(list[QStringLiteral("string")].stringValue(), QStringLiteral("tram & bell"));
    EXPECT_EQ(list[QStringLiteral("empty")].stringValue(), QStringLiteral(""));
    EXPECT_FALSE(list[QStringLiteral("empty")].stringValue().isNull());
    EXPECT_EQ(list[QStringLiteral("integer")].unsignedIntegerValue(), 348u);
    EXPECT_EQ(list[QStringLiteral("real")].doubleValue(), -37.817541);
    EXPECT_EQ(list[QStringLiteral("yes")].integerValue(), 1);
    EXPECT_TRUE(list[QStringLiteral("no")].isNumber());
    EXPECT_EQ(list[QStringLiteral("no")].integerValue(), 0);
    EXPECT_EQ(list[QStringLiteral("date")].dateValue(), NSDate(QDate(2024, 5, 17), QTime(12, 0), Qt::UTC));
    EXPECT_EQ(list[QStringLiteral("data")].dataValue(), NSData("\0\1\2", 3));
    EXPECT_EQ(list[QStringLiteral("array")].count(), 2u);
    EXPECT_EQ(list[QStringLiteral("array")][0].stringValue(), QStringLiteral("a"));
    EXPECT_EQ(list[QStringLiteral("inner")][QStringLiteral("deep")].integerValue(), 7);
}

TEST(NSPropertyListTest, AnArrayKeepsItsOrder)
{
    NSData items;
    for (int index = 0; index < 1000; ++index)
        items += "<integer>" + NSData::number(index) + "</integer>";
    const NSPropertyList list = parsed("<array>" + items + "</array>");
    ASSERT_EQ(list.count(), 1000u);
    for (std::size_t index = 0; index < list.count(); ++index)
        EXPECT_EQ(list[index].unsignedIntegerValue(), index);
}

TEST(NSPropertyListTest, WhatIsNotThereIsNilAllTheWayDown)
{
    const NSPropertyList list = parsed(allKinds);
    expectNil(list[QStringLiteral("missing")]);
    expectNil(list[QStringLiteral("missing")][QStringLiteral("more")][5]);
    expectNil(list[QStringLiteral("array")][2]);
    expectNil(list[QStringLiteral("array")][std::numeric_limits<std::size_t>::max()]);
    expectNil(list[0]);
    expectNil(list[QStringLiteral("string")][QStringLiteral("key")]);
    expectNil(NSPropertyList());
}

TEST(NSPropertyListTest, AValueOfAnotherKindIsNilOrZeroAtEveryKey)
{
    const NSPropertyList list = parsed(allKinds);
    for (const auto& [key, value] : list.dictionary()) {
        const bool isDate = key == QStringLiteral("date");
        const bool isData = key == QStringLiteral("data");
        const bool isContainer = value.isArray() || value.isDictionary();
        EXPECT_EQ(value.stringValue().isNull(), !value.isString()) << key.toStdString();
        EXPECT_EQ(value.dateValue().isNull(), !isDate) << key.toStdString();
        EXPECT_EQ(value.dataValue().isNull(), !isData) << key.toStdString();
        EXPECT_EQ(value.count() > 0, isContainer) << key.toStdString();
        EXPECT_TRUE(value.isNumber() || value.doubleValue() == 0) << key.toStdString();
    }
}

TEST(NSPropertyListTest, IntegersKeepTheirSignAndAllTheirBits)
{
    EXPECT_EQ(parsed("<integer>-5</integer>").integerValue(), -5);
    EXPECT_EQ(parsed("<integer>-5</integer>").doubleValue(), -5.0);
    EXPECT_EQ(parsed("<integer>18446744073709551615</integer>").unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(parsed("<integer>18446744073709551615</integer>").doubleValue(), 0x1p64);
    EXPECT_EQ(parsed("<integer>-9223372036854775808</integer>").integerValue(),
        std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(parsed("<integer>0x10</integer>").integerValue(), 16);
}

TEST(NSPropertyListTest, IntegersBeyond64BitsAreTheNearestNumber)
{
    EXPECT_EQ(parsed("<integer>99999999999999999999</integer>").doubleValue(), 1e20);
    EXPECT_EQ(parsed("<integer>99999999999999999999</integer>").unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(parsed("<integer>-99999999999999999999</integer>").doubleValue(), -1e20);
    EXPECT_EQ(parsed("<integer>-99999999999999999999</integer>").integerValue(),
        std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(parsed("<integer>-99999999999999999999</integer>").unsignedIntegerValue(), 0u);
    EXPECT_EQ(
        parsed("<integer>9223372036854775808</integer>").unsignedIntegerValue(), std::uint64_t { 1 } << 63);
    EXPECT_EQ(parsed("<integer>-0x10</integer>").integerValue(), -16);
    EXPECT_EQ(parsed("<integer> +5\n</integer>").integerValue(), 5);
    EXPECT_EQ(parsed("<real>1e999</real>").doubleValue(), HUGE_VAL);
    EXPECT_EQ(parsed("<real>-Infinity</real>").doubleValue(), -HUGE_VAL);
    EXPECT_EQ(parsed("<real> 2.5 </real>").doubleValue(), 2.5);
}

TEST(NSPropertyListTest, AValueThatIsNotWhatItsElementSaysIsRefused)
{
    for (const char* value :
        { "<integer>abc</integer>", "<integer/>", "<integer>1.5</integer>", "<integer>5x</integer>",
            "<integer>--5</integer>", "<integer>- 5</integer>", "<integer>0x</integer>",
            "<integer>0x10000000000000000</integer>", "<real>1,5</real>", "<real>abc</real>", "<real/>",
            "<real>0x10</real>", "<date>2024</date>", "<date>2024-13-01T00:00:00Z</date>", "<data>!!</data>",
            "<true>x</true>", "<foo/>", "<array>text<true/></array>", "<dict><key>a</key></dict>",
            "<dict><string>a</string></dict>", "<dict><key>a</key><key>b</key><true/></dict>",
            "<array><key>a</key></array>", "<true/><true/>", "" })
        EXPECT_TRUE(parsed(value).isNil()) << value;
    for (const char* value : { "<string> <![CDATA[a<b]]>&#65;&amp; </string>", "<array> \n <true/> </array>",
             "<data>\n\tAA EC\n</data>", "<!-- a comment --><true/>", "<date>2024-05-17T12:00:00.5Z</date>" })
        EXPECT_FALSE(parsed(value).isNil()) << value;
    EXPECT_EQ(
        parsed("<string> <![CDATA[a<b]]>&#65;&amp; </string>").stringValue(), QStringLiteral(" a<bA& "));
}

TEST(NSPropertyListTest, NumbersThatNoUnsignedIntegerHoldsBecomeItsNearest)
{
    EXPECT_EQ(parsed("<integer>-1</integer>").unsignedIntegerValue(), 0u);
    EXPECT_EQ(parsed("<real>1e300</real>").unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(parsed("<real>-1e300</real>").unsignedIntegerValue(), 0u);
    EXPECT_EQ(parsed("<real>nan</real>").unsignedIntegerValue(), 0u);
    EXPECT_EQ(parsed("<real>inf</real>").unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(parsed("<real>15.9</real>").unsignedIntegerValue(), 15u);
    EXPECT_EQ(NSPropertyList(NSNumber(std::nan(""))).integerValue(), 0);
}

TEST(NSPropertyListTest, AStringIsTheNumberItBeginsWith)
{
    const auto number
        = [](const char* text) { return NSPropertyList(NSString::fromUtf8(text)).doubleValue(); };
    EXPECT_EQ(number("12.5"), 12.5);
    EXPECT_EQ(number("  -37.8 degrees"), -37.8);
    EXPECT_EQ(number("+3"), 3.0);
    EXPECT_EQ(number(".5"), 0.5);
    EXPECT_EQ(number("5."), 5.0);
    EXPECT_EQ(number("1e3x"), 1000.0);
    EXPECT_EQ(number("2e"), 2.0);
    EXPECT_EQ(number("2e+"), 2.0);
    EXPECT_EQ(number("1e999"), HUGE_VAL);
    for (const char* text : { "", "abc", "-", ".", "e5", "nan", "inf", "١٢" })
        EXPECT_EQ(number(text), 0.0) << text;
    EXPECT_EQ(number("0x10"), 0.0);
    EXPECT_EQ(NSPropertyList(QStringLiteral("18446744073709551615")).unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(NSPropertyList(QStringLiteral("99999999999999999999")).unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(NSPropertyList(QStringLiteral("-3")).unsignedIntegerValue(), 0u);
}

TEST(NSPropertyListTest, AFileIsReadAsTheKindThatIsAskedFor)
{
    const TemporaryFolder folder;
    const NSString array = folder.write(QStringLiteral("array.plist"), xml("<array><true/></array>"));
    const NSString dictionary = folder.write(QStringLiteral("dictionary.plist"), xml(allKinds));
    EXPECT_EQ(NSPropertyList::arrayWithContentsOfFile(array).count(), 1u);
    EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile(dictionary).isNil());
    EXPECT_EQ(NSPropertyList::dictionaryWithContentsOfFile(dictionary).count(), 10u);
    EXPECT_TRUE(NSPropertyList::dictionaryWithContentsOfFile(array).isNil());
}

TEST(NSPropertyListTest, WhatIsNoReadableListIsNil)
{
    const TemporaryFolder folder;
    for (const NSString& path : { NSString(), folder.pathOf(QStringLiteral("missing")), folder.path(),
             folder.write(QStringLiteral("empty.plist")), folder.write(QStringLiteral("text.plist"), "hello"),
             QStringLiteral("/dev/zero") }) {
        EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile(path).isNil()) << path.toStdString();
        EXPECT_TRUE(NSPropertyList::dictionaryWithContentsOfFile(path).isNil()) << path.toStdString();
    }
    for (const char* text :
        { "", " ", "{}", "[1]", "<html></html>", "<plist>", "bplist00", "bplist", "<!--" })
        EXPECT_TRUE(NSPropertyList::propertyListWithData(text).isNil()) << text;
}

TEST(NSPropertyListTest, WhyAFileCannotBeReadIsToldOnceWithItsLine)
{
    const TemporaryFolder folder;
    const auto report = [&](const char* name, const NSData& content) {
        const NSString path = folder.write(QLatin1String(name), content);
        testing::internal::CaptureStderr();
        EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile(path).isNil());
        EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile(path).isNil());
        return testing::internal::GetCapturedStderr();
    };
    const auto told = [&](const char* name, const char* problem) {
        return folder.pathOf(QLatin1String(name)).toStdString() + problem + "\n";
    };
    EXPECT_EQ(report("a", "<plist>\n<array>\n<integer>one</integer>\n</array></plist>"),
        told("a", ":3: \"one\" is no integer"));
    EXPECT_EQ(report("b", "<plist>\n<array>\n\n<foo/></array></plist>"),
        told("b", ":4: <foo> is no kind of value"));
    EXPECT_EQ(report("c", "<plist>\n<array>"), told("c", ":2: Premature end of document."));
    EXPECT_EQ(report("d", "bplist00"), told("d", ": the binary property list is damaged"));
    EXPECT_EQ(report("e", "<plist><dict/></plist>"), told("e", ": the property list is no array"));
    EXPECT_EQ(report("f", "<?xml version=\"1.0\" encoding=\"EBCDIC-XY\"?>\n<plist><array/></plist>"),
        told("f", ":1: the encoding \"EBCDIC-XY\" is not known"));
    EXPECT_EQ(report("g", "<plist>\n\n<string>\xFF</string></plist>"),
        told("g", ":3: the text is not in its encoding, \"UTF-8\""));
    testing::internal::CaptureStderr();
    NSPropertyList::arrayWithContentsOfFile(folder.pathOf(QStringLiteral("missing")));
    NSPropertyList::arrayWithContentsOfFile(NSString());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), told("missing", ": there is no such file"));
}

TEST(NSPropertyListTest, AFileBeyondTheCapIsNotRead)
{
    const TemporaryFolder folder;
    const NSString path = folder.write(QStringLiteral("large.plist"), xml("<array/>"));
    EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile(path).isArray());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    const qint64 padding = NSPropertyList::maximumFileSize - file.size();
    file.write(NSData(padding, ' '));
    file.write("\n");
    file.close();
    EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile(path).isNil());
}

TEST(NSPropertyListTest, AListCutAnywhereIsNil)
{
    const NSData data = xml(allKinds);
    const qsizetype end = data.indexOf("</plist>") + 8;
    for (qsizetype length = 0; length < end; ++length)
        EXPECT_TRUE(NSPropertyList::propertyListWithData(data.first(length)).isNil()) << length;
    EXPECT_FALSE(NSPropertyList::propertyListWithData(data.first(end)).isNil());
}

TEST(NSPropertyListTest, DamagedListsAreSurvived)
{
    const NSData data = xml(allKinds);
    for (qsizetype position = 0; position < data.size(); ++position)
        for (const char byte : { '\0', '<', '>', '/', '&', '"', '\xFF', ']' }) {
            NSData damaged = data;
            damaged[position] = byte;
            NSPropertyList::propertyListWithData(damaged); // nil or not: that it comes back is the test
        }
}

TEST(NSPropertyListTest, NestingIsBounded)
{
    const auto nested = [](int depth) {
        return parsed(NSData("<array>").repeated(depth) + NSData("</array>").repeated(depth));
    };
    EXPECT_TRUE(nested(NSPropertyList::maximumDepth).isArray());
    EXPECT_TRUE(nested(NSPropertyList::maximumDepth + 1).isNil());
    EXPECT_TRUE(nested(10000).isNil());
    EXPECT_TRUE(nested(1000000).isNil());
}

TEST(NSPropertyListTest, NestingHiddenFromTheReaderIsRefused)
{
    const NSData deep = NSData("<array>").repeated(100000);
    for (const NSData& text : { "<!DOCTYPE plist [<!ENTITY a \"]>" + deep + "\">]><plist><array/></plist>",
             "<!DOCTYPE plist SYSTEM \">" + deep + "\"><plist><array/></plist>",
             "<plist><!-- -->" + deep + "<!-- " + NSData("</array>").repeated(100000) + " --></plist>",
             "<?xml version=\"1.0\" encoding=\"UTF-16\"?><plist>" + deep + "</plist>",
             "<plist><string a=\">" + deep + "\"/></plist>" })
        EXPECT_TRUE(NSPropertyList::propertyListWithData(text).isNil());
}

TEST(NSPropertyListTest, ADocumentTypeLineIsNotNeededAndNotInTheWay)
{
    EXPECT_TRUE(NSPropertyList::propertyListWithData("<plist version=\"1.0\"><true/></plist>").isNumber());
    EXPECT_TRUE(
        NSPropertyList::propertyListWithData("<!DOCTYPE plist PUBLIC \"-//Example//DTD PLIST 1.0//EN\" "
                                             "\"http://www.example.org/PropertyList-1.0.dtd\">\n"
                                             "<plist version=\"1.0\"><true/></plist>")
            .isNumber());
    for (const char* name : { "FakePeople", "FakeRecords", "FakeUserLocation" }) {
        QFile file(sourcePath("resources/") + QLatin1String(name) + QStringLiteral(".plist"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(file.readAll().contains("DOCTYPE")) << name;
    }
}

TEST(NSPropertyListTest, TheProductsOwnListsAreRead)
{
    const auto path
        = [](const char* name) { return sourcePath("resources/%1.plist").arg(QLatin1String(name)); };
    EXPECT_EQ(NSPropertyList::arrayWithContentsOfFile(path("FakePeople")).count(), 10u);
    EXPECT_GE(NSPropertyList::arrayWithContentsOfFile(path("FakeRecords")).count(), 24u);
    EXPECT_LT(
        NSPropertyList::dictionaryWithContentsOfFile(path("FakeUserLocation"))[QStringLiteral("latitude")]
            .doubleValue(),
        -37.0);
}
