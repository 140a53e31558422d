#ifndef TESTS_STANDIN_HOST_PYTHON_NODE_FIXTURE_H
#define TESTS_STANDIN_HOST_PYTHON_NODE_FIXTURE_H

#include "python_fixture.h"

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <PRM/PRM_Include.h>

/// A node with one parameter of every kind, made anew for each test; scripts know it as `node`.
class NodeTest : public PythonTest
{
protected:
    void SetUp() override
    {
        PythonTest::SetUp();
        static const bool registered = registerType();
        ASSERT_TRUE(registered);
        OP_Network* obj = OPgetDirector()->getManager("obj");
        node = obj->createNode("every_parm", "every");
        ASSERT_NE(node, nullptr);
        run("node = hou.node('/obj/every')");
    }

    void TearDown() override
    {
        if (OP_Node* left = OPgetDirector()->findNode("/obj/every"))
            left->getParent()->destroyNode(left);
        PythonTest::TearDown();
    }

    OP_Node* node = nullptr;

private:
    class Node : public OP_Network
    {
    public:
        Node(OP_Network* parent, const char* name, OP_Operator* op) : OP_Network(parent, name, op) {}
    };

    static OP_Node* construct(OP_Network* parent, const char* name, OP_Operator* op)
    {
        return new Node(parent, name, op);
    }

    /// Writes what it was called with into the node's "log".
    static int note(void* data, int index, double, const PRM_Template* tmpl)
    {
        auto* called = static_cast<OP_Node*>(data);
        const std::string text = std::string(tmpl->getToken()) + " " + std::to_string(index);
        called->setString(UT_String(text), CH_STRING_LITERAL, "log", 0, 0);
        return 1;
    }

    static bool registerType()
    {
        // The host keeps all of this by pointer for the whole process.
        static PRM_Name names[] = {
            PRM_Name("tabs", ""),       PRM_Name("amount", "Amount"), PRM_Name("color", "Color"),
            PRM_Name("count", "Count"), PRM_Name("on", "On"),         PRM_Name("text", "Text"),
            PRM_Name("mode", "Mode"),   PRM_Name("script", "Script"), PRM_Name("go", "Go"),
            PRM_Name("note", "Note"),   PRM_Name("list", "List"),     PRM_Name("list_#", "Entry #"),
            PRM_Name("curve", "Curve"), PRM_Name("tint", "Tint"),     PRM_Name("log", "Log"),
            PRM_Name("bits", "Bits"),   PRM_Name("shape", "Shape"),
        };
        static PRM_Default tabs[] = {PRM_Default(2, "Main"), PRM_Default(3, "More")};
        static PRM_Default amount(0.5);
        static PRM_Default text(0, "hello");
        static PRM_Default mode(0, "b");
        static PRM_Default note_text(0, "Read me");
        static PRM_Name mode_items[] = {PRM_Name("a", "First"), PRM_Name("b", "Second"), PRM_Name()};
        static PRM_ChoiceList mode_menu(PRM_CHOICELIST_SINGLE, mode_items);
        static PRM_ChoiceList bits_menu(PRM_CHOICELIST_TOGGLE, mode_items);
        static PRM_ChoiceList script_menu(
            PRM_CHOICELIST_REPLACE,
            "names = [node.name() for node in (kwargs['node'],)]\n"
            "return [names[0], names[0].upper(), kwargs['parm'].name(), 'Parm']",
            CH_PYTHON_SCRIPT);
        static PRM_Range range(PRM_RANGE_RESTRICTED, 0, PRM_RANGE_UI, 2);
        static PRM_SpareData spare(PRM_SpareToken("unit", "m"));
        static PRM_Conditional unless_on("{ on == 0 }");
        static PRM_ConditionalGroup hide_unless_on;
        hide_unless_on.addConditional("{ on == 0 }", PRM_CONDTYPE_HIDE);
        static PRM_Template list_children[] = {PRM_Template(PRM_FLT, 1, &names[11], PRMzeroDefaults),
                                               PRM_Template()};
        static PRM_Template templates[] = {
            PRM_Template(PRM_SWITCHER, 2, &names[0], tabs),
            PRM_Template(PRM_FLT, 1, &names[1], &amount, 0, &range, PRM_Callback(), &spare, 1, "How much"),
            PRM_Template(PRM_RGB, 3, &names[2], PRMoneDefaults, 0, 0, PRM_Callback(&note)),
            PRM_Template(PRM_INT, 2, &names[3], PRMtwoDefaults),
            PRM_Template(PRM_TOGGLE, 1, &names[4], PRMzeroDefaults),
            PRM_Template(PRM_STRING, 1, &names[5], &text, 0, 0, PRM_Callback(), 0, 1, 0, &unless_on),
            PRM_Template(PRM_STRING, 1, &names[6], &mode, &mode_menu),
            PRM_Template(PRM_STRING, 1, &names[7], 0, &script_menu),
            PRM_Template(PRM_CALLBACK, 1, &names[8], 0, 0, 0, PRM_Callback(&note)),
            PRM_Template(PRM_LABEL, 1, &names[9], &note_text, 0, 0, PRM_Callback(), 0, 1, 0, &hide_unless_on),
            PRM_Template(PRM_MULTITYPE_LIST, list_children, 1, &names[10], PRMtwoDefaults),
            PRM_Template(PRM_MULTITYPE_RAMP_FLT, nullptr, 1, &names[12], PRMtwoDefaults),
            PRM_Template(PRM_MULTITYPE_RAMP_RGB, nullptr, 1, &names[13], PRMtwoDefaults),
            PRM_Template(PRM_STRING, 1, &names[14], 0),
            PRM_Template(PRM_BUTTONSTRIP, 1, &names[15], PRMzeroDefaults, &bits_menu),
            PRM_Template(PRM_ORD, 1, &names[16], PRMzeroDefaults, &mode_menu),
            PRM_Template()};
        OP_OperatorTable* table = OP_Network::getOperatorTable(OBJ_TABLE_NAME);
        return table->addOperator(
            new OP_Operator("every_parm", "Every Parameter", &construct, templates, 0, 2));
    }
};

#endif
