#include "platform/layout/VisualFormatParser.h"

#include <gtest/gtest.h>

namespace {

std::optional<VisualFormat> parsed(QStringView text)
{
    VisualFormatError error;
    auto format = VisualFormatParser(text, error).parse();
    EXPECT_EQ(format.has_value(), error.message.isEmpty());
    EXPECT_TRUE(format) << qPrintable(error.pointingInto(text));
    return format;
}

std::string canonical(QStringView text)
{
    const auto format = parsed(text);
    return format ? format->description().toStdString() : "";
}

// The column and the message, "3: expected …".
std::string errorOf(QStringView text)
{
    VisualFormatError error;
    EXPECT_FALSE(VisualFormatParser(text, error).parse()) << qPrintable(text.toString());
    return std::to_string(error.position) + ": " + error.message.toStdString();
}

double numberIn(QStringView number)
{
    const NSString text = QStringLiteral("[a]-(%1)-[b]").arg(number);
    const auto format = parsed(text);
    return format ? format->views[1].gapBefore.predicates[0].value.number : 0;
}

TEST(VisualFormatTest, ReadsEveryPart)
{
    const NSString text = QStringLiteral("V:|-8-[a(>=low@700,<=b)]-[b]-(>=gap@weak)-[c][d]-|");
    const auto format = parsed(text);
    ASSERT_TRUE(format);
    EXPECT_EQ(format->axis, UILayoutConstraintAxis::Vertical);
    ASSERT_TRUE(format->start);
    EXPECT_EQ(format->start->position.index, 2);
    EXPECT_EQ(format->start->gap.kind, VisualFormat::GapKind::Given);
    EXPECT_EQ(format->start->gap.predicates[0].value.number, 8);
    ASSERT_EQ(format->views.size(), 4U);
    const auto& sizes = format->views[0].sizes;
    EXPECT_EQ(format->views[0].name, u"a");
    EXPECT_EQ(format->views[0].position.index, 6);
    ASSERT_EQ(sizes.size(), 2U);
    EXPECT_EQ(sizes[0].relation, NSLayoutRelation::GreaterThanOrEqual);
    EXPECT_EQ(sizes[0].value.name, u"low");
    EXPECT_EQ(sizes[0].value.position.index, 11);
    ASSERT_TRUE(sizes[0].priority);
    EXPECT_EQ(sizes[0].priority->number, 700);
    EXPECT_EQ(sizes[1].relation, NSLayoutRelation::LessThanOrEqual);
    EXPECT_EQ(sizes[1].value.name, u"b");
    EXPECT_FALSE(sizes[1].priority);
    EXPECT_EQ(format->views[1].gapBefore.kind, VisualFormat::GapKind::Standard);
    EXPECT_EQ(format->views[2].gapBefore.predicates[0].priority->name, u"weak");
    EXPECT_EQ(format->views[3].gapBefore.kind, VisualFormat::GapKind::Flush);
    ASSERT_TRUE(format->end);
    EXPECT_EQ(format->end->gap.kind, VisualFormat::GapKind::Standard);
}

TEST(VisualFormatTest, IsHorizontalUnlessSaidOtherwise)
{
    EXPECT_EQ(canonical(u"[a]"), "H:[a]");
    EXPECT_EQ(canonical(u"|[a]|"), "H:|[a]|");
    EXPECT_EQ(canonical(u"H:[a]"), "H:[a]");
    EXPECT_EQ(canonical(u"V:[a]"), "V:[a]");
}

TEST(VisualFormatTest, PrintsItselfInFull)
{
    EXPECT_EQ(canonical(u"|-0-[a(50)]|"), "H:|-(==0)-[a(==50)]|");
    EXPECT_EQ(canonical(u"[a(1.50,<=2e1@+7)]-gap@10-[b]-"
                        u"|"),
        "H:[a(==1.5,<=20@7)]-(==gap@10)-[b]-|");
}

TEST(VisualFormatTest, PrintedTextIsReadAsTheSameTree)
{
    static constexpr const char16_t* texts[] = { u"[a]", u"V:[a]", u"|[a]", u"[a]|", u"H:|-[a]-|",
        u"[a][b][c]", u"[a]-[b]-8-[c]-(-8)-[d]", u"|-(>=a,<=b@500)-[v]-(==gap@750)-|",
        u"[v(50)]-(1e-3)-[w(==v@0.125)]", u"[v(>=50@700,<=100)]-12345.678-|", u"[größe_1(==höhe)]-0.1-[ß]" };
    for (const QStringView text : texts) {
        SCOPED_TRACE(qPrintable(text.toString()));
        const auto format = parsed(text);
        ASSERT_TRUE(format);
        const NSString printed = format->description();
        EXPECT_EQ(parsed(printed), format);
        EXPECT_EQ(canonical(printed), printed.toStdString());
    }
}

TEST(VisualFormatTest, DifferentFormatsAreDifferentTrees)
{
    static constexpr const char16_t* texts[]
        = { u"[a]", u"[b]", u"V:[a]", u"|[a]", u"[a]|", u"|-[a]", u"|-0-[a]", u"[a(0)]", u"[a(1)]",
              u"[a(>=1)]", u"[a(1@1)]", u"[a(1@2)]", u"[a(b)]", u"[a][b]", u"[a]-[b]" };
    for (const QStringView first : texts)
        for (const QStringView second : texts)
            EXPECT_EQ(parsed(first) == parsed(second), first == second);
}

TEST(VisualFormatTest, BlanksBetweenThePartsDoNotMatter)
{
    const NSString dense = QStringLiteral("V:|-8-[a(>=50@700,<=b)]-(>=gap)-[c]-[d]-|");
    const NSString airy
        = QStringLiteral(" V: | - 8 - [ a ( >= 50 @ 700 , <= b ) ]\t- ( >=\ngap ) - [ c ] - [ d ] - | ");
    EXPECT_EQ(parsed(airy), parsed(dense));
}

TEST(VisualFormatTest, BlanksWithinAPartAreNoBlanks)
{
    EXPECT_EQ(errorOf(u"H :[a]"), "0: expected \"H:\", \"V:\", \"|\" or \"[\"");
    EXPECT_EQ(errorOf(u"[a b]"), "3: expected \"(\" or \"]\"");
    EXPECT_EQ(errorOf(u"[a(> =5)]"), "3: expected \"==\", \"<=\" or \">=\"");
    EXPECT_EQ(errorOf(u"[a]-1 0-[b]"), "6: expected \"-\" after the gap");
    EXPECT_EQ(errorOf(u"[a]-(- 8)-[b]"), "6: expected a digit");
}

TEST(VisualFormatTest, ReadsNumbersOfEveryForm)
{
    EXPECT_EQ(numberIn(u"8"), 8);
    EXPECT_EQ(numberIn(u"008"), 8);
    EXPECT_EQ(numberIn(u"-8"), -8);
    EXPECT_EQ(numberIn(u"+8"), 8);
    EXPECT_EQ(numberIn(u"0.25"), 0.25);
    EXPECT_EQ(numberIn(u".5"), 0.5);
    EXPECT_EQ(numberIn(u"-.5e1"), -5);
    EXPECT_EQ(numberIn(u"1.5e2"), 150);
    EXPECT_EQ(numberIn(u"2E+1"), 20);
    EXPECT_EQ(numberIn(u"25e-2"), 0.25);
    EXPECT_EQ(numberIn(u"10000000"), 1e7);
    EXPECT_EQ(numberIn(u"1e-999"), 0);
}

TEST(VisualFormatTest, ASignMayFollowTheDashOfAGap)
{
    EXPECT_EQ(canonical(u"[a]--8-[b]"), "H:[a]-(==-8)-[b]");
    EXPECT_EQ(canonical(u"[a]-1e-1-[b]"), "H:[a]-(==0.1)-[b]");
}

TEST(VisualFormatTest, NumbersThatAreNoneAreErrors)
{
    EXPECT_EQ(errorOf(u"[a(.)]"), "4: expected a digit");
    EXPECT_EQ(errorOf(u"[a(5.)]"), "5: expected a digit");
    EXPECT_EQ(errorOf(u"[a(-)]"), "4: expected a digit");
    EXPECT_EQ(errorOf(u"[a(+-1)]"), "4: expected a digit");
    EXPECT_EQ(errorOf(u"[a(1e)]"), "5: expected a digit");
    EXPECT_EQ(errorOf(u"[a]-1e-[b]"), "7: expected a digit");
    EXPECT_EQ(errorOf(u"[a(5pt)]"), "4: expected \"@\", \",\" or \")\"");
}

TEST(VisualFormatTest, NumbersBeyondEveryScreenAreErrors)
{
    EXPECT_EQ(errorOf(u"[a(10000001)]"), "3: the number is too large");
    EXPECT_EQ(errorOf(u"[a]-(-1e8)-|"), "5: the number is too large");
    EXPECT_EQ(errorOf(u"[a(1e999)]"), "3: the number is too large");
    EXPECT_EQ(errorOf(u"[a(5@1e999999999999)]"), "5: the number is too large");
}

TEST(VisualFormatTest, AnEmptyFormatIsAnError)
{
    EXPECT_EQ(errorOf({}), "0: the format is empty");
    EXPECT_EQ(errorOf(u""), "0: the format is empty");
    EXPECT_EQ(errorOf(u" \n"), "2: the format is empty");
}

TEST(VisualFormatTest, AFormatWithoutViewsIsAnError)
{
    EXPECT_EQ(errorOf(u"H:"), "2: expected \"|\" or \"[\"");
    EXPECT_EQ(errorOf(u"|"), "1: expected \"-\" or \"[\"");
    EXPECT_EQ(errorOf(u"||"), "1: expected \"-\" or \"[\"");
    EXPECT_EQ(errorOf(u"|-|"), "2: expected \"[\"");
    EXPECT_EQ(errorOf(u"H:|-8-|"), "6: expected \"[\"");
    EXPECT_EQ(errorOf(u"|-[]-|"), "3: expected the name of a view");
}

TEST(VisualFormatTest, ABeginningOfAnotherKindIsAnError)
{
    EXPECT_EQ(errorOf(u"-"), "0: expected \"H:\", \"V:\", \"|\" or \"[\"");
    EXPECT_EQ(errorOf(u"a"), "0: expected \"H:\", \"V:\", \"|\" or \"[\"");
    EXPECT_EQ(errorOf(u"D:[a]"), "0: expected \"H:\" or \"V:\"");
    EXPECT_EQ(errorOf(u"h:[a]"), "0: expected \"H:\" or \"V:\"");
    EXPECT_EQ(errorOf(u"H:-[a]"), "2: expected \"|\" or \"[\"");
    EXPECT_EQ(errorOf(u"H:V:[a]"), "2: expected \"|\" or \"[\"");
}

TEST(VisualFormatTest, AConnectionToNothingIsAnError)
{
    const std::string gap = "expected a number, the name of a metric, \"(\", \"[\" or \"|\"";
    EXPECT_EQ(errorOf(u"[a]-"), "4: " + gap);
    EXPECT_EQ(errorOf(u"[a]->=8-[b]"), "4: " + gap);
    EXPECT_EQ(errorOf(u"|-"), "2: " + gap);
    EXPECT_EQ(errorOf(u"[a]--[b]"), "5: expected a digit");
    EXPECT_EQ(errorOf(u"[a]-8[b]"), "5: expected \"-\" after the gap");
    EXPECT_EQ(errorOf(u"[a]-(8)[b]"), "7: expected \"-\" after the gap");
    EXPECT_EQ(errorOf(u"[a]-8-"), "6: expected \"[\" or \"|\"");
    EXPECT_EQ(errorOf(u"[a]-8-8-[b]"), "6: expected \"[\" or \"|\"");
}

TEST(VisualFormatTest, BracketsThatDoNotCloseAreErrors)
{
    EXPECT_EQ(errorOf(u"["), "1: expected the name of a view");
    EXPECT_EQ(errorOf(u"[1a]"), "1: expected the name of a view");
    EXPECT_EQ(errorOf(u"H:|-8-[title"), "12: expected \"(\" or \"]\"");
    EXPECT_EQ(errorOf(u"[a(5)"), "5: expected \"]\"");
    EXPECT_EQ(errorOf(u"[a(5]"), "4: expected \"@\", \",\" or \")\"");
    EXPECT_EQ(errorOf(u"[a(5@3]"), "6: expected \",\" or \")\"");
    EXPECT_EQ(errorOf(u"[a]-(8-[b]"), "6: expected \"@\", \",\" or \")\"");
}

TEST(VisualFormatTest, APredicateWithoutAValueIsAnError)
{
    EXPECT_EQ(errorOf(u"[a()]"), "3: expected a number or the name of a metric or view");
    EXPECT_EQ(errorOf(u"[a(>=)]"), "5: expected a number or the name of a metric or view");
    EXPECT_EQ(errorOf(u"[a(5,)]"), "5: expected a number or the name of a metric or view");
    EXPECT_EQ(errorOf(u"[a]-()-[b]"), "5: expected a number or the name of a metric");
    EXPECT_EQ(errorOf(u"[a(5@)]"), "5: expected a priority");
    EXPECT_EQ(errorOf(u"[a]-8@-[b]"), "7: expected a digit");
    EXPECT_EQ(errorOf(u"[a(=5)]"), "3: expected \"==\", \"<=\" or \">=\"");
    EXPECT_EQ(errorOf(u"[a(<5)]"), "3: expected \"==\", \"<=\" or \">=\"");
    EXPECT_EQ(errorOf(u"[a(>"), "3: expected \"==\", \"<=\" or \">=\"");
}

TEST(VisualFormatTest, WhatFollowsTheFormatIsAnError)
{
    EXPECT_EQ(errorOf(u"[a]|[b]"), "4: expected the end after \"|\"");
    EXPECT_EQ(errorOf(u"|[a]||"), "5: expected the end after \"|\"");
    EXPECT_EQ(errorOf(u"[a]b"), "3: expected \"-\", \"[\", \"|\" or the end");
    EXPECT_EQ(errorOf(u"[a] 8-[b]"), "4: expected \"-\", \"[\", \"|\" or the end");
    const char16_t withNull[] = { u'[', u'a', u']', u'\0' };
    EXPECT_EQ(errorOf(QStringView(withNull, 4)), "3: expected \"-\", \"[\", \"|\" or the end");
}

TEST(VisualFormatErrorTest, PointsAtTheCharacter)
{
    const VisualFormatError error { 6, QStringLiteral("what is wrong") };
    EXPECT_EQ(error.pointingInto(u"H:|-8-[title"),
        QStringLiteral("Cannot use the visual format: what is wrong\n"
                       "H:|-8-[title\n"
                       "      ^"));
}

TEST(VisualFormatErrorTest, PointsBehindTheFormatAtWhatIsMissing)
{
    const VisualFormatError error { 2, QStringLiteral("what is wrong") };
    EXPECT_EQ(
        error.pointingInto(u"H:"), QStringLiteral("Cannot use the visual format: what is wrong\nH:\n  ^"));
    EXPECT_EQ(VisualFormatError({ 0, QStringLiteral("what is wrong") }).pointingInto({}),
        QStringLiteral("Cannot use the visual format: what is wrong\n\n^"));
}

TEST(VisualFormatErrorTest, KeepsTheFormatOnOneLine)
{
    const VisualFormatError error { 8, QStringLiteral("what is wrong") };
    EXPECT_EQ(error.pointingInto(u"\tH:[a]\n-\n[b"),
        QStringLiteral("Cannot use the visual format: what is wrong\n H:[a] - [b\n        ^"));
}

TEST(VisualFormatErrorTest, CountsACharacterOfTwoUnitsAsOneColumn)
{
    const VisualFormatError error { 2, QStringLiteral("what is wrong") };
    EXPECT_EQ(error.pointingInto(u"\U0001F399x"),
        QStringLiteral("Cannot use the visual format: what is wrong\n\U0001F399x\n ^"));
}

} // namespace
