#include "shader_desc.h"

#include "shader_desc_cache.h"
#include "shader_desc_text.h"
#include "utils.h"
#include "utils_renderer.h"
#include "utils_rows.h"

#include <VOP/VOP_Types.h>

#include <algorithm>
#include <set>

namespace zelk
{
namespace shop
{

namespace
{

const char* const name_prefix = "zelk__";
const char* const op_prefix = "korvan::";
const char* const extra_prefix = "houdini.parm.";

/// Parts of an extra parameter's key: "houdini.parm.<kind>.<name>". More parts make a sub-key of one.
const std::size_t extra_key_parts = 4;
const std::size_t extra_kind_part = 2;
const std::size_t extra_name_part = 3;

/// Words of a ramp's arguments: the parameters that hold positions, values and interpolations.
const std::size_t ramp_arg_count = 3;

/// Names of the parameters that every camera has and that the host's own camera stands for.
///
/// These are the renderer's "ortho_camera" parameters and "fov". Asked of the renderer once, at the first
/// camera.
class BaseCameraParms
{
public:
    static const BaseCameraParms& instance()
    {
        static const BaseCameraParms parms;
        return parms;
    }

    bool contains(const std::string& name) const { return m_names.count(name) != 0; }

private:
    BaseCameraParms()
    {
        m_names.insert("fov");
        if (const KtNodeEntry* camera = KrNodeEntryLookUp("ortho_camera"))
            forEachParam(camera,
                         [this](const KtParamEntry* param) { m_names.insert(KrParamGetName(param)); });
    }

    std::set<std::string> m_names;
};

struct ShaderTypeRow
{
    const char* shaderType;
    VOP_Type connector;
};

// The names are the host's; here they are the connectors of light filters, atmospheres and volumes.
const ShaderTypeRow shader_type_rows[] = {
    {"light_filter", VOP_LIGHT_SHADER},
    {"atmosphere", VOP_ATMOSPHERE_SHADER},
    {"volume", VOP_IMAGE3D_SHADER},
};

struct ComponentRow
{
    int outputType;
    const char* names[4]; // outputs 1 to 4; null where there is none
};

// "rgb" names a fourth output although outputCount() never counts one.
const ComponentRow component_rows[] = {
    {KR_TYPE_RGB, {"r", "g", "b", "a"}},        {KR_TYPE_RGBA, {"r", "g", "b", "a"}},
    {KR_TYPE_VECTOR, {"x", "y", "z", nullptr}}, {KR_TYPE_POINT, {"x", "y", "z", nullptr}},
    {KR_TYPE_POINT2, {"x", "y", "z", nullptr}},
};

struct RampRow
{
    const char* kind;
    const char* valueToken; // host's instance name of a key's value: ramp name, key number
};

const RampRow ramp_rows[] = {
    {"ramp_rgb", "%s%ic"},
    {"ramp_float", "%s%ivalue"},
};

bool lessThanOrder(const ParmDesc* a, const ParmDesc* b)
{
    return a->order != b->order ? a->order < b->order : a->index < b->index;
}

/// Text of a metadata item; items of other types count as empty.
std::string textOf(const KtMetaDataEntry& item)
{
    return item.type == KR_TYPE_STRING && item.value.str ? item.value.str : "";
}

} // namespace

ShaderDesc::ShaderDesc(const KtNodeEntry* entry)
{
    readNames(entry);
    readOutput(entry);
    addRendererParms(entry);
    addExtraParms(entry);
    readOrder(entry);
    sortParms();
    listInputs();
}

void ShaderDesc::readNames(const KtNodeEntry* entry)
{
    name = KrNodeEntryGetName(entry);
    nodeType = KrNodeEntryGetType(entry);
    baseName = startsWith(name.c_str(), name_prefix) ? name.substr(std::string(name_prefix).size()) : name;
    opName = op_prefix + baseName;
    label = getNodeMetaDataStr(entry, "houdini.label", prettyLabel(baseName, true));
    icon = getNodeMetaDataStr(entry, "houdini.icon", isCamera() ? "OBJ_camera" : "MISC_generic");
    lodSpec = getNodeMetaDataStr(entry, "houdini.lod", "");
    shaderType = getNodeMetaDataStr(entry, "houdini.shader_type", "");
    helpUrl = getNodeMetaDataStr(entry, "houdini.help_url", "");
    category = getNodeMetaDataStr(entry, "houdini.category", "");
}

void ShaderDesc::readOutput(const KtNodeEntry* entry)
{
    outputType = KrNodeEntryGetOutputType(entry);
    if (const ShaderTypeRow* row = findRow(shader_type_rows, &ShaderTypeRow::shaderType, shaderType))
        vopOutputType = row->connector;
    else
        vopOutputType = isCamera() ? VOP_LENS_SHADER : vopType(outputType);
}

/// A new, empty description at the end of `parms`.
ParmDesc& ShaderDesc::addParm()
{
    m_owned.push_back(std::unique_ptr<ParmDesc>(new ParmDesc));
    ParmDesc& parm = *m_owned.back();
    parm.index = static_cast<int>(m_owned.size()) - 1;
    parms.push_back(&parm);
    return parm;
}

bool ShaderDesc::isExposed(const KtNodeEntry* entry, const std::string& parmName) const
{
    if (parmName == "name")
        return false;
    if (getParmMetaDataBool(entry, parmName, "houdini.skip", false))
        return false;
    return !isCamera() || !BaseCameraParms::instance().contains(parmName);
}

void ShaderDesc::addRendererParms(const KtNodeEntry* entry)
{
    const int count = KrNodeEntryGetNumParams(entry);
    m_owned.reserve(static_cast<std::size_t>(count));
    parms.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
    {
        const KtParamEntry* param = KrNodeEntryGetParameter(entry, i);
        if (isExposed(entry, KrParamGetName(param)))
            addParm().init(entry, param);
    }
}

void ShaderDesc::addExtraParms(const KtNodeEntry* entry)
{
    forEachNodeMetaData(entry,
                        [&](const KtMetaDataEntry* item)
                        {
                            if (startsWith(item->name, extra_prefix))
                                addExtraParm(entry, *item);
                        });
}

void ShaderDesc::addExtraParm(const KtNodeEntry* entry, const KtMetaDataEntry& item)
{
    const std::vector<std::string> key = split(item.name, '.', false);
    if (key.size() < extra_key_parts)
        KrMsgError("[zelk::shop::ShaderDesc] Skipping badly formatted extra parameter: %s", item.name);
    if (key.size() != extra_key_parts)
        return;

    const std::string prefix = std::string(item.name) + ".";
    ParmDesc& parm = addParm();
    parm.isExtra = true;
    parm.noInput = true;
    parm.name = key[extra_name_part];
    parm.houdiniType = key[extra_kind_part];
    parm.extraArgs = textOf(item);
    parm.label = getNodeMetaDataStr(entry, (prefix + "label").c_str(), prettyLabel(parm.name, true));
    parm.icon = getNodeMetaDataStr(entry, (prefix + "icon").c_str(), "");
    parm.help = getNodeMetaDataStr(entry, (prefix + "desc").c_str(), "");
    parm.callback = getNodeMetaDataStr(entry, (prefix + "callback").c_str(), "");
    parm.joinNext = getNodeMetaDataBool(entry, (prefix + "join_next").c_str(), false);
    parm.noLabel = getNodeMetaDataBool(entry, (prefix + "no_label").c_str(), false);
    wireRamp(parm);
}

/// Puts a ramp in the place of the three renderer parameters that hold its keys; other kinds need nothing.
void ShaderDesc::wireRamp(const ParmDesc& ramp)
{
    const RampRow* row = findRow(ramp_rows, &RampRow::kind, ramp.houdiniType);
    if (!row)
        return;
    const std::vector<std::string> args = split(ramp.extraArgs.c_str(), ' ', false);
    if (args.size() != ramp_arg_count)
    {
        KrMsgError("[zelk::shop::ShaderDesc] Exactly 3 arguments needed for ramp \"%s\", found %lu",
                   ramp.name.c_str(), static_cast<unsigned long>(args.size()));
        return;
    }

    const char* const tokens[ramp_arg_count] = {"%s%ipos", row->valueToken, "%s%iinterp"};
    ParmOverrides overrides;
    for (std::size_t i = 0; i < ramp_arg_count; ++i)
    {
        overrides[args[i]]["houdini.array_token"] = tokens[i];
        overrides[args[i]]["houdini.remap"] = ramp.name;
    }
    // Deliberate: this replaces what an earlier ramp of the shader left, so that only the last ramp's
    // overrides stay. See RampOfShader.LastOneReplacesTheCacheOfTheOthers.
    cacheMetaData(name, overrides);

    const auto isComponent = [&args](const ParmDesc* parm)
    { return !parm->isExtra && std::find(args.begin(), args.end(), parm->name) != args.end(); };
    parms.erase(std::remove_if(parms.begin(), parms.end(), isComponent), parms.end());
}

void ShaderDesc::readOrder(const KtNodeEntry* entry)
{
    const std::vector<std::string> words =
        split(getNodeMetaDataStr(entry, "houdini.order", "").c_str(), ' ', false);
    if (words.empty())
        return;

    // Of two parameters with one name, the later one, an extra, takes the place.
    std::map<std::string, ParmDesc*> known;
    for (const auto& parm : m_owned)
        known[parm->name] = parm.get();
    for (std::size_t k = 0; k < words.size(); ++k)
    {
        const auto found = known.find(words[k]);
        if (found != known.end())
            found->second->order = static_cast<int>(k);
    }
}

void ShaderDesc::sortParms() { std::sort(parms.begin(), parms.end(), lessThanOrder); }

void ShaderDesc::listInputs()
{
    for (ParmDesc* parm : parms)
    {
        parmsByName[parm->name] = parm;
        if (parm->noInput)
            continue;
        inputIndices[parm->name] = static_cast<int>(inputs.size());
        inputs.push_back(parm);
    }
}

ParmDesc* ShaderDesc::parmDesc(const char* parmName) const
{
    const auto found = parmsByName.find(parmName ? parmName : "");
    return found == parmsByName.end() ? nullptr : found->second;
}

int ShaderDesc::inputIndex(const std::string& parmName) const
{
    const auto found = inputIndices.find(parmName);
    return found == inputIndices.end() ? -1 : found->second;
}

int ShaderDesc::lod() const
{
    if (lodSpec.empty())
        return 0;
    switch (lodSpec[0])
    {
    case 'H':
    case 'h':
        return 'H';
    case 'L':
    case 'l':
        return 'L';
    case 'M':
    case 'm':
        return 'M';
    default:
        KrMsgWarning("[zelk::shop::ShaderDesc] Ignoring invalid LOD specification: %s", lodSpec.c_str());
        return 0;
    }
}

int ShaderDesc::outputCount() const
{
    const int components = vectorSize(outputType);
    return components == 1 || components > 15 ? 1 : components + 1;
}

int ShaderDesc::outputIndex(const std::string& outputName) const
{
    if (outputName.size() != 1)
        return 0;
    switch (outputName[0])
    {
    case 'r':
    case 'x':
        return 1;
    case 'g':
    case 'y':
        return 2;
    case 'b':
    case 'z':
        return 3;
    case 'a':
        return 4;
    default:
        return 0;
    }
}

const char* ShaderDesc::outputToken(unsigned i) const
{
    if (i == 0)
    {
        if (shaderType == "light_filter")
            return "light filter";
        return isCamera() ? "camera" : typeName(outputType);
    }

    const ComponentRow* row = findRow(component_rows, &ComponentRow::outputType, outputType);
    const bool known = row && i <= 4 && row->names[i - 1];
    return known ? row->names[i - 1] : "<error>";
}

const char* ShaderDesc::outputLabel(unsigned i) const { return outputToken(i); }

} // namespace shop
} // namespace zelk
