#include "asset_files.h"

#include <OP/OP_OTLLibrary.h>

#include <fstream>
#include <memory>
#include <random>
#include <sys/resource.h>

namespace
{

using ::testing::HasSubstr;

class DamagedFile : public AssetFiles
{
protected:
    /// Opens a library and reads every section of every type in it, as far as that goes.
    std::unique_ptr<OP_OTLLibrary> readThrough(const std::string& bytes)
    {
        auto library = std::make_unique<OP_OTLLibrary>(file("a.hda", bytes).c_str());
        for (int i = 0; i < library->getNumSections(); ++i)
        {
            const std::unique_ptr<FS_Reader> reader(library->getSectionReader(library->getSectionName(i)));
            const FS_IndexFile type(reader.get());
            for (int j = 0; j < type.getNumSections(); ++j)
            {
                UT_WorkBuffer bytesOfSection;
                type.readSection(type.getSectionName(j), bytesOfSection);
                EXPECT_LE(bytesOfSection.length(), static_cast<exint>(bytes.size()));
            }
        }
        return library;
    }

    std::string complaintsOf(const OP_OTLLibrary& library)
    {
        return library.problem() + library.definitionProblem();
    }
};

const std::string& smallLibrary()
{
    static const std::string bytes =
        libraryBytes("korvan::x", "Vop", {{"DialogScript", "{\n}\n"}, {"Contents.gz", gzip("text")}});
    return bytes;
}

TEST_F(DamagedFile, IsToldFromASoundOneAtEveryLength)
{
    EXPECT_EQ(complaintsOf(*readThrough(smallLibrary())), "");
    for (std::size_t size = 0; size < smallLibrary().size(); ++size)
        EXPECT_THAT(complaintsOf(*readThrough(smallLibrary().substr(0, size))), HasSubstr("a.hda\" is "))
            << size << " of " << smallLibrary().size() << " bytes";
}

TEST_F(DamagedFile, StillGivesTheSectionsThatAreWhole)
{
    const std::string bytes = indexBytes({{"one", "1"}, {"two", "22222"}});
    const FS_IndexFile index(file("a.hda", bytes.substr(0, bytes.size() - 2)).c_str());
    EXPECT_EQ(sectionOf(index, "one"), "1");
    EXPECT_EQ(sectionOf(index, "two"), "222");
    EXPECT_THAT(index.problem(), HasSubstr("section \"two\" has 5 bytes, of which 3 are there"));
}

TEST_F(DamagedFile, OfAnyBytesCrashesNothing)
{
    std::mt19937 random(20160707);
    for (int round = 0; round < 500; ++round)
    {
        std::string bytes = smallLibrary();
        for (int change = 0; change < 4; ++change)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        readThrough(bytes);
    }
    for (int round = 0; round < 100; ++round)
    {
        std::string bytes = "INDX";
        while (bytes.size() < 300)
            bytes += static_cast<char>(random() % 3 ? 0 : random());
        readThrough(bytes);
    }
}

TEST_F(DamagedFile, WithCountsThatLieAsksForNoMemory)
{
    const std::string start = "INDX" + std::string(8, '\0');
    EXPECT_THAT(complaintsOf(*readThrough(start + number(0xffffffff) + "xxxx")),
                HasSubstr("announces 4294967295 sections, and breaks off after 0"));
    readThrough(start + number(1) + number(0xfffffff0) + "name");
    readThrough(indexBytes({{"INDEX_SECTION", number(0xffffffff) + number(4) + number(0xffffffff)}}));

    struct rusage usage;
    ::getrusage(RUSAGE_SELF, &usage);
    EXPECT_LT(usage.ru_maxrss, 1024 * 1024) << "kilobytes";
}

TEST_F(DamagedFile, WithOffsetsBeyondTheEndGivesEmptySections)
{
    const std::string record = counted("far") + number(0xfffffff0) + number(0xfffffff0) + number(0);
    const FS_IndexFile index(
        file("a.hda", "INDX" + std::string(8, '\0') + number(1) + record + "data").c_str());
    EXPECT_EQ(sectionOf(index, "far"), "");
    EXPECT_THAT(index.problem(), HasSubstr("of which 0 are there"));
}

TEST_F(DamagedFile, WithoutAListOfTypesSaysSo)
{
    EXPECT_THAT(complaintsOf(*readThrough(indexBytes({{"other", "x"}}))),
                HasSubstr("it has no section \"INDEX_SECTION\""));
}

// The file has a hole, so it takes no room on disk; reading it all would take the time and the memory.
TEST_F(DamagedFile, OrSoundOneWithALargeSectionIsOpenedWithoutReadingIt)
{
    constexpr std::size_t size = 2000u * 1024 * 1024;
    const std::string start = "INDX" + std::string(8, '\0') + number(2) + counted("large") + number(0) +
                              number(size) + number(0) + counted("small") + number(size) + number(4) +
                              number(0);
    const std::string name = file("a.hda", start);
    std::filesystem::resize_file(name, start.size() + size);
    std::ofstream(name, std::ios::app) << "word";

    const FS_IndexFile index(name.c_str());
    EXPECT_EQ(index.getSectionDataSize("large"), static_cast<int>(size));
    EXPECT_EQ(sectionOf(index, "small"), "word");
    struct rusage usage;
    ::getrusage(RUSAGE_SELF, &usage);
    EXPECT_LT(usage.ru_maxrss, 1024 * 1024) << "kilobytes";
}

} // namespace
