#include "backlog.h"

#include <gmock/gmock.h>

#include <thread>

using namespace zelk::ipr;

namespace
{
std::vector<std::string> textsOf(const std::vector<Record>& records)
{
    std::vector<std::string> texts;
    for (const Record& record : records)
        texts.push_back(*record);
    return texts;
}
} // namespace

TEST(Backlog, GivesEachReaderItsOwnPlace)
{
    Backlog backlog(1 << 20);
    backlog.add("a");
    backlog.add("b");
    backlog.add("c");
    std::vector<Record> records;
    std::uint64_t place = 1;
    EXPECT_EQ(backlog.read(place, 10, records), 0u);
    EXPECT_EQ(textsOf(records), (std::vector<std::string>{"b", "c"}));
    place = 0;
    EXPECT_EQ(backlog.read(place, 2, records), 0u);
    EXPECT_EQ(textsOf(records), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(backlog.end(), 3u);
}

TEST(Backlog, DropsTheOldestBeyondItsLimitAndTellsWhatAReaderMissed)
{
    Backlog backlog(10 * 1100);
    for (int i = 0; i < 100; ++i)
        backlog.add(std::to_string(i) + std::string(1000, ' '));
    EXPECT_LE(backlog.bytes(), 10u * 1100);
    std::vector<Record> records;
    std::uint64_t place = 0;
    const std::uint64_t missed = backlog.read(place, 1000, records);
    EXPECT_EQ(place, missed);
    ASSERT_EQ(records.size() + missed, 100u);
    EXPECT_GE(records.size(), 9u);
    EXPECT_EQ(records.front()->substr(0, 3), std::to_string(missed) + " ");
    EXPECT_EQ(records.back()->substr(0, 3), "99 ");
}

TEST(Backlog, RefusesARecordThatAloneIsTooLong)
{
    Backlog backlog(1000);
    backlog.add("a");
    backlog.add(std::string(2000, 'x'));
    EXPECT_EQ(backlog.end(), 1u);
}

TEST(Backlog, TakesNothingMoreWhenClosedButKeepsWhatWaits)
{
    Backlog backlog(1000);
    backlog.add("a");
    backlog.close();
    backlog.add("b");
    EXPECT_EQ(backlog.end(), 1u);
}

TEST(Backlog, WakesASleepingWorkerOnceAndNeverAWakingOne)
{
    Backlog backlog(1000);
    EXPECT_FALSE(backlog.add("a"));
    EXPECT_FALSE(backlog.fallAsleep(0)) << "there is a record that the worker has not seen";
    EXPECT_TRUE(backlog.fallAsleep(1));
    EXPECT_TRUE(backlog.add("b"));
    EXPECT_FALSE(backlog.add("c"));
}

TEST(Backlog, TellsWhenItIsEmpty)
{
    Backlog backlog(1000);
    backlog.add("a");
    const auto now = std::chrono::steady_clock::now();
    EXPECT_FALSE(backlog.waitUntilEmpty(now + std::chrono::milliseconds(1)));
    std::thread worker([&] { backlog.release(1); });
    EXPECT_TRUE(backlog.waitUntilEmpty(now + std::chrono::seconds(60)));
    worker.join();
    EXPECT_EQ(backlog.bytes(), 0u);
}
