#ifndef PY_RESULT_H
#define PY_RESULT_H

#include <UT/UT_StringArray.h>
#include <UT/UT_StringHolder.h>

/// What a Python expression or a block of statements gave back.
///
/// Only the member that belongs to `myResultType` is filled; the others keep their empty values.
class PY_Result
{
public:
    enum Type
    {
        NONE = 0,     ///< Python's None, or statements that ran to their end
        INT,          ///< myIntValue
        DOUBLE,       ///< myDoubleValue
        STRING,       ///< myStringValue
        STRING_ARRAY, ///< myStringArray
        ERR           ///< an exception: myErrValue, myDetailedErrValue
    };

    PY_Result() : myResultType(NONE), myIntValue(0), myDoubleValue(0) {}

    Type myResultType;
    long myIntValue;
    double myDoubleValue;
    UT_StringHolder myStringValue;
    UT_StringArray myStringArray;
    UT_StringHolder myErrValue;         ///< one line: "NameError: name 'x' is not defined"
    UT_StringHolder myDetailedErrValue; ///< the whole traceback
};

#endif
