#include "platform/foundation/NSLocale.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(NSLocaleTest, HasALanguageWhateverTheSystemSays)
{
    EXPECT_FALSE(NSLocale::preferredLanguages().empty());
    EXPECT_FALSE(NSLocale::currentIdentifier().isEmpty());
    EXPECT_NE(NSLocale::currentIdentifier(), QStringLiteral("C"));
}

TEST(NSLocaleTest, LanguagesMayBeSetAndGivenBack)
{
    const auto system = NSLocale::preferredLanguages();
    NSLocale::setPreferredLanguages({ QStringLiteral("de-AT"), QStringLiteral("fr") });
    EXPECT_EQ(NSLocale::currentIdentifier(), QStringLiteral("de-AT"));
    EXPECT_EQ(NSLocale::preferredLanguages().size(), 2u);
    NSLocale::setPreferredLanguages({});
    EXPECT_EQ(NSLocale::preferredLanguages(), system);
}

TEST(NSLocaleTest, ATagFallsBackOnItsShorterForms)
{
    EXPECT_THAT(NSLocale::fallbacksOf(QStringLiteral("zh-Hant-TW")),
        ElementsAre(QStringLiteral("zh-Hant-TW"), QStringLiteral("zh-Hant"), QStringLiteral("zh")));
    EXPECT_THAT(NSLocale::fallbacksOf(QStringLiteral("de")), ElementsAre(QStringLiteral("de")));
}

TEST(NSLocaleTest, TheEnvironmentsSpellingIsUnderstood)
{
    EXPECT_THAT(NSLocale::fallbacksOf(QStringLiteral("de_AT.UTF-8@euro")),
        ElementsAre(QStringLiteral("de-AT"), QStringLiteral("de")));
}

TEST(NSLocaleTest, WhatIsNoTagHasNoFallbacks)
{
    for (const char* tag : { "", "../en", "en/..", "e n", "é" })
        EXPECT_THAT(NSLocale::fallbacksOf(NSString::fromUtf8(tag)), IsEmpty()) << tag;
    EXPECT_THAT(NSLocale::fallbacksOf(QStringLiteral("-")), ElementsAre(QStringLiteral("-")));
}
