#ifndef ZELK_SHOP_SHADER_DESC_H
#define ZELK_SHOP_SHADER_DESC_H

#include <PRM/PRM_Range.h>

#include <kr.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class PRM_ConditionalBase;
class PRM_Default;
class PRM_Name;
class PRM_SpareData;
class PRM_Template;

namespace zelk
{
namespace shop
{

/// One parameter of a shader: what its template, its connector and its live updates are made from.
///
/// A description stands either for a renderer parameter (see init()) or for an extra, interface-only one that
/// the shader's metadata declares (see ShaderDesc). It belongs to its ShaderDesc and lives as long.
struct ParmDesc
{
    ParmDesc();

    /// Fills the description of a renderer parameter from the renderer and the metadata.
    /// An odd number of menu items is reported as an error; the complete pairs are kept.
    void init(const KtNodeEntry* entry, const KtParamEntry* param);

    /// Makes the host's disable and hide conditions; null when there are none. Kept by the host.
    PRM_ConditionalBase* getConditional() const;

    /// Makes `vectorSize(type)` host defaults. Kept by the host.
    ///
    /// An array's default is its first element; an empty array gives zeros and the empty text, a missing
    /// default record leaves the host's own default. An undefined or unknown type is reported as an error,
    /// and the first default's text says so too. Needs the renderer running: the record is the renderer's.
    PRM_Default* getDefault() const;

    /// Makes the terminated list of the menu's names. Kept by the host.
    PRM_Name* getMenuNames() const;

    /// Makes the host templates of this parameter: one, or two (folder and list) for an array. Kept by the
    /// host.
    ///
    /// Writes the range of byte and unsigned parameters back into `min` and `max`. Needs the renderer
    /// running.
    std::vector<PRM_Template*> getTemplates() const;

    /// The same by value, for a caller that puts them into the host's list itself.
    std::vector<PRM_Template> makeTemplates() const;

    /// Makes the host template of an extra parameter. Kept by the host.
    ///
    /// A malformed folder or menu is reported as an error and gives a list terminator, which ends the
    /// shader's interface at that place.
    PRM_Template* getExtraTemplate() const;

    /// The same by value.
    PRM_Template makeExtraTemplate() const;

    KtParamValue defaultValue; ///< renderer's default; texts and arrays in it live until the renderer ends
    bool hasDefault;           ///< false: the renderer declares none, and `defaultValue` is all zero
    int vopType;               ///< connector type of the node input (VOP_Type)
    std::string name;          ///< renderer's name; also the host token
    std::string label;         ///< shown text
    std::string icon;          ///< icon of an extra button; empty for none
    std::string help;          ///< help text; empty for none
    std::string houdiniType;   ///< sub-kind ("file:image"); for an extra parameter its kind ("folder")
    std::string extraArgs;     ///< arguments of an extra parameter, as written
    std::string disableWhen;   ///< condition in the host's syntax; empty for none
    std::string hideWhen;      ///< condition in the host's syntax; empty for none
    std::string menuScript;    ///< script that makes the menu; empty for none
    std::string expression;    ///< default expression without its "python:"; empty for none
    std::string callback;      ///< script run on a change, with its language prefix; empty for none
    int expressionLanguage;    ///< 0 none, 1 hscript, 2 Python (CH_StringMeaning)
    int type;                  ///< renderer type code; of an array its element type; -1 before init()
    int index;                 ///< place of creation in the shader, from 0; INT_MAX before
    int order;                 ///< place asked for by the metadata, from 0; INT_MAX when none was
    bool isExtra;              ///< interface-only: the renderer has no such parameter
    bool invisible;            ///< not shown
    bool noMenuCaps;           ///< labels of an enumeration's menu are not capitalised
    bool noInput;              ///< shown as a parameter only, never as a connector
    bool isArray;              ///< the renderer's type is an array
    bool joinNext;             ///< shares its row with the next parameter
    bool noLabel;              ///< shown without its label
    mutable float min;         ///< hard minimum, in the parameter's own unit; NaN when there is none
    mutable float max;         ///< hard maximum; NaN when there is none
    float softMin;             ///< slider's minimum; NaN when there is none
    float softMax;             ///< slider's maximum; NaN when there is none
    std::vector<std::pair<std::string, std::string>> menuItems; ///< tokens and labels

    /// The type as the renderer knows it: one byte.
    int typeCode() const { return static_cast<unsigned char>(type); }

private:
    void readType(const KtParamEntry* param);
    void readTexts(const KtNodeEntry* entry);
    void readFlags(const KtNodeEntry* entry);
    void readRange(const KtNodeEntry* entry);
    void readMenu(const KtNodeEntry* entry, const KtParamEntry* param);
    void readExpression(const KtNodeEntry* entry);
};

/// Returns the host range with each end chosen by itself: the hard bound, else the soft one, else free at 0
/// (lower) or 1 (upper). NaN stands for "no bound". The ends are not compared with each other.
PRM_Range getRange(float min, float max, float softMin, float softMax);

/// Everything that the plug-in derives from one renderer entry.
///
/// Built at start-up, while the renderer runs, and only read afterwards; lives for the process and is shared
/// by the operator type and all its nodes. Bad metadata never stops construction: it is reported and skipped.
class ShaderDesc
{
public:
    /// Builds the whole description. `entry` is not null; the renderer must be running.
    explicit ShaderDesc(const KtNodeEntry* entry);

    /// Returns the description of a parameter, null when `name` is not one.
    ParmDesc* parmDesc(const char* name) const;

    /// Returns the input of a parameter, -1 when it has none.
    int inputIndex(const std::string& name) const;

    /// Returns the level of detail as the host's flag letter 'H', 'M' or 'L', from the first letter of
    /// `lodSpec`; 0 for none. Any other text is reported as a warning and gives 0.
    int lod() const;

    /// Output 0 is the whole value; colours and vectors have one more for each component.
    int outputCount() const;
    /// Returns the output of a component's letter, 0 for any other name.
    int outputIndex(const std::string& name) const;
    /// Returns the name of an output, "<error>" for one that does not exist. Static text.
    const char* outputToken(unsigned i) const;
    /// The same as the token.
    const char* outputLabel(unsigned i) const;

    /// Makes the host's terminated template list of the whole shader. Kept by the host.
    /// Needs the renderer running.
    PRM_Template* getTemplates() const;

    std::string name;       ///< renderer's name of the entry
    std::string baseName;   ///< `name` without a leading "zelk__"
    std::string opName;     ///< operator type name, "korvan::" and the base name
    std::string label;      ///< shown name of the operator
    std::string icon;       ///< host icon
    std::string lodSpec;    ///< level of detail as written; empty for none
    std::string shaderType; ///< "light_filter", "atmosphere", "volume", or anything else for a plain shader
    std::string helpUrl;    ///< help address; empty for the default one
    std::string category;   ///< tab sub-menu path; empty for none
    int outputType;         ///< renderer type code of the output
    int nodeType;           ///< renderer's kind of entry (KR_NODE_...)
    int vopOutputType;      ///< connector type of output 0 (VOP_Type)
    std::vector<ParmDesc*> parms;                 ///< all parameters, in display order
    std::vector<ParmDesc*> inputs;                ///< those of `parms` that are inputs too
    std::map<std::string, int> inputIndices;      ///< parameter name to its place in `inputs`
    std::map<std::string, ParmDesc*> parmsByName; ///< parameter name to description

private:
    bool isCamera() const { return nodeType == KR_NODE_CAMERA; }
    ParmDesc& addParm();
    void readNames(const KtNodeEntry* entry);
    void readOutput(const KtNodeEntry* entry);
    void addRendererParms(const KtNodeEntry* entry);
    bool isExposed(const KtNodeEntry* entry, const std::string& parmName) const;
    void addExtraParms(const KtNodeEntry* entry);
    void addExtraParm(const KtNodeEntry* entry, const KtMetaDataEntry& item);
    void wireRamp(const ParmDesc& ramp);
    void readOrder(const KtNodeEntry* entry);
    void sortParms();
    void listInputs();

    std::vector<std::unique_ptr<ParmDesc>> m_owned; // also those that a ramp took out of `parms`
};

} // namespace shop
} // namespace zelk

#endif
