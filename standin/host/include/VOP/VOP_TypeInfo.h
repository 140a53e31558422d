#ifndef VOP_TYPEINFO_H
#define VOP_TYPEINFO_H

#include <VOP/VOP_Types.h>

/// A connector type, as the newer form of the type functions carries it.
class VOP_TypeInfo
{
public:
    VOP_TypeInfo(VOP_Type type = VOP_TYPE_UNDEF) : myType(type) {}

    void setType(VOP_Type type) { myType = type; }
    VOP_Type getType() const { return myType; }

    bool operator==(const VOP_TypeInfo& other) const { return myType == other.myType; }
    bool operator!=(const VOP_TypeInfo& other) const { return myType != other.myType; }

private:
    VOP_Type myType;
};

#endif
