#include "platform/foundation/Executor.h"

#include "tests/support/ManualExecutor.h"

#include <gmock/gmock.h>

TEST(ExecutorTest, IsInForceUntilItGoes)
{
    {
        ManualQueue main;
        ManualQueue global;
        Executor executor(main, global);
        Executor::setCurrent(&executor);
        EXPECT_EQ(&Executor::current().mainQueue(), &main);
        EXPECT_EQ(&Executor::current().globalQueue(), &global);
    }
    EXPECT_DEATH(Executor::current(), "No executor is in force.");
}

TEST(ExecutorTest, OneThatIsNoLongerInForceDoesNotTakeTheNextOneWithIt)
{
    ManualQueue queue;
    Executor second(queue, queue);
    {
        Executor first(queue, queue);
        Executor::setCurrent(&first);
        Executor::setCurrent(&second);
    }
    EXPECT_EQ(&Executor::current(), &second);
}
