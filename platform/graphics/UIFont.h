// A typeface at a size in points.
//
// Asking for a font is cheap: the face itself is looked up when it is first measured or drawn. Shapes
// are never hinted and never moved to whole pixels, so that a line of text has the same proportions
// at every screen scale. A font never changes and may be used on any thread.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/graphics/Geometry.h"

#include <QFont>

#include <mutex>

enum class UIFontWeight { Light = 300, Regular = 400, Medium = 500, Semibold = 600, Bold = 700 };

class UIFont final : public NSObject {
public:
    static constexpr CGFloat largestSize = 1000;

    // fontWithName:size: — null for a name that is unknown, and for a size that is not above 0 or too large.
    // Where a known name's typeface is not installed, the system's stands in with its weight and width.
    static std::shared_ptr<UIFont> fontWithName(const NSString& name, CGFloat size);
    // systemFontOfSize:weight: — null for a size that is not above 0 or too large.
    static std::shared_ptr<UIFont> systemFontOfSize(
        CGFloat size, UIFontWeight weight = UIFontWeight::Regular);
    static std::shared_ptr<UIFont> boldSystemFontOfSize(CGFloat size);

    // The sizes of the controls' own texts.
    static constexpr CGFloat labelFontSize = 17;
    static constexpr CGFloat buttonFontSize = 18;

    const NSString& fontName() const { return m_name; }
    // Of the face that is really drawn.
    NSString familyName() const;
    CGFloat pointSize() const { return m_pointSize; }
    UIFontWeight weight() const { return m_face.weight; }
    std::shared_ptr<UIFont> fontWithSize(CGFloat size) const;

    // Distances from the baseline: up is positive, so the descender is negative.
    CGFloat ascender() const { return metrics().ascender; }
    CGFloat descender() const { return metrics().descender; }
    CGFloat capHeight() const { return metrics().capHeight; }
    CGFloat xHeight() const { return metrics().xHeight; }
    // From one baseline to the next.
    CGFloat lineHeight() const { return metrics().ascender - metrics().descender + metrics().leading; }

    // Looks for the letters that the face lacks; to be called before the text is drawn in a qFont().
    void prepareFor(const NSString& text) const;
    // For drawing. Its size is a whole number of pixels; qFontScale() is what remains to reach pointSize().
    QFont qFont() const;
    CGFloat qFontScale() const;

    // The same name and size.
    bool isEqual(const NSObject* other) const override;
    std::size_t hash() const override;
    NSString description() const override;

    // What a name stands for: one line of the table of faces.
    struct Face {
        NSString family;
        UIFontWeight weight;
        int stretchWhenMissing; // per cent of the system face's width
    };
    UIFont(NSString name, const Face& face, CGFloat size);

private:
    struct Metrics {
        CGFloat ascender;
        CGFloat descender;
        CGFloat capHeight;
        CGFloat xHeight;
        CGFloat leading;
    };
    static std::shared_ptr<UIFont> fontWithFace(const NSString& name, const Face& face, CGFloat size);
    const Metrics& metrics() const;
    bool isStandIn() const;

    const NSString m_name;
    const Face m_face;
    const CGFloat m_pointSize;
    mutable std::once_flag m_lookedUp;
    mutable bool m_isStandIn = false;
    mutable std::once_flag m_measured;
    mutable Metrics m_metrics {};
};
