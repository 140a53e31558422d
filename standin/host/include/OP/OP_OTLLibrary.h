#ifndef OP_OTLLIBRARY_H
#define OP_OTLLIBRARY_H

#include <FS/FS_IndexFile.h>
#include <OP/OP_OTLDefinition.h>
#include <UT/UT_String.h>

#include <vector>

#define OTL_ROOTHDANAME "hdaroot" ///< what newer releases call an asset's own node in its contents

/// An asset file: an indexed file with a section for each type and one, "INDEX_SECTION", that describes them all.
class OP_OTLLibrary : public FS_IndexFile
{
public:
    /// Opens a file or an expanded directory and reads what it says about its types. Damaged definitions are left out,
    /// and problem() or definitionProblem() tells.
    explicit OP_OTLLibrary(const char* source);
    virtual ~OP_OTLLibrary();

    /// Path of the file.
    const UT_String& getSource() const { return mySource; }

    int getNumDefinitions() const;
    /// In the order of the file; `index` must be in range.
    const OP_OTLDefinition& getDefinition(int index) const;
    /// -1 when there is none.
    int findDefinition(const char* table, const char* name) const;

    /// What is wrong with the descriptions of the types: a sentence with file, place and remedy; empty when nothing is.
    const std::string& definitionProblem() const { return myDefinitionProblem; }

private:
    UT_String mySource;
    std::vector<OP_OTLDefinition> myDefinitions;
    std::string myDefinitionProblem;
};

#endif
