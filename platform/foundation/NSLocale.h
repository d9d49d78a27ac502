// The user's language and region.
//
// Taken from the system, unless preferred languages have been set (a command line does that before
// anything reads a text). Bundles and formatters read it when they are made.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <vector>

class NSLocale {
public:
    // Language tags such as "de-AT", the most wanted first; never empty.
    static std::vector<NSString> preferredLanguages();
    // The first of them, as formatters take it.
    static NSString currentIdentifier() { return preferredLanguages().front(); }
    // Replaces the system's choice; an empty list gives it back.
    static void setPreferredLanguages(std::vector<NSString>);

    // A tag and what it falls back on: "zh-Hant-TW", "zh-Hant", "zh".
    static std::vector<NSString> fallbacksOf(const NSString& language);
};
