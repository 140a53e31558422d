#ifndef KSHOP_PREVIEW_SUPERVISOR_H
#define KSHOP_PREVIEW_SUPERVISOR_H

#include "../interface_json.h"
#include "file_watch.h"
#include "worker_process.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>

namespace kshop
{

/// Keeps a worker at hand, passes it requests one at a time, and replaces it when it dies, hangs, or when the files
/// that it read have changed. A new worker gets the edits made so far; each new one raises the generation.
///
/// All of it may be called from any thread, but start() and watchFiles() from one only.
class Supervisor
{
public:
    explicit Supervisor(const std::string& dso);

    /// Starts the first worker. False, after sentences on standard error, when it does not come up.
    bool start();
    /// Ends the worker; requests and waits under way come back at once.
    void stop();
    /// To be called regularly: replaces the worker when its files have changed.
    void watchFiles();

    /// The worker's answer to a request, with "console" and "records": what scripts wrote, and what was sent, meanwhile.
    /// Throws RequestError with the worker's own refusal, or when it died or hung.
    Json ask(const Json& request);

    /// "types", "messages" and "files" of the worker's beginning, with "generation" and "notice".
    Json state();
    /// {"generation", "reason"}: at once when the generation is not `known`, else when it changes, at the latest after
    /// `patience`, with a reason of null.
    Json wait(std::int64_t known, std::chrono::milliseconds patience);
    /// {"next", "records"}: those of the last records whose number is `since` or above.
    Json records(std::int64_t since);

private:
    std::unique_ptr<WorkerProcess> startWorker(const Json& kept, Json& state, std::string& why);
    void replaceAfter(const std::string& why);
    void reloadFiles();
    void use(std::unique_ptr<WorkerProcess> worker, Json state, const char* reason, const Json& notice);
    void setNotice(const Json& notice);
    void keepRecords(const Json& records);

    const std::string m_dso;
    FileWatch m_files;
    std::atomic<bool> m_stop{false};

    std::mutex m_workerMutex; ///< one request at a time
    std::unique_ptr<WorkerProcess> m_worker;
    Json m_kept = Json::array();
    std::string m_whyNone; ///< why there is no worker

    std::mutex m_stateMutex; ///< never held for long
    std::condition_variable m_changed;
    Json m_state;
    Json m_notice;
    std::string m_reason;
    std::int64_t m_generation = 0;
    std::deque<Json> m_records; ///< {"n", "record"}
    std::int64_t m_nextRecord = 0;
    int m_waiting = 0;
};

} // namespace kshop

#endif
