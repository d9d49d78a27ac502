#include "platform/foundation/EncodedText.h"

#include <gtest/gtest.h>

namespace {

const char* formOf(const NSData& data) { return EncodedText::formOf(data).encoding; }

TEST(EncodedTextTest, TheFormIsShownByAMarkOrByTheZerosOfTheFirstCharacter)
{
    EXPECT_STREQ(formOf("\xEF\xBB\xBF"), "UTF-8");
    EXPECT_STREQ(formOf(NSData("\xFF\xFE", 2)), "UTF-16LE");
    EXPECT_STREQ(formOf(NSData("\xFE\xFF", 2)), "UTF-16BE");
    EXPECT_STREQ(formOf(NSData("\xFF\xFE\0\0", 4)), "UTF-32LE");
    EXPECT_STREQ(formOf(NSData("\0\0\xFE\xFF", 4)), "UTF-32BE");
    EXPECT_STREQ(formOf(NSData("a\0", 2)), "UTF-16LE");
    EXPECT_STREQ(formOf(NSData("a\0b\0", 4)), "UTF-16LE");
    EXPECT_STREQ(formOf(NSData("\0a", 2)), "UTF-16BE");
    EXPECT_STREQ(formOf(NSData("a\0\0\0", 4)), "UTF-32LE");
    EXPECT_STREQ(formOf(NSData("\0\0\0a", 4)), "UTF-32BE");
    for (const NSData& data :
        { NSData(), NSData("a"), NSData("ab"), NSData("\0", 1), NSData("\0\0", 2), NSData("\0\0\0\0", 4) })
        EXPECT_EQ(formOf(data), nullptr) << data.toHex().toStdString();
}

TEST(EncodedTextTest, WhatShowsNoFormIsUTF8)
{
    EXPECT_EQ(EncodedText::decode("Gr\xC3\xB6\xC3\x9F"
                                  "e")
                  .text,
        QStringLiteral("Größe"));
    EXPECT_TRUE(EncodedText::decode(NSData()).text.isEmpty());
    EXPECT_TRUE(EncodedText::decode(NSData()).problem.isEmpty());
}

TEST(EncodedTextTest, OtherEncodingsAreReadByTheirName)
{
    EXPECT_EQ(EncodedText::decode("\xD2\xC1\xDA", "KOI8-R").text, QStringLiteral("раз"));
    EXPECT_EQ(EncodedText::decode("\x91\xE5", "Shift_JIS").text, QStringLiteral("大"));
    EXPECT_EQ(
        EncodedText::decode("a", "no-such").problem.toStdString(), "the encoding \"no-such\" is not known");
}

TEST(EncodedTextTest, KeepsWhatComesBeforeAProblem)
{
    const EncodedText text = EncodedText::decode("one\ntwo\xFFthree");
    EXPECT_EQ(text.text, QStringLiteral("one\ntwo"));
    EXPECT_EQ(text.problemLine, 2);
    EXPECT_EQ(text.problem.toStdString(), "the text is not in its encoding, \"UTF-8\"");
}

TEST(EncodedTextTest, ACharacterThatIsCutOffIsAProblem)
{
    EXPECT_FALSE(EncodedText::decode("\xC3").problem.isEmpty());
    EXPECT_FALSE(EncodedText::decode(NSData("a\0b", 3)).problem.isEmpty());
    EXPECT_FALSE(EncodedText::decode(NSData("\xFF\xFE\x3D\xD8", 4)).problem.isEmpty());
}

TEST(EncodedTextTest, AnEncodingHasOneName)
{
    EXPECT_EQ(EncodedText::standardName("utf8"), EncodedText::standardName("UTF-8"));
    EXPECT_EQ(EncodedText::standardName("latin1"), EncodedText::standardName("ISO-8859-1"));
    EXPECT_TRUE(EncodedText::standardName("no-such").isEmpty());
}

} // namespace
