#ifndef KSHOP_LINT_MODEL_H
#define KSHOP_LINT_MODEL_H

#include "../template_facts.h"

#include <kr_observe.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

class OP_Operator;

/// @file
/// What the rules look at: the metadata as it was written, with its places, beside what the plug-in made of it.

namespace kshop
{

/// One item of metadata.
struct Key
{
    std::string name;
    int type;         ///< KR_TYPE_STRING, KR_TYPE_BOOLEAN or KR_TYPE_FLOAT
    std::string text; ///< of a text
    bool truth;       ///< of a boolean
    float number;     ///< of a number
    KtPlace place;
};

/// The metadata of a shader or of a parameter, in its order.
class Keys
{
public:
    /// Reads what the running renderer has; `param` null for the entry itself.
    Keys(const KtNodeEntry* entry, const char* param);

    /// Null when there is none.
    const Key* find(const std::string& name) const;
    /// The same when it is a text; null also when it is something else.
    const Key* findText(const std::string& name) const;
    /// The text with its continuation keys, as the plug-in reads it; empty when there is none.
    std::string joined(const std::string& name) const;
    /// True when the key is there and true.
    bool isSet(const std::string& name) const;

    std::vector<Key>::const_iterator begin() const { return m_keys.begin(); }
    std::vector<Key>::const_iterator end() const { return m_keys.end(); }

private:
    std::vector<Key> m_keys;
};

/// A parameter that the renderer declares.
struct Parameter
{
    std::string name;
    int type; ///< KR_TYPE_...; of an array its elements'
    bool isArray;
    std::vector<std::string> items;    ///< of an enumeration
    std::optional<KtParamValue> value; ///< the default; of an array its array
    Keys keys;
    KtPlace place;              ///< its table, else the shader's
    std::string unseen;         ///< why it has no field: a sentence; empty when it should have one
    const TemplateFacts* field; ///< what the plug-in made of it, of an array its element; null when nothing
};

/// An extra parameter: houdini.parm.KIND.NAME.
struct Extra
{
    const Key* key;
    std::string kind;
    std::string name;
    const TemplateFacts* field; ///< null when the list has ended before it
};

/// A shader or camera.
struct Shader
{
    explicit Shader(const KtNodeEntry* rendererEntry);
    Shader(Shader&&) = default;

    std::string name;
    std::string type; ///< of nodes: "korvan::image"
    bool isCamera;
    bool isWanted; ///< it should have a node type
    Keys keys;
    KtPlace place; ///< its table, or where it is declared
    std::vector<Parameter> parameters;
    std::vector<Extra> extras;
    std::set<std::string> files; ///< where its metadata was written

    /// What the plug-in registered; absent when there is no such type, or another entry made it.
    std::optional<std::vector<TemplateFacts>> templates;

    const Parameter* findParameter(const std::string& name) const;
    const Extra* findExtra(const std::string& name) const;
    /// Parameters that a ramp stands for.
    bool isPartOfRamp(const std::string& parameter) const;

    /// Takes over what the plug-in made of it.
    void take(std::vector<TemplateFacts>&& made);
};

/// What metadata files held in vain.
struct LeftOut
{
    int reason; ///< KR_LEFT_OUT_...
    KtPlace place;
    std::string entry, parameter, key, detail;
};

/// Everything that is looked at. Valid while the renderer runs that it was read from.
struct Library
{
    /// `operators` are those of the shader-network table.
    explicit Library(const std::vector<OP_Operator*>& operators);

    std::vector<Shader> shaders; ///< shaders and cameras in the renderer's order
    std::vector<LeftOut> leftOut;
    std::set<std::string> handWritten;       ///< types that no shader makes
    std::vector<std::string> pluginMessages; ///< what the renderer said about its plug-ins
};

/// The stretches between separators, as the plug-in cuts them: nothing is trimmed.
std::vector<std::string> splitText(const std::string& text, char separator, bool keepEmpty);

} // namespace kshop

#endif
