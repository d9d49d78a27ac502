#include "platform/graphics/TextLayout.h"

#include "platform/graphics/CGContext.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextBoundaryFinder>

namespace {

constexpr CGFloat unbrokenWidth = 1'000'000; // more than any line has
constexpr CGFloat roundingTolerance = 0.01; // a text fits into the width that its own size told
const QChar ellipsis(0x2026);

// The paragraphs of a text, whatever their ends are written with.
QStringList paragraphsOf(NSString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text.split(QLatin1Char('\n'));
}

bool isTruncating(NSLineBreakMode mode)
{
    return mode == NSLineBreakMode::ByTruncatingHead || mode == NSLineBreakMode::ByTruncatingTail
        || mode == NSLineBreakMode::ByTruncatingMiddle;
}

bool showsEnd(NSLineBreakMode mode)
{
    return mode == NSLineBreakMode::ByTruncatingHead || mode == NSLineBreakMode::ByTruncatingMiddle;
}

Qt::TextElideMode elideMode(NSLineBreakMode mode)
{
    if (mode == NSLineBreakMode::ByTruncatingHead)
        return Qt::ElideLeft;
    return mode == NSLineBreakMode::ByTruncatingMiddle ? Qt::ElideMiddle : Qt::ElideRight;
}

// Whether the font's file holds glyphs in colours: as pictures or as layers, in the tables that OpenType has
// for them.
bool isColored(const QRawFont& font)
{
    static constexpr const char* tables[] = { "CBDT", "sbix", "COLR", "SVG " };
    return std::any_of(std::begin(tables), std::end(tables),
        [&](const char* table) { return !font.fontTable(table).isEmpty(); });
}

// The last place up to the position that lies between characters that belong together.
qsizetype boundaryAt(const NSString& text, qsizetype position)
{
    const qsizetype before = std::max<qsizetype>(position - 1000, 0); // no character is longer
    const qsizetype after = std::min(position + 2, text.size());
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text.constData() + before, after - before);
    boundaries.setPosition(position - before);
    const qsizetype cut = boundaries.isAtBoundary() ? position - before : boundaries.toPreviousBoundary();
    return cut > 0 ? before + cut : position;
}

// Shaping costs by the character, and of an endless text only the start can show, or the start and the
// end: no line has more than a few characters a point.
NSString visiblePart(const NSString& text, const TextStyle& style, CGFloat width)
{
    if (style.maximumLines <= 0 || !std::isfinite(width))
        return text;
    const double limit = style.maximumLines * (1000 + 4 * width);
    const double needed = showsEnd(style.lineBreakMode) ? 2 * limit : limit;
    if (static_cast<double>(text.size()) <= needed)
        return text;
    const auto length = static_cast<qsizetype>(limit);
    const NSString start = text.left(boundaryAt(text, length));
    return showsEnd(style.lineBreakMode) ? start + text.mid(boundaryAt(text, text.size() - length)) : start;
}

std::shared_ptr<QTextLayout> makeLayout(
    const NSString& text, const QFont& font, Qt::LayoutDirection direction, QTextOption::WrapMode wrapMode)
{
    auto layout = std::make_shared<QTextLayout>(text, font);
    QTextOption option;
    option.setWrapMode(wrapMode);
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute); // lines are aligned when they are drawn
    option.setTextDirection(direction);
    layout->setTextOption(option);
    layout->setCacheEnabled(true); // keeps the shaped glyphs for drawing
    return layout;
}

} // namespace

TextLayout::TextLayout(const NSString& text, const TextStyle& style, CGFloat width)
    : m_font(style.font ? style.font : UIFont::systemFontOfSize(UIFont::labelFontSize))
    , m_width(width > 0 ? width : 0)
    , m_clips(style.lineBreakMode == NSLineBreakMode::ByClipping)
{
    if (text.isEmpty())
        return;
    QStringList paragraphs = paragraphsOf(visiblePart(text, style, m_width));
    while (style.maximumLines > 0 && paragraphs.size() > 1 && paragraphs.last().isEmpty())
        paragraphs.removeLast(); // an empty line at the end is nothing that an ellipsis would stand for
    for (const NSString& paragraph : std::as_const(paragraphs))
        m_font->prepareFor(paragraph);
    for (qsizetype index = 0; index < paragraphs.size(); ++index) {
        const int linesLeft = style.maximumLines > 0 ? style.maximumLines - lineCount() : 0;
        if (style.maximumLines > 0 && linesLeft == 0)
            break;
        breakIntoLines(paragraphs, index, style.lineBreakMode, linesLeft);
    }
    align(style.alignment);
}

void TextLayout::breakIntoLines(
    const QStringList& paragraphs, qsizetype index, NSLineBreakMode mode, int linesLeft)
{
    const NSString& paragraph = paragraphs[index];
    const bool moreParagraphs = index + 1 < paragraphs.size();
    const Qt::LayoutDirection direction = paragraph.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    const CGFloat available = std::min(m_width / m_font->qFontScale(), unbrokenWidth) + roundingTolerance;
    auto layout = makeLayout(paragraph, m_font->qFont(), direction,
        mode == NSLineBreakMode::ByCharWrapping ? QTextOption::WrapAnywhere
                                                : QTextOption::WrapAtWordBoundaryOrAnywhere);
    int count = 0;
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        const bool isLast = ++count == linesLeft;
        const bool takesRest = isLast && (isTruncating(mode) || mode == NSLineBreakMode::ByClipping);
        line.setLineWidth(takesRest ? unbrokenWidth : available);
        line.setPosition({ 0, 0 });
        const bool overflows = line.naturalTextWidth() > available || moreParagraphs;
        if (isLast && isTruncating(mode) && overflows) {
            NSString rest = paragraph.mid(line.textStart());
            if (showsEnd(mode) && moreParagraphs)
                rest += QLatin1Char(' ') + paragraphs.mid(index + 1).join(QLatin1Char(' '));
            appendTruncatedLine(rest, mode, direction, available);
            break;
        }
        appendLine(layout, line);
        if (isLast)
            break;
    }
    layout->endLayout();
}

void TextLayout::appendLine(const std::shared_ptr<QTextLayout>& layout, const QTextLine& line)
{
    const bool rightToLeft = layout->textOption().textDirection() == Qt::RightToLeft;
    m_lines.push_back(
        { layout, line.lineNumber(), 0, line.naturalTextWidth() * m_font->qFontScale(), rightToLeft });
}

void TextLayout::appendTruncatedLine(
    const NSString& text, NSLineBreakMode mode, Qt::LayoutDirection direction, CGFloat available)
{
    const QFont font = m_font->qFont();
    const NSString whole = showsEnd(mode) ? text : text + ellipsis; // something is always missing at the tail
    const NSString shortened = QFontMetricsF(font).elidedText(whole, elideMode(mode), available);
    auto layout = makeLayout(shortened, font, direction, QTextOption::NoWrap);
    layout->beginLayout();
    QTextLine line = layout->createLine();
    if (line.isValid()) {
        line.setLineWidth(unbrokenWidth);
        line.setPosition({ 0, 0 });
        appendLine(layout, line);
    }
    layout->endLayout();
    m_truncated = shortened != text;
}

void TextLayout::align(NSTextAlignment alignment)
{
    CGFloat widest = 0;
    for (const Line& line : m_lines)
        widest = std::max(widest, line.width);
    m_size = { widest, lineCount() * m_font->lineHeight() };

    const CGFloat frame = std::isfinite(m_width) ? m_width : widest;
    for (Line& line : m_lines) {
        const CGFloat rest = frame - line.width;
        const bool startsRight = alignment == NSTextAlignment::Natural && line.rightToLeft;
        if (alignment == NSTextAlignment::Right || startsRight)
            line.x = rest;
        else if (alignment == NSTextAlignment::Center && rest > 0)
            line.x = rest / 2;
    }
}

CGFloat TextLayout::firstBaseline() const { return m_font->ascender(); }

CGFloat TextLayout::lastBaseline() const
{
    return m_font->ascender() + std::max(0, lineCount() - 1) * m_font->lineHeight();
}

bool TextLayout::hasColoredGlyphs() const
{
    return std::any_of(m_lines.begin(), m_lines.end(), [](const Line& line) {
        const auto runs = line.layout->lineAt(line.index).glyphRuns();
        return std::any_of(
            runs.begin(), runs.end(), [](const QGlyphRun& run) { return isColored(run.rawFont()); });
    });
}

void TextLayout::draw(CGContext& context, const CGPoint& origin, const UIColor& color) const
{
    draw(context, origin, color.qColor());
}

void TextLayout::draw(CGContext& context, const CGPoint& origin, const QColor& color) const
{
    const CGContext::SavedState saved(context);
    context.translate(origin.x(), origin.y());
    if (m_clips && std::isfinite(m_width))
        context.clipToRect({ 0, 0, m_width, m_size.height() });
    context.scale(m_font->qFontScale(), m_font->qFontScale());
    context.painter().setPen(color);
    CGFloat baseline = firstBaseline();
    for (const Line& line : m_lines) {
        const QTextLine shaped = line.layout->lineAt(line.index);
        const CGPoint place = CGPoint(line.x, baseline) / m_font->qFontScale();
        shaped.draw(&context.painter(), place - CGPoint(0, shaped.ascent()));
        baseline += m_font->lineHeight();
    }
}
