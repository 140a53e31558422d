#include "asset_files.h"

#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>

namespace
{

using ::testing::HasSubstr;

class IndexFile : public AssetFiles
{
};

TEST_F(IndexFile, GivesItsSectionsInOrder)
{
    const FS_IndexFile index(file("a.hda", indexBytes({{"one", "1"}, {"", "empty"}, {"two", ""}})).c_str());
    EXPECT_EQ(index.problem(), "");
    ASSERT_EQ(index.getNumSections(), 3);
    EXPECT_STREQ(index.getSectionName(0), "one");
    EXPECT_STREQ(index.getSectionName(2), "two");
    EXPECT_EQ(index.getSectionName(3), nullptr);
    EXPECT_EQ(index.getSectionName(-1), nullptr);
    EXPECT_TRUE(index.hasSection(""));
    EXPECT_FALSE(index.hasSection("On"));
    EXPECT_FALSE(index.hasSection(nullptr));
    EXPECT_EQ(index.getSectionDataSize("one"), 1);
    EXPECT_EQ(index.getSectionDataSize("three"), 0);
    EXPECT_EQ(sectionOf(index, "one"), "1");
    EXPECT_EQ(sectionOf(index, "two"), "");
    UT_WorkBuffer bytes;
    EXPECT_FALSE(index.readSection("three", bytes));
    EXPECT_EQ(index.getSectionReader("three"), nullptr);
}

TEST_F(IndexFile, GivesReadersThatKnowTheirFile)
{
    const FS_IndexFile index(file("a.hda", indexBytes({{"one", "some words"}})).c_str());
    const std::unique_ptr<FS_Reader> reader(index.getSectionReader("one"));
    EXPECT_STREQ(reader->getFilename().buffer(), path("a.hda").c_str());
    EXPECT_EQ(reader->getModTime(), 1000);
    EXPECT_TRUE(reader->isGood());
    reader->close();
    EXPECT_FALSE(reader->isGood());
    EXPECT_EQ(reader->getStream(), nullptr);
}

TEST_F(IndexFile, OpensOneInsideASection)
{
    const std::string inner = indexBytes({{"deep", "found"}});
    const FS_IndexFile outer(file("a.hda", indexBytes({{"before", "xyz"}, {"type", inner}})).c_str());
    const std::unique_ptr<FS_Reader> reader(outer.getSectionReader("type"));
    const FS_IndexFile index(reader.get());
    EXPECT_EQ(sectionOf(index, "deep"), "found");
}

TEST_F(IndexFile, OpensAHundredInsideEachOther)
{
    std::string bytes = indexBytes({{"in", "bottom"}});
    for (int depth = 0; depth < 100; ++depth)
        bytes = indexBytes({{"in", bytes}});
    auto index = std::make_unique<FS_IndexFile>(file("a.hda", bytes).c_str());
    for (int depth = 0; depth < 100; ++depth)
    {
        const std::unique_ptr<FS_Reader> reader(index->getSectionReader("in"));
        index = std::make_unique<FS_IndexFile>(reader.get());
    }
    EXPECT_EQ(sectionOf(*index, "in"), "bottom");
}

TEST_F(IndexFile, SaysWhyAFileCannotBeRead)
{
    const FS_IndexFile missing(path("none.hda").c_str());
    EXPECT_FALSE(missing.isGood());
    EXPECT_THAT(missing.problem(), HasSubstr("none.hda\" cannot be read: No such file"));
    const FS_IndexFile text(file("text.hda", "This is a text.").c_str());
    EXPECT_FALSE(text.isGood());
    EXPECT_THAT(text.problem(), HasSubstr("does not begin with \"INDX\""));
    EXPECT_EQ(FS_Reader(path("none.hda").c_str()).getStream(), nullptr);
    EXPECT_EQ(FS_Reader(path("").c_str()).getStream(), nullptr);
}

TEST_F(IndexFile, GivesNothingOfAFileThatWasReplacedSince)
{
    const FS_IndexFile index(file("a.hda", indexBytes({{"one", "old"}})).c_str());
    file("a.hda", indexBytes({{"other", "text"}, {"one", "new bytes"}}));
    const std::unique_ptr<FS_Reader> reader(index.getSectionReader("one"));
    EXPECT_FALSE(reader->isGood());
    EXPECT_STREQ(reader->getFilename().buffer(), path("a.hda").c_str());
}

// --- writing ----------------------------------------------------------------------------------------------------

TEST_F(IndexFile, WritesTheLayoutThatItReads)
{
    FS_IndexFile index;
    index.addSection("one", "1", 1, 1000);
    index.addSection("two", "22", 2, 1000);
    ASSERT_TRUE(index.writeFile(path("new.hda").c_str())) << index.problem();
    EXPECT_EQ(bytesOf(path("new.hda")), indexBytes({{"one", "1"}, {"two", "22"}}));
    EXPECT_EQ(sectionOf(index, "two"), "22");
    EXPECT_EQ(index.filePath(), path("new.hda"));
}

TEST_F(IndexFile, ChangesAFileOnlyWhenItIsWritten)
{
    const std::string before = indexBytes({{"one", "1"}, {"two", "2"}, {"three", "3"}});
    FS_IndexFile index(file("a.hda", before).c_str());
    EXPECT_TRUE(index.modifySection("one", "changed", 7, 1000));
    EXPECT_FALSE(index.modifySection("four", "4", 1));
    index.addSection("four", "4", 1, 1000);
    EXPECT_EQ(sectionOf(index, "one"), "changed");
    EXPECT_EQ(bytesOf(path("a.hda")), before);
    ASSERT_TRUE(index.writeFile()) << index.problem();
    EXPECT_EQ(bytesOf(path("a.hda")),
              indexBytes({{"one", "changed"}, {"two", "2"}, {"three", "3"}, {"four", "4"}}));
}

TEST_F(IndexFile, KeepsRightsAndLinksOfTheFileItReplaces)
{
    const std::string target = file("real.hda", indexBytes({{"one", "1"}}));
    ::chmod(target.c_str(), 0640);
    std::filesystem::create_symlink(target, path("link.hda"));
    FS_IndexFile index(path("link.hda").c_str());
    index.addSection("two", "2", 1, 1000);
    ASSERT_TRUE(index.writeFile());
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.hda")));
    EXPECT_EQ(bytesOf(target), indexBytes({{"one", "1"}, {"two", "2"}}));
    struct stat status;
    ::stat(target.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

/// Files cannot grow beyond some bytes for as long as this lives, as on a full disk.
class SmallFiles
{
public:
    explicit SmallFiles(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        struct rlimit limit = m_before;
        limit.rlim_cur = bytes;
        ::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFiles() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    struct rlimit m_before;
};

TEST_F(IndexFile, LeavesTheOldFileWhenTheNewOneCannotBeWritten)
{
    const std::string before = indexBytes({{"one", "1"}});
    FS_IndexFile index(file("a.hda", before).c_str());
    index.addSection("large", std::string(100000, 'x').c_str(), 100000);
    bool written = true;
    {
        const SmallFiles full(4096);
        written = index.writeFile();
    }
    EXPECT_FALSE(written);
    EXPECT_THAT(index.problem(), HasSubstr("a.hda\" was not written: "));
    EXPECT_EQ(bytesOf(path("a.hda")), before);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("")), {}), 1)
        << "a file was left behind";

    FS_IndexFile homeless;
    EXPECT_FALSE(homeless.writeFile(path("no/such/directory.hda").c_str()));
    EXPECT_FALSE(homeless.writeFile(path("").c_str()));
    EXPECT_THAT(homeless.problem(), HasSubstr("it is a directory"));
}

} // namespace
