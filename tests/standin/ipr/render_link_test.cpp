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

/// Something on this machine that is no render.
class OtherService
{
public:
    OtherService() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(m_socket, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(m_socket, 5), 0);
        EXPECT_EQ(getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
        endpoint = "tcp://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    }
    ~OtherService() { close(m_socket); }
    OtherService(const OtherService&) = delete;
    OtherService& operator=(const OtherService&) = delete;

    void acceptAndHangUp() const { close(accept(m_socket, nullptr, nullptr)); }

    std::string endpoint;

private:
    const int m_socket;
};

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

TEST(RenderLink, ReportsAServiceThatHangsUp)
{
    const OtherService service;
    testing::internal::CaptureStderr();
    {
        const Publisher publisher(service.endpoint);
        publisher.send("edit");
        service.acceptAndHangUp();
        EXPECT_TRUE(publisher.flush(60000));
        EXPECT_EQ(publisher.traffic().unheard, 1u);
    }
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_EQ(occurrences(warnings, "[zelk::ipr]"), 1) << warnings;
    EXPECT_THAT(warnings, HasSubstr("What listens at " + service.endpoint +
                                    " has refused the connection. Is it a render"));
}

TEST(RenderLink, ReportsAServiceThatDoesNotAnswer)
{
    const OtherService service;
    testing::internal::CaptureStderr();
    {
        const Publisher publisher(service.endpoint);
        publisher.send("edit");
        EXPECT_FALSE(publisher.flush(8000)) << "it may be a render that is stopped and goes on later";
    }
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_EQ(occurrences(warnings, "[zelk::ipr]"), 1) << warnings;
    EXPECT_THAT(warnings, HasSubstr("Something at " + service.endpoint +
                                    " has taken the connection but does not answer"));
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
