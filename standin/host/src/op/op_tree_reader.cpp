#include "op_tree_reader.h"

#include "op_node_entries.h"
#include "op_node_parms.h"
#include "op_otl_instance.h"
#include "op_placeholder.h"
#include "op_spare_template.h"
#include "op_text.h"
#include "op_user_data.h"

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <VOP/VOP_Node.h>

#include <algorithm>
#include <set>

namespace standin
{

namespace
{

std::string parentOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string nameOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string childPath(const std::string& parent, const std::string& name)
{
    return parent.empty() ? name : parent + "/" + name;
}

std::string orphanSentence(const std::string& path, const std::string& parent)
{
    return "The node \"" + path + "\" is inside \"" + parent + "\", which is missing; it is left out.";
}

/// The rest of the line that begins with "type = "; empty when there is none.
std::string typeIn(const std::string& init)
{
    const std::string key = "type = ";
    std::size_t at = init.compare(0, key.size(), key) == 0 ? 0 : init.find("\n" + key);
    if (at == std::string::npos)
        return std::string();
    at = init.find(key, at) + key.size();
    return init.substr(at, init.find('\n', at) - at);
}

const std::string& partOf(const std::map<std::string, std::string>& parts, const char* suffix)
{
    static const std::string none;
    const auto found = parts.find(suffix);
    return found == parts.end() ? none : found->second;
}

bool hasPart(const std::map<std::string, std::string>& parts, const char* suffix)
{
    return parts.count(suffix) != 0;
}

/// The input that a wire goes to: that of its name, else its number.
unsigned inputOf(OP_Node& node, const WireDef& wire)
{
    if (wire.inputName.empty() || inputNameOf(node, wire.input) == wire.inputName)
        return wire.input;
    const unsigned count = node.castToVOPNode() ? node.getNumVisibleInputs() : 0;
    for (unsigned i = 0; i < count; ++i)
        if (inputNameOf(node, i) == wire.inputName)
            return i;
    return wire.input;
}

} // namespace

// --- the archive's tree -----------------------------------------------------------------------------------------

TreeReader::TreeReader(const std::vector<ArchiveEntry>& entries)
{
    m_items[std::string()];
    for (const ArchiveEntry& entry : entries)
        sortEntry(entry);
    findChildren();
}

void TreeReader::sortEntry(const ArchiveEntry& entry)
{
    const std::size_t slash = entry.name.rfind('/');
    const std::size_t dot = entry.name.rfind('.');
    const bool hasSuffix = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    if (!hasSuffix)
    {
        m_loose.emplace(entry.name, entry.data);
        return;
    }
    const std::string path = entry.name.substr(0, dot);
    if (!has(path))
        m_paths.push_back(path);
    if (!m_items[path].parts.emplace(entry.name.substr(dot + 1), entry.data).second)
        m_problems.push_back("The entry \"" + entry.name + "\" is there twice; the second one is left out.");
}

/// Also when the entry with its type is damaged: what is inside it must not go with that.
bool TreeReader::isNode(const std::string& path) const
{
    const auto found = m_items.find(path);
    return found != m_items.end() && !path.empty() &&
           (hasPart(found->second.parts, "init") || hasPart(found->second.parts, "def"));
}

void TreeReader::findChildren()
{
    for (const std::string& path : m_paths)
    {
        if (path.empty())
            continue;
        const std::string parent = parentOf(path);
        const bool parentThere = parent.empty() || isNode(parent);
        if (isNode(path) && parentThere)
            m_items[parent].children.push_back(path);
        else if (isNode(path))
            m_problems.push_back(orphanSentence(path, parent));
        else if (parentThere)
            for (const auto& part : m_items[path].parts)
                m_items[parent].others.push_back({"/" + nameOf(path) + "." + part.first, part.second});
    }
    for (auto& item : m_items)
        putInOrder(item.first, item.second);
}

/// The children that ".order" names come first, in that order.
void TreeReader::putInOrder(const std::string& path, Item& item)
{
    std::map<std::string, std::size_t> places;
    std::string ignored;
    for (const Line& line : readLines(partOf(item.parts, "order"), ignored))
    {
        const std::string child = childPath(path, line[0].text);
        const std::size_t place = places.size();
        if (isNode(child))
            places.emplace(child, place);
    }
    const auto placeOf = [&](const std::string& child)
    {
        const auto found = places.find(child);
        return found == places.end() ? places.size() : found->second;
    };
    std::stable_sort(item.children.begin(), item.children.end(),
                     [&](const std::string& a, const std::string& b) { return placeOf(a) < placeOf(b); });
}

std::vector<std::string> TreeReader::topNodes() const { return m_items.at(std::string()).children; }

std::string TreeReader::entry(const std::string& name) const
{
    const auto loose = m_loose.find(name);
    if (loose != m_loose.end())
        return loose->second;
    const std::size_t dot = name.rfind('.');
    const auto item = dot == std::string::npos ? m_items.end() : m_items.find(name.substr(0, dot));
    return item == m_items.end() ? std::string() : partOf(item->second.parts, name.substr(dot + 1).c_str());
}

// --- nodes ------------------------------------------------------------------------------------------------------

void TreeReader::setOutside(OP_Network& network) { m_outside = network.getUniqueId(); }

OP_Node* TreeReader::construct(OP_Network& network, const std::string& path, const Item& item)
{
    const std::string type = typeIn(partOf(item.parts, "init"));
    const OP_OperatorTable* table = network.getOperatorTable();
    if (table && table->getOperator(type.c_str()))
        if (OP_Node* node = network.createNodeUnfiltered(type.c_str(), nameOf(path).c_str()))
            return node;
    const bool holdsNodes = !item.children.empty() || hasPart(item.parts, "order");
    OP_Node* node = createPlaceholder(network, type, nameOf(path), holdsNodes);
    if (node && type.empty())
        m_problems.push_back(node->getFullPath().toStdString() +
                             ": its type is lost; a placeholder keeps the rest.");
    else if (node)
        m_missing[(table ? table->getName().toStdString() + " type" : std::string("type")) + " \"" + type +
                  "\""]
            .push_back(node->getFullPath().toStdString());
    return node;
}

OP_Node* TreeReader::makeNode(OP_Network& network, const std::string& path)
{
    Item& item = m_items[path];
    OP_Node* node = construct(network, path, item);
    const int id = node ? node->getUniqueId() : 0;
    if (!node)
        return nullptr;
    item.id = id;
    m_made.push_back(path);
    if (OP_Network* inside = node->castToOPNetwork())
        makeChildren(*inside, path);
    // A locked asset is stored without what is inside it.
    const bool locked = partOf(item.parts, "init").find("\nmatchesdef = 1") != std::string::npos;
    if (locked && item.children.empty() && OP_Node::lookupNode(id))
        loadAssetContents(*node);
    return OP_Node::lookupNode(id);
}

// Listeners may delete anything while nodes are made.
void TreeReader::makeChildren(OP_Network& network, const std::string& path)
{
    const int id = network.getUniqueId();
    for (const std::string& child : std::vector<std::string>(m_items[path].children))
        if (OP_Node::lookupNode(id))
            makeNode(network, child);
}

void TreeReader::takeOver(OP_Node& node, const std::string& path)
{
    m_items[path].id = node.getUniqueId();
    m_made.push_back(path);
}

// --- values -----------------------------------------------------------------------------------------------------

void TreeReader::complain(const OP_Node& node, const std::vector<std::string>& sentences)
{
    for (const std::string& sentence : sentences)
        m_problems.push_back(node.getFullPath().toStdString() + ": " + sentence + ".");
}

namespace
{

/// The outputs of the beginning of a subnet are the subnet's inputs. A placeholder in the place of that subnet cannot
/// know them but from there.
void tellInputs(OP_Node& node, const NodeDef& def)
{
    Placeholder* outer = placeholderOf(node.getParent());
    if (!outer || node.getOperator()->getName() != "subinput")
        return;
    for (std::size_t i = 0; i < def.outputNames.size(); ++i)
        outer->needInput(static_cast<unsigned>(i), def.outputNames[i].second);
}

} // namespace

void TreeReader::fill(OP_Node& node, Item& item)
{
    std::vector<std::string> problems;
    const int id = node.getUniqueId();
    if (hasPart(item.parts, "def"))
        item.def = readDef(partOf(item.parts, "def"), problems);
    applyDef(node, item.def);
    if (!OP_Node::lookupNode(id))
        return;
    if (placeholderOf(&node))
    {
        fillPlaceholder(node, item);
        return;
    }
    tellInputs(node, item.def);
    readSpareParms(node, partOf(item.parts, "spareparmdef"), problems);
    if (hasPart(item.parts, "parm"))
        readParms(node, partOf(item.parts, "parm"), problems);
    readChannels(node, partOf(item.parts, "chn"), problems);
    if (hasPart(item.parts, "userdata"))
        readUserData(node, partOf(item.parts, "userdata"), problems);
    // What came with the values, such as the keys of a ramp, may show more inputs.
    if (const unsigned inputs = node.getNumVisibleInputs())
        node.getInputReference(inputs - 1, true);
    complain(node, problems);
}

/// It keeps all that was read, so nothing is lost and there is nothing to complain of.
void TreeReader::fillPlaceholder(OP_Node& node, Item& item)
{
    std::vector<std::string> ignored;
    Placeholder& placeholder = *placeholderOf(&node);
    placeholder.parts = item.parts;
    placeholder.others = item.others;
    for (const WireDef& wire : item.def.wires)
        placeholder.needInput(wire.input, wire.inputName);
    for (std::size_t i = 0; i < item.def.outputNames.size(); ++i)
        placeholder.needOutput(static_cast<unsigned>(i), item.def.outputNames[i].second);
    if (hasPart(item.parts, "userdata"))
        readUserData(node, partOf(item.parts, "userdata"), ignored);
}

// --- wires ------------------------------------------------------------------------------------------------------

OP_Node* TreeReader::sourceOf(const Pending& pending) const
{
    const std::string parent = parentOf(pending.path);
    const auto found = m_items.find(childPath(parent, pending.wire.source));
    if (found != m_items.end() && found->second.id)
        return OP_Node::lookupNode(found->second.id);
    OP_Node* outside = parent.empty() && m_outside ? OP_Node::lookupNode(m_outside) : nullptr;
    return outside ? outside->castToOPNetwork()->getChild(pending.wire.source.c_str()) : nullptr;
}

/// The output that a wire comes from: that of the name which the source's own entry gives it, else its number.
int TreeReader::outputOf(const Pending& pending, OP_Node& source) const
{
    const WireDef& wire = pending.wire;
    const auto item = m_items.find(childPath(parentOf(pending.path), wire.source));
    const int listed = item == m_items.end() ? -1 : item->second.def.outputOf(wire.outputId);
    const int index = wire.output >= 0 ? wire.output : listed >= 0 ? listed : wire.outputId;
    const std::string name =
        listed < 0 ? std::string() : item->second.def.outputNames[static_cast<std::size_t>(listed)].second;
    if (name.empty() || index < 0 || outputNameOf(source, static_cast<unsigned>(index)) == name)
        return index;
    for (unsigned i = 0; i < source.getNumVisibleOutputs(); ++i)
        if (outputNameOf(source, i) == name)
            return static_cast<int>(i);
    return index;
}

bool TreeReader::connect(const Pending& pending, Outputs allowed)
{
    OP_Node* node = OP_Node::lookupNode(m_items[pending.path].id);
    OP_Node* source = sourceOf(pending);
    if (!node || !source)
        return false;
    const int output = outputOf(pending, *source);
    if (output < 0)
        return false;
    const auto index = static_cast<unsigned>(output);
    if (Placeholder* placeholder = placeholderOf(source))
        placeholder->needOutput(index, std::string());
    if (allowed == Outputs::visible && index >= source->getNumVisibleOutputs())
        return false;
    const unsigned input = inputOf(*node, pending.wire);
    const bool taken = input != pending.wire.input ? false : node->getInput(input) != nullptr;
    return !taken && node->setInput(input, source, index) < UT_ERROR_ABORT;
}

/// Makes the wires that are possible now and returns the others. What waits holds back the later ones of its source, whose
/// wires keep their order.
std::vector<TreeReader::Pending> TreeReader::connectPossible(const std::vector<Pending>& wires)
{
    std::vector<Pending> left;
    std::set<OP_Node*> waiting;
    for (const Pending& one : wires)
    {
        OP_Node* source = sourceOf(one);
        if (source && (waiting.count(source) || !connect(one, Outputs::visible)))
        {
            waiting.insert(source);
            left.push_back(one);
        }
    }
    return left;
}

/// The outputs of a subnet, and those that its inputs have inside, come with wires on another level. So it goes over
/// the wires again for as long as that makes one more of them possible. What is left came from outputs that were no more
/// when the scene was saved, such as those of a subnet's beginning after the subnet was unwired: they stay with the node
/// until its outputs are back.
void TreeReader::wire()
{
    std::vector<Pending> pending;
    for (const std::string& path : m_made)
        for (const WireDef& wire : m_items[path].def.wires)
            pending.push_back({path, wire});
    std::stable_sort(pending.begin(), pending.end(),
                     [](const Pending& a, const Pending& b) { return a.wire.rank < b.wire.rank; });
    for (std::size_t before = pending.size() + 1; pending.size() < before;)
    {
        before = pending.size();
        pending = connectPossible(pending);
    }
    for (const Pending& one : pending)
        connect(one, Outputs::any);
}

// --- the end ----------------------------------------------------------------------------------------------------

void TreeReader::finishNode(OP_Node& node, const Item& item)
{
    const int id = node.getUniqueId();
    if (Placeholder* placeholder = placeholderOf(&node))
    {
        rememberEntries(node);
        // Names that were taken changed on the way, so what was read does not tell where its wires come from.
        for (const WireDef& wire : item.def.wires)
            if (node.getInput(wire.input) && node.getInput(wire.input)->getName() != wire.source.c_str())
                placeholder->asLoaded.erase("def");
    }
    node.refreshParms();
    if (OP_Network* network = OP_Node::lookupNode(id) ? node.castToOPNetwork() : nullptr)
        network->finishedLoadingNetwork(true);
    if (OP_Node::lookupNode(id))
        node.triggerUIChanged();
}

void TreeReader::finish()
{
    for (const std::string& path : m_made)
        if (OP_Node* node = OP_Node::lookupNode(m_items[path].id))
            fill(*node, m_items[path]);
    wire();
    for (const std::string& path : m_made)
        if (OP_Node* node = OP_Node::lookupNode(m_items[path].id))
            finishNode(*node, m_items[path]);
}

} // namespace standin
