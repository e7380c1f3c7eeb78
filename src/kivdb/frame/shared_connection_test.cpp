#include "kivdb/exports.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace kivdb {
namespace {

// Hosts share one connection between threads. Every thread asks questions whose answers
// it knows, in texts no other thread sends, so the connection's translation cache grows
// while the others read it; now and then a thread writes inside a transaction of its own,
// holding the connection's lock so no other thread's statement lands in it.
TEST(SharedConnection, ThreadsTakeTurnsOnOneConnection) {
    auto conn = testing::memoryDatabase({"create table Written (Thread int, Call int)"});
    constexpr int kThreads = 8, kCalls = 1500, kWriteEvery = 50;
    std::atomic<int> wrong{0}, failed{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < kCalls; ++i) {
                try {
                    if (SelTableIntValue(*conn, QStringLiteral("select %1 * 1000 + %2").arg(t).arg(i)) != t * 1000 + i)
                        ++wrong;
                    if (i % kWriteEvery != 0) continue;
                    const auto turn = conn->lock();
                    conn->begin();
                    ExecTmpQuery(*conn, QStringLiteral("insert into Written values (%1, %2)").arg(t).arg(i));
                    conn->commit();
                } catch (const std::exception&) {
                    ++failed;
                }
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(SelTableIntValue(*conn, "select count(*) from Written"), kThreads * kCalls / kWriteEvery);
}

}  // namespace
}  // namespace kivdb
