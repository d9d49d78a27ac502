#include "platform/layout/VisualFormatParser.h"
#include "tests/platform/layout/LayoutFixture.h"

#include <random>

namespace {

class VisualFormatGarbageTest : public LayoutFixture {
protected:
    // One call, whose answer is either a list of constraints or a message that points into the format.
    void tryOut(const NSString& format)
    {
        AssertionRecorder assertions;
        const auto constraints = NSLayoutConstraint::constraintsWithVisualFormat(
            format, NSLayoutFormatOptions::None, metrics, views);
        if (assertions.failures().empty())
            return expectUsable(format);
        ++refused;
        EXPECT_TRUE(constraints.empty());
        ASSERT_EQ(assertions.failures().size(), 1U);
        const auto lines = assertions.messages()[0].split(u'\n');
        ASSERT_EQ(lines.size(), 3);
        EXPECT_EQ(lines[1].size(), format.size());
        EXPECT_LE(lines[2].size(), format.size() + 1);
        EXPECT_TRUE(lines[2].endsWith(u'^'));
    }
    void expectUsable(const NSString& format)
    {
        ++accepted;
        VisualFormatError error;
        const auto tree = VisualFormatParser(format, error).parse();
        ASSERT_TRUE(tree);
        const NSString printed = tree->description();
        EXPECT_EQ(VisualFormatParser(printed, error).parse(), tree) << qPrintable(printed);
    }
    std::size_t below(std::size_t limit) { return generator() % limit; }

    std::mt19937 generator { 20 };
    int accepted = 0;
    int refused = 0;
    NSLayoutConstraint::Metrics metrics { { QStringLiteral("gap"), 12 }, { QStringLiteral("nan"), NAN } };
    NSLayoutConstraint::Views views { { QStringLiteral("a"), addTo(*container) },
        { QStringLiteral("b"), addTo(*container) }, { QStringLiteral("c"), make<UIView>() } };
};

TEST_F(VisualFormatGarbageTest, ScrapsOfFormatsInAnyOrderAreFormatsOrErrors)
{
    static constexpr QStringView scraps[] = { u"H:", u"V:", u"|", u"|", u"|-", u"-|", u"-", u"-", u"[a]",
        u"[b]", u"[c]", u"[", u"]", u"(", u")", u"[a(", u")]", u"-(", u")-", u"=", u"==", u">=", u"<=", u"@",
        u",", u"a", u"gap", u"nan", u"8", u"-8-", u"-0.5", u"1e3", u"1e9", u".", u"+", u" ", u"\t", u"\n",
        u"é", u"\u2028", u"\U0001F399", QStringView(u"\0", 1) };
    for (int run = 0; run < 10000 && !HasFailure(); ++run) {
        NSString format;
        for (auto length = below(9); length > 0; --length)
            format += scraps[below(std::size(scraps))];
        SCOPED_TRACE(qPrintable(format));
        tryOut(format);
    }
    EXPECT_GT(accepted, 100);
    EXPECT_GT(refused, 1000);
}

TEST_F(VisualFormatGarbageTest, FormatsWithWrongCharactersAreFormatsOrErrors)
{
    static constexpr QStringView formats[] = { u"H:|-(>=0)-[a]-(>=0)-|", u"V:[a]-(0)-[b(44)]",
        u"|-gap-[a(>=50@700,<=100)]-(==gap@750)-[b(==a)]-|", u"V:|-[a(1.5e2)][b]-(-8)-|" };
    static constexpr QStringView characters = u"HV:|-[]()<>=@,.+0189eabcgp_ ";
    for (int run = 0; run < 10000 && !HasFailure(); ++run) {
        NSString format = formats[below(std::size(formats))].toString();
        for (auto changes = 1 + below(3); changes > 0 && !format.isEmpty(); --changes) {
            const auto place = static_cast<qsizetype>(below(static_cast<std::size_t>(format.size())));
            const QChar character
                = characters.at(static_cast<qsizetype>(below(static_cast<std::size_t>(characters.size()))));
            const auto kind = below(3);
            format.replace(place, kind == 0 ? 0 : 1, kind == 1 ? NSString() : NSString(character));
        }
        SCOPED_TRACE(qPrintable(format));
        tryOut(format);
    }
    EXPECT_GT(accepted, 300);
    EXPECT_GT(refused, 1000);
}

TEST_F(VisualFormatGarbageTest, CharactersAtRandomAreErrors)
{
    for (int run = 0; run < 10000 && !HasFailure(); ++run) {
        NSString format;
        for (auto length = below(20); length > 0; --length)
            format += QChar(static_cast<char16_t>(below(run % 2 == 0 ? 0x10000 : 0x80)));
        tryOut(format);
    }
    EXPECT_EQ(accepted, 0);
}

TEST_F(VisualFormatGarbageTest, ALongFormatIsReadLikeAShortOne)
{
    NSString format = QStringLiteral("[a(0");
    for (int count = 0; count < 100000; ++count)
        format += QStringLiteral(",>=0@1");
    tryOut(format);
    EXPECT_EQ(refused, 1);
    tryOut(format + QStringLiteral(")]"));
    EXPECT_EQ(accepted, 1);
}

} // namespace
