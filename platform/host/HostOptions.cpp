#include "platform/host/HostOptions.h"

#include <QLocale>

namespace {

// What a switch does with its value; answers whether the value is one it knows.
using Apply = bool (*)(HostOptions&, const NSString& value);

struct Switch {
    const char* name;
    const char* value; // how --help calls its value; null for a switch without one
    const char* help;
    Apply apply;
};

bool applyDevice(HostOptions& options, const NSString& value)
{
    options.device = value == "tablet" ? HostOptions::Device::Tablet : HostOptions::Device::Phone;
    return value == "tablet" || value == "phone";
}

bool applyScale(HostOptions& options, const NSString& value)
{
    options.scale = value.toInt();
    return value == "1" || value == "2" || value == "3";
}

bool applyAppearance(HostOptions& options, const NSString& value)
{
    options.appearance = value == "dark" ? HostOptions::Appearance::Dark : HostOptions::Appearance::Light;
    return value == "dark" || value == "light";
}

bool applyLanguage(HostOptions& options, const NSString& value)
{
    options.language = value;
    // An unknown tag becomes the "C" locale; nobody speaks that.
    return QLocale(value).language() != QLocale::C;
}

bool applyScreenshot(HostOptions& options, const NSString& value)
{
    options.screenshotFile = value;
    return !value.isEmpty();
}

bool applyReport(HostOptions& options, const NSString&) { return options.reports = true; }
bool applySlowAnimations(HostOptions& options, const NSString&) { return options.slowsAnimations = true; }
bool applyHelp(HostOptions& options, const NSString&) { return options.wantsHelp = true; }

constexpr Switch switches[] = {
    { "--device", "phone|tablet", "the device to simulate (phone)", applyDevice },
    { "--scale", "1|2|3", "pixels in a point (as the screen has them)", applyScale },
    { "--appearance", "light|dark", "light or dark colours (as the desktop has them)", applyAppearance },
    { "--language", "TAG", "the language, such as de or pt-BR (the system's)", applyLanguage },
    { "--screenshot", "FILE", "draw until nothing moves, save a picture, end", applyScreenshot },
    { "--report", nullptr, "print figures about the run at its end", applyReport },
    { "--slow-animations", nullptr, "run animations ten times slower", applySlowAnimations },
    { "--help", nullptr, "print this and end", applyHelp },
};

const Switch* findSwitch(const NSString& name)
{
    for (const Switch& candidate : switches)
        if (name == QLatin1String(candidate.name))
            return &candidate;
    return nullptr;
}

} // namespace

CGSize HostOptions::screenSize() const
{
    return device == Device::Tablet ? CGSize(1180, 820) : CGSize(390, 844);
}

UIEdgeInsets HostOptions::safeAreaInsets() const
{
    return device == Device::Tablet ? UIEdgeInsets { 24, 0, 20, 0 } : UIEdgeInsets { 47, 0, 34, 0 };
}

std::variant<HostOptions, NSString> HostOptions::parse(const std::vector<NSString>& arguments)
{
    HostOptions options;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        // Both "--name value" and "--name=value".
        const qsizetype equals = argument->indexOf('=');
        const NSString name = argument->left(equals);
        const Switch* found = findSwitch(name);
        if (!found)
            return NSString("unknown argument \"%1\"").arg(*argument);
        NSString value;
        if (equals >= 0) {
            if (!found->value)
                return NSString("%1 takes no value").arg(name);
            value = argument->mid(equals + 1);
        } else if (found->value) {
            if (std::next(argument) == arguments.end())
                return NSString("%1 needs a value: %2").arg(name, QLatin1String(found->value));
            value = *++argument;
        }
        if (!found->apply(options, value))
            return NSString("%1 does not take \"%2\"; it takes %3")
                .arg(name, value, QLatin1String(found->value));
    }
    return options;
}

NSString HostOptions::helpText(const NSString& programName)
{
    NSString text = NSString("Usage: %1 [options]\n\n").arg(programName);
    for (const Switch& item : switches) {
        NSString usage = QLatin1String(item.name);
        if (item.value)
            usage += ' ' + NSString(QLatin1String(item.value));
        text += NSString("  %1 %2\n").arg(usage, -24).arg(QLatin1String(item.help));
    }
    text += "\nKeys, with Ctrl: R turns the device, B sends the application to the background and back,\n"
            "D changes between light and dark, S saves a picture of the screen.\n";
    return text;
}
