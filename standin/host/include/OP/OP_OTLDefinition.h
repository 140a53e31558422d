#ifndef OP_OTLDEFINITION_H
#define OP_OTLDEFINITION_H

#include <SYS/SYS_Types.h>
#include <UT/UT_String.h>

#include <string>

/// What an asset file says about one of its types. Without a file, as of the host's own types, all of it is empty.
class OP_OTLDefinition
{
public:
    OP_OTLDefinition();

    /// Name of the operator, with namespace and version.
    const UT_String& getName() const { return myName; }
    const UT_String& getLabel() const { return myLabel; }
    /// "oplib:/namespace::Table/name?namespace::Table/name": the section of the type stands behind the '?'.
    const UT_String& getPath() const { return myPath; }
    const UT_String& getIcon() const { return myIcon; }
    /// Name of the operator table, such as "Vop".
    const UT_String& getTable() const { return myTable; }
    /// For VOP types the network mask.
    const UT_String& getExtra() const { return myExtra; }
    const UT_String& getUserInfo() const { return myUserInfo; }
    unsigned getMinInputs() const { return myMinInputs; }
    unsigned getMaxInputs() const { return myMaxInputs; }
    /// 0 in files that do not tell.
    unsigned getMaxOutputs() const { return myMaxOutputs; }
    /// Unix seconds.
    unsigned getModTime() const { return myModTime; }
    /// True when the type has children of its own.
    bool isSubnet() const { return mySubnet; }
    /// True for a definition that only stands for one in another file.
    bool isEmpty() const { return myEmpty; }
    bool isPython() const { return myPython; }

    /// Name of the type's section in its file: what stands behind the '?' of the path, else what it must be by name and
    /// table.
    std::string sectionName() const;

private:
    friend struct OP_OTLDefinitionFields;

    UT_String myName, myLabel, myPath, myIcon, myTable, myExtra, myUserInfo;
    unsigned myMinInputs, myMaxInputs, myMaxOutputs, myModTime;
    bool mySubnet, myEmpty, myPython;
};

#endif
