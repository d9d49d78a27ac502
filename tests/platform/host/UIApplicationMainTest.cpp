#include "platform/application/UIApplicationMain.h"

#include <gmock/gmock.h>

namespace {

// What the command line decides before there is an application; the rest is HostApplication's.
int runWith(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "/some/where/program");
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    return UIApplicationMain(int(arguments.size()), argv.data(), NSString(), "NoSuchDelegate");
}

TEST(UIApplicationMainTest, EndsWithTwoAndASentenceOnAWrongArgument)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(runWith({ "--scale", "9" }), 2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "program: --scale does not take \"9\"; it takes 1|2|3\nTry --help.\n");
}

TEST(UIApplicationMainTest, PrintsItsHelpAndEndsWithZero)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(runWith({ "--help" }), 0);
    EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::StartsWith("Usage: program [options]\n"));
}

} // namespace
