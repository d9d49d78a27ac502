#include "platform/host/HostExecutor.h"

#include <QEventLoop>
#include <QTimer>

#include <thread>

namespace {

TEST(HostExecutorTest, RunsMainQueueWorkOnTheMainThreadInItsOrder)
{
    HostExecutor executor;
    QEventLoop loop;
    std::vector<int> order;
    Executor::current().mainQueue().async([&] { order.push_back(1); });
    Executor::current().mainQueue().async([&] {
        order.push_back(2);
        loop.quit();
    });
    EXPECT_TRUE(order.empty()) << "never inside the call";
    QTimer::singleShot(5000, &loop, [&] { loop.exit(1); });
    EXPECT_EQ(loop.exec(), 0);
    EXPECT_EQ(order, (std::vector { 1, 2 }));
}

TEST(HostExecutorTest, BringsResultsFromTheGlobalQueueBackToTheMainThread)
{
    HostExecutor executor;
    QEventLoop loop;
    std::thread::id workedOn;
    std::thread::id cameBackOn;
    Executor::current().globalQueue().async([&] {
        workedOn = std::this_thread::get_id();
        Executor::current().mainQueue().async([&] {
            cameBackOn = std::this_thread::get_id();
            loop.quit();
        });
    });
    QTimer::singleShot(5000, &loop, [&] { loop.exit(1); });
    EXPECT_EQ(loop.exec(), 0);
    EXPECT_NE(workedOn, std::this_thread::get_id());
    EXPECT_EQ(cameBackOn, std::this_thread::get_id());
}

TEST(HostExecutorTest, GoesWithWorkStillWaiting)
{
    const auto held = std::make_shared<int>(7);
    {
        HostExecutor executor;
        Executor::current().mainQueue().async([held] { ADD_FAILURE() << "the loop never ran"; });
    }
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
