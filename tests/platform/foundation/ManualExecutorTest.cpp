#include "tests/support/ManualExecutor.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(ManualExecutorTest, RunsWorkOneByOneInOrder)
{
    ManualQueue queue;
    std::vector<int> log;
    queue.async([&] { log.push_back(1); });
    queue.async([&] { log.push_back(2); });
    EXPECT_EQ(queue.size(), 2u);
    EXPECT_TRUE(queue.runOne());
    EXPECT_THAT(log, ElementsAre(1));
    EXPECT_TRUE(queue.runOne());
    EXPECT_FALSE(queue.runOne());
    EXPECT_THAT(log, ElementsAre(1, 2));
}

TEST(ManualExecutorTest, RunAllRunsWhatWorkSubmits)
{
    ManualQueue queue;
    std::vector<int> log;
    queue.async([&] { queue.async([&] { log.push_back(2); }); });
    queue.runAll();
    EXPECT_THAT(log, ElementsAre(2));
}

TEST(ManualExecutorTest, RunsTheGlobalQueueBeforeTheMainQueue)
{
    ManualExecutor executor;
    std::vector<std::string> log;
    executor.main().async([&] {
        log.push_back("main");
        Executor::current().globalQueue().async([&] { log.push_back("global again"); });
    });
    executor.main().async([&] { log.push_back("main last"); });
    executor.global().async([&] { log.push_back("global"); });
    executor.runAll();
    EXPECT_THAT(log, ElementsAre("global", "main", "global again", "main last"));
}
