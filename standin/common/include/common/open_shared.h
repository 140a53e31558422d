#pragma once

#include <string>

namespace standin
{

/// A shared object that was opened, or why there is none.
struct OpenedShared
{
    void* handle;    ///< null when it is not open
    bool threw;      ///< the constructors of its own objects did
    std::string why; ///< the rest of a sentence; empty with a handle
};

/// Opens a shared object: all its symbols are bound at once, and no other sees them.
///
/// What the constructors of its own objects throw comes through dlopen(), whose handle is lost then: the file stays in
/// memory and is to be asked nothing. The system keeps its loader locked for other threads then, for which there is no
/// remedy here.
OpenedShared openShared(const std::string& file);

} // namespace standin
