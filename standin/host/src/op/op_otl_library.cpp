#include <OP/OP_OTLLibrary.h>

#include "op_otl_index.h"

namespace
{

std::string textOf(const UT_WorkBuffer& buffer)
{
    return std::string(buffer.buffer(), static_cast<std::size_t>(buffer.length()));
}

} // namespace

OP_OTLLibrary::OP_OTLLibrary(const char* source)
    : FS_IndexFile(source), mySource(UT_String::ALWAYS_DEEP, source ? source : "")
{
    if (!isGood())
        return;
    UT_WorkBuffer bytes;
    std::string why;
    if (!hasSection(standin::index_section))
        why = "it has no section \"INDEX_SECTION\" that lists its types.";
    else if (!readSection(standin::index_section, bytes))
        why = "its list of types cannot be read.";
    else
        myDefinitions = isExpanded() ? standin::readDefinitionText(textOf(bytes), why)
                                     : standin::readDefinitions(textOf(bytes), why);
    if (!why.empty())
        myDefinitionProblem = "\"" + filePath() + "\" is damaged: " + why + " Get an undamaged copy of it.";
}

OP_OTLLibrary::~OP_OTLLibrary() {}

int OP_OTLLibrary::getNumDefinitions() const { return static_cast<int>(myDefinitions.size()); }

const OP_OTLDefinition& OP_OTLLibrary::getDefinition(int index) const
{
    return myDefinitions[static_cast<std::size_t>(index)];
}

int OP_OTLLibrary::findDefinition(const char* table, const char* name) const
{
    for (int i = 0; i < getNumDefinitions(); ++i)
        if (getDefinition(i).getTable() == table && getDefinition(i).getName() == name)
            return i;
    return -1;
}
