#pragma once

#include <cstddef>
#include <string>

namespace standin
{

/// A file that is written as a whole or not at all: beside the one at its path, whose place it takes in the end.
///
/// A symbolic link stays one, and what it leads to is replaced. Permissions of the old file stay.
class NewFile
{
public:
    explicit NewFile(const std::string& path);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    /// Takes away what has not taken its place.
    ~NewFile();

    /// Appends bytes. False when that fails, or when something failed before.
    bool write(const char* bytes, std::size_t size);
    /// Ends it and puts it into its place. False, with the old file as it was, when that fails or something failed before.
    bool takePlace();

    /// Number of the first error, that of opening included; 0 while there was none.
    int error() const { return m_error; }

private:
    bool failed();
    void close();

    std::string m_path;   ///< behind links
    std::string m_beside; ///< where it is written; empty once it took its place
    int m_descriptor;
    int m_error;
};

/// Writes all bytes to an open file, however often the system takes only some of them. 0, or the error number.
int writeFully(int descriptor, const char* bytes, std::size_t size);

} // namespace standin
