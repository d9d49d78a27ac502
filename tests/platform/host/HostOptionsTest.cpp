#include "platform/host/HostOptions.h"

#include <gtest/gtest.h>

namespace {

HostOptions parsed(const std::vector<NSString>& arguments)
{
    const auto result = HostOptions::parse(arguments);
    if (const auto* problem = std::get_if<NSString>(&result)) {
        ADD_FAILURE() << qUtf8Printable(*problem);
        return {};
    }
    return std::get<HostOptions>(result);
}

std::string problemWith(const std::vector<NSString>& arguments)
{
    const auto result = HostOptions::parse(arguments);
    const auto* problem = std::get_if<NSString>(&result);
    return problem ? problem->toStdString() : "";
}

TEST(HostOptionsTest, IsAPhoneAsTheDesktopHasItByDefault)
{
    const HostOptions options = parsed({});
    EXPECT_EQ(options.device, HostOptions::Device::Phone);
    EXPECT_EQ(options.scale, std::nullopt);
    EXPECT_EQ(options.appearance, std::nullopt);
    EXPECT_TRUE(options.language.isNull());
    EXPECT_TRUE(options.screenshotFile.isNull());
    EXPECT_FALSE(options.reports || options.slowsAnimations || options.wantsHelp);
}

TEST(HostOptionsTest, ReadsEverySwitch)
{
    const HostOptions options = parsed({ "--device", "tablet", "--scale=3", "--appearance", "dark",
        "--language", "pt-BR", "--screenshot=a=b.png", "--report", "--slow-animations", "--help" });
    EXPECT_EQ(options.device, HostOptions::Device::Tablet);
    EXPECT_EQ(options.scale, 3);
    EXPECT_EQ(options.appearance, HostOptions::Appearance::Dark);
    EXPECT_EQ(options.language, "pt-BR");
    EXPECT_EQ(options.screenshotFile, "a=b.png");
    EXPECT_TRUE(options.reports && options.slowsAnimations && options.wantsHelp);
}

TEST(HostOptionsTest, LetsTheLastOfEqualSwitchesWin)
{
    EXPECT_EQ(parsed({ "--scale", "1", "--scale", "2" }).scale, 2);
    EXPECT_EQ(parsed({ "--device", "tablet", "--device", "phone" }).device, HostOptions::Device::Phone);
}

TEST(HostOptionsTest, SaysWhichArgumentIsUnknown)
{
    EXPECT_EQ(problemWith({ "--colour" }), "unknown argument \"--colour\"");
    EXPECT_EQ(problemWith({ "picture.png" }), "unknown argument \"picture.png\"");
    EXPECT_EQ(problemWith({ "" }), "unknown argument \"\"");
    EXPECT_EQ(problemWith({ "--device", "phone", "tablet" }), "unknown argument \"tablet\"");
}

TEST(HostOptionsTest, SaysWhichValuesASwitchTakes)
{
    EXPECT_EQ(
        problemWith({ "--device", "watch" }), "--device does not take \"watch\"; it takes phone|tablet");
    EXPECT_EQ(problemWith({ "--scale", "4" }), "--scale does not take \"4\"; it takes 1|2|3");
    EXPECT_EQ(problemWith({ "--scale", "2x" }), "--scale does not take \"2x\"; it takes 1|2|3");
    EXPECT_EQ(
        problemWith({ "--appearance=grey" }), "--appearance does not take \"grey\"; it takes light|dark");
    EXPECT_EQ(problemWith({ "--language", "zz-!" }), "--language does not take \"zz-!\"; it takes TAG");
    EXPECT_EQ(problemWith({ "--screenshot=" }), "--screenshot does not take \"\"; it takes FILE");
}

TEST(HostOptionsTest, SaysWhenAValueIsMissingOrTooMuch)
{
    EXPECT_EQ(problemWith({ "--scale" }), "--scale needs a value: 1|2|3");
    EXPECT_EQ(problemWith({ "--report=yes" }), "--report takes no value");
}

TEST(HostOptionsTest, KnowsTheScreensOfItsDevices)
{
    HostOptions options;
    EXPECT_EQ(options.screenSize(), CGSize(390, 844));
    EXPECT_EQ(options.safeAreaInsets(), (UIEdgeInsets { 47, 0, 34, 0 }));
    options.device = HostOptions::Device::Tablet;
    EXPECT_EQ(options.screenSize(), CGSize(1180, 820));
    EXPECT_EQ(options.safeAreaInsets(), (UIEdgeInsets { 24, 0, 20, 0 }));
}

TEST(HostOptionsTest, HelpNamesEverySwitch)
{
    const NSString help = HostOptions::helpText("program");
    EXPECT_TRUE(help.startsWith("Usage: program "));
    for (const char* name : { "--device phone|tablet", "--scale 1|2|3", "--appearance light|dark",
             "--language TAG", "--screenshot FILE", "--report", "--slow-animations", "--help" })
        EXPECT_TRUE(help.contains(name)) << name;
}

} // namespace
