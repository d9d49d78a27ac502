// A text, drawn once into the layer's bitmap and again only when what is seen of it changes.
//
// The text stands in the middle of the height. What does not fit ends in an ellipsis. A label takes no
// touches.
//
// A text colour that changes with the tint inside an animation block shifts with the block. For that the
// bitmap becomes a stencil: only its alpha counts, and the layer fills it with the colour. A text in glyphs
// of several colours, such as emoji, is never a stencil, and changes at once.
//
// While an animation changes the label's size, the text keeps its own and moves along.
#pragma once

#include "platform/graphics/TextLayout.h"
#include "platform/views/UIView.h"

#include <optional>

class UILabel : public UIView {
public:
    using UIView::UIView;

    const NSString& text() const { return m_text; }
    void setText(const NSString& text); // may be null
    std::shared_ptr<UIColor> textColor() const { return m_textColor; }
    void setTextColor(std::shared_ptr<UIColor> color); // null: the label colour of the appearance
    std::shared_ptr<UIFont> font() const { return m_style.font; }
    void setFont(std::shared_ptr<UIFont> font); // null: the system font in the labels' size
    NSTextAlignment textAlignment() const { return m_style.alignment; }
    void setTextAlignment(NSTextAlignment alignment);
    NSLineBreakMode lineBreakMode() const { return m_style.lineBreakMode; }
    void setLineBreakMode(NSLineBreakMode mode);
    int numberOfLines() const { return m_style.maximumLines; }
    void setNumberOfLines(int lines); // 0: as many as the text needs

    // Where a text of several lines breaks in the intrinsic size; not negative. 0 stands for the label's own
    // width: the intrinsic width is then that of the unbroken text, the height follows the width it gets.
    CGFloat preferredMaxLayoutWidth() const { return m_preferredMaxLayoutWidth; }
    void setPreferredMaxLayoutWidth(CGFloat width);

    // In whole pixels, so that the text is never cut short by a rounding.
    CGSize intrinsicContentSize() const override;
    CGSize sizeThatFits(const CGSize& size) const override;
    // Where the first and the last of the drawn lines stand, from the top; the bottom edge without text.
    CGFloat firstBaseline() const;
    CGFloat lastBaseline() const;
    // As constraints know them: exact where the height is that of the text, else within half a pixel.
    LayoutBaseline firstBaselinePlace() const override;
    LayoutBaseline lastBaselinePlace() const override;
    void setBounds(const CGRect& bounds) override;

    void setBackgroundColor(const std::shared_ptr<UIColor>& color) override;
    bool drawsContent() const override { return !m_text.isEmpty(); }
    void drawRect(const CGRect& rect, CGContext& context) override;

protected:
    void init() override;
    void layerGeometryWasTakenBack(CALayer&, CAProperty) override;

private:
    void textDidChange();
    void becomeStencil(const std::shared_ptr<UIColor>& color);
    void ceaseToBeStencil();
    const TextLayout& layoutFor(CGFloat width, int maximumLines) const;
    const TextLayout& drawnLayout() const;
    CGSize naturalSize() const;
    CGFloat textTop() const;
    CAContentsGravity gravityOfText() const;
    int lineCount() const;

    NSString m_text;
    std::shared_ptr<UIColor> m_textColor;
    TextStyle m_style;
    bool m_isStencil = false;
    CGFloat m_preferredMaxLayoutWidth = 0;
    mutable std::optional<CGSize> m_naturalSize; // of the unbroken text; none after a change
    mutable std::optional<TextLayout> m_layout; // the last one asked for; none after a change
    mutable CGFloat m_layoutWidth = 0;
    mutable int m_layoutLines = 0;
};
