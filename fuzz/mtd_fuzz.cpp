// Text as a metadata file or as a catalogue: registered, made a node, edited. Bit 0 of the first byte chooses the
// catalogue. The last line is also the text and the expression that the edits set. Python is left out: what it would run
// is not ours.
//
// The host keeps what describes a type for the process, so memory grows with the number of runs.
#include "fuzzing.h"
#include "host_world.h"

#include "vop_shaders.h"

#include <CH/CH_ExprLanguage.h>
#include <UT/UT_String.h>
#include <kr_plugin.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>
#include <utility>
#include <vector>

namespace
{
const char* const items[] = {"one", "two", nullptr};

std::string writtenFile(const char* ending, const std::string& text)
{
    static const bool has_shm = std::filesystem::is_directory("/dev/shm");
    const std::filesystem::path folder = has_shm ? "/dev/shm" : std::filesystem::temp_directory_path();
    const std::string path = (folder / ("korvan_fuzz_" + std::to_string(::getpid()) + ending)).string();
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

// The shader that metadata speaks of: a parameter of each type, named by its code.
void declareShader()
{
    KtNodeDecl* shader = KrDeclareNode("noise", KR_NODE_SHADER, KR_TYPE_RGB);
    const KtParamValue zero = {};
    for (const int type : {KR_TYPE_BYTE, KR_TYPE_INT, KR_TYPE_UINT, KR_TYPE_BOOLEAN, KR_TYPE_FLOAT,
                           KR_TYPE_RGB, KR_TYPE_POINT2, KR_TYPE_STRING, KR_TYPE_NODE, KR_TYPE_MATRIX})
        KrDeclareParam(shader, ("p" + std::to_string(type)).c_str(), type,
                       type == KR_TYPE_MATRIX ? nullptr : &zero);
    KrDeclareEnum(shader, "mode", items, 1);
}

void loadMetaData(const std::string& text)
{
    declareShader();
    const std::string path = writtenFile(".mtd", text);
    KrMetaDataLoadFile(path.c_str());
    std::filesystem::remove(path);
}

void loadCatalogue(const std::string& text)
{
    const std::string path = writtenFile(".json", text);
    ::setenv("KORVAN_CATALOGUE", path.c_str(), 1);
    KrPluginDeclare();
    ::unsetenv("KORVAN_CATALOGUE");
    std::filesystem::remove(path);
}

void editComponent(OP_Node& node, int parm, int component, const std::string& line)
{
    UT_String text;
    node.evalString(text, parm, component, 0);
    node.setString(UT_String(line.c_str()), CH_STRING_LITERAL, parm, component, 0);
    node.evalString(text, parm, component, 0);
    node.setFloat(parm, component, 0, -2.5);
    node.evalFloat(parm, component, 0);
}

// Each parameter gets the line as a text, a number, and the line as an expression, and is asked for. The first and the last
// component will do: every edit asks the conditions of all parameters.
void editAll(OP_Node& node, const std::string& line)
{
    for (int parm = 0; parm < node.getNumParms(); ++parm)
    {
        PRM_Parm& edited = node.getParm(parm);
        const int last = edited.getVectorSize() - 1;
        if (last < 0)
            continue;
        editComponent(node, parm, 0, line);
        if (last > 0)
            editComponent(node, parm, last, line);
        edited.setExpression(0, line.c_str(), CH_OLD_EXPR_LANGUAGE);
        node.evalFloat(parm, 0, 1);
    }
    node.refreshParms();
}

void makeAndEdit(OP_Network& container, const OP_Operator& op, const std::string& line)
{
    OP_Node* node = container.createNode(op.getName().buffer());
    require(node != nullptr, "every registered type makes a node");
    VOP_Node* shader = node->castToVOPNode();
    for (unsigned i = 0; i < shader->getNumVisibleInputs(); ++i)
        require(shader->inputLabel(i) != nullptr, "each input has a label");
    for (unsigned i = 0; i < shader->getNumVisibleOutputs(); ++i)
        require(shader->outputLabel(i) != nullptr, "each output has a label");
    editAll(*node, line);
    container.destroyNode(node);
}

OP_Network& startWorld()
{
    ::setenv("ZELK_STARTUP_LOG", "0", 1);
    startQuietHost();
    KrEnd(); // each input has a renderer of its own
    return newNetwork("shop", "korvan_vopnet");
}

void registerAndEdit(OP_Network& container, const std::string& line)
{
    OP_OperatorTable& table = *OP_Network::getOperatorTable("Vop");
    const std::size_t before = standin::operatorsOf(table).size();
    zelk::shop::registerShaders(&table);
    const std::vector<OP_Operator*> operators = standin::operatorsOf(table);
    for (std::size_t i = before; i < operators.size(); ++i)
    {
        makeAndEdit(container, *operators[i], line);
        table.removeOperator(operators[i]);
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static OP_Network& container = startWorld();
    Input input(data, size);
    const bool is_catalogue = input.byte() & 1;
    const std::string text = input.rest();
    if (text.find("python") != std::string::npos)
        return 0;
    KrBegin();
    KrMsgSetConsoleFlags(0);
    is_catalogue ? loadCatalogue(text) : loadMetaData(text);
    registerAndEdit(container, text.substr(text.find_last_of('\n') + 1));
    KrEnd();
    forgetMessages();
    return 0;
}
