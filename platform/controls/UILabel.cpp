#include "platform/controls/UILabel.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/TintMotion.h"
#include "platform/views/UIScreen.h"

namespace {

constexpr double manyLines = 100'000; // more than any height has room for

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
    const auto before = std::exchange(m_textColor, std::move(color));
    if (TintMotion::isUnderWay() && window() && !m_isStencil)
        becomeStencil(before);
    if (m_isStencil)
        layer()->setContentsTintColor(m_textColor);
    else
        setNeedsDisplay();
}

void UILabel::becomeStencil(const std::shared_ptr<UIColor>& color)
{
    if (drawnLayout().hasColoredGlyphs())
        return;
    m_isStencil = true;
    performWithoutAnimation([&] { layer()->setContentsTintColor(color); });
    setNeedsDisplay();
}

void UILabel::ceaseToBeStencil()
{
    if (!std::exchange(m_isStencil, false))
        return;
    layer()->removeAnimationForKey(CAKeyPath::key(CAProperty::ContentsTintColor));
    performWithoutAnimation([this] { layer()->setContentsTintColor(nullptr); });
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
    m_naturalSize.reset();
    if (m_isStencil && drawnLayout().hasColoredGlyphs())
        ceaseToBeStencil();
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
    const int room = static_cast<int>(
        std::clamp((bounds().height() + rounding) / m_style.font->lineHeight(), 1.0, manyLines));
    const int lines = m_style.maximumLines == 0 ? room : std::min(room, m_style.maximumLines);
    return layoutFor(bounds().width(), lines);
}

CGSize UILabel::naturalSize() const
{
    if (!m_naturalSize)
        m_naturalSize = pixelCeil(TextLayout(m_text, m_style).size());
    return *m_naturalSize;
}

CGSize UILabel::intrinsicContentSize() const
{
    const CGSize natural = naturalSize();
    const bool followsWidth = m_preferredMaxLayoutWidth == 0;
    const CGFloat width = followsWidth ? bounds().width() : m_preferredMaxLayoutWidth;
    if (m_style.maximumLines == 1 || !(width > 0) || width >= natural.width())
        return natural;
    const CGSize broken = pixelCeil(layoutFor(width, m_style.maximumLines).size());
    return { followsWidth ? natural.width() : broken.width(), broken.height() };
}

void UILabel::setPreferredMaxLayoutWidth(CGFloat width)
{
    NSParameterAssert(width >= 0, "UILabel", "width >= 0");
    if (!(width >= 0) || width == m_preferredMaxLayoutWidth)
        return;
    m_preferredMaxLayoutWidth = width;
    invalidateIntrinsicContentSize();
}

void UILabel::setBounds(const CGRect& bounds)
{
    const CGFloat oldWidth = this->bounds().width();
    UIView::setBounds(bounds);
    if (m_style.maximumLines != 1 && bounds.width() != oldWidth)
        invalidateIntrinsicContentSize();
}

void UILabel::layerGeometryWasTakenBack(CALayer& layer, CAProperty property)
{
    UIView::layerGeometryWasTakenBack(layer, property);
    if (m_style.maximumLines != 1 && property == CAProperty::Bounds)
        invalidateIntrinsicContentSize();
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
    return m_text.isEmpty() ? bounds().height() : textTop() + drawnLayout().firstBaseline();
}

CGFloat UILabel::lastBaseline() const
{
    return m_text.isEmpty() ? bounds().height() : textTop() + drawnLayout().lastBaseline();
}

int UILabel::lineCount() const
{
    const bool breaks = m_style.maximumLines != 1 && bounds().width() > 0;
    const CGFloat width = breaks ? bounds().width() : TextLayout::unlimited;
    return std::max(layoutFor(width, m_style.maximumLines).lineCount(), 1);
}

LayoutBaseline UILabel::firstBaselinePlace() const
{
    const CGFloat textHeight = pixelCeil(lineCount() * m_style.font->lineHeight());
    return { 0.5, m_style.font->ascender() - textHeight / 2 };
}

LayoutBaseline UILabel::lastBaselinePlace() const
{
    const LayoutBaseline first = firstBaselinePlace();
    return { first.fraction, first.offset + (lineCount() - 1) * m_style.font->lineHeight() };
}

// On the way to another size the text keeps its own and stays at its place in the bounds.
CAContentsGravity UILabel::gravityOfText() const
{
    switch (m_style.alignment) {
    case NSTextAlignment::Left:
        return CAContentsGravity::Left;
    case NSTextAlignment::Center:
        return CAContentsGravity::Center;
    case NSTextAlignment::Right:
        return CAContentsGravity::Right;
    case NSTextAlignment::Natural:
        break;
    }
    return drawnLayout().isRightToLeft() ? CAContentsGravity::Right : CAContentsGravity::Left;
}

void UILabel::drawRect(const CGRect& rect, CGContext& context)
{
    if (contentMode() == UIViewContentMode::ScaleToFill)
        layer()->setContentsGravity(gravityOfText());
    const CGPoint origin(rect.left(), rect.top() + textTop());
    if (m_isStencil)
        drawnLayout().draw(context, origin, QColor(Qt::black));
    else
        drawnLayout().draw(context, origin, *m_textColor);
}
