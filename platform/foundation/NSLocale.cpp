#include "platform/foundation/NSLocale.h"

#include <QLocale>

#include <algorithm>
#include <mutex>

namespace {

std::mutex languagesMutex;

std::vector<NSString>& chosenLanguages()
{
    static std::vector<NSString> languages;
    return languages;
}

bool isLanguageTag(const NSString& tag)
{
    return !tag.isEmpty() && tag != QLatin1String("C") && tag != QLatin1String("POSIX");
}

std::vector<NSString> systemLanguages()
{
    std::vector<NSString> languages;
    for (const NSString& tag : QLocale::system().uiLanguages())
        if (isLanguageTag(tag))
            languages.push_back(tag);
    if (languages.empty())
        languages.push_back(QStringLiteral("en"));
    return languages;
}

} // namespace

std::vector<NSString> NSLocale::preferredLanguages()
{
    {
        const std::lock_guard lock(languagesMutex);
        if (!chosenLanguages().empty())
            return chosenLanguages();
    }
    static const std::vector<NSString> system = systemLanguages();
    return system;
}

void NSLocale::setPreferredLanguages(std::vector<NSString> languages)
{
    const std::lock_guard lock(languagesMutex);
    chosenLanguages() = std::move(languages);
}

std::vector<NSString> NSLocale::fallbacksOf(const NSString& language)
{
    // "de_AT.UTF-8@euro", as the environment spells it, is "de-AT".
    NSString tag = language.section(u'.', 0, 0).section(u'@', 0, 0).replace(u'_', u'-');
    const bool isPlain = std::all_of(tag.cbegin(), tag.cend(), [](QChar character) {
        return character == u'-' || (character.unicode() < 128 && character.isLetterOrNumber());
    });
    std::vector<NSString> tags;
    while (isPlain && !tag.isEmpty()) {
        tags.push_back(tag);
        tag.truncate(std::max<qsizetype>(tag.lastIndexOf(u'-'), 0));
    }
    return tags;
}
