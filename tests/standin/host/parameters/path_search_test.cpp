#include <UT/UT_PathSearch.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace
{
typedef std::vector<std::string> Texts;

/// A temporary directory with two entries of a path in it, and the environment that names them.
class PathSearch : public testing::Test
{
protected:
    PathSearch() : m_root(fs::temp_directory_path() / ("path_search_" + std::to_string(::getpid())))
    {
        const char* before = std::getenv("HOUDINI_PATH");
        m_had = before != nullptr;
        m_before = before ? before : "";
        fs::create_directories(m_root);
    }
    ~PathSearch() override
    {
        if (m_had)
            ::setenv("HOUDINI_PATH", m_before.c_str(), 1);
        else
            ::unsetenv("HOUDINI_PATH");
        search().rehash();
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }

    void file(const std::string& path)
    {
        fs::create_directories((m_root / path).parent_path());
        std::ofstream(m_root / path) << "x";
    }
    void use(const std::string& path)
    {
        ::setenv("HOUDINI_PATH", path.c_str(), 1);
        search().rehash();
    }
    /// The results, relative to the temporary directory.
    Texts relative(const UT_StringArray& list) const
    {
        Texts texts;
        for (const UT_StringHolder& path : list)
            texts.push_back(fs::path(path.buffer()).lexically_relative(m_root).string());
        return texts;
    }
    static const UT_PathSearch& search() { return *UT_PathSearch::getInstance(UT_HOUDINI_PATH); }
    std::string root() const { return m_root.string(); }

    const fs::path m_root;
    bool m_had;
    std::string m_before;
};
} // namespace

TEST_F(PathSearch, FindsDirectoriesInPathOrder)
{
    file("b/plugins/x.so");
    file("a/plugins/y.so");
    use(root() + "/b:" + root() + "/missing;" + root() + "/a/");
    UT_StringArray list;
    EXPECT_EQ(search().findAllDirectories("plugins", list), 2);
    EXPECT_EQ(relative(list), (Texts{"b/plugins", "a/plugins"}));
    EXPECT_EQ(search().getEntries(), 2);
}

TEST_F(PathSearch, MatchesFilesSortedInsideEachEntry)
{
    file("a/m/z.mtd");
    file("a/m/b/inner.mtd");
    file("a/m/a.mtd");
    file("a/m/a.txt");
    file("b/m/a.mtd");
    use(root() + "/a:" + root() + "/b");
    UT_StringArray all;
    EXPECT_EQ(search().matchAllFilesInSubdirectory(".mtd", "m", true, all, true, false), 4);
    EXPECT_EQ(relative(all), (Texts{"a/m/a.mtd", "a/m/b/inner.mtd", "a/m/z.mtd", "b/m/a.mtd"}));
    UT_StringArray flat;
    EXPECT_EQ(search().matchAllFilesInSubdirectory(".mtd", "m", false, flat, false, true), 2);
    EXPECT_STREQ(flat(0), "a.mtd");
    EXPECT_STREQ(flat(1), "z.mtd");
}

TEST_F(PathSearch, ListsLinksToNowhereButNoDirectories)
{
    file("a/m/one.mtd");
    file("a/m/dir.mtd/inner.mtd");
    fs::create_symlink("nowhere", m_root / "a/m/dangling.mtd");
    use(root() + "/a");
    UT_StringArray list;
    EXPECT_EQ(search().matchAllFilesInSubdirectory(".mtd", "m", true, list, true, false), 3);
    EXPECT_EQ(relative(list), (Texts{"a/m/dangling.mtd", "a/m/dir.mtd/inner.mtd", "a/m/one.mtd"}));
}

TEST_F(PathSearch, ALinkBackToAParentIsEnteredOnce)
{
    file("a/m/one.mtd");
    fs::create_directory_symlink(m_root / "a", m_root / "a/m/loop");
    use(root() + "/a");
    UT_StringArray list;
    EXPECT_EQ(search().matchAllFilesInSubdirectory(".mtd", "m", true, list, true, false), 1);
}

TEST_F(PathSearch, ExpandsVariablesAndTheDefaultPath)
{
    file("a/here.txt");
    ::setenv("PATH_SEARCH_TEST", root().c_str(), 1);
    use("${PATH_SEARCH_TEST}/a:&:$NO_SUCH_VARIABLE/a");
    ::unsetenv("PATH_SEARCH_TEST");
    UT_String found;
    EXPECT_EQ(search().findFile(found, "here.txt"), 1);
    EXPECT_EQ(found.toStdString(), root() + "/a/here.txt");
    EXPECT_EQ(search().findFile(found, "nowhere.txt"), 0);
    EXPECT_GE(search().getEntries(), 2);
}

TEST_F(PathSearch, DefaultPathEndsWithTheTreeOfTheHostsLibraries)
{
    use("");
    const std::string tree = search().getEntry(search().getEntries() - 1).toStdString();
    EXPECT_TRUE(fs::exists(fs::path(tree) / "lib" / "libHoudiniOP1.so")) << tree;
}

TEST_F(PathSearch, RemembersThePathUntilAskedToReadItAgain)
{
    file("a/x");
    file("b/x");
    use(root() + "/a");
    ::setenv("HOUDINI_PATH", (root() + "/b").c_str(), 1);
    EXPECT_EQ(search().getEntry(0).toStdString(), root() + "/a");
    search().rehash();
    EXPECT_EQ(search().getEntry(0).toStdString(), root() + "/b");
    EXPECT_EQ(search().getEntry(7).toStdString(), "");
}

TEST_F(PathSearch, OtherNumbersAreNoKnownPath)
{
    EXPECT_EQ(UT_PathSearch::getInstance(99), nullptr);
    EXPECT_EQ(UT_PathSearch::getInstance(0), &search());
}
