#include <OP/OP_OTLLibrary.h>

#include "op_otl_index.h"

namespace
{

/// Where an expanded asset keeps the list of its types, in text form.


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
    const bool hasIndex = hasSection(standin::index_section);
    if (hasIndex && isExpanded() && readSection(standin::index_section, bytes))
        myDefinitions = standin::readDefinitionText(textOf(bytes), why);
    else if (hasIndex)
    {
        // What is cut off is read up to the break.
        readSection(standin::index_section, bytes);
        myDefinitions = standin::readDefinitions(textOf(bytes), why);
    }
    else if (isExpanded() && readSection(expanded_index_section, bytes))
        myDefinitions = standin::readDefinitionText(textOf(bytes), why);
    else
        why = "it has no section \"INDEX_SECTION\" that lists its types.";
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
