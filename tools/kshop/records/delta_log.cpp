#include "delta_log.h"

#include "../output.h"
#include "record_output.h"

#include <zelk/ipr/observe.h>
#include <zelk/ipr/reader.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstring>

namespace kshop
{

std::shared_ptr<DeltaLog> DeltaLog::start(const std::string& path)
{
    std::FILE* file = std::fopen(path.c_str(), "we"); // "e": programs that a script starts do not get it
    if (!file)
    {
        complain(fmt::format("--deltas: cannot write {}: {}", path, std::strerror(errno)));
        return nullptr;
    }
    std::shared_ptr<DeltaLog> log(new DeltaLog(path, file));
    // The observer shares the log and is never taken back: nodes may send until the very end of the process.
    zelk::ipr::setSendObserver([log](const std::string& text) { log->write(text); });
    return log;
}

DeltaLog::DeltaLog(const std::string& path, std::FILE* file) : m_path(path), m_file(file) {}

DeltaLog::~DeltaLog() { std::fclose(m_file); }

bool DeltaLog::failed() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_failed;
}

void DeltaLog::write(const std::string& text)
{
    zelk::ipr::ReceivedDelta delta;
    std::string error;
    if (!readDelta(text, delta, error))
        return complain(
            fmt::format("--deltas: a text of {} was left out. {}", countText(text.size(), "byte"), error));
    const std::string line = recordJson(delta);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_failed)
        return;
    m_failed = std::fwrite(line.data(), 1, line.size(), m_file) != line.size() || std::fflush(m_file) != 0;
    if (m_failed)
        complain(fmt::format("--deltas: cannot write {}: {}; later records are left out", m_path,
                             std::strerror(errno)));
}

} // namespace kshop
