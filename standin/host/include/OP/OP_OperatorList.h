#ifndef OP_OPERATORLIST_H
#define OP_OPERATORLIST_H

#include <UT/UT_ValArray.h>

class OP_Operator;

typedef UT_ValArray<OP_Operator*> OP_OperatorList;

#endif
