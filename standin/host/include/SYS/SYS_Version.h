#pragma once
// Release of the toolkit. A plug-in is accepted when it was made for the same release by the same compiler.
#define SYS_VERSION_MAJOR "15"
#define SYS_VERSION_MINOR "5"
#define SYS_VERSION_BUILD "0"
#define SYS_VERSION_PATCH "0"
#define SYS_VERSION_MAJOR_INT 15
#define SYS_VERSION_MINOR_INT 5
#define SYS_VERSION_BUILD_INT 0
#define SYS_VERSION_PATCH_INT 0
#define SYS_VERSION_RELEASE "15.5"
#define SYS_VERSION_FULL "15.5.0"

/// Tag of the compiler that the release is made with: major * 100 + minor (GCC 4.8). The stand-in keeps the
/// release's tag whatever compiler builds it, so that plug-in and host always speak of the same one.
#define SYS_COMPILER_TAG 408
