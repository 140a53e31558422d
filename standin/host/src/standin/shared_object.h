#ifndef STANDIN_SHARED_OBJECT_H
#define STANDIN_SHARED_OBJECT_H

#include <string>

/// @file
/// A look at a shared object before it is opened.

namespace standin
{

/// Why a file must not be handed to the system's loader: it cannot be read, it is no shared object, or a part of it is
/// missing (the loader maps a cut-off file without complaint, and the first touch of what is missing ends the
/// process). A clause with the remedy, to be put behind "The plug-in FILE is not used: "; empty when nothing is wrong
/// with the file as such.
std::string objectionToFile(const std::string& path);

} // namespace standin

#endif
