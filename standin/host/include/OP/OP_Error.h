#ifndef OP_ERROR_H
#define OP_ERROR_H

/// How badly something went wrong; UT_ERROR_NONE (0) is success.
enum UT_ErrorSeverity
{
    UT_ERROR_NONE = 0,
    UT_ERROR_MESSAGE = 1,
    UT_ERROR_PROMPT = 2,
    UT_ERROR_WARNING = 3,
    UT_ERROR_ABORT = 4,
    UT_ERROR_FATAL = 5
};

typedef UT_ErrorSeverity OP_ERROR;

#endif
