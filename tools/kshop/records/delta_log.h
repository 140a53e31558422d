#ifndef KSHOP_DELTA_LOG_H
#define KSHOP_DELTA_LOG_H

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>

namespace kshop
{

/// A file that gets each record that this process's publishers are handed, from start() to the end of the process,
/// whether or not a render listens: one JSON object a line, as `listen --json` prints them. Every line is there at once.
class DeltaLog
{
public:
    /// Creates the file, or empties it. Null, after a sentence, when that is not possible.
    static std::shared_ptr<DeltaLog> start(const std::string& path);

    ~DeltaLog();
    DeltaLog(const DeltaLog&) = delete;
    DeltaLog& operator=(const DeltaLog&) = delete;

    /// True when a record could not be written; nothing is written after it. A sentence has been printed.
    bool failed() const;

private:
    DeltaLog(const std::string& path, std::FILE* file);
    void write(const std::string& text);

    mutable std::mutex m_mutex; ///< publishers may be used by several threads
    std::string m_path;
    std::FILE* m_file;
    bool m_failed = false;
};

} // namespace kshop

#endif
