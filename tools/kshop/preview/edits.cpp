#include "edits.h"

#include "../text.h"
#include "edit_values.h"
#include "parm_facts.h"
#include "request_error.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Node.h>
#include <PRM/PRM_ParmList.h>
#include <UT/UT_UndoManager.h>
#include <standin/host.h>

#include <fmt/format.h>

#include <algorithm>

namespace kshop
{

namespace
{

using Sentences = std::vector<std::string>;

/// One edit on its way. Callbacks may delete the node and its parameters, so both are looked up again each time.
struct Edit
{
    PreviewScene& scene;
    const Json& request;
    int nodeId;
    Sentences errors;

    OP_Node* node() const { return OP_Node::lookupNode(nodeId); }
    OP_Node& livingNode() const
    {
        OP_Node* found = node();
        if (!found)
            throw RequestError(409, "The node was deleted in the middle of the edit, perhaps by a callback.");
        return *found;
    }
    PRM_Parm& parm(const std::string& token) const
    {
        PRM_Parm* found = livingNode().getParmPtr(token.c_str());
        if (!found)
            throw RequestError(404, fmt::format("The node has no parameter {}.", kshop::quoted(token)));
        return *found;
    }
    PRM_Parm& multi() const
    {
        PRM_Parm& found = parm(textMember(request, "token"));
        if (!found.isMultiParm())
            throw RequestError(400, fmt::format("The parameter {} is no list and no ramp.",
                                                kshop::quoted(found.getToken())));
        return found;
    }
};

/// A parameter's component that an edit names.
struct Channel
{
    std::string token;
    int component;
};

Channel channelOf(const Edit& edit)
{
    const std::string name = textMember(edit.request, "channel");
    int component = 0;
    const PRM_Parm* parm = edit.livingNode().getParmList()->getParmPtrFromChannel(name.c_str(), &component);
    if (!parm || name != parm->getChannelToken(component).toStdString())
        throw RequestError(404, fmt::format("The node has no channel {}.", kshop::quoted(name)));
    return {parm->getToken(), component};
}

void requireValueHolder(const PRM_Parm& parm)
{
    if (holdsValue(kindOf(parm)))
        return;
    const char* remedy = parm.isMultiParm() ? "; its instances do" : "";
    throw RequestError(
        400, fmt::format("The parameter {} holds no value{}.", kshop::quoted(parm.getToken()), remedy));
}

/// True when the component has this very value, and no expression.
bool hasAlready(const PRM_Parm& parm, int component, const std::string& text)
{
    fpreal value = 0;
    if (parm.hasExpression(component))
        return false;
    if (parm.getType().isStringType())
        return rawTextOf(parm, component) == text;
    return parm.readLiteral(text.c_str(), value) && numberOf(parm, component) == value;
}

/// As a person types it. False when it was not taken; the sentence is noted.
bool enter(Edit& edit, const Channel& channel, const Json& value)
{
    PRM_Parm& parm = edit.parm(channel.token);
    std::string text, why;
    if (valueText(edit.livingNode(), parm, value, text, why) &&
        edit.livingNode().enterParm(parm, channel.component, text.c_str(), CHgetEvalTime(), &why))
        return true;
    edit.errors.push_back(why);
    return false;
}

/// A person who picks a colour changes some components; those that stay are left alone.
bool changes(Edit& edit, const Channel& channel, const Json& value)
{
    PRM_Parm& parm = edit.parm(channel.token);
    std::string text, why;
    return !valueText(edit.livingNode(), parm, value, text, why) ||
           !hasAlready(parm, channel.component, text);
}

void setWhole(Edit& edit)
{
    const PRM_Parm& parm = edit.parm(textMember(edit.request, "token"));
    requireValueHolder(parm);
    const Json& value = member(edit.request, "value");
    const Json values = value.is_array() ? value : Json::array({value});
    if (values.size() != static_cast<std::size_t>(parm.getVectorSize()) && kindOf(parm) != ParmKind::folder)
        throw RequestError(400,
                           fmt::format("The parameter {} takes {}, not {}.", kshop::quoted(parm.getToken()),
                                       countText(static_cast<std::size_t>(parm.getVectorSize()), "value"),
                                       values.size()));
    const std::string token = parm.getToken();
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        const Channel channel = {token, static_cast<int>(i)};
        if (values.size() > 1 && !changes(edit, channel, values[i]))
            continue;
        if (!enter(edit, channel, values[i]) || !edit.node())
            return;
    }
}

void setValue(Edit& edit)
{
    if (!edit.request.contains("channel"))
        return setWhole(edit);
    const Channel channel = channelOf(edit);
    requireValueHolder(edit.parm(channel.token));
    enter(edit, channel, member(edit.request, "value"));
}

void setExpression(Edit& edit)
{
    const Channel channel = channelOf(edit);
    PRM_Parm& parm = edit.parm(channel.token);
    requireValueHolder(parm);
    if (member(edit.request, "text").is_null())
        return parm.deleteExpression(CHgetEvalTime(), channel.component);
    const std::string language = textMember(edit.request, "language");
    if (language != "python" && language != "hscript")
        throw RequestError(400, "\"language\" is \"hscript\" or \"python\".");
    const std::string text = textMember(edit.request, "text");
    parm.setExpression(CHgetEvalTime(), text.c_str(), language == "python" ? CH_PYTHON : CH_OLD_EXPR_LANGUAGE,
                       true, channel.component);
}

void press(Edit& edit)
{
    PRM_Parm& parm = edit.parm(textMember(edit.request, "token"));
    if (kindOf(parm) != ParmKind::button)
        throw RequestError(400,
                           fmt::format("The parameter {} is no button.", kshop::quoted(parm.getToken())));
    if (parm.isActionMenu())
        enter(edit, {parm.getToken(), 0}, member(edit.request, "menu"));
    else
        edit.livingNode().pressParm(parm, 0, CHgetEvalTime());
}

/// The callback of a list or ramp, after its instances changed.
void callBack(Edit& edit, const std::string& token)
{
    OP_Node* node = edit.node();
    PRM_Parm* parm = node ? node->getParmPtr(token.c_str()) : nullptr;
    if (parm)
        node->pressParm(*parm, 0, CHgetEvalTime());
}

bool refuseCount(Edit& edit, std::int64_t count)
{
    if (count >= 0 && count <= most_preview_instances)
        return false;
    edit.errors.push_back(fmt::format("{} instances cannot be; 0 to {} can.", count, most_preview_instances));
    return true;
}

void setCount(Edit& edit)
{
    PRM_Parm& multi = edit.multi();
    const std::int64_t count = wholeMember(edit.request, "count");
    if (refuseCount(edit, count))
        return;
    const std::string token = multi.getToken();
    multi.setValue(CHgetEvalTime(), static_cast<int64>(count));
    callBack(edit, token);
}

void changeInstance(Edit& edit, int added, bool (PRM_Parm::*change)(int))
{
    PRM_Parm& multi = edit.multi();
    const std::int64_t index = wholeMember(edit.request, "index");
    const int count = multi.getMultiParmNumItems();
    if (added > 0 && refuseCount(edit, count + added))
        return;
    const std::string token = multi.getToken();
    const bool isInside = index >= 0 && index <= most_preview_instances;
    if (isInside && (multi.*change)(static_cast<int>(index)))
        return callBack(edit, token);
    edit.errors.push_back(fmt::format("There is no place {}; {} has {}.", index, kshop::quoted(token),
                                      countText(static_cast<std::size_t>(count), "instance")));
}

void insertInstance(Edit& edit) { changeInstance(edit, 1, &PRM_Parm::insertMultiParmItem); }

void removeInstance(Edit& edit) { changeInstance(edit, 0, &PRM_Parm::removeMultiParmItem); }

/// Sets one part of a key without a word to the node.
void setQuietly(PRM_Parm& parm, int component, double value)
{
    parm.setValue(CHgetEvalTime(), value, false, PRM_AK_NEVER, component);
}

/// All keys at once: the node hears of the last change only, since each would send the whole ramp.
void setRamp(Edit& edit)
{
    PRM_Parm& ramp = edit.multi();
    if (!ramp.isRampType())
        throw RequestError(400, fmt::format("The parameter {} is no ramp.", kshop::quoted(ramp.getToken())));
    const std::vector<RampKey> keys = rampKeys(member(edit.request, "keys"), ramp.isRampTypeColor() ? 3 : 1);
    if (refuseCount(edit, static_cast<std::int64_t>(keys.size())))
        return;
    const std::string token = ramp.getToken();
    const bool sameCount = ramp.getMultiParmNumItems() == static_cast<int>(keys.size());
    ramp.setValue(CHgetEvalTime(), static_cast<int64>(keys.size()), keys.empty() && !sameCount);
    const std::vector<std::vector<PRM_Parm*>> instances = instancesOf(edit.parm(token));
    for (std::size_t i = 0; i < instances.size() && i < keys.size(); ++i)
    {
        setQuietly(*instances[i][PRM_RAMP_PARM_POS], 0, keys[i].position);
        for (std::size_t c = 0; c < keys[i].value.size(); ++c)
            setQuietly(*instances[i][PRM_RAMP_PARM_VAL], static_cast<int>(c), keys[i].value[c]);
        const bool isLast = i + 1 == instances.size();
        instances[i][PRM_RAMP_PARM_INTERP]->setValue(CHgetEvalTime(),
                                                     static_cast<fpreal>(keys[i].interpolation), isLast);
    }
    callBack(edit, token);
}

void reset(Edit& edit) { edit.parm(textMember(edit.request, "token")).revertToDefault(CHgetEvalTime(), -1); }

void resetAll(Edit& edit)
{
    std::vector<std::string> tokens;
    const PRM_ParmList& parms = *edit.livingNode().getParmList();
    for (int i = 0; i < parms.getTopLevelEntries(); ++i)
        if (differsFromDefault(*parms.getParmPtr(i)))
            tokens.emplace_back(parms.getParmPtr(i)->getToken());
    for (const std::string& token : tokens)
        if (OP_Node* node = edit.node())
            if (PRM_Parm* parm = node->getParmPtr(token.c_str()))
                parm->revertToDefault(CHgetEvalTime(), -1);
}

void stepBack(Edit& edit)
{
    if (!UTgetUndoManager()->performUndo())
        edit.errors.emplace_back("There is nothing to undo.");
}

void stepForward(Edit& edit)
{
    if (!UTgetUndoManager()->performRedo())
        edit.errors.emplace_back("There is nothing to redo.");
}

void noteRefusal(Edit& edit, unsigned input, OP_ERROR result)
{
    if (result >= UT_ERROR_ABORT)
        edit.errors.push_back(fmt::format("The host refuses the wire to input {}.", input));
}

void wire(Edit& edit)
{
    OP_Node& node = edit.livingNode();
    const std::int64_t index = wholeMember(edit.request, "input");
    if (index < 0 || index >= static_cast<std::int64_t>(node.getNumVisibleInputs()))
        throw RequestError(400, fmt::format("The node has no input {}; it has {}.", index,
                                            countText(node.getNumVisibleInputs(), "input")));
    const auto input = static_cast<unsigned>(index);
    const Json& from = member(edit.request, "from");
    if (from.is_null())
        return noteRefusal(edit, input, node.setInput(input, nullptr));
    OP_Node& source = edit.scene.node(textMember(from, "type"));
    const std::int64_t output = wholeMember(from, "output");
    if (output < 0 || output >= static_cast<std::int64_t>(source.getNumVisibleOutputs()))
        throw RequestError(
            400, fmt::format("The node {} has no output {}.", source.getName().toStdString(), output));
    std::string why;
    if (!standin::canConnect(source, static_cast<unsigned>(output), node, input, why))
        return edit.errors.push_back(why);
    noteRefusal(edit, input, node.setInput(input, &source, static_cast<unsigned>(output)));
}

struct ActionRow
{
    const char* word;
    const char* undoLabel; ///< null: no undo step of its own
    void (*run)(Edit& edit);
};

const ActionRow action_rows[] = {
    {"set", "Parameter Change", setValue},
    {"expression", "Expression", setExpression},
    {"press", "Button", press},
    {"count", "Number of Instances", setCount},
    {"insert", "Insert Instance", insertInstance},
    {"remove", "Remove Instance", removeInstance},
    {"ramp", "Ramp", setRamp},
    {"reset", "Revert to Default", reset},
    {"reset_all", "Revert All", resetAll},
    {"undo", nullptr, stepBack},
    {"redo", nullptr, stepForward},
    {"wire", "Wire", wire},
};

const ActionRow& findAction(const std::string& word)
{
    std::vector<std::string> words;
    for (const ActionRow& row : action_rows)
    {
        if (word == row.word)
            return row;
        words.emplace_back(row.word);
    }
    throw RequestError(
        400, fmt::format("There is no action {}; there are: {}.", kshop::quoted(word), joined(words, ", ")));
}

void run(const ActionRow& action, Edit& edit)
{
    if (!action.undoLabel)
        return action.run(edit);
    const UT_AutoUndoBlock step(action.undoLabel, ANYLEVEL);
    action.run(edit);
}

} // namespace

std::vector<std::string> applyEdit(PreviewScene& scene, const Json& request)
{
    const ActionRow& action = findAction(textMember(request, "action"));
    OP_Node& node = scene.node(textMember(request, "type"));
    Edit edit = {scene, request, node.getUniqueId(), {}};
    run(action, edit);
    if (!edit.node())
        edit.errors.emplace_back("The edit deleted the node; a new one takes its place.");
    return edit.errors;
}

} // namespace kshop
