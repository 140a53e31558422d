#include "asset_files.h"

#include <OP/OP_OTLLibrary.h>

#include <memory>

namespace
{

using ::testing::HasSubstr;

const char* const index_text =
    "Operator:  korvan::x::1\nLabel:     An X\n"
    "Path:      oplib:/korvan::Vop/x::1?korvan::Vop/x::1\nIcon:      VOP_x\n"
    "Table:     Vop\nLicense:   \nExtra:     *\nUser:      \nInputs:    1 to 4\n"
    "Subnet:    true\nPython:    false\nEmpty:     false\nModified:  Thu Jul 7 2016\n\n";

class ExpandedAsset : public AssetFiles
{
protected:
    /// Writes the directory "x.hda" and gives its path.
    std::string write(const std::string& list)
    {
        file("x.hda/INDEX__SECTION", index_text);
        file("x.hda/Sections.list", list);
        file("x.hda/korvan_8_8Vop_1x_8_81/Sections.list",
             "\"\"\nDialogScript\tDialogScript\nContents.gz\tContents.gz\n");
        file("x.hda/korvan_8_8Vop_1x_8_81/DialogScript", "{\n}\n");
        file("x.hda/korvan_8_8Vop_1x_8_81/Contents.gz", gzip("inside"));
        return path("x.hda");
    }
};

const char* const sound_list =
    "\"\"\nINDEX__SECTION\tINDEX_SECTION\nkorvan_8_8Vop_1x_8_81\tkorvan::Vop/x::1\n";

TEST_F(ExpandedAsset, ReadsLikeAFile)
{
    const OP_OTLLibrary library(write(sound_list).c_str());
    EXPECT_EQ(library.problem() + library.definitionProblem(), "");
    ASSERT_EQ(library.getNumDefinitions(), 1);
    const OP_OTLDefinition& definition = library.getDefinition(0);
    EXPECT_STREQ(definition.getName(), "korvan::x::1");
    EXPECT_STREQ(definition.getLabel(), "An X");
    EXPECT_STREQ(definition.getTable(), "Vop");
    EXPECT_EQ(definition.getMinInputs(), 1u);
    EXPECT_EQ(definition.getMaxInputs(), 4u);
    EXPECT_TRUE(definition.isSubnet());

    const std::unique_ptr<FS_Reader> reader(library.getSectionReader(definition.sectionName().c_str()));
    const FS_IndexFile type(reader.get());
    EXPECT_EQ(sectionOf(type, "DialogScript"), "{\n}\n");
    const std::unique_ptr<FS_Reader> contents(type.getSectionReader("Contents.gz"));
    const std::unique_ptr<UT_IStream> inflated(contents->getStream()->getGzipStream());
    EXPECT_TRUE(inflated->checkToken("inside"));
}

TEST_F(ExpandedAsset, LeavesOutWhatItsListNamesWrongly)
{
    const OP_OTLLibrary library(
        write(std::string(sound_list) + "missing\tmissing\n../secret\tout\nno tab\n").c_str());
    EXPECT_EQ(library.getNumSections(), 2);
    EXPECT_THAT(library.problem(), HasSubstr("Sections.list\", line 4 is left out: "));
    EXPECT_FALSE(library.hasSection("out"));
}

TEST_F(ExpandedAsset, IsNoneWithoutAList)
{
    write(sound_list);
    std::filesystem::remove(path("x.hda/Sections.list"));
    const FS_IndexFile index(path("x.hda").c_str());
    EXPECT_FALSE(index.isGood());
    EXPECT_THAT(index.problem(), HasSubstr("x.hda\" is no expanded asset"));
}

TEST_F(ExpandedAsset, IsNotWritten)
{
    FS_IndexFile index(write(sound_list).c_str());
    index.addSection("more", "x", 1);
    EXPECT_FALSE(index.writeFile());
    EXPECT_THAT(index.problem(), HasSubstr("it is a directory"));
    EXPECT_FALSE(std::filesystem::exists(path("x.hda/more")));
}

} // namespace
