#include "parm_access.h"

#include "op/op_spare_template.h"

#include <PRM/PRM_Include.h>
#include <PRM/PRM_ParmList.h>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <utility>
#include <vector>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

std::string textIn(const py::dict& facts, const char* key) { return facts[key].cast<Text>().value; }
bool flagIn(const py::dict& facts, const char* key) { return facts[key].cast<bool>(); }

struct KindRow
{
    const char* kind;
    const char* detail; // naming scheme of numbers, string type of strings; null for any
    const PRM_Type* type;
};

const KindRow kind_rows[] = {
    {"float", "RGBA", &PRM_RGB},
    {"float", "XYZW", &PRM_XYZ},
    {"float", "UVW", &PRM_UVW},
    {"float", nullptr, &PRM_FLT},
    {"int", nullptr, &PRM_INT}, // has no suffixes but numbers
    {"toggle", nullptr, &PRM_TOGGLE},
    {"string", "NodeReference", &PRM_STRING_OPREF},
    {"string", "NodeReferenceList", &PRM_STRING_OPLIST},
    {"string", nullptr, &PRM_STRING},
};

struct FileRow
{
    const char* fileType;
    const PRM_Type* type;
};

const FileRow file_rows[] = {
    {"Image", &PRM_PICFILE}, {"Geometry", &PRM_GEOFILE}, {"Directory", &PRM_DIRECTORY}, {"Any", &PRM_FILE}};

/// Components of one are plain numbers, and the host has suffixes for so many components only.
bool schemeFits(const std::string& scheme, int size)
{
    const int most = scheme == "UVW" ? 3 : 4;
    return size > 1 && size <= most;
}

PRM_Type fileTypeOf(const std::string& name)
{
    for (const FileRow& row : file_rows)
        if (name == row.fileType)
            return *row.type;
    return PRM_FILE;
}

PRM_Type typeOf(const py::dict& facts)
{
    const std::string kind = textIn(facts, "kind");
    std::string detail = textIn(facts, kind == "string" ? "string_type" : "naming");
    if (detail == "FileReference")
        return fileTypeOf(textIn(facts, "file_type"));
    const int size = facts["size"].cast<int>();
    if (kind == "float" && !schemeFits(detail, size))
        detail.clear();
    if (detail == "RGBA" && size == 4)
        return PRM_RGBA;
    for (const KindRow& row : kind_rows)
        if (kind == row.kind && (!row.detail || detail == row.detail))
            return *row.type;
    fail("A parameter of kind \"" + kind + "\" cannot be a spare parameter.");
}

void makeDefaults(SpareTemplate& made, const py::dict& facts)
{
    const py::tuple values = facts["defaults"];
    const py::tuple expressions = facts["expressions"];
    const py::tuple isPython = facts["expressions_python"];
    const bool strings = textIn(facts, "kind") == "string";
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        const std::string expression = expressions[i].cast<Text>().value;
        const CH_StringMeaning language = isPython[i].cast<bool>() ? CH_PYTHON_EXPRESSION : CH_OLD_EXPRESSION;
        const double number = strings ? 0 : values[i].cast<double>();
        if (!expression.empty())
            made.defaults.push_back(PRM_Default(number, made.keep(expression), language));
        else if (strings)
            made.defaults.push_back(PRM_Default(0, made.keep(values[i].cast<Text>().value)));
        else
            made.defaults.push_back(PRM_Default(number));
    }
}

/// Null when the parameter has no range.
PRM_Range* makeRange(SpareTemplate& made, const py::dict& facts)
{
    if (!facts.contains("min"))
        return nullptr;
    made.range = PRM_Range(
        flagIn(facts, "min_strict") ? PRM_RANGE_RESTRICTED : PRM_RANGE_UI, facts["min"].cast<double>(),
        flagIn(facts, "max_strict") ? PRM_RANGE_RESTRICTED : PRM_RANGE_UI, facts["max"].cast<double>());
    return &made.range;
}

PRM_ChoiceListType menuTypeOf(const std::string& name)
{
    if (name == "StringReplace")
        return PRM_CHOICELIST_REPLACE;
    return name == "StringToggle" ? PRM_CHOICELIST_TOGGLE : PRM_CHOICELIST_SINGLE;
}

/// Null when the parameter has no menu.
PRM_ChoiceList* makeMenu(SpareTemplate& made, const py::dict& facts)
{
    if (!facts.contains("menu_items"))
        return nullptr;
    const PRM_ChoiceListType type = menuTypeOf(textIn(facts, "menu_type"));
    const std::string script = textIn(facts, "menu_script");
    const py::tuple tokens = facts["menu_items"];
    const py::tuple labels = facts["menu_labels"];
    if (!script.empty())
        made.menu.reset(new PRM_ChoiceList(type, made.keep(script),
                                           flagIn(facts, "menu_python") ? CH_PYTHON_SCRIPT : CH_HSCRIPT));
    else if (!tokens.empty())
    {
        for (std::size_t i = 0; i < tokens.size(); ++i)
            made.items.push_back(
                PRM_Name(made.keep(tokens[i].cast<Text>().value), made.keep(labels[i].cast<Text>().value)));
        made.items.push_back(PRM_Name());
        made.menu.reset(new PRM_ChoiceList(type, made.items.data()));
    }
    return made.menu.get();
}

void makeSpareData(SpareTemplate& made, const py::dict& facts)
{
    for (const auto& pair : facts["spare"].cast<py::dict>())
        made.spare.addTokenValue(UT_StringRef(pair.first.cast<Text>().value),
                                 pair.second.cast<Text>().c_str());
    const std::string callback = textIn(facts, "callback_script");
    if (callback.empty())
        return;
    made.spare.setCallbackLanguage(flagIn(facts, "callback_python") ? CH_PYTHON_SCRIPT : CH_HSCRIPT);
    made.spare.addTokenValue("script_callback", callback.c_str());
}

/// Null when there is no condition.
PRM_ConditionalBase* makeConditions(SpareTemplate& made, const py::dict& facts)
{
    const std::string disable = textIn(facts, "disable_when");
    const std::string hide = textIn(facts, "hide_when");
    if (!disable.empty())
        made.conditions.addConditional(disable.c_str(), PRM_CONDTYPE_DISABLE);
    if (!hide.empty())
        made.conditions.addConditional(hide.c_str(), PRM_CONDTYPE_HIDE);
    return disable.empty() && hide.empty() ? nullptr : &made.conditions;
}

PRM_Template* makeTemplate(const py::dict& facts)
{
    const PRM_Type type = typeOf(facts);
    std::unique_ptr<SpareTemplate> owner(new SpareTemplate);
    SpareTemplate& made = *owner;
    made.name = PRM_Name(made.keep(textIn(facts, "token")), made.keep(textIn(facts, "label")));
    makeDefaults(made, facts);
    makeSpareData(made, facts);
    const std::string help = textIn(facts, "help");
    PRM_Template& tmpl = made.templates[0];
    tmpl =
        PRM_Template(type, flagIn(facts, "no_label") ? PRM_TYPE_NO_LABEL : PRM_TYPE_NONE,
                     PRM_Template::PRM_EXPORT_MIN, facts["size"].cast<int>(), &made.name,
                     made.defaults.data(), makeMenu(made, facts), makeRange(made, facts), PRM_Callback(),
                     &made.spare, 1, help.empty() ? nullptr : made.keep(help), makeConditions(made, facts));
    tmpl.setInvisible(flagIn(facts, "invisible"));
    tmpl.setJoinNext(flagIn(facts, "join_next"));
    return keepSpareTemplate(std::move(owner));
}

bool isParmName(const std::string& name)
{
    const auto isWordChar = [](unsigned char c) { return c < 128 && (std::isalnum(c) || c == '_'); };
    return !name.empty() && !std::isdigit(static_cast<unsigned char>(name[0])) &&
           std::all_of(name.begin(), name.end(), isWordChar);
}

/// Refuses what would hide a parameter that is there: its token or one of its channels.
void requireFree(OP_Node& node, const std::string& name)
{
    if (node.getParmList()->getParmPtrFromChannel(name.c_str()))
        fail("\"" + pathOf(node) + "\" already has a parameter \"" + name + "\".");
}

void addSpare(int id, const py::dict& facts)
{
    OP_Node& node = nodeOf(id);
    const std::string name = textIn(facts, "token");
    if (!isParmName(name))
        fail("\"" + name +
             "\" is no name for a parameter: it is made of letters, digits and \"_\", and no digit comes "
             "first.");
    requireFree(node, name);
    PRM_Template* templates = makeTemplate(facts);
    for (int i = 0; i < templates->getVectorSize(); ++i)
        requireFree(node, templates->getChannelToken(i).toStdString());
    node.addSpareParms(templates);
    node.refreshParms();
}

void removeSpare(int id, const Text& token)
{
    OP_Node& node = nodeOf(id);
    PRM_Parm& parm = parmOf(id, token);
    if (!node.removeSpareParm(&parm))
        fail("\"" + pathOf(node) + "/" + token.value + "\" is not a spare parameter.");
}

} // namespace

void bindSpareParms(py::module_& module)
{
    module.def("add_spare", &addSpare);
    module.def("remove_spare", &removeSpare);
}

} // namespace python
} // namespace standin
