#ifndef STANDIN_SCENE_FILE_H
#define STANDIN_SCENE_FILE_H

#include <string>

namespace standin
{

/// All bytes of a file. False, with a sentence in `why`, when it cannot be read.
bool readWhole(const std::string& path, std::string& bytes, std::string& why);

/// Writes a file as a whole or not at all: into a new file beside it, which takes its place in the end. A symbolic link
/// stays one, and permissions stay. What is no regular file, as a device, is written to directly. False, with a sentence
/// in `why` and the old file as it was, when that fails.
bool writeWhole(const std::string& path, const std::string& bytes, std::string& why);

} // namespace standin

#endif
