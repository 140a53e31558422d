#include "endpoint_list.h"
#include "support.h"

#include <zelk/ipr/keys.h>

using namespace zelk::ipr;
using testing::HasSubstr;

namespace
{
Endpoint only(const std::string& list, Role role = Role::Connect)
{
    const std::vector<Endpoint> endpoints = parseEndpoints(list, role);
    EXPECT_EQ(endpoints.size(), 1u);
    return endpoints.empty() ? Endpoint() : endpoints.front();
}
} // namespace

TEST(EndpointList, SplitsAtCommasAndLeavesOutBlanksAndRepetitions)
{
    const auto endpoints =
        parseEndpoints(" ipc:///tmp/a ,, tcp://127.0.0.1:5000,ipc:///tmp/a", Role::Connect);
    ASSERT_EQ(endpoints.size(), 2u);
    EXPECT_EQ(endpoints[0].address, "ipc:///tmp/a");
    EXPECT_EQ(endpoints[0].path, "/tmp/a");
    EXPECT_EQ(endpoints[1].address, "tcp://127.0.0.1:5000");
    EXPECT_TRUE(endpoints[1].isTcp());
}

TEST(EndpointList, TakesLoopbackWithoutKeys)
{
    const Environment keys("ZELK_IPR_KEYS", nullptr);
    for (const char* address :
         {"tcp://127.0.0.1:5000", "tcp://127.1.2.3:1", "tcp://localhost:65535", "tcp://[::1]:5000"})
    {
        EXPECT_EQ(only(address).problem, "") << address;
        EXPECT_EQ(only(address).keys, nullptr);
    }
}

TEST(EndpointList, RefusesWhatOtherMachinesReachWithoutKeys)
{
    const Environment keys("ZELK_IPR_KEYS", nullptr);
    for (const char* address :
         {"tcp://*:5000", "tcp://0.0.0.0:5000", "tcp://192.168.1.2:5000", "tcp://farm:5000",
          "tcp://[::]:5000", "tcp://127.0.0.1.farm:5000", "tcp://localhost.farm:1",
          "tcp://127.0.0.1:0;farm:5000", "tcp://128.0.0.1:5000"})
        EXPECT_THAT(
            only(address, Role::Bind).problem,
            HasSubstr(
                std::string("The endpoint ") + address +
                " cannot be used: other machines can reach it, and there are no keys. Make a key file"));
}

TEST(EndpointList, UsesKeysForEveryTcpEndpointAndForNoOther)
{
    const TemporaryDirectory directory;
    std::string error;
    ASSERT_TRUE(makeKeys(directory.path("keys"), error)) << error;
    const Environment keys("ZELK_IPR_KEYS", directory.path("keys").c_str());
    for (const char* address : {"tcp://farm:5000", "tcp://127.0.0.1:5000"})
    {
        EXPECT_EQ(only(address).problem, "");
        EXPECT_NE(only(address).keys, nullptr);
    }
    EXPECT_EQ(only("ipc:///tmp/a").keys, nullptr);
}

TEST(EndpointList, RefusesKeysThatCannotBeUsed)
{
    const Environment keys("ZELK_IPR_KEYS", "/nonexistent/keys");
    EXPECT_THAT(only("tcp://127.0.0.1:5000").problem,
                HasSubstr("The key file /nonexistent/keys cannot be opened"));
}

TEST(EndpointList, SaysHowAMalformedEndpointIsWritten)
{
    for (const char* address :
         {"tcp://", "tcp://host", "tcp://:5000", "tcp://127.0.0.1:", "tcp://127.0.0.1:0",
          "tcp://127.0.0.1:65536", "tcp://127.0.0.1:port", "tcp://127.0.0.1:123456", "tcp://127.0.0.1:-1"})
        EXPECT_THAT(only(address).problem, HasSubstr("Write it as tcp://HOST:PORT.")) << address;
    for (const char* address : {"ipc://", "ipc://*", "ipc://@abstract"})
        EXPECT_THAT(only(address).problem, HasSubstr("it names no file. Write it as ipc://PATH.")) << address;
    for (const char* address : {"udp://host:1", "/tmp/a", "inproc://a", "TCP://127.0.0.1:1", "nonsense"})
        EXPECT_THAT(only(address).problem,
                    HasSubstr("its kind is unknown. Write it as ipc://PATH or tcp://HOST:PORT."))
            << address;
    EXPECT_THAT(only("ipc:///" + std::string(200, 'x')).problem, HasSubstr("at most 107 bytes"));
}

TEST(EndpointList, LetsOnlyABindingSideLeaveThePortOpen)
{
    EXPECT_EQ(only("tcp://127.0.0.1:*", Role::Bind).problem, "");
    EXPECT_NE(only("tcp://127.0.0.1:*", Role::Connect).problem, "");
}
