#include "test_types.h"

#include <algorithm>

#include <filesystem>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace
{

standin::PluginReport reportOf(const std::string& name)
{
    for (const standin::PluginReport& report : standin::pluginReports())
        if (std::filesystem::path(report.path).filename() == name + ".so")
            return report;
    ADD_FAILURE() << name << ".so was not looked at";
    return {};
}

std::vector<std::string> namesOf(const std::vector<OP_Operator*>& operators)
{
    std::vector<std::string> names;
    for (const OP_Operator* op : operators)
        names.push_back(op->getName().toStdString());
    return names;
}

std::vector<std::string> startTexts()
{
    std::vector<std::string> texts;
    for (const standin::Message& message : startMessages())
        texts.push_back(message.text);
    return texts;
}

struct BadPlugin
{
    const char* name;
    std::vector<const char*> words; ///< what the sentence must say
};

/// A test's name has to be the same in every run.
void PrintTo(const BadPlugin& row, std::ostream* out) { *out << row.name; }

class Refusal : public ::testing::TestWithParam<BadPlugin>
{
};

} // namespace

TEST(Loading, OpensTheGoodPluginAndListsItsHooks)
{
    const standin::PluginReport report = reportOf("a_good");
    EXPECT_TRUE(report.loaded);
    EXPECT_EQ(report.reason, "");
    EXPECT_THAT(report.hooks, ElementsAre("newShopOperator", "newVopOperator"));
}

TEST(Loading, LooksAtFilesInSortedOrder)
{
    const std::vector<standin::PluginReport> reports = standin::pluginReports();
    ASSERT_EQ(reports.size(), 13u);
    EXPECT_TRUE(std::is_sorted(reports.begin(), reports.end(),
                               [](const standin::PluginReport& a, const standin::PluginReport& b)
                               { return a.path < b.path; }));
}

TEST(Loading, KeepsTheOrderInWhichPluginsRegister)
{
    const OP_OperatorTable* vops = OP_Network::getOperatorTable("Vop");
    EXPECT_THAT(namesOf(standin::pluginOperatorsOf(*vops)),
                ElementsAre("a_good", "shared_type", "b_duplicate", "g_throws"));
}

TEST(Loading, KnowsWhichPluginAnOperatorCameFrom)
{
    const OP_OperatorTable* vops = OP_Network::getOperatorTable("Vop");
    EXPECT_EQ(standin::pluginOf(*vops->getOperator("shared_type")), reportOf("a_good").path);
    EXPECT_EQ(standin::pluginOf(*vops->getOperator("subnet")), "");
}

TEST(Loading, SaysWhoseDuplicateOperatorIsLeftOut)
{
    EXPECT_THAT(startTexts(),
                Contains("The operator type \"shared_type\" is already in the Vop table, registered by " +
                         reportOf("a_good").path + "; a second one, from " + reportOf("b_duplicate").path +
                         ", is left out. Rename one of the two, or take one of them off the search path."));
}

TEST(Loading, SaysWhenOnePluginRegistersAnOperatorTwice)
{
    EXPECT_THAT(
        startTexts(),
        Contains("The operator type \"b_duplicate_shop\" is already in the Shop table, registered by " +
                 reportOf("b_duplicate").path +
                 "; a second one of that name, from the same plug-in, is left out. `kshop list --why` "
                 "names the two renderer entries."));
}

TEST(Loading, SkipsAPluginWhoseFileNameIsInUseWithOneMessage)
{
    const std::string copy = TEST_PLUGIN_DIR "/later/a_good.so";
    int about = 0;
    for (const standin::Message& message : startMessages())
        if (message.text.find(copy) != std::string::npos)
        {
            ++about;
            EXPECT_EQ(message.severity, standin::Severity::Warning);
            EXPECT_EQ(message.text,
                      "The plug-in " + copy + " is not used: " + reportOf("a_good").path +
                          ", which comes first on the plug-in path, has the same file name. Take one "
                          "of the two off the path, or rename it if both are wanted.");
        }
    EXPECT_EQ(about, 1);
}

TEST(Loading, ReportsWhatAnEntryPointThrowsAndGoesOn)
{
    EXPECT_THAT(startTexts(), Contains(AllOf(HasSubstr("g_throws.so"), HasSubstr("newVopOperator"),
                                             HasSubstr("no licence"))));
    const OP_OperatorTable* shops = OP_Network::getOperatorTable("Shop");
    EXPECT_NE(shops->getOperator("g_throws_shop"), nullptr);
}

TEST(Loading, ReportsEachRefusedPluginOnce)
{
    int refused = 0;
    for (const std::string& text : startTexts())
        refused += text.find(" is not used: ") != std::string::npos;
    EXPECT_EQ(refused, 10);
}

TEST(Loading, ShowsThePathItSearched)
{
    EXPECT_THAT(standin::pluginSearchPath(), ElementsAre(TEST_PLUGIN_DIR, TEST_PLUGIN_DIR "/later"));
}

TEST(Loading, FindsTheTreeThatHoldsTheLibrary)
{
    EXPECT_TRUE(std::filesystem::exists(standin::treeRoot() + "/lib/libHoudiniOP2.so"));
}

TEST_P(Refusal, NamesTheFileTheReasonAndTheRemedy)
{
    const standin::PluginReport report = reportOf(GetParam().name);
    EXPECT_FALSE(report.loaded);
    EXPECT_THAT(report.reason, HasSubstr(report.path));
    for (const char* word : GetParam().words)
        EXPECT_THAT(report.reason, HasSubstr(word));
    EXPECT_THAT(startTexts(), Contains(report.reason));
    EXPECT_EQ(OP_Network::getOperatorTable("Vop")->getOperator(GetParam().name), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Loading, Refusal,
    ::testing::Values(BadPlugin{"c_old_release", {"version 14.0", "version 15.5", "Rebuild"}},
                      BadPlugin{"d_other_compiler", {"tagged 409", "tag 408", "Rebuild"}},
                      BadPlugin{"e_no_entry_points", {"no entry points", "move the file"}},
                      BadPlugin{"f_no_versions",
                                {"HoudiniDSOVersion and HoudiniCompilerVersion", "UT/UT_DSOVersion.h"}},
                      BadPlugin{"h_null_release", {"version (none)", "version 15.5"}},
                      BadPlugin{"i_text", {"no shared object", "Replace it"}},
                      BadPlugin{"j_cut_off", {"cut off", "should have 64 bytes and has 4", "Copy it again"}},
                      BadPlugin{"k_truncated", {"cut off", "bytes and has 3000. Copy it again."}},
                      BadPlugin{"l_dangling", {"cannot be read: No such file", "take it out"}}));
