#include "endpoint_list.h"
#include "support.h"

#include <zelk/ipr/endpoint.h>
#include <zelk/ipr/listener.h>
#include <zelk/ipr/publisher.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace zelk::ipr;
using testing::HasSubstr;

namespace
{
mode_t modeOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::string problemOfDefault() { return parseEndpoints(defaultEndpoint(), Role::Connect).at(0).problem; }
} // namespace

TEST(DefaultEndpoint, IsInTheUsersRuntimeDirectory)
{
    const Environment chosen("ZELK_IPR_ENDPOINT", nullptr);
    {
        const Environment runtime("XDG_RUNTIME_DIR", "/run/user/77");
        EXPECT_EQ(configuredEndpoints(), "ipc:///run/user/77/korvan-ipr");
    }
    const Environment runtime("XDG_RUNTIME_DIR", nullptr);
    EXPECT_EQ(configuredEndpoints(), "ipc:///tmp/korvan-" + std::to_string(geteuid()) + "/korvan-ipr");
}

TEST(DefaultEndpoint, GivesWayToTheEnvironmentUnlessThatIsEmpty)
{
    {
        const Environment chosen("ZELK_IPR_ENDPOINT", "tcp://127.0.0.1:5000");
        EXPECT_EQ(configuredEndpoints(), "tcp://127.0.0.1:5000");
    }
    const Environment chosen("ZELK_IPR_ENDPOINT", "");
    EXPECT_EQ(configuredEndpoints(), defaultEndpoint());
}

TEST(DefaultEndpoint, IsASocketThatOnlyItsUserCanOpen)
{
    const TemporaryDirectory directory;
    const Environment runtime("XDG_RUNTIME_DIR", directory.path().c_str());
    const Environment chosen("ZELK_IPR_ENDPOINT", nullptr);
    const Publisher publisher(defaultEndpoint());
    Listener listener;
    std::string text;
    ASSERT_TRUE(listener.open("", text)) << text;
    EXPECT_EQ(modeOf(directory.path("korvan-ipr")) & 077, 0u);
    publisher.send("edit");
    ASSERT_TRUE(listener.receive(text, 60000));
    EXPECT_EQ(text, "edit");
}

TEST(DefaultEndpoint, MakesAPrivateDirectoryWhereTheSystemHasNone)
{
    const Environment runtime("XDG_RUNTIME_DIR", nullptr);
    const std::string directory = "/tmp/korvan-" + std::to_string(geteuid());
    EXPECT_EQ(problemOfDefault(), "");
    EXPECT_EQ(modeOf(directory), 0700u);
    rmdir(directory.c_str()); // stays when somebody uses it
}

TEST(DefaultEndpoint, RefusesADirectoryThatOthersCanEnter)
{
    const TemporaryDirectory directory;
    const Environment runtime("XDG_RUNTIME_DIR", directory.path().c_str());
    chmod(directory.path().c_str(), 0755);
    EXPECT_EQ(problemOfDefault(),
              "The endpoint " + defaultEndpoint() + " cannot be used: The runtime directory " +
                  directory.path() +
                  " can be entered by other users. Make it yours with mode 0700, or set ZELK_IPR_ENDPOINT.");
    Listener listener;
    std::string error;
    EXPECT_FALSE(listener.open(defaultEndpoint(), error));
    EXPECT_THAT(error, HasSubstr("can be entered by other users"));
}

TEST(DefaultEndpoint, RefusesALinkAndAMissingDirectory)
{
    const TemporaryDirectory directory;
    ASSERT_EQ(symlink("/tmp", directory.path("link").c_str()), 0);
    {
        const Environment runtime("XDG_RUNTIME_DIR", directory.path("link").c_str());
        EXPECT_THAT(problemOfDefault(), HasSubstr("is no directory"));
    }
    const Environment runtime("XDG_RUNTIME_DIR", directory.path("missing").c_str());
    EXPECT_THAT(problemOfDefault(), HasSubstr("cannot be used: No such file or directory"));
}

TEST(DefaultEndpoint, RefusesADirectoryOfAnotherUser)
{
    const TemporaryDirectory directory;
    if (chown(directory.path().c_str(), 12345, static_cast<gid_t>(-1)) != 0)
        GTEST_SKIP() << "only the superuser can give a directory away";
    const Environment runtime("XDG_RUNTIME_DIR", directory.path().c_str());
    EXPECT_THAT(problemOfDefault(), HasSubstr("belongs to another user"));
}
