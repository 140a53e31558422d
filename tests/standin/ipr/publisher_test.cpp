#include "support.h"

#include <zelk/ipr/keys.h>
#include <zelk/ipr/publisher.h>
#include <zelk/ipr/reader.h>

#include <thread>

using namespace zelk::ipr;
using testing::HasSubstr;

namespace
{
std::string edit(int number) { return "edit " + std::to_string(number); }

void sendEdits(const Publisher& publisher, int from, int to)
{
    for (int i = from; i < to; ++i)
        publisher.send(edit(i));
}

void expectEdits(Process& render, int from, int to)
{
    for (int i = from; i < to; ++i)
        ASSERT_EQ(render.line(), edit(i));
}
} // namespace

TEST(Publisher, DoesNotLoseTheFirstEdit)
{
    const TemporaryDirectory directory;
    for (int i = 0; i < 20; ++i)
    {
        RenderProcess render(directory.endpoint());
        const Publisher publisher(directory.endpoint());
        publisher.send("first");
        EXPECT_EQ(render.line(), "first");
    }
}

TEST(Publisher, WorksOverTcpOnThisMachine)
{
    RenderProcess render("tcp://127.0.0.1:*");
    const Publisher publisher(render.endpoint);
    sendEdits(publisher, 0, 100);
    expectEdits(render, 0, 100);
}

TEST(Publisher, KeepsABurstOfAHundredThousandEditsInOrder)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint());
    const Publisher publisher(directory.endpoint());
    sendEdits(publisher, 0, 100000);
    expectEdits(render, 0, 100000);
    EXPECT_EQ(publisher.traffic().sent, 100000u);
    EXPECT_EQ(publisher.traffic().unheard, 0u);
    EXPECT_EQ(publisher.traffic().overflowed, 0u);
}

TEST(Publisher, KeepsEmptyAndLongTextsAndZeroBytes)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint());
    const Publisher publisher(directory.endpoint());
    publisher.send("");
    publisher.send("edit long" + std::string(5000000, ' '));
    publisher.send(std::string("a\0b", 3));
    EXPECT_EQ(render.line(), "");
    EXPECT_EQ(render.line(), "edit long... 5000009");
    EXPECT_EQ(render.line(), "a") << "printed up to the zero byte";
}

TEST(Publisher, GivesEachRenderEveryEdit)
{
    const TemporaryDirectory directory;
    RenderProcess a(directory.endpoint("a"));
    RenderProcess b(directory.endpoint("b"));
    const Publisher publisher(directory.endpoint("a") + ", " + directory.endpoint("b"));
    sendEdits(publisher, 0, 1000);
    expectEdits(a, 0, 1000);
    expectEdits(b, 0, 1000);
    EXPECT_EQ(publisher.traffic().sent, 2000u);
}

TEST(Publisher, ServesOneRenderWhileNobodyListensAtTheOtherEndpoint)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint("a"));
    const Publisher publisher(directory.endpoint("nobody") + "," + directory.endpoint("a"));
    sendEdits(publisher, 0, 1000);
    expectEdits(render, 0, 1000);
    EXPECT_TRUE(publisher.flush(60000));
    EXPECT_EQ(publisher.traffic().unheard, 1000u);
}

TEST(Publisher, TakesEditsOfSeveralThreads)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint());
    const Publisher publisher(directory.endpoint());
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back(
            [&, t]
            {
                for (int i = 0; i < 1000; ++i)
                    publisher.send(std::to_string(t) + " " + std::to_string(i));
            });
    int next[4] = {};
    for (int i = 0; i < 4000; ++i)
    {
        const std::string line = render.line();
        const int thread = line[0] - '0';
        ASSERT_TRUE(thread >= 0 && thread < 4) << line;
        ASSERT_EQ(line.substr(2), std::to_string(next[thread]++)) << "each thread's own edits are in order";
    }
    for (std::thread& thread : threads)
        thread.join();
}

TEST(Publisher, DropsEditsAndKeepsItsMemoryWhenNobodyListens)
{
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    const std::string text(1000, 'x');
    const auto sendMany = [&]
    {
        for (int i = 0; i < 100000; ++i)
            publisher.send(text);
    };
    sendMany();
    ASSERT_TRUE(publisher.flush(60000));
    const std::size_t before = residentBytes();
    sendMany();
    ASSERT_TRUE(publisher.flush(60000));
    const std::size_t after = residentBytes();
    EXPECT_EQ(publisher.traffic().sent, 0u);
    EXPECT_EQ(publisher.traffic().unheard + publisher.traffic().overflowed, 200000u);
    EXPECT_TRUE(after < before + (16u << 20) || !memoryIsMeasurable()) << before << " became " << after;
}

TEST(Publisher, GivesARenderThatComesLaterOnlyWhatIsEditedFromThenOn)
{
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    sendEdits(publisher, 0, 50);
    ASSERT_TRUE(publisher.flush(60000));
    RenderProcess render(directory.endpoint());
    sendEdits(publisher, 50, 60);
    expectEdits(render, 50, 60);
    EXPECT_EQ(publisher.traffic().unheard, 50u);
}

TEST(Publisher, GoesOnWithARenderThatWasKilledAndStartedAgain)
{
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    for (int round = 0; round < 10; ++round)
    {
        RenderProcess render(directory.endpoint());
        sendEdits(publisher, 0, 10);
        expectEdits(render, 0, 10);
        render.kill();
        const Traffic before = publisher.traffic();
        // Once the end of the connection is noticed, edits are dropped. Until then they may go into it.
        ASSERT_TRUE(eventually(
            [&]
            {
                publisher.send("into the void");
                return publisher.flush(60000) && publisher.traffic().unheard > before.unheard;
            }));
    }
}

TEST(Publisher, GoesOnOverTcpWithARenderThatWasKilledAndStartedAgain)
{
    RenderProcess first("tcp://127.0.0.1:*");
    const Publisher publisher(first.endpoint);
    publisher.send("one");
    EXPECT_EQ(first.line(), "one");
    first.kill();
    ASSERT_TRUE(eventually(
        [&]
        {
            publisher.send("into the void");
            return publisher.flush(60000) && publisher.traffic().unheard > 0;
        }));
    RenderProcess second(first.endpoint);
    publisher.send("two");
    EXPECT_EQ(second.line(), "two");
}

TEST(Publisher, BoundsTheMemoryForARenderThatIsStopped)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint());
    const Publisher publisher(directory.endpoint());
    publisher.send("edit 0");
    ASSERT_EQ(render.line(), "edit 0");
    render.signal(SIGSTOP);

    testing::internal::CaptureStderr();
    const std::size_t before = residentBytes();
    const int count = 5000; // 312 MiB
    for (int i = 1; i <= count; ++i)
        publisher.send(edit(i) + std::string(65536, ' '));
    const std::size_t after = residentBytes();
    EXPECT_FALSE(publisher.flush(0));
    EXPECT_TRUE(after < before + max_waiting_bytes + (24u << 20) || !memoryIsMeasurable())
        << before << " became " << after;

    render.signal(SIGCONT);
    // What it gets is in order, has one gap, and ends with the last edit.
    int last = 0;
    int gaps = 0;
    int received = 0;
    while (last < count)
    {
        const std::string line = render.line();
        ASSERT_EQ(line.substr(0, 5), "edit ") << line;
        const int number = std::stoi(line.substr(5));
        ASSERT_GT(number, last);
        gaps += number != last + 1;
        last = number;
        ++received;
    }
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_EQ(gaps, 1);
    EXPECT_GT(received, 1900) << "128 MiB of 64 KiB each";
    EXPECT_EQ(publisher.traffic().overflowed, static_cast<std::uint64_t>(count - received));
    EXPECT_EQ(occurrences(warnings, "[zelk::ipr]"), 1) << warnings;
    EXPECT_THAT(
        warnings,
        HasSubstr(
            "The render at " + directory.endpoint() +
            " does not read what it is sent: more than 128 MiB wait, and the oldest edits are dropped."));

    publisher.send("back to normal");
    EXPECT_EQ(render.line(), "back to normal");
}

TEST(Publisher, ForgetsWhatWaitedForARenderThatWasKilledWhileItWasStopped)
{
    const TemporaryDirectory directory;
    RenderProcess stopped(directory.endpoint());
    const Publisher publisher(directory.endpoint());
    publisher.send("first");
    ASSERT_EQ(stopped.line(), "first");
    stopped.signal(SIGSTOP);
    for (int i = 0; i < 1000; ++i)
        publisher.send("old" + std::string(65536, ' '));
    EXPECT_FALSE(publisher.flush(0));
    stopped.kill();
    ASSERT_TRUE(publisher.flush(60000));
    RenderProcess render(directory.endpoint());
    publisher.send("new");
    EXPECT_EQ(render.line(), "new");
}

TEST(Publisher, RefusesAnEditThatIsLongerThanAnyRenderTakesOnce)
{
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    testing::internal::CaptureStderr();
    publisher.send(std::string(max_record_bytes + 1, 'x'));
    publisher.send(std::string(max_record_bytes + 1, 'x'));
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_EQ(occurrences(warnings, "An edit of 67108865 bytes is longer than any render takes"), 1)
        << warnings;
    EXPECT_EQ(publisher.traffic().overflowed, 2u);
}

TEST(Publisher, TakesTheLongestEditThatARenderTakes)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint());
    const Publisher publisher(directory.endpoint());
    publisher.send("edit 1" + std::string(max_record_bytes - 6, ' '));
    EXPECT_EQ(render.line(), "edit 1... 67108864");
}

TEST(Publisher, DropsWhatIsSentAfterItWasClosed)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint());
    Publisher publisher(directory.endpoint());
    publisher.send("before");
    publisher.close();
    publisher.send("after");
    EXPECT_EQ(render.line(), "before");
    EXPECT_TRUE(publisher.flush(60000));
    EXPECT_EQ(publisher.traffic().sent, 1u);
}

TEST(Publisher, IsThereOncePerProcess)
{
    EXPECT_EQ(&DeltaPublisher::instance(), &DeltaPublisher::instance());
}
