#ifndef STANDIN_PATHS_H
#define STANDIN_PATHS_H

#include <string>
#include <vector>

/// @file
/// Where the host looks for plug-ins.

namespace standin
{

/// $NAME, ${NAME} and a leading ~ replaced from the environment; unknown variables stay as typed.
std::string expandPath(const std::string& text);

/// The entries of HOUDINI_DSO_PATH, or, when that is unset or empty, "dso" below each entry of the Houdini path. '&'
/// stands for that default, '@' for each entry of the Houdini path, '^' for "dso". Existing or not.
std::vector<std::string> pluginPathEntries();

/// The plug-in files of such entries, in order: a file is itself, a directory its *.so files, sorted. Missing ones
/// give nothing. Absolute; each file once.
std::vector<std::string> pluginFiles(const std::vector<std::string>& entries);

} // namespace standin

#endif
