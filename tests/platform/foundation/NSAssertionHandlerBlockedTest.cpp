// A file that is compiled without assertions, as a whole build may be.
#define NS_BLOCK_ASSERTIONS
#include "platform/foundation/NSAssertionHandler.h"

#include <gmock/gmock.h>

TEST(NSAssertionHandlerBlockedTest, WithoutAssertionsExecutionFallsThrough)
{
    int failures = 0;
    const NSAssertionHandler::Replacement replacement([&](const NSAssertionFailure&) { ++failures; });
    int evaluations = 0;
    NSCAssert(++evaluations < 0, "SomeClass", QStringLiteral("never"));
    NSParameterAssert(false, "SomeClass", "never");
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(evaluations, 0);
}
