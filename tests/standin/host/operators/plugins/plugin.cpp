// A plug-in for the tests of the loader. What is defined on the command line makes it a good or a bad one.
#include <OP/OP_OperatorTable.h>
#include <SHOP/SHOP_Node.h>
#include <VOP/VOP_Node.h>

#include <memory>
#include <stdexcept>

#ifndef RELEASE
#define RELEASE "15.5"
#endif
#ifndef COMPILER_TAG
#define COMPILER_TAG 408
#endif

#ifndef NO_VERSIONS
extern "C" SYS_VISIBILITY_EXPORT void HoudiniDSOVersion(const char** version);
extern "C" SYS_VISIBILITY_EXPORT unsigned HoudiniCompilerVersion();

void HoudiniDSOVersion(const char** version) { *version = RELEASE; }
unsigned HoudiniCompilerVersion() { return COMPILER_TAG; }
#endif

#ifndef NO_ENTRY_POINTS
namespace
{

void add(OP_OperatorTable* table, const char* name)
{
    std::unique_ptr<OP_Operator> op(new VOP_Operator(name, name, nullptr, nullptr, 0, 0, "*"));
    if (table->addOperator(op.get()))
        op.release();
}

} // namespace

// The types have the plug-in's name, and one is the same in all of them.
void newVopOperator(OP_OperatorTable* table)
{
    add(table, PLUGIN_NAME);
    add(table, "shared_type");
#ifdef THROWS
    throw std::runtime_error("no licence");
#endif
}

void newShopOperator(OP_OperatorTable* table)
{
    add(table, PLUGIN_NAME "_shop");
#ifdef REPEATS_ITSELF
    add(table, PLUGIN_NAME "_shop");
#endif
}
#endif
