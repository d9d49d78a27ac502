// A text laid out once: broken into lines, measured, ready to be drawn.
//
// Sizes are exact, not rounded; whoever places a layout rounds up to whole pixels. Directions follow the
// text itself: natural alignment starts a right-to-left paragraph at the right edge. A layout never
// changes; it belongs to the thread that made it.
#pragma once

#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIFont.h"

#include <QTextLayout>

#include <limits>
#include <memory>

class CGContext;

enum class NSTextAlignment { Left = 0, Center = 1, Right = 2, Natural = 4 };
enum class NSLineBreakMode {
    ByWordWrapping = 0,
    ByCharWrapping = 1, // lines break anywhere between characters
    ByClipping = 2,
    ByTruncatingHead = 3, // the last line shows the end of the text
    ByTruncatingTail = 4,
    ByTruncatingMiddle = 5 // the last line shows its own start and the end of the text
};

struct TextStyle {
    std::shared_ptr<UIFont> font; // null: the system font in the labels' size
    NSTextAlignment alignment = NSTextAlignment::Natural;
    // What happens to a text that does not fit. But for the wrapping by characters the modes differ in the
    // last line only; the lines before it, where more than one is allowed, break between words.
    NSLineBreakMode lineBreakMode = NSLineBreakMode::ByTruncatingTail;
    int maximumLines = 1; // 0: as many as the text needs
};

class TextLayout {
public:
    static constexpr CGFloat unlimited = std::numeric_limits<CGFloat>::infinity();

    // Lines are broken, truncated and aligned within the width. Without a limit they are aligned within
    // the widest of them.
    TextLayout(const NSString& text, const TextStyle& style, CGFloat width = unlimited);

    // The widest line and all line heights. A text without characters measures 0 × 0.
    CGSize size() const { return m_size; }
    int lineCount() const { return static_cast<int>(m_lines.size()); }
    // Whether the first line begins at the right.
    bool isRightToLeft() const { return !m_lines.empty() && m_lines.front().rightToLeft; }
    // Whether an ellipsis stands for a part of the text.
    bool isTruncated() const { return m_truncated; }
    // Whether some of it is drawn in the colours of its font, such as emoji, and not in the text colour
    // alone.
    bool hasColoredGlyphs() const;
    // From the top of the first line.
    CGFloat firstBaseline() const;
    CGFloat lastBaseline() const;

    // Draws with the layout's top left corner at the point. The lines lie within the width given to the
    // constructor.
    void draw(CGContext&, const CGPoint& origin, const UIColor& color) const;
    void draw(CGContext&, const CGPoint& origin, const QColor& color) const;

private:
    struct Line {
        std::shared_ptr<QTextLayout> layout; // of the paragraph, or of this line alone
        int index = 0; // within the layout
        CGFloat x = 0;
        CGFloat width = 0;
        bool rightToLeft = false;
    };

    // At most that many lines; 0: as many as there are.
    void breakIntoLines(const QStringList& paragraphs, qsizetype index, NSLineBreakMode, int linesLeft);
    void appendLine(const std::shared_ptr<QTextLayout>&, const QTextLine&);
    void appendTruncatedLine(const NSString& text, NSLineBreakMode, Qt::LayoutDirection, CGFloat available);
    void align(NSTextAlignment);

    std::shared_ptr<UIFont> m_font; // never null
    CGFloat m_width;
    bool m_clips;
    std::vector<Line> m_lines;
    CGSize m_size { 0, 0 };
    bool m_truncated = false;
};
