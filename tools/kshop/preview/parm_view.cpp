#include "parm_view.h"

#include "parm_facts.h"

#include <OP/OP_Node.h>
#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_Shared.h>
#include <UT/UT_StringArray.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace kshop
{

namespace
{

std::string textOrEmpty(const char* text) { return text ? text : ""; }

Json textOrNull(const char* text) { return text ? Json(text) : Json(nullptr); }

Json conditionJson(const PRM_Template& tmpl, PRM_ConditionalType type)
{
    const PRM_Conditional* condition = tmpl.getConditionalPtr(type);
    UT_String text;
    return condition && condition->getStringFromList(text) ? Json(text.toStdString()) : Json(nullptr);
}

Json spareJson(const PRM_Parm& parm, const char* token)
{
    const PRM_SpareData* spare = parm.getSparePtr();
    return textOrNull(spare ? spare->getValue(token) : nullptr);
}

/// One end counts only when it is there.
Json rangeJson(const PRM_Parm& parm)
{
    const PRM_Range* range = parm.getTemplatePtr()->getRangePtr();
    if (!range)
        return nullptr;
    const bool hasMin = range->getMinFlag() != PRM_RANGE_FREE, hasMax = range->getMaxFlag() != PRM_RANGE_FREE;
    return {{"min", hasMin ? Json(range->getMin()) : Json(nullptr)},
            {"min_hard", range->hasParmMin()},
            {"max", hasMax ? Json(range->getMax()) : Json(nullptr)},
            {"max_hard", range->hasParmMax()}};
}

struct MenuKindRow
{
    int type;
    const char* word;
};

const MenuKindRow menu_kind_rows[] = {
    {PRM_CHOICELIST_REPLACE, "replace"},  {PRM_CHOICELIST_TOGGLE, "toggle"},
    {PRM_CHOICELIST_APPEND, "append"},    {PRM_CHOICELIST_WILD, "wild"},
    {PRM_CHOICELIST_EXCLUSIVE, "normal"}, {PRM_CHOICELIST_SINGLE, "normal"},
};

const char* menuKindWord(int type)
{
    for (const MenuKindRow& row : menu_kind_rows)
        if (row.type == type)
            return row.word;
    return "normal";
}

Json itemsJson(const MenuItems& items)
{
    Json list = Json::array();
    for (const auto& [token, label] : items)
        list.push_back(Json::array({token, label}));
    return list;
}

/// Where an item stands; -1 for a text that is none of them.
int placeOf(const std::string& token, const MenuItems& items)
{
    const auto found =
        std::find_if(items.begin(), items.end(), [&token](const auto& item) { return item.first == token; });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

/// Whole numbers without a fraction, so that the page need not round; null for what JSON has no number for.
Json numberJson(double value, bool whole)
{
    if (!std::isfinite(value))
        return nullptr;
    return whole ? Json(static_cast<std::int64_t>(value)) : Json(value);
}

/// Draws the parameters of one node.
class Pane
{
public:
    Pane(OP_Node& node, const std::set<std::string>* own) : m_node(node), m_own(own) {}

    Json all()
    {
        std::vector<PRM_Parm*> parms;
        parms.reserve(static_cast<std::size_t>(m_node.getParmList()->getTopLevelEntries()));
        for (int i = 0; i < m_node.getParmList()->getTopLevelEntries(); ++i)
            parms.push_back(m_node.getParmList()->getParmPtr(i));
        return nested(parms);
    }

private:
    Json nested(const std::vector<PRM_Parm*>& parms)
    {
        Json list = Json::array();
        addEntries(parms, 0, parms.size(), list);
        return list;
    }

    /// Adds `count` entries from `index` on; a folder is one entry, whatever it holds. Returns the next index.
    std::size_t addEntries(const std::vector<PRM_Parm*>& parms, std::size_t index, std::size_t count,
                           Json& list)
    {
        for (; count > 0 && index < parms.size(); --count)
        {
            PRM_Parm& parm = *parms[index++];
            Json view = commonJson(parm);
            if (kindOf(parm) == ParmKind::folder)
                index = addTabs(parm, parms, index, view);
            else
                addOwnFacts(parm, view);
            list.push_back(std::move(view));
        }
        return index;
    }

    std::size_t addTabs(const PRM_Parm& folder, const std::vector<PRM_Parm*>& parms, std::size_t index,
                        Json& view)
    {
        Json tabs = Json::array();
        for (int i = 0; i < folder.getVectorSize(); ++i)
        {
            const PRM_Default* tab = folder.getTemplatePtr()->getDefault(i);
            const int held = tab ? std::max(tab->getOrdinal(), 0) : 0;
            Json inside = Json::array();
            index = addEntries(parms, index, static_cast<std::size_t>(held), inside);
            tabs.push_back(
                {{"label", tab ? textOrEmpty(tab->getString()) : ""}, {"parms", std::move(inside)}});
        }
        view["style"] = spareJson(folder, "group_type");
        view["tabs"] = std::move(tabs);
        view["value"] = numberJson(numberOf(folder, 0), true);
        return index;
    }

    Json commonJson(const PRM_Parm& parm) const
    {
        const PRM_Template& tmpl = *parm.getTemplatePtr();
        const Json script = spareJson(parm, "script_callback");
        return {{"kind", kindWord(kindOf(parm))},
                {"token", textOrEmpty(parm.getToken())},
                {"label", textOrEmpty(parm.getLabel())},
                {"help", textOrNull(tmpl.getHelpText())},
                {"enabled", parm.getEnableState()},
                {"visible", parm.getVisibleState() && !tmpl.getInvisible()},
                {"invisible", tmpl.getInvisible()},
                {"join_next", tmpl.getJoinNext() || PRM_IS_JOIN(tmpl.getTypeExtended())},
                {"label_shown", !tmpl.getLabelNone() && tmpl.getTypeExtended() != PRM_TYPE_NO_LABEL},
                {"disable_when", conditionJson(tmpl, PRM_CONDTYPE_DISABLE)},
                {"hide_when", conditionJson(tmpl, PRM_CONDTYPE_HIDE)},
                {"callback", script.is_string() && !script.get_ref<const std::string&>().empty()},
                {"callback_script", script},
                {"changed", differsFromDefault(parm)},
                {"extra", isExtra(parm)}};
    }

    bool isExtra(const PRM_Parm& parm) const
    {
        const PRM_Parm* top = &parm;
        while (top->getParentMultiParm())
            top = top->getParentMultiParm();
        return m_own && m_own->count(top->getToken()) == 0;
    }

    void addOwnFacts(PRM_Parm& parm, Json& view)
    {
        const ParmKind kind = kindOf(parm);
        if (holdsValue(kind))
            addExpressions(parm, view);
        switch (kind)
        {
        case ParmKind::floats:
        case ParmKind::integers:
        case ParmKind::color:
        case ParmKind::vector:
        case ParmKind::matrix:
            addNumbers(parm, kind == ParmKind::integers, view);
            break;
        case ParmKind::toggle:
            view["value"] = numberOf(parm, 0) != 0;
            break;
        case ParmKind::strip:
            view["value"] = numberJson(numberOf(parm, 0), true);
            view["items"] = itemsJson(menuItemsOf(m_node, parm));
            return;
        case ParmKind::menu:
            addChoice(parm, view);
            return;
        case ParmKind::list:
        case ParmKind::ramp:
            addInstances(parm, view);
            return;
        case ParmKind::string:
        case ParmKind::file:
        case ParmKind::node:
        case ParmKind::label:
            addText(parm, kind, view);
            break;
        default:
            break;
        }
        if (const PRM_ChoiceList* menu = parm.getTemplatePtr()->getChoiceListPtr())
            view["menu"] = menuJson(parm, *menu);
    }

    Json menuJson(const PRM_Parm& parm, const PRM_ChoiceList& menu)
    {
        const MenuItems items = menuItemsOf(m_node, parm);
        const bool scripted = menu.getScript().buffer() != nullptr;
        return {{"kind", menuKindWord(menu.getType())},
                {"items", itemsJson(items)},
                {"scripted", scripted},
                {"error", scripted && items.empty() ? errorOf(parm, 0) : Json(nullptr)}};
    }

    void addChoice(const PRM_Parm& parm, Json& view)
    {
        const MenuItems items = menuItemsOf(m_node, parm);
        const std::string token = textOf(parm, 0);
        const bool isText = parm.getType().isStringType();
        view["value"] = isText ? Json(placeOf(token, items)) : numberJson(numberOf(parm, 0), true);
        view["current"] = token;
        view["items"] = itemsJson(items);
        if (const PRM_ChoiceList* menu = parm.getTemplatePtr()->getChoiceListPtr())
            view["menu"] = menuJson(parm, *menu);
    }

    void addNumbers(const PRM_Parm& parm, bool whole, Json& view)
    {
        Json values = Json::array();
        for (int i = 0; i < parm.getVectorSize(); ++i)
            values.push_back(numberJson(numberOf(parm, i), whole));
        view["size"] = parm.getVectorSize();
        view["values"] = std::move(values);
        view["range"] = rangeJson(parm);
        view["slider"] = parm.getVectorSize() == 1 && parm.getTemplatePtr()->getRangePtr();
    }

    /// The channels' names, and what is typed into those that hold no plain value.
    void addExpressions(const PRM_Parm& parm, Json& view)
    {
        Json channels = Json::array(), texts = Json::array(), expressions = Json::array();
        for (int i = 0; i < parm.getVectorSize(); ++i)
        {
            const bool has = parm.hasExpression(i);
            channels.push_back(parm.getChannelToken(i).toStdString());
            texts.push_back(has ? textOrNull(parm.getExpression(i)) : Json(nullptr));
            expressions.push_back(has ? expressionJson(parm, i) : Json(nullptr));
        }
        view["channels"] = std::move(channels);
        view["texts"] = std::move(texts);
        view["expressions"] = std::move(expressions);
    }

    Json expressionJson(const PRM_Parm& parm, int component)
    {
        const std::string text = textOrEmpty(parm.getExpression(component));
        textOf(parm, component); // only what was evaluated has an error
        return {{"text", text},
                {"language", expressionLanguageOf(parm, component)},
                {"error", errorOf(parm, component)}};
    }

    void addText(const PRM_Parm& parm, ParmKind kind, Json& view)
    {
        const bool isPlain = !parm.hasExpression(0);
        view["value"] = isPlain ? rawTextOf(parm, 0) : textOf(parm, 0);
        if (kind == ParmKind::file)
        {
            view["pattern"] = spareJson(parm, "filechooser_pattern");
            view["image"] = parm.getType().withInterfaceFlag(PRM_IFACE_FLAGS, false) == PRM_PICFILE;
        }
        if (kind == ParmKind::node)
            view["filter"] = spareJson(parm, "opfilter");
        const PRM_ChoiceList* menu = parm.getTemplatePtr()->getChoiceListPtr();
        if (kind == ParmKind::string)
            view["menu_kind"] = menu ? Json(menuKindWord(menu->getType())) : Json(nullptr);
    }

    void addInstances(PRM_Parm& parm, Json& view)
    {
        const std::vector<std::vector<PRM_Parm*>> instances = instancesOf(parm);
        if (parm.isRampType())
            addKeys(parm, instances, view);
        view["count"] = parm.getMultiParmNumItems();
        view["first"] = parm.getMultiStartOffset();
        Json list = Json::array();
        for (const std::vector<PRM_Parm*>& instance : instances)
            list.push_back({{"parms", nested(instance)}});
        view["instances"] = std::move(list);
    }

    void addKeys(const PRM_Parm& ramp, const std::vector<std::vector<PRM_Parm*>>& instances, Json& view)
    {
        Json keys = Json::array();
        for (const std::vector<PRM_Parm*>& instance : instances)
            if (instance.size() == PRM_RAMP_NUM_PARMS)
                keys.push_back(keyJson(instance));
        view["ramp"] = ramp.isRampTypeColor() ? "color" : "float";
        view["keys"] = std::move(keys);
        const PRM_ChoiceList* menu = PRMgetRampInterpMenu();
        const PRM_Name* names = menu->choiceNamesPtr();
        Json items = Json::array();
        for (; names->getToken() && *names->getToken(); ++names)
            items.push_back(Json::array({names->getToken(), names->getLabel()}));
        view["interpolations"] = std::move(items);
    }

    Json keyJson(const std::vector<PRM_Parm*>& key)
    {
        const PRM_Parm& value = *key[PRM_RAMP_PARM_VAL];
        Json parts = Json::array();
        for (int i = 0; i < value.getVectorSize(); ++i)
            parts.push_back(numberJson(numberOf(value, i), false));
        return {{"position", numberJson(numberOf(*key[PRM_RAMP_PARM_POS], 0), false)},
                {"value", parts.size() == 1 ? parts[0] : parts},
                {"interpolation", numberJson(numberOf(*key[PRM_RAMP_PARM_INTERP], 0), true)}};
    }

    /// The sentence about a channel, without its path; null when all is well.
    Json errorOf(const PRM_Parm& parm, int component) const
    {
        const std::string head =
            m_node.getFullPath().toStdString() + "/" + parm.getChannelToken(component).toStdString() + ": ";
        for (const std::string& error : parmErrorsOf(m_node))
            if (error.compare(0, head.size(), head) == 0)
                return error.substr(head.size());
        return nullptr;
    }

    OP_Node& m_node;
    const std::set<std::string>* m_own;
};

} // namespace

Json paneJson(OP_Node& node, const std::set<std::string>* own) { return Pane(node, own).all(); }

std::vector<std::string> parmErrorsOf(const OP_Node& node)
{
    UT_StringArray errors;
    node.getParmErrors(errors);
    std::vector<std::string> result;
    for (const UT_StringHolder& error : errors)
        result.push_back(error.toStdString());
    return result;
}

} // namespace kshop
