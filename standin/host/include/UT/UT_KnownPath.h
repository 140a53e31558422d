#pragma once

/// The search paths that the host knows by number.
enum UT_KnownPath
{
    UT_HOUDINI_PATH = 0
};
