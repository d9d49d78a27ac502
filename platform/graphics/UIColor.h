// A colour: grey, red-green-blue, hue-saturation-brightness, a repeated picture, or a pair of colours
// of which the appearance in force picks one.
//
// Components are kept as they were given, in double precision, also outside 0..1; only drawing clamps
// and rounds them. A colour never changes and may be used on any thread.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/graphics/UIUserInterfaceStyle.h"

#include <QBrush>
#include <QColor>

#include <optional>
#include <variant>

class UIImage;

struct RedGreenBlueAlpha {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;

    bool operator==(const RedGreenBlueAlpha&) const = default;
};

struct WhiteAlpha {
    double white = 0;
    double alpha = 0;

    bool operator==(const WhiteAlpha&) const = default;
};

struct HueSaturationBrightnessAlpha {
    double hue = 0; // 0..1 once round the circle, red at both ends
    double saturation = 0;
    double brightness = 0;
    double alpha = 0;

    bool operator==(const HueSaturationBrightnessAlpha&) const = default;
};

class UIColor final : public NSObject {
public:
    static std::shared_ptr<UIColor> clearColor();
    static std::shared_ptr<UIColor> blackColor();
    static std::shared_ptr<UIColor> whiteColor();
    static std::shared_ptr<UIColor> grayColor();
    // colorWithRed:green:blue:alpha:
    static std::shared_ptr<UIColor> colorWithRed(double red, double green, double blue, double alpha);
    // colorWithWhite:alpha:
    static std::shared_ptr<UIColor> colorWithWhite(double white, double alpha);
    // colorWithHue:saturation:brightness:alpha:
    static std::shared_ptr<UIColor> colorWithHue(
        double hue, double saturation, double brightness, double alpha);
    // The picture, repeated from the origin of what is drawn. Without a picture the colour is clear.
    static std::shared_ptr<UIColor> colorWithPatternImage(std::shared_ptr<UIImage> image);
    // One colour for each appearance. Neither may be null.
    static std::shared_ptr<UIColor> colorWithLight(
        std::shared_ptr<UIColor> light, std::shared_ptr<UIColor> dark);

    // System colours; each follows the appearance in force.
    static std::shared_ptr<UIColor> labelColor();
    static std::shared_ptr<UIColor> secondaryLabelColor();
    static std::shared_ptr<UIColor> systemBackgroundColor();
    static std::shared_ptr<UIColor> systemFillColor();
    static std::shared_ptr<UIColor> systemGray6Color();
    static std::shared_ptr<UIColor> systemBlueColor(); // the tint where nobody set one

    // getRed:green:blue:alpha: — none for greys made as such, and for pattern images.
    std::optional<RedGreenBlueAlpha> getRed() const;
    // getWhite:alpha: — for every grey, whatever its components were called; none for other colours.
    std::optional<WhiteAlpha> getWhite() const;
    // getHue:saturation:brightness:alpha: — none for pattern images. A grey has hue and saturation 0.
    std::optional<HueSaturationBrightnessAlpha> getHue() const;
    // Null unless the colour repeats a picture.
    std::shared_ptr<UIImage> patternImage() const;

    // colorWithAlphaComponent: — the same colour with another opacity; a pattern stays as it is.
    std::shared_ptr<UIColor> colorWithAlphaComponent(double alpha);
    // What a dynamic colour is under that appearance; every other colour is itself.
    std::shared_ptr<UIColor> resolvedColor(UIUserInterfaceStyle);
    bool isDynamic() const;

    // For drawing: clamped to 0..1. A pattern image has no one colour and gives an invalid QColor.
    QColor qColor(UIUserInterfaceStyle = CurrentUserInterfaceStyle::get()) const;
    // For drawing, pattern images included.
    QBrush qBrush(UIUserInterfaceStyle = CurrentUserInterfaceStyle::get()) const;

    // The same form with the same components, or the same picture.
    bool isEqual(const NSObject* other) const override;
    std::size_t hash() const override;
    NSString description() const override;

    struct Dynamic {
        std::shared_ptr<UIColor> light;
        std::shared_ptr<UIColor> dark;
    };
    struct Pattern {
        std::shared_ptr<UIImage> image; // never null
    };
    using Form = std::variant<WhiteAlpha, RedGreenBlueAlpha, HueSaturationBrightnessAlpha, Dynamic, Pattern>;
    explicit UIColor(Form);

private:
    const Form& resolvedForm(UIUserInterfaceStyle) const;
    const Form& currentForm() const { return resolvedForm(CurrentUserInterfaceStyle::get()); }

    const Form m_form;
};
