#include <OP/OP_Operator.h>

#include "op_names.h"

#include <OP/OP_Node.h>
#include <OP/OP_OperatorTable.h>

namespace
{

// What a type without templates has: a list that ends at once.
PRM_Template no_templates[] = {PRM_Template()};

std::string textOf(const UT_String& text) { return text.toStdString(); }

} // namespace

OP_Operator::OP_Operator(const char* name, const char* english, OP_Constructor construct,
                         PRM_Template* templates, unsigned min_sources, unsigned max_sources,
                         CH_LocalVariable* variables, unsigned flags, const char** inputlabels,
                         int maxoutputs, const char* tab_submenu_path)
    : myName(UT_String::ALWAYS_DEEP, name ? name : ""),
      myEnglish(UT_String::ALWAYS_DEEP, english ? english : ""),
      myIcon(UT_String::ALWAYS_DEEP),
      myTabPath(UT_String::ALWAYS_DEEP, tab_submenu_path),
      myConstruct(construct),
      myTemplates(templates ? templates : no_templates),
      myVariables(variables),
      myMinSources(min_sources),
      myMaxSources(max_sources),
      myFlags(flags),
      myMaxOutputs(maxoutputs > 0 ? static_cast<unsigned>(maxoutputs) : 0),
      myTable(nullptr)
{
    for (; inputlabels && *inputlabels; ++inputlabels)
        myInputLabels.push_back(*inputlabels);
}

OP_Operator::~OP_Operator() {}

void OP_Operator::setIconName(const char* icon) { myIcon = icon; }

UT_String OP_Operator::getIconName() const
{
    if (myIcon.isstring())
        return UT_String(textOf(myIcon));
    const std::string core = standin::splitOperatorName(textOf(myName)).name;
    return UT_String(myTable ? textOf(myTable->getName()) + "_" + core : core);
}

void OP_Operator::setOpTabSubMenuPath(const char* path) { myTabPath = path; }

bool OP_Operator::getOpHelpURL(UT_String&) { return false; }

bool OP_Operator::getOpTabSubMenuPath(UT_String& path)
{
    if (!myTabPath.isstring())
        return false;
    path.harden(myTabPath.buffer());
    return true;
}

bool OP_Operator::getHDKHelp(UT_String&) const { return false; }
OP_SpecificData* OP_Operator::getOpSpecificData() { return nullptr; }
const OP_SpecificData* OP_Operator::getOpSpecificData() const { return nullptr; }
unsigned OP_Operator::maxOutputs() { return myMaxOutputs; }

OP_OTLLibrary* OP_Operator::getOTLLibrary() { return nullptr; }
FS_IndexFile* OP_Operator::getOTLIndexFile() { return nullptr; }
bool OP_Operator::hasContentsSection() { return false; }

void OP_Operator::getTableAndName(UT_String& text) const
{
    if (!myTable)
    {
        text.harden(myName.nonNullBuffer());
        return;
    }
    const standin::OperatorName name = standin::splitOperatorName(textOf(myName));
    std::string full;
    for (const std::string& part : {name.scope, name.nameSpace})
        if (!part.empty())
            full += part + "::";
    full += textOf(myTable->getName()) + "/" + name.name;
    if (!name.version.empty())
        full += "::" + name.version;
    text.harden(full.c_str());
}

const char* OP_Operator::inputLabel(unsigned idx) const
{
    return idx < myInputLabels.size() ? myInputLabels[idx].c_str() : nullptr;
}

OP_Node* OP_Operator::constructNode(OP_Network* net, const char* name)
{
    return myConstruct ? myConstruct(net, name, this) : nullptr;
}
