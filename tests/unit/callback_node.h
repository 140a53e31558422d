#ifndef KORVAN_TESTS_CALLBACK_NODE_H
#define KORVAN_TESTS_CALLBACK_NODE_H

#include "standin_session.h"

#include "shader_desc_callbacks.h"

#include <CH/CH_Manager.h>
#include <OP/OP_CommandManager.h>
#include <PRM/PRM_Include.h>
#include <PY/PY_Python.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_Options.h>
#include <UT/UT_UndoManager.h>

#include <functional>
#include <map>

typedef std::map<std::string, std::string> Texts;

/// An object type whose every parameter runs one script: buttons with and without a menu, and multi-parameters three levels
/// deep, which metadata cannot declare.
namespace callback_type
{

inline PRM_Name amount("amount", "Amount"), count("count", "Count"), file("file", "File"),
    note("note", "Note"), use("use", "Use"), color("color", "Color"), press("press", "Press"),
    choose("choose", "Choose"), joined("joined", "Joined"), hidden("hidden", "Hidden"), bare("bare", "Bare"),
    empty("empty", "Empty"), outer("outer", "Outer"), middle("middle#", "Middle"), inner("inner#_#", "Inner"),
    leaf("leaf#_#_#", "Leaf"), tint("tint#_#_#", "Tint");

inline PRM_Name item_names[] = {PRM_Name("first", "1st"), PRM_Name("second", "2nd"), PRM_Name("third", "3rd"),
                                PRM_Name()};
inline PRM_ChoiceList items(PRM_CHOICELIST_SINGLE, item_names);

/// The script of all parameters but "bare", which has no spare data, and "empty", which has no script in it.
inline PRM_SpareData script;
inline PRM_SpareData without_script(PRM_SpareToken("other", "value"));

inline PRM_Template parm(const PRM_Type& type, int size, PRM_Name& name, PRM_ChoiceList* menu = nullptr,
                         PRM_SpareData* spare = &script)
{
    return PRM_Template(type, size, &name, nullptr, menu, nullptr, zelk::shop::parmCallback, spare);
}

inline PRM_Template multi(PRM_Name& name, PRM_Template* children)
{
    return PRM_Template(PRM_MULTITYPE_LIST, children, PRM_Template::PRM_EXPORT_MIN, 1, &name, nullptr,
                        nullptr, zelk::shop::parmCallback, &script);
}

inline PRM_Template leaves[] = {parm(PRM_FLT, 1, leaf), parm(PRM_RGB, 3, tint), PRM_Template()};
inline PRM_Template inners[] = {multi(inner, leaves), PRM_Template()};
inline PRM_Template middles[] = {multi(middle, inners), PRM_Template()};

inline PRM_Template templates[] = {
    parm(PRM_FLT, 1, amount),
    parm(PRM_INT, 1, count),
    parm(PRM_STRING, 1, file),
    parm(PRM_STRING, 1, note),
    parm(PRM_TOGGLE, 1, use),
    parm(PRM_RGB, 3, color),
    parm(PRM_CALLBACK, 1, press),
    parm(PRM_CALLBACK, 1, choose, &items),
    parm(PRM_CALLBACK | PRM_TYPE_JOIN_NEXT, 1, joined, &items),
    parm(PRM_CALLBACK | PRM_TYPE_INVISIBLE, 1, hidden, &items),
    parm(PRM_FLT, 1, bare, nullptr, nullptr),
    parm(PRM_FLT, 1, empty, nullptr, &without_script),
    multi(outer, middles),
    PRM_Template(),
};

class Node : public OP_Network
{
public:
    static OP_Node* make(OP_Network* net, const char* name, OP_Operator* op)
    {
        return new Node(net, name, op);
    }

    const char* getOpType() const override { return "OBJ"; }
    OP_OpTypeId getOpTypeID() const override { return OBJ_OPTYPE_ID; }

private:
    Node(OP_Network* net, const char* name, OP_Operator* op) : OP_Network(net, name, op) {}
};

} // namespace callback_type

/// A node of that type, "/obj/node", and what its script does.
class CallbackTest : public ::testing::Test
{
protected:
    CallbackTest()
    {
        OP_Network::getOperatorTable("Object")->addOperator(new OP_Operator(
            "scripted", "Scripted", callback_type::Node::make, callback_type::templates, 0, 0));
        node = OPgetDirector()->getManager("obj")->createNode("scripted", "node");
        UTgetUndoManager()->clear();
    }

    ~CallbackTest() override
    {
        EXPECT_EQ(UTgetUndoManager()->getLevel(), 0) << "an undo block is open";
        EXPECT_EQ(workingNode(), "/") << "a working node is left";
    }

    /// Sets the script that every parameter runs.
    static void setScript(CH_ScriptLanguage language, const std::string& text)
    {
        callback_type::script.setCallbackLanguage(language);
        callback_type::script.addTokenValue("script_callback", text.c_str());
    }
    static void python(const std::string& text) { setScript(CH_PYTHON_SCRIPT, text); }
    static void hscript(const std::string& text) { setScript(CH_HSCRIPT, text); }

    /// Calls the callback as the host does.
    int press(const char* parm, int index = 0) { return node->pressParm(node->getParm(parm), index, 0); }

    /// Presses with a Python script that keeps its kwargs; those but "node" and "parm".
    Texts kwargsOf(const char* parm, int index = 0)
    {
        python("import builtins\nbuiltins.seen = kwargs");
        EXPECT_EQ(press(parm, index), 1);
        PYrunPythonStatementsAndExpectNoErrors("import builtins\n"
                                               "flat = []\n"
                                               "for key, value in builtins.seen.items():\n"
                                               "    if key not in ('node', 'parm'):\n"
                                               "        flat += [key, value]\n");
        const PY_Result flat = PYrunPythonExpressionAndExpectNoErrors("flat", PY_Result::STRING_ARRAY);
        Texts texts;
        for (int i = 0; i + 1 < static_cast<int>(flat.myStringArray.entries()); i += 2)
            texts[flat.myStringArray(i).toStdString()] = flat.myStringArray(i + 1).toStdString();
        return texts;
    }

    /// The arguments for a template and an index.
    Texts argsOf(const PRM_Template& tmpl, int index = 0)
    {
        UT_Options args;
        zelk::shop::buildCallbackArgs(node, &tmpl, index, args);
        Texts texts;
        for (UT_Options::iterator arg = args.begin(); !arg.atEnd(); ++arg)
            texts[arg.name()] = args.getOptionS(arg.name()).toStdString();
        return texts;
    }
    Texts argsOf(const char* parm, int index = 0)
    {
        return argsOf(*node->getParm(parm).getTemplatePtr(), index);
    }

    std::string textOf(const char* parm, int component = 0) const
    {
        UT_String text;
        node->evalString(text, parm, component, CHgetEvalTime());
        return text.toStdString();
    }

    void setText(const char* parm, const std::string& text)
    {
        node->setString(text, CH_STRING_LITERAL, parm, 0, 0);
    }

    static std::string workingNode()
    {
        return OPgetDirector()->getCwd(SYSgetSTID())->getFullPath().toStdString();
    }

    static CMD_Manager& commands() { return *OPgetDirector()->getCommandManager(); }
    static bool hasVariable(const char* name)
    {
        UT_String value;
        return commands().getVariable(name, value);
    }

    /// Everything the host said since last asked.
    static std::string said()
    {
        std::string text;
        for (const standin::Message& message : standin::takeMessages())
            text += message.text + "\n";
        return text;
    }

    StandinSession session;
    OP_Node* node;
};

#endif
