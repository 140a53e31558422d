#include "kr_observe.h"
#include "renderer_fixture.h"

#include <string>
#include <vector>

namespace
{

/// Writes down what it hears of while it lives.
class WorkLog
{
public:
    WorkLog()
    {
        KrWorkSetObserver([](int work, const char* subject, bool done, void* user)
                          { static_cast<WorkLog*>(user)->add(work, subject, done); },
                          this);
    }
    ~WorkLog() { KrWorkSetObserver(nullptr, nullptr); }
    WorkLog(const WorkLog&) = delete;
    WorkLog& operator=(const WorkLog&) = delete;

    std::vector<std::string> lines;

private:
    void add(int work, const std::string& subject, bool done)
    {
        const char* const words[] = {"start", "plug-in", "metadata", "end"};
        lines.push_back(std::string(done ? "over: " : "begin: ") + words[work] +
                        (subject.empty() ? "" : " " + subject));
    }
};

} // namespace

TEST(WorkObserver, HearsOfStartAndEndOnceHoweverDeepTheyNest)
{
    const WorkLog log;
    KrEnd();
    KrBegin();
    KrBegin();
    KrEnd();
    KrEnd();
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"begin: start", "over: start", "begin: end", "over: end"}));
}

TEST(WorkObserver, HearsOfEachPluginOnceWithItsPath)
{
    Renderer renderer;
    const std::string directory = std::string(TEST_PLUGIN_DIR) + "/counting";
    const std::string file = directory + "/counting.so";
    const WorkLog log;
    KrLoadPlugins(directory.c_str());
    KrLoadPlugins(directory.c_str());
    EXPECT_EQ(log.lines, (std::vector<std::string>{"begin: plug-in " + file, "over: plug-in " + file}));
}

TEST(WorkObserver, HearsTheEndOfAMetadataFileThatCannotBeRead)
{
    Renderer renderer;
    const WorkLog log;
    EXPECT_FALSE(KrMetaDataLoadFile("/nowhere/a.mtd"));
    EXPECT_THAT(renderer.takeMessage(), testing::HasSubstr("/nowhere/a.mtd"));
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"begin: metadata /nowhere/a.mtd", "over: metadata /nowhere/a.mtd"}));
}

TEST(WorkObserver, HearsNothingMoreOnceItIsTakenAway)
{
    WorkLog log;
    KrWorkSetObserver(nullptr, nullptr);
    Renderer renderer;
    EXPECT_TRUE(log.lines.empty());
}
