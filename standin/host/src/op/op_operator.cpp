#include <OP/OP_Operator.h>

#include "op_names.h"
#include "op_otl_index.h"

#include <OP/OP_Node.h>
#include <OP/OP_OTLLibrary.h>
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

OP_SpecificData* OP_Operator::getOpSpecificData() { return nullptr; }
const OP_SpecificData* OP_Operator::getOpSpecificData() const { return nullptr; }
unsigned OP_Operator::maxOutputs() { return myMaxOutputs; }

// --- asset files ------------------------------------------------------------------------------------------------

OP_OTLLibrary* OP_Operator::getOTLLibrary() { return myOTLLibrary.get(); }

FS_IndexFile* OP_Operator::getOTLIndexFile()
{
    if (myOTLIndexFile || !myOTLLibrary)
        return myOTLIndexFile.get();
    const std::string section = myOTLDefinition.sectionName();
    const std::unique_ptr<FS_Reader> reader(myOTLLibrary->getSectionReader(section.c_str()));
    if (reader)
        myOTLIndexFile.reset(
            new FS_IndexFile(reader.get(), (myOTLLibrary->filePath() + "?" + section).c_str()));
    return myOTLIndexFile.get();
}

void OP_Operator::setOTLLibrary(const std::shared_ptr<OP_OTLLibrary>& library, int definition)
{
    myOTLLibrary = library;
    myOTLDefinition = library->getDefinition(definition);
    myOTLIndexFile.reset();
    myEnglish = myOTLDefinition.getLabel();
    myIcon = myOTLDefinition.getIcon();
    myMinSources = myOTLDefinition.getMinInputs();
    myMaxSources = myOTLDefinition.getMaxInputs();
}

// --- names ------------------------------------------------------------------------------------------------------

const char* OP_Operator::inputLabel(unsigned idx) const
{
    return idx < myInputLabels.size() ? myInputLabels[idx].c_str() : nullptr;
}

OP_Node* OP_Operator::constructNode(OP_Network* net, const char* name)
{
    return myConstruct ? myConstruct(net, name, this) : nullptr;
}
