#include "asset_files.h"

#include "op/op_otl_index.h"

#include <OP/OP_OTLLibrary.h>

namespace
{

class Library : public AssetFiles
{
};

TEST_F(Library, TellsWhatItsFileSaysOfEachType)
{
    const std::string records =
        number(2) + typeRecord("a::x::1.0", "Vop", "chop cvex", 3) + typeRecord("y", "Sop");
    const OP_OTLLibrary library(file("a.hda", indexBytes({{"INDEX_SECTION", records}})).c_str());
    EXPECT_STREQ(library.getSource(), path("a.hda").c_str());
    ASSERT_EQ(library.getNumDefinitions(), 2);
    const OP_OTLDefinition& x = library.getDefinition(0);
    EXPECT_STREQ(x.getName(), "a::x::1.0");
    EXPECT_STREQ(x.getLabel(), "Label of a::x::1.0");
    EXPECT_STREQ(x.getIcon(), "VOP_subnet");
    EXPECT_STREQ(x.getTable(), "Vop");
    EXPECT_STREQ(x.getExtra(), "chop cvex");
    EXPECT_EQ(x.getMaxInputs(), 3u);
    EXPECT_EQ(x.getModTime(), 1000u);
    EXPECT_TRUE(x.isSubnet());
    EXPECT_FALSE(x.isEmpty());
    EXPECT_EQ(library.findDefinition("Sop", "y"), 1);
    EXPECT_EQ(library.findDefinition("Vop", "y"), -1);
}

TEST_F(Library, ReadsRecordsOfNewerReleases)
{
    std::string record = typeRecord("y", "Vop") + number(2048);
    record.replace(0, 4, number(5));
    std::string why;
    const auto definitions = standin::readDefinitions(number(2) + record + record, why);
    EXPECT_EQ(why, "");
    ASSERT_EQ(definitions.size(), 2u);
    EXPECT_EQ(definitions[1].getMaxOutputs(), 2048u);
    EXPECT_STREQ(definitions[1].getTable(), "Vop");
}

TEST_F(Library, WritesTheRecordsThatItReads)
{
    const std::string records =
        number(2) + typeRecord("a::x::1.0", "Vop", "cvex", 3) + typeRecord("y", "Sop");
    std::string why;
    EXPECT_EQ(standin::writeDefinitions(standin::readDefinitions(records, why)), records);
}

TEST_F(Library, GivesTheTypesBeforeABreak)
{
    const std::string records = number(3) + typeRecord("x", "Vop") + typeRecord("y", "Vop");
    std::string why;
    EXPECT_EQ(standin::readDefinitions(records, why).size(), 2u);
    EXPECT_EQ(why, "its list of types announces 3 types, and breaks off after 2.");
}

} // namespace
