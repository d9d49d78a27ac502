#include "platform/graphics/TextLayout.h"

#include "platform/graphics/CGContext.h"

#include <QFontMetricsF>
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

// Shaping costs by the character, and of an endless text only the start can show: no line has more than
// a few characters a point. The cut lies between characters that belong together.
NSString visibleStart(const NSString& text, const TextStyle& style, CGFloat width)
{
    if (style.maximumLines <= 0 || !std::isfinite(width))
        return text;
    const double limit = style.maximumLines * (1000 + 4 * width);
    if (static_cast<double>(text.size()) <= limit)
        return text;
    const auto length = static_cast<qsizetype>(limit);
    QTextBoundaryFinder boundaries(
        QTextBoundaryFinder::Grapheme, text.constData(), std::min(length + 2, text.size()));
    boundaries.setPosition(length);
    const qsizetype cut = boundaries.isAtBoundary() ? length : boundaries.toPreviousBoundary();
    return text.left(cut > 0 ? cut : length);
}

std::shared_ptr<QTextLayout> makeLayout(
    const NSString& text, const QFont& font, Qt::LayoutDirection direction)
{
    auto layout = std::make_shared<QTextLayout>(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
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
    QStringList paragraphs = paragraphsOf(visibleStart(text, style, m_width));
    while (style.maximumLines > 0 && paragraphs.size() > 1 && paragraphs.last().isEmpty())
        paragraphs.removeLast(); // an empty line at the end is nothing that an ellipsis would stand for
    for (qsizetype index = 0; index < paragraphs.size(); ++index) {
        const int linesLeft = style.maximumLines > 0 ? style.maximumLines - lineCount() : 0;
        if (style.maximumLines > 0 && linesLeft == 0)
            break;
        breakIntoLines(paragraphs[index], style.lineBreakMode, linesLeft, index + 1 < paragraphs.size());
    }
    align(style.alignment);
}

void TextLayout::breakIntoLines(
    const NSString& paragraph, NSLineBreakMode mode, int linesLeft, bool moreParagraphs)
{
    const Qt::LayoutDirection direction = paragraph.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    const CGFloat available = std::min(m_width / m_font->qFontScale(), unbrokenWidth) + roundingTolerance;
    auto layout = makeLayout(paragraph, m_font->qFont(), direction);
    int count = 0;
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        const bool isLast = ++count == linesLeft;
        const bool takesRest = isLast && mode != NSLineBreakMode::ByWordWrapping;
        line.setLineWidth(takesRest ? unbrokenWidth : available);
        line.setPosition({ 0, 0 });
        const bool overflows = line.naturalTextWidth() > available || moreParagraphs;
        if (takesRest && mode == NSLineBreakMode::ByTruncatingTail && overflows) {
            appendTruncatedLine(paragraph.mid(line.textStart()), direction, available);
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

void TextLayout::appendTruncatedLine(const NSString& text, Qt::LayoutDirection direction, CGFloat available)
{
    const QFont font = m_font->qFont();
    NSString shortened = QFontMetricsF(font).elidedText(text + ellipsis, Qt::ElideRight, available);
    auto layout = makeLayout(shortened, font, direction);
    layout->beginLayout();
    QTextLine line = layout->createLine();
    if (line.isValid()) {
        line.setLineWidth(unbrokenWidth);
        line.setPosition({ 0, 0 });
        appendLine(layout, line);
    }
    layout->endLayout();
    m_truncated = true;
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
