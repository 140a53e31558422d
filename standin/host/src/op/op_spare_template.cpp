#include "op_spare_template.h"

#include "op_text.h"

#include <OP/OP_Node.h>
#include <UT/UT_StringArray.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace standin
{

namespace
{

// --- writing ----------------------------------------------------------------------------------------------------

void writeText(std::string& text, const char* key, const char* value)
{
    if (value && *value)
        text += std::string("    ") + key + " " + quoteText(value) + "\n";
}

void writeDefaults(std::string& text, const PRM_Template& tmpl)
{
    for (int i = 0; i < tmpl.getVectorSize(); ++i)
        if (const PRM_Default* one = tmpl.getDefault(i))
        {
            text += "    default " + printNumber(one->getFloat());
            if (one->getString())
                text += " " + quoteText(one->getString()) + " " +
                        std::to_string(static_cast<int>(one->getStringMeaning()));
            text += "\n";
        }
}

void writeMenu(std::string& text, const PRM_ChoiceList* menu)
{
    if (!menu)
        return;
    text += "    menu " + std::to_string(static_cast<int>(menu->getType()));
    if (menu->getScript().isstring())
        text += std::string(menu->getScriptLanguage() == CH_PYTHON_SCRIPT ? " python " : " hscript ") +
                quoteText(menu->getScript().toStdString());
    text += "\n";
    for (const PRM_Name* name = menu->choiceNamesPtr(); name && name->getToken() && *name->getToken(); ++name)
        text += "    item " + quoteText(name->getToken()) + " " +
                quoteText(name->getLabel() ? name->getLabel() : "") + "\n";
}

void writeRange(std::string& text, const PRM_Range* range)
{
    if (range)
        text += "    range " + std::to_string(static_cast<int>(range->getMinFlag())) + " " +
                printNumber(range->getMin()) + " " + std::to_string(static_cast<int>(range->getMaxFlag())) +
                " " + printNumber(range->getMax()) + "\n";
}

void writeTags(std::string& text, const PRM_SpareData* spare)
{
    UT_StringArray tokens;
    if (spare)
        spare->getTokens(tokens);
    for (exint i = 0; i < tokens.entries(); ++i)
        text +=
            "    tag " + quoteText(tokens(i).buffer()) + " " + quoteText(spare->getValue(tokens(i))) + "\n";
}

void writeCondition(std::string& text, const char* key, const PRM_Template& tmpl, PRM_ConditionalType type)
{
    const PRM_Conditional* condition = tmpl.getConditionalPtr(type);
    UT_String written;
    if (condition && condition->getStringFromList(written))
        writeText(text, key, written.nonNullBuffer());
}

std::string textOf(const PRM_Template& tmpl)
{
    const char* type = PRMtypeName(tmpl.getType());
    std::string text = "parm {\n    name " + quoteText(tmpl.getToken()) + "\n";
    text += "    label " + quoteText(tmpl.getLabel()) + "\n";
    text += std::string("    type ") + (type ? type : "none") + "\n";
    text += "    size " + std::to_string(tmpl.getVectorSize()) + "\n";
    if (tmpl.getTypeExtended() != PRM_TYPE_NONE)
        text += "    extended " + std::to_string(static_cast<int>(tmpl.getTypeExtended())) + "\n";
    for (const auto& flag :
         {std::make_pair("invisible", tmpl.getInvisible()), std::make_pair("joinnext", tmpl.getJoinNext()),
          std::make_pair("nolabel", tmpl.getLabelNone())})
        if (flag.second)
            text += std::string("    ") + flag.first + "\n";
    writeDefaults(text, tmpl);
    writeMenu(text, tmpl.getChoiceListPtr());
    writeRange(text, tmpl.getRangePtr());
    writeTags(text, tmpl.getSparePtr());
    writeText(text, "help", tmpl.getHelpText());
    writeCondition(text, "disablewhen", tmpl, PRM_CONDTYPE_DISABLE);
    writeCondition(text, "hidewhen", tmpl, PRM_CONDTYPE_HIDE);
    return text + "}\n";
}

// --- reading ----------------------------------------------------------------------------------------------------

/// One block on its way to a template: what its lines said.
struct Draft
{
    std::unique_ptr<SpareTemplate> made;
    std::string token;
    std::string label;
    const PRM_Type* type = nullptr;
    int size = 1;
    int extended = 0;
    bool invisible = false;
    bool joinNext = false;
    bool noLabel = false;
    bool hasRange = false;
    bool hasMenu = false;
    bool hasConditions = false;
    int menuType = 0;
    std::string menuScript;
    bool menuPython = false;
    const char* help = nullptr;
};

std::string textAt(const Line& line, std::size_t i) { return i < line.size() ? line[i].text : std::string(); }

double numberAt(const Line& line, std::size_t i)
{
    double value = 0;
    readNumber(textAt(line, i), value);
    return value;
}

/// Limited, so that a damaged number cannot ask for more than there is.
int smallNumberAt(const Line& line, std::size_t i)
{
    const double value = numberAt(line, i);
    return value >= 0 && value <= 0xFFFF ? static_cast<int>(value) : 0;
}

void readDefault(Draft& draft, const Line& line)
{
    const int meaning = std::min(smallNumberAt(line, 3), static_cast<int>(CH_PYTHON_EXPRESSION));
    draft.made->defaults.push_back(line.size() > 2
                                       ? PRM_Default(numberAt(line, 1), draft.made->keep(textAt(line, 2)),
                                                     static_cast<CH_StringMeaning>(meaning))
                                       : PRM_Default(numberAt(line, 1)));
}

void readRange(Draft& draft, const Line& line)
{
    draft.hasRange = true;
    draft.made->range = PRM_Range(static_cast<PRM_RangeFlag>(smallNumberAt(line, 1) & 3), numberAt(line, 2),
                                  static_cast<PRM_RangeFlag>(smallNumberAt(line, 3) & 3), numberAt(line, 4));
}

void readMenu(Draft& draft, const Line& line)
{
    draft.hasMenu = true;
    draft.menuType = smallNumberAt(line, 1);
    draft.menuPython = textAt(line, 2) == "python";
    draft.menuScript = textAt(line, 3);
}

void addCondition(Draft& draft, const Line& line, PRM_ConditionalType type)
{
    draft.hasConditions = true;
    draft.made->conditions.addConditional(draft.made->keep(textAt(line, 1)), type);
}

struct KeyRow
{
    const char* key;
    void (*read)(Draft& draft, const Line& line);
};

const KeyRow key_rows[] = {
    {"name", [](Draft& draft, const Line& line) { draft.token = textAt(line, 1); }},
    {"label", [](Draft& draft, const Line& line) { draft.label = textAt(line, 1); }},
    {"type", [](Draft& draft, const Line& line) { draft.type = PRMtypeOfName(textAt(line, 1).c_str()); }},
    {"size", [](Draft& draft, const Line& line) { draft.size = smallNumberAt(line, 1); }},
    {"extended", [](Draft& draft, const Line& line) { draft.extended = smallNumberAt(line, 1); }},
    {"invisible", [](Draft& draft, const Line&) { draft.invisible = true; }},
    {"joinnext", [](Draft& draft, const Line&) { draft.joinNext = true; }},
    {"nolabel", [](Draft& draft, const Line&) { draft.noLabel = true; }},
    {"default", &readDefault},
    {"menu", &readMenu},
    {"item",
     [](Draft& draft, const Line& line)
     {
         draft.made->items.push_back(
             PRM_Name(draft.made->keep(textAt(line, 1)), draft.made->keep(textAt(line, 2))));
     }},
    {"range", &readRange},
    {"tag", [](Draft& draft, const Line& line)
     { draft.made->spare.addTokenValue(UT_StringRef(textAt(line, 1)), textAt(line, 2).c_str()); }},
    {"help", [](Draft& draft, const Line& line) { draft.help = draft.made->keep(textAt(line, 1)); }},
    {"disablewhen", [](Draft& draft, const Line& line) { addCondition(draft, line, PRM_CONDTYPE_DISABLE); }},
    {"hidewhen", [](Draft& draft, const Line& line) { addCondition(draft, line, PRM_CONDTYPE_HIDE); }},
};

/// Null when there is no menu.
PRM_ChoiceList* makeMenu(Draft& draft)
{
    SpareTemplate& made = *draft.made;
    const auto type = static_cast<PRM_ChoiceListType>(draft.menuType);
    if (!draft.hasMenu)
        return nullptr;
    if (!draft.menuScript.empty())
        made.menu.reset(new PRM_ChoiceList(type, made.keep(draft.menuScript),
                                           draft.menuPython ? CH_PYTHON_SCRIPT : CH_HSCRIPT));
    else
    {
        made.items.push_back(PRM_Name());
        made.menu.reset(new PRM_ChoiceList(type, made.items.data()));
    }
    return made.menu.get();
}

PRM_Template* makeTemplate(Draft& draft)
{
    SpareTemplate& made = *draft.made;
    made.name = PRM_Name(made.keep(draft.token), made.keep(draft.label));
    made.defaults.resize(static_cast<std::size_t>(std::max(draft.size, 1)));
    PRM_Template& tmpl = made.templates[0];
    tmpl = PRM_Template(*draft.type, static_cast<PRM_TypeExtended>(draft.extended),
                        PRM_Template::PRM_EXPORT_MIN, draft.size, &made.name, made.defaults.data(),
                        makeMenu(draft), draft.hasRange ? &made.range : nullptr, PRM_Callback(), &made.spare,
                        1, draft.help, draft.hasConditions ? &made.conditions : nullptr);
    tmpl.setInvisible(draft.invisible);
    tmpl.setJoinNext(draft.joinNext);
    tmpl.setLabelNone(draft.noLabel);
    return keepSpareTemplate(std::move(draft.made));
}

void finish(OP_Node& node, Draft& draft, std::vector<std::string>& problems)
{
    if (draft.token.empty() || !draft.type || draft.type->getBasicType() == PRM_BASIC_NONE)
    {
        problems.push_back("the spare parameter \"" + draft.token +
                           "\" is of no kind that is known here and is left out");
        return;
    }
    if (node.getParmList()->getParmPtrFromChannel(draft.token.c_str()))
        return;
    node.addSpareParms(makeTemplate(draft));
}

} // namespace

PRM_Template* keepSpareTemplate(std::unique_ptr<SpareTemplate> made)
{
    static auto* all = new std::unordered_map<std::string, std::unique_ptr<SpareTemplate>>;
    // What a scene keeps of a template is all that there is to it.
    std::unique_ptr<SpareTemplate>& kept = (*all)[textOf(made->templates[0])];
    if (!kept)
        kept = std::move(made);
    return kept->templates;
}

std::string writeSpareParms(const OP_Node& node)
{
    std::string text;
    const PRM_ParmList& parms = *node.getParmList();
    for (int i = 0; i < parms.getTopLevelEntries(); ++i)
        if (parms.getParmPtr(i)->isSpareParm())
            text += textOf(*parms.getParmPtr(i)->getTemplatePtr());
    return text;
}

void readSpareParms(OP_Node& node, const std::string& text, std::vector<std::string>& problems)
{
    std::string why;
    Draft draft;
    for (const Line& line : readLines(text, why))
    {
        if (line[0].is("parm"))
        {
            draft = Draft();
            draft.made.reset(new SpareTemplate);
        }
        else if (!draft.made)
            continue;
        else if (line[0].is("}"))
        {
            finish(node, draft, problems);
            draft.made.reset();
        }
        else
            for (const KeyRow& row : key_rows)
                if (line[0].is(row.key))
                    row.read(draft, line);
    }
    if (draft.made)
        why = "the description of the spare parameter \"" + draft.token + "\" has no end";
    if (!why.empty())
        problems.push_back(why);
}

} // namespace standin
