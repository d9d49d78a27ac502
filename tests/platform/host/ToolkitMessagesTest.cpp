#include "platform/host/ToolkitMessages.h"

#include <QString>

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<QString> said;

class ToolkitMessagesTest : public testing::Test {
protected:
    // Listens in the place of standard error.
    static void SetUpTestSuite()
    {
        previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& message) { said.push_back(message); });
        ToolkitMessages::dropSearchesForFonts();
    }
    static void TearDownTestSuite() { qInstallMessageHandler(previous); }

    void SetUp() override { said.clear(); }

    static inline QtMessageHandler previous = nullptr;
};

TEST_F(ToolkitMessagesTest, FacesWithoutAScriptAreNotNamed)
{
    qWarning("  OpenType support missing for \"%s\", script %d", "Inter", 12);
    EXPECT_EQ(said, std::vector<QString>());
}

TEST_F(ToolkitMessagesTest, EverythingElseIsSaid)
{
    qWarning("the display is gone");
    qCritical("no support for OpenType");
    EXPECT_EQ(said,
        (std::vector { QStringLiteral("the display is gone"), QStringLiteral("no support for OpenType") }));
}

} // namespace
