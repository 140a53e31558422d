#include "op_otl_create.h"

#include "op_archive.h"
#include "op_contents.h"
#include "op_dialog_script.h"
#include "op_loading.h"
#include "op_names.h"
#include "op_node_def.h"
#include "op_node_parms.h"
#include "op_otl_index.h"
#include "op_otl_instance.h"
#include "op_otl_manager.h"
#include "op_user_data.h"

#include <OP/OP_OperatorTable.h>
#include <VOP/VOP_Node.h>

#include <algorithm>
#include <cctype>
#include <ctime>
#include <filesystem>
#include <memory>
#include <vector>
#include <zlib.h>

namespace standin
{

namespace
{

const char* const any_network = "*";

// As the host writes it for a type that keeps its contents compressed.
const char* const type_options =
    "CheckExternal := 1;\nContentsCompressionType := 1;\nForbidOutsideParms := 1;\n"
    "GzipContents := 1;\nLockContents := 1;\nMakeDefault := 1;\nParmsFromVfl := 0;\n"
    "PrefixDroppedParmLabel := 1;\nPrefixDroppedParmName := 1;\nSaveCachedCode := 0;\n"
    "SaveIcon := 1;\nSaveSpareParms := 0;\nUnlockOnCreate := 0;\nUseDSParms := 1;\n";

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

// --- what can be made -------------------------------------------------------------------------------------------

bool isWord(const std::string& text, const char* others)
{
    const auto fits = [&](unsigned char c)
    {
        return (c < 128 && std::isalnum(c)) ||
               std::string(others).find(static_cast<char>(c)) != std::string::npos;
    };
    return !text.empty() && std::all_of(text.begin(), text.end(), fits);
}

/// "[scope::][namespace::]name[::version]", and nothing that a node's or a section's name cannot have.
bool isTypeName(const std::string& text)
{
    const OperatorName name = splitOperatorName(text);
    std::string again;
    for (const std::string* part : {&name.scope, &name.nameSpace})
        again += part->empty() ? "" : *part + "::";
    again += name.name + (name.version.empty() ? "" : "::" + name.version);
    return again == text && isWord(name.name, "_") &&
           !std::isdigit(static_cast<unsigned char>(name.name[0])) &&
           (name.nameSpace.empty() || isWord(name.nameSpace, "_.")) &&
           (name.scope.empty() || isWord(name.scope, "_./"));
}

/// Who has a type of that name, besides the file that is to be written; null when nobody does.
OP_Operator* rivalOf(const OP_OperatorTable& table, const std::string& name, const std::string& file)
{
    OP_Operator* held = table.getOperator(name.c_str());
    const bool isOurs = held && held->getOTLLibrary() && held->getOTLLibrary()->filePath() == file;
    return isOurs ? nullptr : held;
}

/// Why the asset cannot be made; empty when it can.
std::string obstacle(const OP_Node& node, const AssetRequest& request, const std::string& file)
{
    const std::string path = node.getFullPath().toStdString();
    if (!canCreateDigitalAsset(node))
        return path + " cannot become a digital asset: only subnets can. Collapse the nodes into a "
                      "\"subnet\" first.";
    if (!isTypeName(request.name))
        return quoted(request.name) +
               " is no name for a node type: it is \"name\", with \"namespace::\" before it and "
               "\"::version\" behind it if wanted; letters, digits and '_', no digit first, versions of "
               "digits and '.'.";
    if (request.file.empty())
        return "An asset file needs a name, such as \"" + splitOperatorName(request.name).name + ".hda\".";
    if (request.minInputs < 0 || request.minInputs > request.maxInputs ||
        request.maxInputs > VOP_VARIABLE_INOUT_MAX)
        return "An asset cannot have at least " + std::to_string(request.minInputs) + " and at most " +
               std::to_string(request.maxInputs) + " inputs: the numbers go from 0 to " +
               std::to_string(VOP_VARIABLE_INOUT_MAX) + ", and the first is not the greater one.";
    if (const OP_Operator* rival = rivalOf(*node.getOperator()->getTable(), request.name, file))
        return "There is a type " + quoted(request.name) + " already (" +
               quoted(rival->getEnglish().toStdString()) + "). Choose another name or namespace.";
    return std::string();
}

// --- the parts of the definition --------------------------------------------------------------------------------

std::vector<DialogConnector> inputsOf(VOP_Node& node, unsigned count)
{
    std::vector<DialogConnector> inputs;
    for (unsigned i = 0; i < count; ++i)
    {
        UT_String name;
        node.getInputName(name, static_cast<int>(i));
        const bool connected = node.getInput(i) != nullptr;
        inputs.push_back({connected ? node.getInputType(static_cast<int>(i)) : VOP_TYPE_UNDEF,
                          name.toStdString(), node.inputLabel(i)});
    }
    return inputs;
}

std::vector<DialogConnector> outputsOf(VOP_Node& node)
{
    std::vector<DialogConnector> outputs;
    for (unsigned i = 0; i < node.getNumVisibleOutputs(); ++i)
    {
        UT_String name;
        node.getOutputName(name, static_cast<int>(i));
        outputs.push_back({node.getOutputType(static_cast<int>(i)), name.toStdString(), node.outputLabel(i)});
    }
    return outputs;
}

/// Where a type that was made here may appear: in networks of the kind that it was made in, if those are choosy.
std::string maskFor(const OP_Node& node)
{
    for (OP_Network* network = node.getParent(); network; network = network->getParent())
        if (network->getOperatorFilter())
            return network->getOpTypeID() == MGR_OPTYPE_ID ? any_network : network->maskContexts();
    return any_network;
}

/// The contents of the subnet as those of a node of the new type, whose parameters are no spare ones any more.
std::string contentsOf(OP_Node& node, const std::string& typeName)
{
    constexpr std::size_t count_size = 4;
    const std::string root = node.getName().toStdString();
    std::string written = writeContents(node, root);
    std::vector<ArchiveEntry> entries;
    std::string why;
    if (!readArchive(written.substr(count_size), entries, why))
        return written;
    std::vector<ArchiveEntry> kept;
    for (ArchiveEntry& entry : entries)
    {
        if (entry.name == root + ".init")
            entry.data = "type = " + typeName + "\nmatchesdef = 0\n";
        if (entry.name != root + ".spareparmdef")
            kept.push_back(entry);
    }
    const std::string archive = writeArchive(kept);
    std::string bytes;
    for (std::size_t i = 0; i < count_size; ++i)
        bytes += static_cast<char>(archive.size() >> (8 * i) & 0xff);
    return bytes + archive;
}

/// One gzip member without a time, from no operating system in particular, as the host writes it.
std::string gzip(const std::string& bytes)
{
    constexpr int with_gzip_header = 16;
    constexpr int usual_memory = 8;
    constexpr int unknown_system = 255;
    z_stream stream = z_stream();
    gz_header header = gz_header();
    header.os = unknown_system;
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, with_gzip_header + MAX_WBITS, usual_memory,
                     Z_DEFAULT_STRATEGY) != Z_OK)
        return std::string();
    deflateSetHeader(&stream, &header);
    std::string packed(deflateBound(&stream, bytes.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(&packed[0]);
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

void addSection(FS_IndexFile& index, const char* name, const std::string& bytes)
{
    index.addSection(name, bytes.data(), static_cast<int>(bytes.size()));
}

/// What is written about the type, in numbers and in sections.
struct Draft
{
    DefinitionFields fields;
    std::string section;
};

Draft draftOf(VOP_Node& node, const AssetRequest& request)
{
    Draft draft;
    DefinitionFields& fields = draft.fields;
    const std::string table = node.getOperator()->getTable()->getName().toStdString();
    const std::string place = tableAndName(table, request.name);
    const std::string core = splitOperatorName(request.name).name;
    fields.name = request.name;
    fields.label = request.description.empty() ? core : request.description;
    fields.path = "oplib:/" + place + "?" + place;
    fields.table = table;
    fields.extra = maskFor(node);
    fields.minInputs = static_cast<unsigned>(request.minInputs);
    fields.maxInputs = std::max(static_cast<unsigned>(request.maxInputs), node.nInputs());
    fields.modTime = static_cast<unsigned>(std::time(nullptr));
    fields.subnet = true;

    FS_IndexFile type;
    addSection(type, "DialogScript",
               writeDialogScript(request.name, core, fields.label, inputsOf(node, fields.maxInputs),
                                 outputsOf(node), node));
    addSection(type, "TypePropertiesOptions", type_options);
    addSection(type, "Contents.gz", gzip(contentsOf(node, request.name)));
    addSection(type, "ExtraFileOptions", std::string(4, '\0')); // no options
    draft.section = type.toBytes();
    return draft;
}

// --- the file ---------------------------------------------------------------------------------------------------

/// The definitions of a file with this one among them, in the place of one of the same type.
std::vector<OP_OTLDefinition> withDefinition(const OP_OTLLibrary* present, const OP_OTLDefinition& made)
{
    std::vector<OP_OTLDefinition> definitions;
    for (int i = 0; present && i < present->getNumDefinitions(); ++i)
        definitions.push_back(present->getDefinition(i));
    const int place = present ? present->findDefinition(made.getTable(), made.getName()) : -1;
    if (place < 0)
        definitions.push_back(made);
    else
        definitions[static_cast<std::size_t>(place)] = made;
    return definitions;
}

/// Why a file that is there cannot take one more definition; empty when it can.
std::string damageOf(const OP_OTLLibrary& present)
{
    if (present.isExpanded())
        return quoted(present.filePath()) + " is an expanded asset, and only files are written.";
    return present.problem().empty() ? present.definitionProblem() : present.problem();
}

/// Writes the file anew with this definition in it, beside those that it has.
bool writeLibrary(const std::string& file, const Draft& draft, std::string& why)
{
    std::error_code error;
    std::unique_ptr<OP_OTLLibrary> present;
    if (std::filesystem::exists(file, error))
        present.reset(new OP_OTLLibrary(file.c_str()));
    why = present ? damageOf(*present) : std::string();
    if (!why.empty())
    {
        why = "Nothing was written: " + why + " Or choose another file.";
        return false;
    }
    const OP_OTLDefinition made = makeDefinition(draft.fields);
    const std::string index = writeDefinitions(withDefinition(present.get(), made));
    FS_IndexFile empty;
    FS_IndexFile& target = present ? *present : empty;
    addSection(target, index_section, index);
    addSection(target, made.sectionName().c_str(), draft.section);
    if (target.writeFile(file.c_str()))
        return true;
    why = target.problem();
    return false;
}

// --- the node ---------------------------------------------------------------------------------------------------

struct Wire
{
    int source;
    unsigned output;
    int target;
    unsigned input;
};

std::vector<Wire> wiresOf(OP_Node& node)
{
    std::vector<Wire> wires;
    const int id = node.getUniqueId();
    for (unsigned i = 0; i < node.nInputs(); ++i)
        if (const OP_Node* source = node.getInput(i))
            wires.push_back({source->getUniqueId(),
                             static_cast<unsigned>(node.getInputReferenceConst(i)->getNodeOutputIndex()), id,
                             i});
    std::vector<OP_Node*> below;
    for (unsigned i = 0; i < node.nOutputs(); ++i)
        if (std::find(below.begin(), below.end(), node.getOutput(i)) == below.end())
            below.push_back(node.getOutput(i));
    for (const OP_Node* target : below)
        for (unsigned i = 0; i < target->nInputs(); ++i)
            if (target->getInput(i) == &node)
                wires.push_back(
                    {id, static_cast<unsigned>(target->getInputReferenceConst(i)->getNodeOutputIndex()),
                     target->getUniqueId(), i});
    return wires;
}

/// Ends the subnet and gives its wires to the node that takes its place.
void takePlace(OP_Node& node, OP_Node& made)
{
    const std::string name = node.getName().toStdString();
    const std::vector<Wire> wires = wiresOf(node);
    OP_Network& network = *node.getParent();
    const int oldId = node.getUniqueId();
    const int id = made.getUniqueId();
    network.destroyNode(&node);
    if (OP_Node* there = OP_Node::lookupNode(id))
        network.renameNode(there, name.c_str());
    for (const Wire& wire : wires)
    {
        OP_Node* source = OP_Node::lookupNode(wire.source == oldId ? id : wire.source);
        OP_Node* target = OP_Node::lookupNode(wire.target == oldId ? id : wire.target);
        if (source && target)
            target->setInput(wire.input, source, wire.output);
    }
}

/// A node of the new type with what the subnet had: contents, place, flags, values and user data.
OP_Node* makeLike(OP_Node& node, OP_Operator& op)
{
    std::vector<std::string> ignored; // it is this program's own text
    const std::string def = writeDef(node);
    const std::string parms = writeParms(node);
    const std::string channels = writeChannels(node);
    const std::string userData = writeUserData(node, ignored);
    OP_Node* made = node.getParent()->createNodeOfOperator(op, node.getName());
    if (!made)
        return nullptr;
    const int id = made->getUniqueId();
    loadAssetContents(*made);
    if (!OP_Node::lookupNode(id))
        return nullptr;
    applyDef(*made, readDef(def, ignored));
    readParms(*made, parms, ignored);
    readChannels(*made, channels, ignored);
    if (!userData.empty())
        readUserData(*made, userData, ignored);
    return OP_Node::lookupNode(id);
}

} // namespace

bool canCreateDigitalAsset(const OP_Node& node)
{
    const OP_Operator* op = node.getOperator();
    return op && op->getTable() && (op->getFlags() & OP_FLAG_PRIMARYSUBNET) != 0;
}

OP_Node* createDigitalAsset(OP_Node& subnet, const AssetRequest& request, std::string& why)
{
    const std::string file = request.file.empty() ? std::string() : libraryPath(request.file);
    why = obstacle(subnet, request, file);
    VOP_Node* node = subnet.castToVOPNode();
    if (why.empty() && !node)
        why = subnet.getFullPath().toStdString() + " cannot become a digital asset: it is no VOP node.";
    if (!node || !why.empty() || !writeLibrary(file, draftOf(*node, request), why) ||
        !installLibrary(file, why))
        return nullptr;
    OP_Operator* op = subnet.getOperator()->getTable()->getOperator(request.name.c_str());
    const LoadingScope loading;
    OP_Node* made = op ? makeLike(subnet, *op) : nullptr;
    if (!made)
    {
        why = "The asset was written to " + quoted(file) + ", but no node of it could be made.";
        return nullptr;
    }
    const int id = made->getUniqueId();
    takePlace(subnet, *made);
    made = OP_Node::lookupNode(id);
    if (made)
    {
        made->refreshParms();
        made->triggerUIChanged();
    }
    else
        why = "The new node was deleted by somebody who watches the network.";
    return made;
}

} // namespace standin
