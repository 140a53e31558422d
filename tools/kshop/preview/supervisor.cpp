#include "supervisor.h"

#include "../output.h"
#include "request_error.h"

#include <fmt/format.h>

#include <cstdio>

namespace kshop
{

namespace
{

using std::chrono::milliseconds;

/// A request that takes longer is a callback or expression without an end.
const milliseconds request_patience(10000);
/// A big catalogue and a slow disk take their time.
const milliseconds start_patience(60000);

const std::size_t most_records = 1000;

/// So many may wait at once; others are asked to come back soon, since each takes a thread.
const int most_waiting = 40;
const milliseconds short_patience(1000);

std::string endText(WorkerProcess& worker, WorkerProcess::Outcome outcome)
{
    if (outcome == WorkerProcess::Outcome::late)
        return fmt::format("did not answer within {} seconds", request_patience.count() / 1000);
    return worker.waitForEnd();
}

} // namespace

Supervisor::Supervisor(const std::string& dso) : m_dso(dso), m_files(dso) {}

std::unique_ptr<WorkerProcess> Supervisor::startWorker(const Json& kept, Json& state, std::string& why)
{
    auto worker = std::make_unique<WorkerProcess>(m_dso);
    std::string text;
    const Json request = {{"op", "state"}, {"kept", kept}};
    const WorkerProcess::Outcome outcome = worker->exchange(
        request.dump(-1, ' ', false, Json::error_handler_t::replace), text, start_patience, m_stop);
    const std::string console = worker->takeConsole();
    if (m_generation == 0) // of later ones the page shows the messages
        std::fputs(console.c_str(), stderr);
    if (outcome != WorkerProcess::Outcome::answered)
    {
        why = endText(*worker, outcome);
        return nullptr;
    }
    Json answer = Json::parse(text, nullptr, false);
    if (answer.contains("error"))
    {
        why = "could not begin: " + answer["error"].get<std::string>();
        return nullptr;
    }
    state = std::move(answer["answer"]);
    return worker;
}

void Supervisor::use(std::unique_ptr<WorkerProcess> worker, Json state, const char* reason,
                     const Json& notice)
{
    m_worker = std::move(worker);
    const std::lock_guard<std::mutex> lock(m_stateMutex);
    m_state = std::move(state);
    m_notice = notice;
    m_reason = reason;
    ++m_generation;
    m_changed.notify_all();
}

void Supervisor::setNotice(const Json& notice)
{
    const std::lock_guard<std::mutex> lock(m_stateMutex);
    m_notice = notice;
    m_reason = "restart";
    ++m_generation;
    m_changed.notify_all();
}

bool Supervisor::start()
{
    const std::lock_guard<std::mutex> lock(m_workerMutex);
    Json state;
    std::string why;
    std::unique_ptr<WorkerProcess> worker = startWorker(m_kept, state, why);
    if (!worker)
    {
        if (!m_stop)
            complain("the preview could not start: its worker " + why);
        return false;
    }
    use(std::move(worker), std::move(state), "restart", nullptr);
    return true;
}

void Supervisor::stop()
{
    m_stop = true;
    {
        const std::lock_guard<std::mutex> lock(m_stateMutex);
        m_changed.notify_all();
    }
    const std::lock_guard<std::mutex> lock(m_workerMutex);
    m_worker.reset();
}

/// After a worker died or hung: the next one gets the edits made before.
void Supervisor::replaceAfter(const std::string& why)
{
    m_worker.reset();
    Json state;
    std::string whyNot;
    std::unique_ptr<WorkerProcess> worker = startWorker(m_kept, state, whyNot);
    if (worker)
        return use(std::move(worker), std::move(state), "restart",
                   "The node's process " + why + ". It was started again; the edits made before are kept.");
    if (m_stop)
        return;
    m_kept = Json::array();
    worker = startWorker(m_kept, state, whyNot);
    if (worker)
        return use(std::move(worker), std::move(state), "restart",
                   "The node's process " + why +
                       ", and once more with the edits made before. It was started without them.");
    m_whyNone = whyNot;
    setNotice("The node's process " + why + " and cannot be started again: it " + whyNot +
              ". It is tried again when a file changes.");
}

void Supervisor::watchFiles()
{
    if (m_files.hasSettledChange())
        reloadFiles();
}

void Supervisor::reloadFiles()
{
    const std::lock_guard<std::mutex> lock(m_workerMutex);
    Json state;
    std::string why;
    std::unique_ptr<WorkerProcess> worker = startWorker(m_kept, state, why);
    if (worker)
        use(std::move(worker), std::move(state), "metadata", nullptr);
    else if (!m_stop)
        setNotice("The files have changed, but a new process " + why + ". The page shows what was before.");
}

Json Supervisor::ask(const Json& request)
{
    const std::lock_guard<std::mutex> lock(m_workerMutex);
    if (!m_worker)
        throw RequestError(503,
                           m_stop ? "The preview ends." : "There is no node: its process " + m_whyNone + ".");
    std::string text;
    const WorkerProcess::Outcome outcome = m_worker->exchange(
        request.dump(-1, ' ', false, Json::error_handler_t::replace), text, request_patience, m_stop);
    if (outcome == WorkerProcess::Outcome::stopped)
        throw RequestError(503, "The preview ends.");
    if (outcome != WorkerProcess::Outcome::answered)
    {
        const std::string why = endText(*m_worker, outcome);
        const std::string console = m_worker->takeConsole();
        replaceAfter(why);
        throw RequestError(500, "The node's process " + why + " at this; it was undone.", console);
    }
    Json answer = Json::parse(text, nullptr, false);
    keepRecords(answer["records"]);
    if (answer.contains("kept"))
        m_kept = std::move(answer["kept"]);
    if (answer.contains("error"))
        throw RequestError(answer["status"], answer["error"].get<std::string>());
    return {{"answer", std::move(answer["answer"])},
            {"records", std::move(answer["records"])},
            {"console", m_worker->takeConsole()}};
}

void Supervisor::keepRecords(const Json& records)
{
    const std::lock_guard<std::mutex> lock(m_stateMutex);
    for (const Json& record : records)
        m_records.push_back({{"n", m_nextRecord++}, {"record", record}});
    while (m_records.size() > most_records)
        m_records.pop_front();
}

Json Supervisor::state()
{
    const std::lock_guard<std::mutex> lock(m_stateMutex);
    Json state = m_state;
    state["generation"] = m_generation;
    state["notice"] = m_notice;
    return state;
}

Json Supervisor::wait(std::int64_t known, milliseconds patience)
{
    std::unique_lock<std::mutex> lock(m_stateMutex);
    ++m_waiting;
    m_changed.wait_for(lock, m_waiting > most_waiting ? short_patience : patience,
                       [this, known] { return m_generation != known || m_stop; });
    --m_waiting;
    return {{"generation", m_generation}, {"reason", m_generation == known ? Json(nullptr) : Json(m_reason)}};
}

Json Supervisor::records(std::int64_t since)
{
    const std::lock_guard<std::mutex> lock(m_stateMutex);
    Json list = Json::array();
    for (const Json& record : m_records)
        if (record["n"] >= since)
            list.push_back(record);
    return {{"next", m_nextRecord}, {"records", std::move(list)}};
}

} // namespace kshop
