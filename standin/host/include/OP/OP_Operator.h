#ifndef OP_OPERATOR_H
#define OP_OPERATOR_H

#include <CH/CH_LocalVariable.h>
#include <OP/OP_OTLDefinition.h>
#include <OP/OP_OpTypeId.h>
#include <PRM/PRM_Template.h>
#include <UT/UT_String.h>

#include <memory>
#include <string>
#include <vector>

class FS_IndexFile;
class OP_Network;
class OP_Node;
class OP_Operator;
class OP_OperatorTable;
class OP_OTLLibrary;

/// Makes the node object. Its parameters do not exist yet while it runs, nor while the node's constructor
/// does.
typedef OP_Node* (*OP_Constructor)(OP_Network* net, const char* name, OP_Operator* entry);

#define OP_FLAG_NETWORK 0x01   ///< holds other nodes
#define OP_FLAG_GENERATOR 0x02 ///< makes data from nothing
#define OP_FLAG_UNORDERED 0x04 ///< inputs after the first orderedInputs() close up when one is disconnected
#define OP_FLAG_SCRIPTDEF 0x08 ///< defined by a dialog script
#define OP_FLAG_MANAGER 0x10   ///< holds nodes of another kind
#define OP_FLAG_PRIMARYSUBNET 0x20 ///< the table's own subnet type
#define OP_FLAG_OUTPUT 0x40        ///< output type, only one per network
#define OP_FLAG_EDITABLE_INPUT_DATA 0x80
#define OP_MAX_INPUT_LABELS 4
#define OP_MULTI_INPUT_MAX 9999

/// Base of what a table's operators know beyond what all operators know.
class OP_SpecificData
{
public:
    virtual ~OP_SpecificData() {}
};

/// An operator: a type of node. Belongs to its table once that accepted it, and lives as long as the table
/// does.
///
/// The texts are copied; the templates, local variables and input labels are kept by pointer and must stay.
class OP_Operator
{
public:
    /// @param name              unique in its table, `[scope::][namespace::]name[::version]`
    /// @param english           label shown to people
    /// @param templates         parameters, up to the terminator; null means none
    /// @param inputlabels       null terminated, or null
    /// @param tab_submenu_path  sub-menu of the tab menu, levels separated by '/', or null
    OP_Operator(const char* name, const char* english, OP_Constructor construct, PRM_Template* templates,
                unsigned min_sources, unsigned max_sources = 9999, CH_LocalVariable* variables = 0,
                unsigned flags = 0, const char** inputlabels = 0, int maxoutputs = 1,
                const char* tab_submenu_path = 0);
    virtual ~OP_Operator();

    const UT_String& getName() const { return myName; }
    const UT_String& getEnglish() const { return myEnglish; }

    /// The number of inputs that must be, and that can be, connected.
    unsigned getMinSources() const { return myMinSources; }
    unsigned getMaxSources() const { return myMaxSources; }

    /// The OP_FLAG_* bits.
    unsigned getFlags() const { return myFlags; }
    bool getIsNetwork() const { return (myFlags & (OP_FLAG_NETWORK | OP_FLAG_MANAGER)) != 0; }
    bool getIsUnordered() const { return (myFlags & OP_FLAG_UNORDERED) != 0; }

    /// Icon name ("VOP_output") or a path. Never checked. "TABLE_name" when none was set (the name alone as
    /// long as no table has the operator).
    void setIconName(const char* icon);
    UT_String getIconName() const;

    void setOpTabSubMenuPath(const char* path);

    /// True: `url` is the help page. False, the default: the host looks elsewhere.
    virtual bool getOpHelpURL(UT_String& url);
    /// True: `path` is the sub-menu, levels separated by '/'. False: the type has no sub-menu of its own.
    virtual bool getOpTabSubMenuPath(UT_String& path);

    /// VOP_OperatorInfo or SHOP_OperatorInfo; null for other operators.
    virtual OP_SpecificData* getOpSpecificData();
    virtual const OP_SpecificData* getOpSpecificData() const;

    /// The number of outputs given at construction.
    virtual unsigned maxOutputs();

    /// The asset file that the type comes from; null for types that come from none.
    OP_OTLLibrary* getOTLLibrary();
    /// The type's own sections in that file, read on first use; belongs to the operator, until the file is installed
    /// again. Null when there are none.
    FS_IndexFile* getOTLIndexFile();
    /// What the file says about the type; all empty for types that come from none.
    const OP_OTLDefinition& getOTLDefinition() const { return myOTLDefinition; }

    /// Host's side: the type comes from this file, which may be a newer state of the one it came from. Label, icon and
    /// numbers of inputs become those of the definition.
    virtual void setOTLLibrary(const std::shared_ptr<OP_OTLLibrary>& library, int definition);

    /// The table that has the operator; null until addOperator() accepted it.
    OP_OperatorTable* getTable() const { return myTable; }

    /// The templates given at construction, up to the terminator; never null. Those of types from asset files are read
    /// when they are asked for.
    virtual PRM_Template* getParmTemplates() const { return myTemplates; }
    CH_LocalVariable* getVariables() const { return myVariables; }
    /// The label given for an input; null when there is none.
    const char* inputLabel(unsigned idx) const;

    /// Runs the constructor callback; null when there is none or when it gives none. The node has no
    /// parameters yet and is in no network: people call OP_Network::createNode().
    OP_Node* constructNode(OP_Network* net, const char* name);

private:
    friend class OP_OperatorTable;

    OP_Operator(const OP_Operator&);
    OP_Operator& operator=(const OP_Operator&);

    UT_String myName;
    UT_String myEnglish;
    UT_String myIcon;
    UT_String myTabPath;
    OP_Constructor myConstruct;
    PRM_Template* myTemplates;
    CH_LocalVariable* myVariables;
    unsigned myMinSources;
    unsigned myMaxSources;
    unsigned myFlags;
    unsigned myMaxOutputs;
    std::vector<std::string> myInputLabels;
    OP_OperatorTable* myTable;
    std::shared_ptr<OP_OTLLibrary> myOTLLibrary;
    OP_OTLDefinition myOTLDefinition;
    std::unique_ptr<FS_IndexFile> myOTLIndexFile;
};

#endif
