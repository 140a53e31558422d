#ifndef STANDIN_OP_OTL_MANAGER_H
#define STANDIN_OP_OTL_MANAGER_H

#include <OP/OP_OTLLibrary.h>

#include <memory>
#include <string>
#include <vector>

/// @file
/// The asset files of the session.

namespace standin
{

/// An absolute path without "." and "..", so that one file has one name.
std::string libraryPath(const std::string& path);

/// Opens an asset file without installing it. Null, with a sentence, when it is none. What is damaged of it is reported.
std::shared_ptr<OP_OTLLibrary> openLibrary(const std::string& path, std::string& why);

/// Makes the types of an asset file; a file that is installed is read anew. A type whose name is taken by another file, a
/// plug-in or the host is left out with a message; types of tables that do not exist here are passed over. False, with a
/// sentence, when the file is no asset file.
bool installLibrary(const std::string& path, std::string& why);

/// Removes the types of an asset file; nodes of them become placeholders, and a message says so. False, with a sentence
/// and nothing changed, when it is not installed.
bool uninstallLibrary(const std::string& path, std::string& why);

/// The paths of the installed files, in the order of their installing.
std::vector<std::string> installedLibraries();

/// The library of that path if it is installed; else null.
std::shared_ptr<OP_OTLLibrary> installedLibrary(const std::string& path);

} // namespace standin

#endif
