// A plug-in for host and renderer that fails in the way that the variable KORVAN_TEST_FAULT names. It includes nothing of
// either, so that no check of theirs stands before the fault.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace
{
void failAs(const char* place)
{
    const char* fault = std::getenv("KORVAN_TEST_FAULT");
    const std::size_t length = std::strlen(place);
    if (!fault || std::strncmp(fault, place, length) != 0 || fault[length] != ':')
        return;
    if (std::strcmp(fault + length, ":exception") == 0)
        throw std::runtime_error("no licence");
    if (std::strcmp(fault + length, ":number") == 0)
        throw 42;
    std::remove(fault + length + 1); // the path of a file that vanishes just now
}

struct FailsEarly
{
    FailsEarly() { failAs("constructor"); }
} fails_early;
} // namespace

extern "C" __attribute__((visibility("default"))) void HoudiniDSOVersion(const char** version)
{
    failAs("version");
    *version = "15.5";
}

extern "C" __attribute__((visibility("default"))) unsigned HoudiniCompilerVersion() { return 408; }

extern "C" __attribute__((visibility("default"))) void newVopOperator(void*) { failAs("entry"); }

extern "C" __attribute__((visibility("default"))) void KrPluginDeclare() { failAs("declare"); }
