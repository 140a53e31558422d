#ifndef OP_OTLDEFINITION_H
#define OP_OTLDEFINITION_H

#include <UT/UT_String.h>

/// What an asset file says about one of its types.
class OP_OTLDefinition
{
public:
    const UT_String& getName() const { return myName; }
    const UT_String& getLabel() const { return myLabel; }

private:
    UT_String myName;
    UT_String myLabel;
};

#endif
