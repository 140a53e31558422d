#pragma once
// Include in exactly one source of a plug-in, with MAKING_DSO defined: defines the functions by which the
// host recognises for which release and compiler the plug-in was made.
#include <SYS/SYS_Version.h>
#include <SYS/SYS_Visibility.h>

#define UT_DSO_VERSION SYS_VERSION_RELEASE

#ifdef MAKING_DSO
extern "C"
{
    SYS_VISIBILITY_EXPORT void HoudiniDSOVersion(const char** version);
    SYS_VISIBILITY_EXPORT unsigned HoudiniCompilerVersion();

    void HoudiniDSOVersion(const char** version) { *version = UT_DSO_VERSION; }

    unsigned HoudiniCompilerVersion() { return SYS_COMPILER_TAG; }

#ifdef UT_DSO_TAGINFO
    SYS_VISIBILITY_EXPORT void HoudiniGetTagInfo(const char** tag);

    void HoudiniGetTagInfo(const char** tag) { *tag = UT_DSO_TAGINFO; }
#endif
}
#endif
