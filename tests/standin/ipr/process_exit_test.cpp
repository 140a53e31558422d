// Whole processes: how they end, and what they leave alone.
#include "support.h"

#include <zelk/ipr/publisher.h>

#include <csignal>
#include <cstdlib>

using testing::HasSubstr;
using zelk::ipr::exit_grace_ms;

namespace
{
using Clock = std::chrono::steady_clock;

std::string withOption(const char* variable, const std::string& option)
{
    const char* options = std::getenv(variable);
    return (options ? options + std::string(":") : "") + option;
}

void expectEdits(Process& render, int from, int to)
{
    for (int i = from; i < to; ++i)
        ASSERT_EQ(render.line(), "edit " + std::to_string(i));
}
} // namespace

TEST(ProcessExit, PassesOnWhatWaits)
{
    const TemporaryDirectory directory;
    const Environment endpoint("ZELK_IPR_ENDPOINT", directory.endpoint().c_str());
    RenderProcess render(directory.endpoint());
    for (int i = 0; i < 10; ++i)
    {
        Process host({IPR_TEST_HOST, "1000"});
        expectEdits(render, 0, 1000);
        EXPECT_EQ(host.wait(), 0);
    }
}

TEST(ProcessExit, IsQuickAndQuietWhenNobodyListens)
{
    const TemporaryDirectory directory;
    const Environment endpoint("ZELK_IPR_ENDPOINT", directory.endpoint().c_str());
    Process host({IPR_TEST_HOST, "1000"});
    EXPECT_EQ(host.wait(), 0);
    EXPECT_EQ(host.errors(), "");
}

TEST(ProcessExit, TakesTheStatedTimeAtMostWhenARenderDoesNotRead)
{
    const TemporaryDirectory directory;
    const Environment endpoint("ZELK_IPR_ENDPOINT", directory.endpoint().c_str());
    RenderProcess render(directory.endpoint());
    render.signal(SIGSTOP);
    const auto begin = Clock::now();
    Process host({IPR_TEST_HOST, "100000"});
    EXPECT_EQ(host.wait(), 0);
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(exit_grace_ms));
    EXPECT_LT(Clock::now() - begin, std::chrono::milliseconds(exit_grace_ms) + std::chrono::seconds(20));
}

TEST(ProcessExit, ReportsABadEndpointOnceForAllItsEdits)
{
    const Environment endpoint("ZELK_IPR_ENDPOINT", "tcp://nowhere");
    Process host({IPR_TEST_HOST, "1000"});
    EXPECT_EQ(host.wait(), 0);
    const std::string errors = host.errors();
    EXPECT_EQ(occurrences(errors, "\n"), 1) << errors;
    EXPECT_THAT(errors, HasSubstr("The endpoint tcp://nowhere cannot be used"));
}

TEST(ProcessExit, NeedsNothingWhenNothingWasSent)
{
    Process host({IPR_TEST_HOST, "0"});
    EXPECT_EQ(host.line(), "threads 1");
    EXPECT_EQ(host.wait(), 0);
}

TEST(ForkedChild, HasARoadOfItsOwn)
{
    const TemporaryDirectory directory;
    const Environment endpoint("ZELK_IPR_ENDPOINT", directory.endpoint().c_str());
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the thread sanitizer ends a forked child that starts a thread";
#endif
    // What the parent's thread held is out of the child's reach, by nature.
    const Environment leaks("ASAN_OPTIONS", withOption("ASAN_OPTIONS", "detect_leaks=0").c_str());
    RenderProcess render(directory.endpoint());
    Process host({IPR_TEST_HOST, "1000", "fork"});
    EXPECT_EQ(host.wait(), 0);
    expectEdits(render, 0, 1000);
}
