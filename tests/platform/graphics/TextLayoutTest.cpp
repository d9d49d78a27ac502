#include "platform/graphics/TextLayout.h"

#include "tests/platform/graphics/Drawing.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>

namespace {

const NSString sentence
    = QStringLiteral("The quick brown fox jumps over the lazy dog and then it plays a sound");
const NSString hebrew = QStringLiteral("שלום עולם");

TextStyle styleWith(
    NSTextAlignment alignment, NSLineBreakMode mode = NSLineBreakMode::ByTruncatingTail, int lines = 1)
{
    return { UIFont::systemFontOfSize(20), alignment, mode, lines };
}

TextStyle breaking(NSLineBreakMode mode, int lines) { return styleWith(NSTextAlignment::Left, mode, lines); }

QImage drawnText(const TextLayout& layout, CGFloat scale = 1, const CGSize& size = { 300, 100 })
{
    return drawn(size, scale, [&](CGContext& context) {
        layout.draw(context, { 0, 0 }, *UIColor::blackColor());
    });
}

TEST(TextLayoutTest, MeasuresNothingForNoText)
{
    const auto style = styleWith(NSTextAlignment::Left);
    for (const NSString& text : { NSString(), QStringLiteral("") }) {
        const TextLayout layout(text, style, 100);
        EXPECT_EQ(layout.size(), CGSize(0, 0));
        EXPECT_EQ(layout.lineCount(), 0);
        EXPECT_FALSE(layout.isTruncated());
        EXPECT_EQ(layout.firstBaseline(), style.font->ascender());
        EXPECT_TRUE(inkBounds(drawnText(layout)).isNull());
    }
}

TEST(TextLayoutTest, MeasuresOneLineByItsFont)
{
    const auto style = styleWith(NSTextAlignment::Left);
    const TextLayout layout(QStringLiteral("Collins Street"), style);
    EXPECT_EQ(layout.lineCount(), 1);
    EXPECT_EQ(layout.size().height(), style.font->lineHeight());
    EXPECT_GT(layout.size().width(), 100);
    EXPECT_LT(layout.size().width(), 180);
}

TEST(TextLayoutTest, KeepsItsHeightForCharactersOfAnotherFont)
{
    const auto style = styleWith(NSTextAlignment::Left);
    EXPECT_EQ(TextLayout(QStringLiteral("A 😀 ") + hebrew, style).size().height(), style.font->lineHeight());
}

TEST(TextLayoutTest, FitsIntoTheWidthThatItMeasured)
{
    for (const double size : { 11.0, 13.5, 17.0, 20.25 }) {
        const TextStyle style { UIFont::systemFontOfSize(size) };
        const CGFloat width = TextLayout(sentence, style).size().width();
        const TextLayout fitting(sentence, style, width);
        EXPECT_FALSE(fitting.isTruncated()) << size;
        EXPECT_EQ(fitting.size().width(), width) << size;
        EXPECT_TRUE(TextLayout(sentence, style, width - 1).isTruncated()) << size;
    }
}

TEST(TextLayoutTest, ShortensTheTailOfALineThatIsTooLong)
{
    const TextLayout layout(sentence, styleWith(NSTextAlignment::Left), 150);
    EXPECT_TRUE(layout.isTruncated());
    EXPECT_EQ(layout.lineCount(), 1);
    EXPECT_LE(layout.size().width(), 150.1);
    EXPECT_GT(layout.size().width(), 110);
    // The ellipsis: the last ink stands on the baseline and nowhere above it.
    const QImage pixels = drawnText(layout, 4);
    const QRect ink = inkBounds(pixels);
    const QRect tail = inkBounds(pixels.copy(ink.right() - 7, 0, 8, pixels.height()));
    EXPECT_GT(tail.top(), qRound(4 * (layout.firstBaseline() - 5)));
}

// Whether the drawn text has a tall letter within its first and its last 12 points.
struct TallEnds {
    bool first;
    bool last;
    bool operator==(const TallEnds&) const = default;
};

TallEnds tallEnds(const TextLayout& layout)
{
    const QImage pixels = drawnText(layout);
    const QRect ink = inkBounds(pixels);
    const auto isTall = [&](int x) {
        const QRect part = inkBounds(pixels.copy(x, 0, 12, pixels.height()));
        return !part.isNull() && part.top() < layout.lastBaseline() - 8;
    };
    return { isTall(ink.left()), isTall(ink.right() - 11) };
}

TEST(TextLayoutTest, ShortensTheHeadTheMiddleOrTheTail)
{
    const NSString text = QStringLiteral("MM") + NSString(80, QLatin1Char('.')) + QStringLiteral("MM");
    const auto ends = [&](NSLineBreakMode mode) {
        const TextLayout layout(text, breaking(mode, 1), 150);
        EXPECT_TRUE(layout.isTruncated());
        EXPECT_EQ(layout.lineCount(), 1);
        EXPECT_LE(layout.size().width(), 150.1);
        EXPECT_GT(layout.size().width(), 110);
        return tallEnds(layout);
    };
    EXPECT_EQ(ends(NSLineBreakMode::ByTruncatingHead), (TallEnds { false, true }));
    EXPECT_EQ(ends(NSLineBreakMode::ByTruncatingMiddle), (TallEnds { true, true }));
    EXPECT_EQ(ends(NSLineBreakMode::ByTruncatingTail), (TallEnds { true, false }));
}

TEST(TextLayoutTest, DoesNotShortenWhatFits)
{
    for (const auto mode : { NSLineBreakMode::ByTruncatingHead, NSLineBreakMode::ByTruncatingMiddle,
             NSLineBreakMode::ByTruncatingTail }) {
        const TextLayout layout(QStringLiteral("Hello"), breaking(mode, 1), 150);
        EXPECT_FALSE(layout.isTruncated());
    }
}

TEST(TextLayoutTest, ShowsTheEndOfTheWholeTextInTheLastLineThatIsShortenedAtItsHead)
{
    const NSString text = QStringLiteral("first\n") + NSString(80, QLatin1Char('.')) + QStringLiteral("\nMM");
    const TextLayout layout(text, breaking(NSLineBreakMode::ByTruncatingHead, 2), 150);
    EXPECT_EQ(layout.lineCount(), 2);
    EXPECT_TRUE(layout.isTruncated());
    EXPECT_TRUE(tallEnds(layout).last);
}

TEST(TextLayoutTest, PutsParagraphsThatFitIntoTheLastLineBesideEachOther)
{
    const TextLayout layout(QStringLiteral("MM\nMM"), breaking(NSLineBreakMode::ByTruncatingMiddle, 1), 300);
    EXPECT_EQ(layout.lineCount(), 1);
    EXPECT_EQ(tallEnds(layout), (TallEnds { true, true }));
}

TEST(TextLayoutTest, ShapesOnlyTheEndsOfAnEndlessTextThatIsShortenedInside)
{
    const NSString endless
        = QStringLiteral("MM") + NSString(5'000'000, QLatin1Char('.')) + QStringLiteral("MM");
    for (const auto mode : { NSLineBreakMode::ByTruncatingHead, NSLineBreakMode::ByTruncatingMiddle }) {
        const TextLayout layout(endless, breaking(mode, 1), 150);
        EXPECT_LE(layout.size().width(), 150.1);
        EXPECT_EQ(tallEnds(layout), (TallEnds { mode == NSLineBreakMode::ByTruncatingMiddle, true }));
    }
}

TEST(TextLayoutTest, BreaksBetweenCharactersWhereItIsToldTo)
{
    const NSString words = QStringLiteral("mmmm mmmm mmmm");
    const TextLayout byWords(words, breaking(NSLineBreakMode::ByWordWrapping, 0), 130);
    const TextLayout byCharacters(words, breaking(NSLineBreakMode::ByCharWrapping, 0), 130);
    EXPECT_EQ(byWords.lineCount(), 3);
    EXPECT_EQ(byCharacters.lineCount(), 2);
    EXPECT_LE(byCharacters.size().width(), 130.1);
    EXPECT_FALSE(byCharacters.isTruncated());
    const TextLayout one(words, breaking(NSLineBreakMode::ByCharWrapping, 1), 130);
    EXPECT_EQ(one.lineCount(), 1);
    EXPECT_FALSE(one.isTruncated());
}

TEST(TextLayoutTest, BreaksBetweenWordsAndEndsInAnEllipsis)
{
    const auto style = breaking(NSLineBreakMode::ByTruncatingTail, 3);
    const TextLayout layout(sentence, style, 150);
    EXPECT_EQ(layout.lineCount(), 3);
    EXPECT_TRUE(layout.isTruncated());
    EXPECT_LE(layout.size().width(), 150.1);
    EXPECT_DOUBLE_EQ(layout.size().height(), 3 * style.font->lineHeight());
    EXPECT_DOUBLE_EQ(layout.lastBaseline() - layout.firstBaseline(), 2 * style.font->lineHeight());
}

TEST(TextLayoutTest, TakesAsManyLinesAsItNeedsWithoutALimit)
{
    const TextLayout layout(sentence, breaking(NSLineBreakMode::ByTruncatingTail, 0), 150);
    EXPECT_GT(layout.lineCount(), 3);
    EXPECT_FALSE(layout.isTruncated());
}

TEST(TextLayoutTest, DropsTheRestWhereItOnlyWraps)
{
    const TextLayout layout(sentence, breaking(NSLineBreakMode::ByWordWrapping, 1), 150);
    EXPECT_EQ(layout.lineCount(), 1);
    EXPECT_FALSE(layout.isTruncated());
    EXPECT_LE(layout.size().width(), 150.1);
}

TEST(TextLayoutTest, CutsAClippedLineAtItsWidth)
{
    const TextLayout layout(sentence, breaking(NSLineBreakMode::ByClipping, 1), 150);
    EXPECT_GT(layout.size().width(), 300);
    const QRect ink = inkBounds(drawnText(layout));
    EXPECT_LT(ink.right(), 150);
    EXPECT_GT(ink.right(), 140);
}

TEST(TextLayoutTest, ClipsARightToLeftLineAtItsLeft)
{
    const NSString text = hebrew + hebrew + hebrew;
    const auto style = styleWith(NSTextAlignment::Natural, NSLineBreakMode::ByClipping);
    const QImage whole = drawnText(TextLayout(text, style, 250));
    const QImage clipped = drawnText(TextLayout(text, style, 100));
    // The right end, where the text begins, is the same in both.
    EXPECT_EQ(clipped.copy(60, 0, 40, 40), whole.copy(210, 0, 40, 40));
}

TEST(TextLayoutTest, BreaksAWordThatIsLongerThanTheLine)
{
    const TextLayout layout(
        NSString(60, QLatin1Char('m')), breaking(NSLineBreakMode::ByWordWrapping, 0), 100);
    EXPECT_GT(layout.lineCount(), 5);
    EXPECT_LE(layout.size().width(), 100.1);
}

TEST(TextLayoutTest, StartsALineAtEachLineEnd)
{
    const auto style = breaking(NSLineBreakMode::ByWordWrapping, 0);
    EXPECT_EQ(TextLayout(QStringLiteral("a\nb\r\nc\rd"), style, 100).lineCount(), 4);
    EXPECT_EQ(TextLayout(QStringLiteral("a\n\nb\n"), style, 100).lineCount(), 4);
    EXPECT_EQ(TextLayout(QStringLiteral("a\u2028b\u2029c"), style).lineCount(), 3);
}

TEST(TextLayoutTest, ShowsThatLinesFollowTheLastOneAllowed)
{
    const auto style = styleWith(NSTextAlignment::Left);
    EXPECT_TRUE(TextLayout(QStringLiteral("first\nsecond"), style, 200).isTruncated());
    EXPECT_FALSE(TextLayout(QStringLiteral("first\n"), style, 200).isTruncated());
}

TEST(TextLayoutTest, AlignsWithinItsWidth)
{
    const NSString text = QStringLiteral("HIH");
    const auto ink = [&](NSTextAlignment alignment) {
        return inkBounds(drawnText(TextLayout(text, styleWith(alignment), 200), 2));
    };
    const QRect left = ink(NSTextAlignment::Left);
    const QRect right = ink(NSTextAlignment::Right);
    const QRect center = ink(NSTextAlignment::Center);
    EXPECT_LT(left.left(), 8);
    EXPECT_GT(right.right(), 391);
    EXPECT_LE(right.right(), 399);
    EXPECT_NEAR(center.center().x(), 199.5, 1.5);
    EXPECT_EQ(ink(NSTextAlignment::Natural), left);
}

TEST(TextLayoutTest, StartsRightToLeftTextAtTheRight)
{
    const QRect natural = inkBounds(drawnText(TextLayout(hebrew, styleWith(NSTextAlignment::Natural), 200)));
    EXPECT_GT(natural.left(), 80);
    const QRect left = inkBounds(drawnText(TextLayout(hebrew, styleWith(NSTextAlignment::Left), 200)));
    EXPECT_LT(left.left(), 8);
}

TEST(TextLayoutTest, AlignsWithinTheWidestLineWithoutALimit)
{
    const TextLayout layout(QStringLiteral("a wide line of text\nI"),
        styleWith(NSTextAlignment::Right, NSLineBreakMode::ByWordWrapping, 0));
    const QImage pixels = drawnText(layout);
    const int secondLine = qRound(layout.size().height() / 2);
    const QRect ink = inkBounds(pixels.copy(0, secondLine, pixels.width(), secondLine));
    EXPECT_NEAR(ink.right(), layout.size().width(), 4);
    EXPECT_GT(ink.left(), layout.size().width() - 8);
}

TEST(TextLayoutTest, NeverCutsACharacterInHalf)
{
    const NSString faces = QStringLiteral("😀😀😀😀😀😀😀😀😀😀");
    const auto style = styleWith(NSTextAlignment::Left);
    const CGFloat one = TextLayout(QStringLiteral("😀"), style).size().width();
    const CGFloat dots = TextLayout(QStringLiteral("…"), style).size().width();
    for (CGFloat width = dots + 1; width < 6 * one; width += 3) {
        const CGFloat shown = TextLayout(faces, style, width).size().width() - dots;
        EXPECT_NEAR(shown / one, qRound(shown / one), 0.02) << width;
    }
}

TEST(TextLayoutTest, DrawsHalvesOfCharactersWithoutFailing)
{
    const NSString broken = QStringLiteral("a") + QChar(0xD83D) + QStringLiteral("b") + QChar(0xDE00);
    EXPECT_EQ(TextLayout(broken, styleWith(NSTextAlignment::Left)).lineCount(), 1);
    EXPECT_FALSE(inkBounds(drawnText(TextLayout(broken, styleWith(NSTextAlignment::Left), 200))).isNull());
}

TEST(TextLayoutTest, StaysWithinWidthsThatAreNone)
{
    for (const double width : { 0.0, -5.0, std::numeric_limits<double>::quiet_NaN() }) {
        const TextLayout layout(sentence, styleWith(NSTextAlignment::Center), width);
        EXPECT_LE(layout.lineCount(), 1) << width;
        EXPECT_LT(layout.size().width(), 25) << width;
    }
}

TEST(TextLayoutTest, ShapesOnlyTheStartOfAnEndlessText)
{
    const NSString endless = sentence.repeated(100'000);
    const TextLayout layout(endless, styleWith(NSTextAlignment::Left), 150);
    EXPECT_TRUE(layout.isTruncated());
    EXPECT_EQ(layout.size(), TextLayout(sentence.repeated(10), styleWith(NSTextAlignment::Left), 150).size());
    const TextLayout marks(NSString(100'000, QChar(0x0301)), styleWith(NSTextAlignment::Left), 150);
    EXPECT_LE(marks.lineCount(), 1);
}

TEST(TextLayoutTest, PutsTheFeetOfLettersOnTheBaseline)
{
    for (const double scale : { 1.0, 2.0, 3.0 }) {
        for (const double size : { 11.0, 13.5, 17.0 }) {
            const TextStyle style { UIFont::systemFontOfSize(size) };
            const TextLayout layout(QStringLiteral("HEH"), style);
            const QRect ink = inkBounds(drawnText(layout, scale));
            EXPECT_NEAR(ink.bottom() + 1, layout.firstBaseline() * scale, 1.01) << size << " at " << scale;
            EXPECT_NEAR(ink.height(), style.font->capHeight() * scale, 1.01) << size << " at " << scale;
        }
    }
}

TEST(TextLayoutTest, DrawsAtTheDensityOfTheScreen)
{
    // Drawn at three pixels a point, a stem has a sharp edge: no more than two grey pixels on each side.
    const TextStyle style { UIFont::systemFontOfSize(40, UIFontWeight::Bold) };
    const TextLayout layout(QStringLiteral("I"), style);
    const QImage pixels = drawnText(layout, 3);
    const int middle = qRound(3 * (layout.firstBaseline() - style.font->capHeight() / 2));
    int grey = 0;
    int black = 0;
    for (int x = 0; x < pixels.width(); ++x) {
        const int alpha = qAlpha(pixels.pixel(x, middle));
        grey += alpha > 0 && alpha < 255 ? 1 : 0;
        black += alpha == 255 ? 1 : 0;
    }
    EXPECT_LE(grey, 4);
    EXPECT_GT(black, 10);
}

TEST(TextLayoutTest, DrawsInTheColourOfTheAppearance)
{
    const TextLayout layout(QStringLiteral("■■"), styleWith(NSTextAlignment::Left));
    const auto middle = [&](const QImage& pixels) { return pixels.pixelColor(inkBounds(pixels).center()); };
    const auto red = UIColor::colorWithRed(1, 0, 0, 1);
    const QImage inRed = drawn({ 60, 40 }, 1, [&](CGContext& context) {
        layout.draw(context, { 5, 0 }, *red);
    });
    const int column = inkBounds(inRed).left() + 4;
    EXPECT_EQ(inRed.pixelColor(column, inkBounds(inRed).center().y()), QColor(Qt::red));
    EXPECT_EQ(middle(inRed).green(), 0);
}

TEST(TextLayoutTest, WorksOnEveryThreadAtOnce)
{
    const auto font = UIFont::systemFontOfSize(17);
    const CGSize expected = TextLayout(sentence, { font }, 200).size();
    std::vector<CGSize> sizes(4);
    std::vector<std::thread> threads;
    for (CGSize& size : sizes) {
        threads.emplace_back([&size, &font] {
            for (int round = 0; round < 50; ++round) {
                const TextLayout layout(sentence, { font }, 200);
                drawnText(layout);
                size = layout.size();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(sizes, std::vector<CGSize>(4, expected));
}

} // namespace
