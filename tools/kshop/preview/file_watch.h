#ifndef KSHOP_PREVIEW_FILE_WATCH_H
#define KSHOP_PREVIEW_FILE_WATCH_H

#include <cstdint>
#include <map>
#include <string>
#include <tuple>

namespace kshop
{

/// What a file was when it was looked at: inode, size, time of its last change in nanoseconds. All 0 when there is none.
using FileStamp = std::tuple<std::uint64_t, std::int64_t, std::int64_t>;

/// The files that a session reads when it starts: metadata, renderer plug-ins, host plug-ins, catalogues.
using FileStamps = std::map<std::string, FileStamp>;

/// Looks at all of them now, on the present search paths.
FileStamps stampFiles(const std::string& dso);

/// Tells when the files have changed, and have come to rest again: an editor may write a file in several steps.
class FileWatch
{
public:
    explicit FileWatch(const std::string& dso) : m_dso(dso), m_loaded(stampFiles(dso)), m_last(m_loaded) {}

    /// Looks again. True when the files differ from those of the last time that it was true (or of the beginning), and
    /// are as they were at the last look.
    bool hasSettledChange();

private:
    std::string m_dso;
    FileStamps m_loaded;
    FileStamps m_last;
};

} // namespace kshop

#endif
