#include "support.h"

#include <zelk/ipr/listener.h>
#include <zelk/ipr/publisher.h>

#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <fstream>
#include <thread>

using namespace zelk::ipr;
using testing::HasSubstr;

namespace
{
std::string errorOf(const std::string& endpoints)
{
    Listener listener;
    std::string error;
    EXPECT_FALSE(listener.open(endpoints, error));
    EXPECT_TRUE(listener.endpoints().empty());
    return error;
}
} // namespace

TEST(Listener, ReceivesNothingBeforeItIsOpenOrWhenTheTimeIsOver)
{
    const TemporaryDirectory directory;
    Listener listener;
    std::string text = "untouched";
    EXPECT_FALSE(listener.receive(text, 0));
    ASSERT_TRUE(listener.open(directory.endpoint(), text));
    text = "untouched";
    EXPECT_FALSE(listener.receive(text, 0));
    EXPECT_FALSE(listener.receive(text, 20));
    EXPECT_EQ(text, "untouched");
}

TEST(Listener, TellsThePortThatItGot)
{
    Listener listener;
    std::string error;
    ASSERT_TRUE(listener.open("tcp://127.0.0.1:*", error)) << error;
    ASSERT_EQ(listener.endpoints().size(), 1u);
    EXPECT_THAT(listener.endpoints()[0], testing::MatchesRegex("tcp://127\\.0\\.0\\.1:[0-9]+"));
}

TEST(Listener, DoesNotTakeASocketFromAListenerThatIsAlive)
{
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    Listener first;
    std::string text;
    ASSERT_TRUE(first.open(directory.endpoint(), text)) << text;
    EXPECT_EQ(errorOf(directory.endpoint()),
              "The endpoint " + directory.endpoint() +
                  " cannot be used: a render listens there already. Stop that one, or "
                  "choose another ZELK_IPR_ENDPOINT.");
    publisher.send("still here");
    ASSERT_TRUE(first.receive(text, 60000));
    EXPECT_EQ(text, "still here");
}

TEST(Listener, TakesOverTheSocketOfOneThatWasKilled)
{
    const TemporaryDirectory directory;
    {
        RenderProcess render(directory.endpoint());
        render.kill();
    }
    struct stat status = {};
    ASSERT_EQ(stat(directory.path("render").c_str(), &status), 0)
        << "the dead render's socket is still there";
    Listener listener;
    std::string error;
    EXPECT_TRUE(listener.open(directory.endpoint(), error)) << error;
}

TEST(Listener, LeavesAFileAloneThatIsNoSocket)
{
    const TemporaryDirectory directory;
    std::ofstream(directory.path("render")) << "precious";
    EXPECT_THAT(errorOf(directory.endpoint()), HasSubstr("a file that is no socket has its name"));
    std::string text;
    std::ifstream(directory.path("render")) >> text;
    EXPECT_EQ(text, "precious");
}

TEST(Listener, BindsAllEndpointsOrNone)
{
    const TemporaryDirectory directory;
    EXPECT_THAT(errorOf(directory.endpoint("a") + ",nonsense"),
                HasSubstr("The endpoint nonsense cannot be used"));
    Listener listener;
    std::string error;
    EXPECT_TRUE(listener.open(directory.endpoint("a"), error)) << error;
}

TEST(Listener, SaysWhatIsWrongWithAnEndpoint)
{
    const TemporaryDirectory directory;
    EXPECT_THAT(errorOf("ipc://" + directory.path("missing/render")),
                HasSubstr("cannot be used: No such file or directory. Choose another"));
    EXPECT_THAT(errorOf(" , "), HasSubstr("names no endpoint"));
    Listener first;
    std::string error;
    ASSERT_TRUE(first.open("tcp://127.0.0.1:*", error)) << error;
    EXPECT_THAT(errorOf(first.endpoints()[0]), HasSubstr("Address already in use"));
}

TEST(Listener, StopsWaitingWhenASignalComes)
{
    const TemporaryDirectory directory;
    Listener listener;
    std::string text;
    ASSERT_TRUE(listener.open(directory.endpoint(), text)) << text;
    struct sigaction action = {};
    struct sigaction former = {};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, &former);
    std::atomic<bool> returned{false};
    std::thread waiter(
        [&]
        {
            EXPECT_FALSE(listener.receive(text, -1));
            returned = true;
        });
    // A signal that comes before the wait has begun ends nothing, so there may have to be several.
    EXPECT_TRUE(eventually(
        [&]
        {
            if (!returned)
                pthread_kill(waiter.native_handle(), SIGUSR1);
            return returned.load();
        }));
    waiter.join();
    sigaction(SIGUSR1, &former, nullptr);
}

TEST(Listener, HearsAllItsEndpoints)
{
    const TemporaryDirectory directory;
    const Publisher a(directory.endpoint("a"));
    const Publisher b(directory.endpoint("b"));
    Listener listener;
    std::string text;
    ASSERT_TRUE(listener.open(directory.endpoint("a") + "," + directory.endpoint("b"), text)) << text;
    a.send("from a");
    ASSERT_TRUE(listener.receive(text, 60000));
    EXPECT_EQ(text, "from a");
    b.send("from b");
    ASSERT_TRUE(listener.receive(text, 60000));
    EXPECT_EQ(text, "from b");
}
