#include "platform/foundation/NSAssertionHandler.h"

#include "tests/support/AssertionRecorder.h"

#include <gmock/gmock.h>

TEST(NSAssertionHandlerTest, ReportsMessageSourceAndLine)
{
    AssertionRecorder recorder;
    const int line = __LINE__ + 1;
    NSCAssert(1 > 2, "SomeClass", QStringLiteral("The order is wrong."));
    ASSERT_EQ(recorder.failures().size(), 1u);
    EXPECT_EQ(recorder.failures()[0].message, QStringLiteral("The order is wrong."));
    EXPECT_EQ(recorder.failures()[0].source, QStringLiteral("SomeClass"));
    EXPECT_EQ(recorder.failures()[0].line, line);
}

TEST(NSAssertionHandlerTest, ALineCanBeFixedByTheOneWhoReports)
{
    AssertionRecorder recorder;
    NSAssertionHandler::handleFailure({ QStringLiteral("Fixed."), QStringLiteral("SomeClass"), 193 });
    EXPECT_EQ(recorder.failures().at(0).line, 193);
}

TEST(NSAssertionHandlerTest, AParameterAssertionHasTheFixedWording)
{
    AssertionRecorder recorder;
    NSParameterAssert(false, "SomeClass", "key != nil");
    EXPECT_EQ(recorder.messages().at(0), QStringLiteral("Invalid parameter not satisfying: key != nil"));
}

TEST(NSAssertionHandlerTest, AConditionThatHoldsReportsNothingAndMakesNoMessage)
{
    AssertionRecorder recorder;
    bool isMade = false;
    const auto message = [&] {
        isMade = true;
        return NSString();
    };
    NSCAssert(1 < 2, "SomeClass", message());
    EXPECT_TRUE(recorder.failures().empty());
    EXPECT_FALSE(isMade);
}

TEST(NSAssertionHandlerTest, HandlersNest)
{
    AssertionRecorder outer;
    {
        AssertionRecorder inner;
        NSCAssert(false, "SomeClass", QStringLiteral("inside"));
        EXPECT_EQ(inner.messages(), std::vector<NSString> { QStringLiteral("inside") });
    }
    NSCAssert(false, "SomeClass", QStringLiteral("outside"));
    EXPECT_EQ(outer.messages(), std::vector<NSString> { QStringLiteral("outside") });
}

TEST(NSAssertionHandlerDeathTest, WithoutAHandlerTheFailureIsPrintedAndEndsTheProcess)
{
    EXPECT_DEATH(NSCAssert(false, "SomeClass", QStringLiteral("Something is wrong.")),
        "Assertion failure in SomeClass:[0-9]+: Something is wrong.");
}
