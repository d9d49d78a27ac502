#include "platform/controls/UILabel.h"

#include "platform/views/UIScreen.h"

namespace {

// Up to whole pixels of the screen.
CGFloat pixelCeil(CGFloat length)
{
    const CGFloat scale = UIScreen::mainScreen()->scale();
    const CGFloat rounding = 1e-6; // sums of glyph widths are not exact
    return std::ceil(length * scale - rounding) / scale;
}

CGSize pixelCeil(const CGSize& size) { return { pixelCeil(size.width()), pixelCeil(size.height()) }; }

} // namespace

void UILabel::init()
{
    UIView::init();
    setUserInteractionEnabled(false);
    setOpaque(false);
    m_textColor = UIColor::labelColor();
    m_style.font = UIFont::systemFontOfSize(UIFont::labelFontSize);
}

void UILabel::setText(const NSString& text)
{
    if (text == m_text && text.isNull() == m_text.isNull())
        return;
    m_text = text;
    textDidChange();
}

void UILabel::setTextColor(std::shared_ptr<UIColor> color)
{
    if (!color)
        color = UIColor::labelColor();
    if (color->isEqual(m_textColor.get()))
        return;
    m_textColor = std::move(color);
    setNeedsDisplay();
}

void UILabel::setFont(std::shared_ptr<UIFont> font)
{
    if (!font)
        font = UIFont::systemFontOfSize(UIFont::labelFontSize);
    if (font->isEqual(m_style.font.get()))
        return;
    m_style.font = std::move(font);
    textDidChange();
}

void UILabel::setTextAlignment(NSTextAlignment alignment)
{
    if (std::exchange(m_style.alignment, alignment) != alignment)
        textDidChange();
}

void UILabel::setLineBreakMode(NSLineBreakMode mode)
{
    if (std::exchange(m_style.lineBreakMode, mode) != mode)
        textDidChange();
}

void UILabel::setNumberOfLines(int lines)
{
    if (std::exchange(m_style.maximumLines, std::max(lines, 0)) != std::max(lines, 0))
        textDidChange();
}

void UILabel::setBackgroundColor(const std::shared_ptr<UIColor>& color)
{
    setOpaque(color && color->qColor().alpha() == 255);
    UIView::setBackgroundColor(color);
}

void UILabel::textDidChange()
{
    m_layout.reset();
    setNeedsDisplay();
    invalidateIntrinsicContentSize();
}

// --- Layout ------------------------------------------------------------------------------------------

const TextLayout& UILabel::layoutFor(CGFloat width, int maximumLines) const
{
    if (!m_layout || m_layoutWidth != width || m_layoutLines != maximumLines) {
        TextStyle style = m_style;
        style.maximumLines = maximumLines;
        m_layout.emplace(m_text, style, width);
        m_layoutWidth = width;
        m_layoutLines = maximumLines;
    }
    return *m_layout;
}

// No more lines than the height has room for, so that the last one that is seen ends in the ellipsis.
const TextLayout& UILabel::drawnLayout() const
{
    const CGFloat rounding = 0.01;
    const int room
        = std::max(static_cast<int>((bounds().height() + rounding) / m_style.font->lineHeight()), 1);
    const int lines = m_style.maximumLines == 0 ? room : std::min(room, m_style.maximumLines);
    return layoutFor(bounds().width(), lines);
}

CGSize UILabel::intrinsicContentSize() const
{
    const bool breaks = m_style.maximumLines != 1 && bounds().width() > 0;
    return pixelCeil(
        layoutFor(breaks ? bounds().width() : TextLayout::unlimited, m_style.maximumLines).size());
}

CGSize UILabel::sizeThatFits(const CGSize& size) const
{
    const CGFloat width = size.width() > 0 ? size.width() : TextLayout::unlimited;
    return pixelCeil(layoutFor(width, m_style.maximumLines).size());
}

CGFloat UILabel::textTop() const
{
    const CGFloat scale = UIScreen::mainScreen()->scale();
    const CGFloat room = bounds().height() - drawnLayout().size().height();
    return std::floor(std::max(room, 0.0) / 2 * scale) / scale;
}

CGFloat UILabel::firstBaseline() const
{
    return m_text.isEmpty() ? UIView::firstBaseline() : textTop() + drawnLayout().firstBaseline();
}

void UILabel::drawRect(const CGRect& rect, CGContext& context)
{
    const CGPoint origin(rect.left(), rect.top() + textTop());
    drawnLayout().draw(context, origin, *m_textColor);
}
