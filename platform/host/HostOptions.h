// The platform's own command line.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/graphics/Geometry.h"

#include <optional>
#include <variant>
#include <vector>

struct HostOptions {
    enum class Device { Phone, Tablet };
    enum class Appearance { Light, Dark };

    Device device = Device::Phone;
    std::optional<int> scale; // device pixels in a point; nothing: as the real screen has them
    std::optional<Appearance> appearance; // nothing: as the desktop has it
    NSString language; // a language tag; null: the system's
    NSString screenshotFile; // null: no screenshot
    bool reports = false;
    bool slowsAnimations = false;
    bool wantsHelp = false;

    CGSize screenSize() const; // in points
    UIEdgeInsets safeAreaInsets() const;

    // Reads the arguments (the program's name is not one of them); a wrong one gives the sentence to print.
    static std::variant<HostOptions, NSString> parse(const std::vector<NSString>& arguments);
    // What --help prints.
    static NSString helpText(const NSString& programName);
};
