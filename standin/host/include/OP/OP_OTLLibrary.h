#ifndef OP_OTLLIBRARY_H
#define OP_OTLLIBRARY_H

#include <OP/OP_OTLDefinition.h>
#include <UT/UT_String.h>

/// An asset file. No types come from asset files yet, so OP_Operator::getOTLLibrary() gives none of these.
class OP_OTLLibrary
{
public:
    /// Path of the file.
    const UT_String& getSource() const { return mySource; }

private:
    UT_String mySource;
};

#endif
