#ifndef OP_NODELIST_H
#define OP_NODELIST_H

#include <UT/UT_ValArray.h>

class OP_Node;

typedef UT_ValArray<OP_Node*> OP_NodeList;

#endif
