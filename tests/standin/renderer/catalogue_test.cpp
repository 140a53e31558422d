#include "catalogue_fixture.h"

#include <ostream>

namespace
{

using Items = std::vector<std::string>;

class Catalogue : public CatalogueTest
{
};

std::string nodes(const std::string& list) { return "{\"nodes\": [" + list + "]}"; }

const char* const good_node = R"({"name": "good", "kind": "shader", "output": "float"})";

} // namespace

TEST_F(Catalogue, DeclaresWhatItsFilesList)
{
    load(nodes(R"({"name": "noise", "kind": "shader", "output": "rgb", "builtin": false, "parameters": [
                      {"name": "octaves", "type": "int", "default": 3}, {"name": "gain", "type": "float"}]},
                  {"name": "lens", "kind": "camera", "output_code": 99, "builtin": true})"));
    const KtNodeEntry* noise = KrNodeEntryLookUp("noise");
    ASSERT_NE(noise, nullptr);
    EXPECT_EQ(KrNodeEntryGetType(noise), KR_NODE_SHADER);
    EXPECT_EQ(KrNodeEntryGetOutputType(noise), KR_TYPE_RGB);
    EXPECT_THAT(KrNodeEntryGetFilename(noise), testing::EndsWith("/korvan_catalogue.so"));
    EXPECT_EQ(paramNamesOf(noise), (Items{"octaves", "gain"}));
    const KtNodeEntry* lens = KrNodeEntryLookUp("lens");
    ASSERT_NE(lens, nullptr);
    EXPECT_EQ(KrNodeEntryGetType(lens), KR_NODE_CAMERA);
    EXPECT_EQ(KrNodeEntryGetOutputType(lens), 99);
    EXPECT_EQ(KrNodeEntryGetFilename(lens), nullptr);
    EXPECT_EQ(KrNodeEntryGetNumParams(lens), 0);
}

TEST_F(Catalogue, KeepsMetaDataInTheListedOrder)
{
    load(nodes(
        R"({"name": "noise", "kind": "shader", "output": "rgb", "parameters": [{"name": "gain", "type": "float"}],
                   "metadata": [{"key": "z", "value": "text"}, {"parameter": "gain", "key": "min", "value": 1},
                                {"parameter": null, "key": "a", "value": true},
                                {"parameter": "gain", "key": "linkable", "value": false}, {"key": "m", "value": ""}]})"));
    EXPECT_EQ(metaDataOf(KrNodeEntryLookUp("noise")), (Items{"z=text", "a=true", "m="}));
    EXPECT_EQ(metaDataOf(KrNodeEntryLookUp("noise"), "gain"), (Items{"min=1", "linkable=false"}));
}

TEST_F(Catalogue, ReadsSeveralFiles)
{
    const std::string a =
        folder.write("a.json", nodes(R"({"name": "a", "kind": "shader", "output": "rgb"})"));
    const std::string b =
        folder.write("b.json", nodes(R"({"name": "b", "kind": "shader", "output": "rgb"})"));
    const Environment catalogue("KORVAN_CATALOGUE", a + "::" + b + ":");
    KrLoadPlugins(SHADER_PLUGIN_DIR);
    EXPECT_NE(KrNodeEntryLookUp("a"), nullptr);
    EXPECT_NE(KrNodeEntryLookUp("b"), nullptr);
}

TEST_F(Catalogue, TakesLongAndForeignNames)
{
    const std::string longName(10000, 'x');
    load(nodes(R"({"name": ")" + longName + R"(", "kind": "shader", "output": "rgb",
                   "parameters": [{"name": "größe", "type": "float"}]})"));
    const KtNodeEntry* entry = KrNodeEntryLookUp(longName.c_str());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(paramNamesOf(entry), Items{"größe"});
}

TEST_F(Catalogue, ThatCannotBeReadIsReported)
{
    const Environment catalogue("KORVAN_CATALOGUE", "/nowhere/nodes.json");
    KrLoadPlugins(SHADER_PLUGIN_DIR);
    EXPECT_EQ(renderer.takeMessage(),
              "error: [korvan_catalogue] Cannot read the catalogue /nowhere/nodes.json: No such "
              "file or directory. Skipping it; correct KORVAN_CATALOGUE.");
}

TEST_F(Catalogue, WithANumberBeyondAllBoundsDoesNotStopTheNextOne)
{
    const std::string bad =
        folder.write("bad.json", nodes(R"({"name": "x", "kind": "shader", "output_code": 1e999})"));
    const std::string good = folder.write("good.json", nodes(good_node));
    const Environment catalogue("KORVAN_CATALOGUE", bad + ":" + good);
    KrLoadPlugins(SHADER_PLUGIN_DIR);
    EXPECT_EQ(renderer.takeMessage(), "error: [korvan_catalogue] " + bad +
                                          ": number overflow parsing '1e999'. Skipping the rest of the file; "
                                          "write another number.");
    EXPECT_NE(KrNodeEntryLookUp("good"), nullptr);
}

TEST_F(Catalogue, WithASyntaxErrorIsReportedWithLineAndColumn)
{
    const std::string file = load("{\"nodes\": [\n  {\"name\": \"x\",}\n]}");
    EXPECT_EQ(renderer.takeMessage(), "error: [korvan_catalogue] " + file +
                                          ":2:16: syntax error while parsing object key - unexpected '}'; "
                                          "expected string literal. Skipping "
                                          "the whole file; correct this line.");
}

TEST_F(Catalogue, WithoutAListOfNodesIsReported)
{
    const std::string file = load("[]");
    EXPECT_EQ(renderer.takeMessage(), "error: [korvan_catalogue] " + file +
                                          ": There is no list \"nodes\" at the top. Skipping the file; write "
                                          "{\"nodes\": [...]}.");
}

TEST_F(Catalogue, SkipsOnlyTheMetaDataItemThatIsWrong)
{
    const std::string file = load(nodes(
        R"({"name": "noise", "kind": "shader", "output": "rgb", "metadata": [{"parameter": "pain", "key": "min", "value": 1},
            {"key": "list", "value": [1]}, {"value": "keyless"}, 3, {"key": "last", "value": "kept"}]})"));
    const std::string start = "error: [korvan_catalogue] " + file + ": /nodes/0/metadata/";
    const std::string skipped = ". Skipping this metadata item; ";
    EXPECT_EQ(
        renderer.takeMessages(),
        (Messages{start + "0/parameter (\"noise\"): There is no parameter \"pain\"" + skipped +
                      "name a parameter of this node.",
                  start + "1/value (\"noise\"): Expected a text, a boolean or a number, found [1]" + skipped +
                      "write one of these.",
                  start + "2/key (\"noise\"): Expected a text, found null" + skipped +
                      "write a text in double quotes.",
                  start + "3 (\"noise\"): Expected an object, found 3" + skipped + "write it in braces."}));
    EXPECT_EQ(metaDataOf(KrNodeEntryLookUp("noise")), Items{"last=kept"});
}

// --- Nodes that are refused: what stands there, and what the message says after the file's name -----------------

struct BadNode
{
    const char* node;
    const char* place;
    const char* what;
};

void PrintTo(const BadNode& row, std::ostream* stream) { *stream << row.node; }

class CatalogueRefuses : public CatalogueTest, public testing::WithParamInterface<BadNode>
{
};

TEST_P(CatalogueRefuses, TheNodeButNotTheNextOne)
{
    const std::string file = load(nodes(std::string(GetParam().node) + "," + good_node));
    const std::string message = renderer.takeMessage();
    EXPECT_THAT(message, testing::StartsWith("error: [korvan_catalogue] " + file + ": " + GetParam().place +
                                             ": " + GetParam().what + ". Skipping this node; "));
    EXPECT_EQ(KrNodeEntryLookUp("bad"), nullptr);
    EXPECT_NE(KrNodeEntryLookUp("good"), nullptr);
}

const BadNode bad_nodes[] = {
    {"5", "/nodes/0", "Expected an object, found 5"},
    {R"({"kind": "shader", "output": "rgb"})", "/nodes/0/name", "Expected a text, found null"},
    {R"({"name": "", "kind": "shader", "output": "rgb"})", "/nodes/0/name (\"\")", "The name is empty"},
    {R"({"name": "b\u0000", "kind": "shader", "output": "rgb"})", "/nodes/0/name (\"b\\u0000\")",
     "The text holds a zero character"},
    {R"({"name": "persp_camera", "kind": "camera", "output": "rgb"})", "/nodes/0/name (\"persp_camera\")",
     "The name is taken already by an entry of the renderer"},
    {R"({"name": "bad", "kind": "thing", "output": "rgb"})", "/nodes/0/kind (\"bad\")",
     "There is no node kind \"thing\""},
    {R"({"name": "bad", "kind": "shader", "output": "rgbx"})", "/nodes/0/output (\"bad\")",
     "There is no type \"rgbx\""},
    {R"({"name": "bad", "kind": "shader"})", "/nodes/0/output (\"bad\")", "Expected a text, found null"},
    {R"({"name": "bad", "kind": "shader", "output": "rgb", "builtin": 1})", "/nodes/0/builtin (\"bad\")",
     "Expected true or false, found 1"},
    {R"({"name": "bad", "kind": "shader", "output": "rgb", "parameters": 1})",
     "/nodes/0/parameters (\"bad\")", "Expected a list of objects, found 1"},
    {R"({"name": "bad", "kind": "shader", "output": "rgb", "metadata": {}})", "/nodes/0/metadata (\"bad\")",
     "Expected a list of objects, found {}"},
    {R"({"name": "bad", "kind": "shader", "output": "rgb", "parameters": [{"name": "p", "type": "flot"}]})",
     "/nodes/0/parameters/0/type (\"bad\")", "There is no type \"flot\""},
    {R"({"name": "bad", "kind": "shader", "output": "rgb", "parameters": [{"name": "p", "type": "array"}]})",
     "/nodes/0/parameters/0/element (\"bad\")", "Expected a text, found null"},
    {R"({"name": "bad", "kind": "shader", "output": "rgb", "parameters": [
         {"name": "p", "type": "int"}, {"name": "p", "type": "int"}]})",
     "/nodes/0/parameters/1 (\"bad\")", "The parameter \"p\" is there twice"},
};

INSTANTIATE_TEST_SUITE_P(EachMistake, CatalogueRefuses, testing::ValuesIn(bad_nodes));
