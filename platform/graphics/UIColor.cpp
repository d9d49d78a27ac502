#include "platform/graphics/UIColor.h"

#include "platform/graphics/UIImage.h"

namespace {

template <class... Cases> struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases> Overloaded(Cases...) -> Overloaded<Cases...>;

RedGreenBlueAlpha rgbOf(const HueSaturationBrightnessAlpha& color)
{
    // Each component falls from the brightness by what the saturation takes, the more the further the
    // hue is away from the component's own.
    const auto component = [&](double offset) {
        const double k = std::fmod(offset + (color.hue - std::floor(color.hue)) * 6, 6.0);
        const double distance = std::clamp(std::min(k, 4 - k), 0.0, 1.0);
        return color.brightness * (1 - color.saturation * distance);
    };
    return { component(5), component(3), component(1), color.alpha };
}

HueSaturationBrightnessAlpha hsbOf(const RedGreenBlueAlpha& color)
{
    const double highest = std::max({ color.red, color.green, color.blue });
    const double range = highest - std::min({ color.red, color.green, color.blue });
    if (!(range > 0) || highest <= 0)
        return { 0, 0, highest, color.alpha };
    double sixths = 0;
    if (highest == color.red)
        sixths = (color.green - color.blue) / range;
    else if (highest == color.green)
        sixths = 2 + (color.blue - color.red) / range;
    else
        sixths = 4 + (color.red - color.green) / range;
    return { (sixths < 0 ? sixths + 6 : sixths) / 6, range / highest, highest, color.alpha };
}

float channel(double component) // not a number counts as nothing
{
    return static_cast<float>(component > 0 ? std::min(component, 1.0) : 0.0);
}

QColor qColorOf(const RedGreenBlueAlpha& color)
{
    return QColor::fromRgbF(
        channel(color.red), channel(color.green), channel(color.blue), channel(color.alpha));
}

std::shared_ptr<UIColor> grey(
    double lightWhite, double darkWhite, double lightAlpha = 1, double darkAlpha = 1)
{
    return UIColor::colorWithLight(
        UIColor::colorWithWhite(lightWhite, lightAlpha), UIColor::colorWithWhite(darkWhite, darkAlpha));
}

std::shared_ptr<UIColor> tinted(const RedGreenBlueAlpha& light, const RedGreenBlueAlpha& dark)
{
    return UIColor::colorWithLight(make<UIColor>(light), make<UIColor>(dark));
}

} // namespace

UIColor::UIColor(Form form)
    : m_form(std::move(form))
{
}

std::shared_ptr<UIColor> UIColor::clearColor() { return colorWithWhite(0, 0); }
std::shared_ptr<UIColor> UIColor::blackColor() { return colorWithWhite(0, 1); }
std::shared_ptr<UIColor> UIColor::whiteColor() { return colorWithWhite(1, 1); }
std::shared_ptr<UIColor> UIColor::grayColor() { return colorWithWhite(0.5, 1); }

std::shared_ptr<UIColor> UIColor::colorWithRed(double red, double green, double blue, double alpha)
{
    return make<UIColor>(RedGreenBlueAlpha { red, green, blue, alpha });
}

std::shared_ptr<UIColor> UIColor::colorWithWhite(double white, double alpha)
{
    return make<UIColor>(WhiteAlpha { white, alpha });
}

std::shared_ptr<UIColor> UIColor::colorWithHue(double hue, double saturation, double brightness, double alpha)
{
    return make<UIColor>(HueSaturationBrightnessAlpha { hue, saturation, brightness, alpha });
}

std::shared_ptr<UIColor> UIColor::colorWithPatternImage(std::shared_ptr<UIImage> image)
{
    return image ? make<UIColor>(Pattern { std::move(image) }) : clearColor();
}

std::shared_ptr<UIColor> UIColor::colorWithLight(
    std::shared_ptr<UIColor> light, std::shared_ptr<UIColor> dark)
{
    return make<UIColor>(Dynamic { std::move(light), std::move(dark) });
}

// The neutrals carry a trace of blue, so that they look grey and not yellowish beside white. Texts and
// fills are translucent: they stay readable on any background of their appearance.
std::shared_ptr<UIColor> UIColor::labelColor() { return grey(0, 1); }

std::shared_ptr<UIColor> UIColor::secondaryLabelColor()
{
    return tinted({ 0.20, 0.21, 0.25, 0.70 }, { 0.90, 0.91, 0.96, 0.62 });
}

std::shared_ptr<UIColor> UIColor::systemBackgroundColor() { return grey(1, 0); }

std::shared_ptr<UIColor> UIColor::systemFillColor()
{
    return tinted({ 0.45, 0.46, 0.50, 0.20 }, { 0.50, 0.51, 0.55, 0.36 });
}

std::shared_ptr<UIColor> UIColor::systemGray6Color()
{
    return tinted({ 0.945, 0.945, 0.96, 1 }, { 0.115, 0.115, 0.125, 1 });
}

std::shared_ptr<UIColor> UIColor::systemBlueColor()
{
    return tinted({ 0.04, 0.44, 0.93, 1 }, { 0.22, 0.56, 1, 1 });
}

const UIColor::Form& UIColor::resolvedForm(UIUserInterfaceStyle style) const
{
    const auto* pair = std::get_if<Dynamic>(&m_form);
    if (!pair)
        return m_form;
    return (style == UIUserInterfaceStyle::Dark ? pair->dark : pair->light)->resolvedForm(style);
}

std::optional<RedGreenBlueAlpha> UIColor::getRed() const
{
    const Form& form = currentForm();
    if (const auto* rgb = std::get_if<RedGreenBlueAlpha>(&form))
        return *rgb;
    if (const auto* hsb = std::get_if<HueSaturationBrightnessAlpha>(&form))
        return rgbOf(*hsb);
    return std::nullopt;
}

std::optional<WhiteAlpha> UIColor::getWhite() const
{
    if (const auto* white = std::get_if<WhiteAlpha>(&currentForm()))
        return *white;
    const auto rgb = getRed();
    if (rgb && rgb->red == rgb->green && rgb->green == rgb->blue)
        return WhiteAlpha { rgb->red, rgb->alpha };
    return std::nullopt;
}

std::optional<HueSaturationBrightnessAlpha> UIColor::getHue() const
{
    const Form& form = currentForm();
    if (const auto* hsb = std::get_if<HueSaturationBrightnessAlpha>(&form))
        return *hsb;
    if (const auto* white = std::get_if<WhiteAlpha>(&form))
        return HueSaturationBrightnessAlpha { 0, 0, white->white, white->alpha };
    if (const auto* rgb = std::get_if<RedGreenBlueAlpha>(&form))
        return hsbOf(*rgb);
    return std::nullopt;
}

std::shared_ptr<UIImage> UIColor::patternImage() const
{
    const auto* pattern = std::get_if<Pattern>(&currentForm());
    return pattern ? pattern->image : nullptr;
}

std::shared_ptr<UIColor> UIColor::colorWithAlphaComponent(double alpha)
{
    const auto self = strongSelf(this);
    return std::visit(Overloaded {
                          [&](const Dynamic& pair) {
                              return colorWithLight(pair.light->colorWithAlphaComponent(alpha),
                                  pair.dark->colorWithAlphaComponent(alpha));
                          },
                          [&](const Pattern&) { return self; },
                          [&](auto components) {
                              components.alpha = alpha;
                              return make<UIColor>(components);
                          },
                      },
        m_form);
}

std::shared_ptr<UIColor> UIColor::resolvedColor(UIUserInterfaceStyle style)
{
    const auto* pair = std::get_if<Dynamic>(&m_form);
    if (!pair)
        return strongSelf(this);
    return (style == UIUserInterfaceStyle::Dark ? pair->dark : pair->light)->resolvedColor(style);
}

bool UIColor::isDynamic() const { return std::holds_alternative<Dynamic>(m_form); }

QColor UIColor::qColor(UIUserInterfaceStyle style) const
{
    return std::visit(Overloaded {
                          [](const WhiteAlpha& grey) {
                              return qColorOf({ grey.white, grey.white, grey.white, grey.alpha });
                          },
                          [](const RedGreenBlueAlpha& rgb) { return qColorOf(rgb); },
                          [](const HueSaturationBrightnessAlpha& hsb) { return qColorOf(rgbOf(hsb)); },
                          [](const auto&) { return QColor(); },
                      },
        resolvedForm(style));
}

QBrush UIColor::qBrush(UIUserInterfaceStyle style) const
{
    const auto* pattern = std::get_if<Pattern>(&resolvedForm(style));
    if (!pattern)
        return QBrush(qColor(style));
    QBrush brush(pattern->image->qImage());
    brush.setTransform(QTransform::fromScale(1 / pattern->image->scale(), 1 / pattern->image->scale()));
    return brush;
}

bool UIColor::isEqual(const NSObject* object) const
{
    const auto* other = dynamic_cast<const UIColor*>(object);
    if (!other || other->m_form.index() != m_form.index())
        return false;
    return std::visit(
        Overloaded {
            [&](const Dynamic& pair) {
                const auto& theirs = std::get<Dynamic>(other->m_form);
                return pair.light->isEqual(theirs.light.get()) && pair.dark->isEqual(theirs.dark.get());
            },
            [&](const Pattern& pattern) { return pattern.image == std::get<Pattern>(other->m_form).image; },
            [&](const auto& components) {
                return components == std::get<std::decay_t<decltype(components)>>(other->m_form);
            },
        },
        m_form);
}

std::size_t UIColor::hash() const
{
    return std::visit(
        Overloaded {
            [](const Dynamic& pair) { return qHashMulti(1, pair.light->hash(), pair.dark->hash()); },
            [](const Pattern& pattern) { return qHash(pattern.image.get()); },
            [](const WhiteAlpha& grey) { return qHashMulti(2, grey.white, grey.alpha); },
            [](const RedGreenBlueAlpha& rgb) {
                return qHashMulti(3, rgb.red, rgb.green, rgb.blue, rgb.alpha);
            },
            [](const HueSaturationBrightnessAlpha& hsb) {
                return qHashMulti(4, hsb.hue, hsb.saturation, hsb.brightness, hsb.alpha);
            },
        },
        m_form);
}

NSString UIColor::description() const
{
    const QColor color = qColor();
    return NSObject::description() + QLatin1Char(' ')
        + (color.isValid() ? color.name(QColor::HexArgb) : QStringLiteral("pattern"));
}
