#include "worker_requests.h"

#include "../renderer_walk.h"
#include "../text.h"
#include "edit_values.h"
#include "edits.h"
#include "export.h"
#include "lint_findings.h"
#include "request_error.h"

#include <OP/OP_Node.h>

#include <fmt/format.h>

#include <filesystem>

namespace kshop
{

namespace
{

Json messagesJson(const Session& session)
{
    Json list = Json::array();
    for (const RendererMessage& message : session.messages())
        list.push_back({{"severity", severityWord(message.severity)}, {"text", message.text}});
    return list;
}

Json filesJson()
{
    Json list = Json::array();
    for (const std::string& file : findRendererFiles().metadataFiles)
        list.push_back({{"id", list.size()},
                        {"path", file},
                        {"shown", std::filesystem::path(file).filename().string()}});
    return list;
}

Json typesJson(const PreviewScene& scene)
{
    NodeSampler sampler;
    Json list = Json::array();
    for (OP_Operator* op : scene.types())
        list.push_back(typeJson(readOperator(*op, sampler)));
    return list;
}

} // namespace

struct WorkerRequests::Operation
{
    const char* word;
    Json (WorkerRequests::*run)(const Json& request);
};

const WorkerRequests::Operation WorkerRequests::operations[] = {
    {"state", &WorkerRequests::state}, {"node", &WorkerRequests::node}, {"nodes", &WorkerRequests::nodes},
    {"edit", &WorkerRequests::edit},   {"lint", &WorkerRequests::lint}, {"export", &WorkerRequests::exported},
};

WorkerRequests::WorkerRequests(const Session& session) : m_session(session), m_scene(session), m_kept(m_scene)
{
}

Json WorkerRequests::answer(const Json& request)
{
    Json answer;
    try
    {
        answer = {{"answer", result(request)}};
    }
    catch (const RequestError& error)
    {
        answer = {{"error", error.what()}, {"status", error.status}};
    }
    catch (const std::exception& error)
    {
        answer = {{"error", std::string("The preview stumbled: ") + error.what()}, {"status", 500}};
    }
    answer["records"] = m_records.take();
    answer["kept"] = m_kept.snapshot();
    return answer;
}

Json WorkerRequests::result(const Json& request)
{
    const std::string word = textMember(request, "op");
    for (const Operation& operation : operations)
        if (word == operation.word)
            return (this->*operation.run)(request);
    throw RequestError(500, fmt::format("The worker knows no operation {}.", kshop::quoted(word)));
}

Json WorkerRequests::state(const Json& request)
{
    m_kept.restore(member(request, "kept"));
    m_records.take();
    return {{"types", typesJson(m_scene)}, {"messages", messagesJson(m_session)}, {"files", filesJson()}};
}

Json WorkerRequests::view(const std::string& type)
{
    return nodeJson(m_scene, m_scene.node(type), parameterNames());
}

Json WorkerRequests::node(const Json& request) { return view(textMember(request, "type")); }

Json WorkerRequests::nodes(const Json&)
{
    Json list = Json::array();
    for (const std::string& type : m_scene.typesWithNodes())
        list.push_back({{"type", type}, {"path", m_scene.findNode(type)->getFullPath().toStdString()}});
    return list;
}

Json WorkerRequests::edit(const Json& request)
{
    const Json& body = member(request, "body");
    m_gesture.follow(body);
    const std::vector<std::string> errors = applyEdit(m_scene, body);
    const std::string type = textMember(body, "type");
    if (textMember(body, "action") == "reset_all")
        m_kept.forget(type);
    return {{"node", view(type)}, {"errors", errors}};
}

Json WorkerRequests::lint(const Json&)
{
    if (m_findings.is_null())
        m_findings = lintFindings();
    return m_findings;
}

Json WorkerRequests::exported(const Json& request)
{
    const OP_Node& node = m_scene.node(textMember(request, "type"));
    const std::string form = textMember(request, "as");
    if (form != "python" && form != "mtd")
        throw RequestError(400, "\"as\" is \"python\" or \"mtd\".");
    return {{"text", form == "python" ? pythonExport(node) : metadataExport(node)}};
}

const ParameterNames& WorkerRequests::parameterNames()
{
    if (!m_names)
        m_names = findParameterNames();
    return *m_names;
}

} // namespace kshop
