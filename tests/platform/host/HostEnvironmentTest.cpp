#include "platform/host/HostEnvironment.h"

#include <gtest/gtest.h>

namespace {

QByteArray valueOf(const HostEnvironment::Settings& settings, const QByteArray& name)
{
    for (const auto& [key, value] : settings)
        if (key == name)
            return value;
    return "(not set)";
}

TEST(HostEnvironmentTest, DrawsIntoMemoryWithTheSoftwareRendererWhereThereIsNoDisplay)
{
    const auto settings = HostEnvironment::settingsFor({ .hasGraphicsProcessor = true });
    EXPECT_EQ(valueOf(settings, "QT_QPA_PLATFORM"), "offscreen");
    EXPECT_EQ(valueOf(settings, "QT_QUICK_BACKEND"), "software");
}

TEST(HostEnvironmentTest, UsesTheSoftwareRendererOnADisplayWithoutAGraphicsProcessor)
{
    const auto settings = HostEnvironment::settingsFor({ .hasX11 = true });
    EXPECT_EQ(valueOf(settings, "QT_QPA_PLATFORM"), "xcb;offscreen");
    EXPECT_EQ(valueOf(settings, "QT_QUICK_BACKEND"), "software");
    EXPECT_EQ(valueOf(settings, "QT_XCB_GL_INTEGRATION"), "none");
}

TEST(HostEnvironmentTest, LeavesTheRendererToQtWhereThereIsAGraphicsProcessor)
{
    const auto settings
        = HostEnvironment::settingsFor({ .hasX11 = true, .hasWayland = true, .hasGraphicsProcessor = true });
    EXPECT_EQ(valueOf(settings, "QT_QPA_PLATFORM"), "wayland;xcb;offscreen");
    EXPECT_EQ(valueOf(settings, "QT_QUICK_BACKEND"), "(not set)");
    EXPECT_EQ(valueOf(settings, "QT_XCB_GL_INTEGRATION"), "(not set)");
}

TEST(HostEnvironmentTest, NeverMakesQtWaitBeforeAFrame)
{
    EXPECT_EQ(valueOf(HostEnvironment::settingsFor({}), "QT_QPA_UPDATE_IDLE_TIME"), "0");
}

TEST(HostEnvironmentTest, LeavesAloneWhatTheUserHasSet)
{
    qputenv("ORUVANE_TEST_SET", "mine");
    qunsetenv("ORUVANE_TEST_UNSET");
    HostEnvironment::apply({ { "ORUVANE_TEST_SET", "ours" }, { "ORUVANE_TEST_UNSET", "ours" } });
    EXPECT_EQ(qgetenv("ORUVANE_TEST_SET"), "mine");
    EXPECT_EQ(qgetenv("ORUVANE_TEST_UNSET"), "ours");
}

TEST(HostEnvironmentTest, DoesNotRestartAProgramThatUsesTheSoftwareRendererAlready)
{
    ASSERT_EQ(qgetenv("QT_QUICK_BACKEND"), "software");
    HostEnvironment::restartWithSoftwareRenderer(nullptr); // comes back
    EXPECT_EQ(qgetenv("QT_QUICK_BACKEND"), "software");
}

} // namespace
