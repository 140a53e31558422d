// What a link says when something is wrong with its endpoint: once, with the endpoint's text and a remedy.
#include "support.h"

#include <zelk/ipr/keys.h>
#include <zelk/ipr/listener.h>
#include <zelk/ipr/publisher.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace zelk::ipr;
using testing::HasSubstr;

namespace
{
// What is printed while some edits are sent to `endpoints`, which all are dropped there.
std::string warningsFor(const std::string& endpoints)
{
    testing::internal::CaptureStderr();
    {
        const Publisher publisher(endpoints);
        for (int i = 0; i < 3; ++i)
        {
            publisher.send("edit");
            EXPECT_TRUE(publisher.flush(60000));
        }
        EXPECT_EQ(publisher.traffic().sent, 0u);
        EXPECT_EQ(publisher.traffic().unheard, 3u);
    }
    return testing::internal::GetCapturedStderr();
}

class KeyedRender : public testing::Test
{
protected:
    KeyedRender()
    {
        std::string error;
        EXPECT_TRUE(makeKeys(keyPath, error)) << error;
        EXPECT_TRUE(makeKeys(directory.path("others"), error)) << error;
        const Environment keys("ZELK_IPR_KEYS", keyPath.c_str());
        EXPECT_TRUE(listener.open("tcp://127.0.0.1:*", error)) << error;
        endpoint = listener.endpoints().at(0);
    }

    const TemporaryDirectory directory;
    const std::string keyPath = directory.path("keys");
    std::string endpoint;
    Listener listener;
};
} // namespace

TEST(RenderLink, ReportsAnEndpointThatCannotBeUsedOnceAndServesTheOthers)
{
    const TemporaryDirectory directory;
    RenderProcess render(directory.endpoint());
    testing::internal::CaptureStderr();
    {
        const Publisher publisher("nonsense," + directory.endpoint());
        publisher.send("edit 1");
        publisher.send("edit 2");
        EXPECT_EQ(render.line(), "edit 1");
        EXPECT_EQ(render.line(), "edit 2");
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "[zelk::ipr] The endpoint nonsense cannot be used: its kind is unknown. "
              "Write it as ipc://PATH or tcp://HOST:PORT.\n");
}

TEST(RenderLink, SaysNothingWhenNobodyListens)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(warningsFor(directory.endpoint()), "");
    EXPECT_EQ(warningsFor(directory.endpoint("no/such/directory")), "");
    EXPECT_EQ(warningsFor(freeTcpEndpoint()), "");
}

TEST(RenderLink, ReportsAHostThatDoesNotExist)
{
    const TemporaryDirectory directory;
    std::string error;
    ASSERT_TRUE(makeKeys(directory.path("keys"), error)) << error;
    const Environment keys("ZELK_IPR_KEYS", directory.path("keys").c_str());
    testing::internal::CaptureStderr();
    {
        const Publisher publisher("tcp://no-such-host.invalid:5000");
        publisher.send("edit");
        EXPECT_TRUE(publisher.flush(60000));
        EXPECT_EQ(publisher.traffic().unheard, 1u);
    }
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_EQ(occurrences(warnings, "[zelk::ipr]"), 1) << warnings;
    EXPECT_THAT(warnings,
                HasSubstr("The endpoint tcp://no-such-host.invalid:5000 does not answer. Is its host right"));
}

TEST(RenderLink, ReportsAServiceThatIsNoRender)
{
    const int service = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(bind(service, reinterpret_cast<sockaddr*>(&address), size), 0);
    ASSERT_EQ(listen(service, 1), 0);
    ASSERT_EQ(getsockname(service, reinterpret_cast<sockaddr*>(&address), &size), 0);
    testing::internal::CaptureStderr();
    {
        const Publisher publisher("tcp://127.0.0.1:" + std::to_string(ntohs(address.sin_port)));
        publisher.send("edit");
        const int connection = accept(service, nullptr, nullptr);
        const char greeting[] = "220 mail.example ESMTP ready, and this is not what a render says\r\n";
        EXPECT_GT(write(connection, greeting, sizeof greeting), 0);
        EXPECT_TRUE(publisher.flush(60000));
        EXPECT_EQ(publisher.traffic().unheard, 1u);
        close(connection);
    }
    close(service);
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_EQ(occurrences(warnings, "[zelk::ipr]"), 1) << warnings;
    EXPECT_THAT(warnings, HasSubstr("has refused the connection. Is it a render"));
}

TEST_F(KeyedRender, HearsAHostWithTheSameKeys)
{
    const Environment keys("ZELK_IPR_KEYS", keyPath.c_str());
    const Publisher publisher(endpoint);
    publisher.send("secret");
    std::string text;
    ASSERT_TRUE(listener.receive(text, 60000));
    EXPECT_EQ(text, "secret");
}

TEST_F(KeyedRender, IsClosedToAHostWithOtherKeysWhichIsToldOnce)
{
    const Environment keys("ZELK_IPR_KEYS", directory.path("others").c_str());
    const std::string warnings = warningsFor(endpoint);
    EXPECT_EQ(occurrences(warnings, "[zelk::ipr]"), 1) << warnings;
    EXPECT_THAT(warnings, HasSubstr("What listens at " + endpoint + " has refused the connection."));
    std::string text;
    EXPECT_FALSE(listener.receive(text, 0));
}

TEST_F(KeyedRender, IsClosedToAHostWithoutKeysWhichIsToldOnce)
{
    const Environment keys("ZELK_IPR_KEYS", nullptr);
    const std::string warnings = warningsFor(endpoint);
    EXPECT_EQ(occurrences(warnings, "[zelk::ipr]"), 1) << warnings;
    EXPECT_THAT(warnings,
                HasSubstr("has it the same key file in ZELK_IPR_KEYS as this host, or neither of them one?"));
    std::string text;
    EXPECT_FALSE(listener.receive(text, 0));
}
