#include "front_requests.h"

#include "../text.h"
#include "request_error.h"

#include <fmt/format.h>

#include <charconv>
#include <filesystem>
#include <fstream>

namespace kshop
{

namespace
{

const std::chrono::seconds longest_wait(20);

/// A metadata file that is longer is none.
const std::uintmax_t longest_source = 16 * 1024 * 1024;

const char* const api_prefix = "/api/";

bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

HttpAnswer jsonAnswer(int status, const Json& value)
{
    return {status, "application/json", value.dump(-1, ' ', false, Json::error_handler_t::replace)};
}

const std::string& param(const HttpRequest& request, const char* name)
{
    const auto found = request.params.find(name);
    if (found == request.params.end())
        throw RequestError(400, fmt::format("The request has no \"{}\".", name));
    return found->second;
}

std::int64_t numberParam(const HttpRequest& request, const char* name)
{
    const std::string& text = param(request, name);
    std::int64_t number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || stop != text.data() + text.size())
        throw RequestError(400, fmt::format("\"{}\" is to be a whole number.", name));
    return number;
}

bool isJson(const HttpRequest& request)
{
    const auto found = request.headers.find("content-type");
    const std::string wanted = "application/json";
    if (found == request.headers.end() || !startsWith(found->second, wanted))
        return false;
    return found->second.size() == wanted.size() || found->second[wanted.size()] == ';' ||
           found->second[wanted.size()] == ' ';
}

/// Deeper nesting than any edit has would exhaust the stack of the code that reads it.
const int deepest_body = 16;

Json bodyOf(const HttpRequest& request)
{
    if (!isJson(request))
        throw RequestError(415, "An edit's body is of the type application/json.");
    const auto limit = [](int depth, Json::parse_event_t, Json&)
    {
        if (depth > deepest_body)
            throw RequestError(400, "The body is nested too deeply.");
        return true;
    };
    try
    {
        Json body = Json::parse(request.body, limit);
        if (!body.is_object())
            throw RequestError(400, "The body is to be a JSON object.");
        return body;
    }
    catch (const Json::exception&)
    {
        throw RequestError(400, "The body is no JSON that can be read.");
    }
}

std::vector<std::string> linesOf(std::istream& file)
{
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
    {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

Json sourceJson(const std::string& path)
{
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(path, error);
    if (isFile && std::filesystem::file_size(path, error) > longest_source)
        throw RequestError(404, fmt::format("The file {} is too long to be shown.", path));
    std::ifstream file(isFile ? path : "", std::ios::binary);
    if (!file)
        throw RequestError(404, fmt::format("The file {} cannot be read.", path));
    return {{"path", path}, {"lines", linesOf(file)}};
}

} // namespace

struct FrontRequests::Route
{
    const char* method;
    const char* path; ///< after api_prefix
    Json (FrontRequests::*run)(const HttpRequest& request) const;
};

const FrontRequests::Route FrontRequests::routes[] = {
    {"GET", "state", &FrontRequests::state},     {"GET", "wait", &FrontRequests::wait},
    {"GET", "node", &FrontRequests::node},       {"GET", "nodes", &FrontRequests::nodes},
    {"POST", "edit", &FrontRequests::edit},      {"GET", "records", &FrontRequests::records},
    {"GET", "lint", &FrontRequests::lint},       {"GET", "source", &FrontRequests::source},
    {"GET", "export", &FrontRequests::exported},
};

FrontRequests::FrontRequests(const Guard& guard, const PageFiles& pages, Supervisor& supervisor)
    : m_guard(guard), m_pages(pages), m_supervisor(supervisor)
{
}

HttpAnswer FrontRequests::answer(const HttpRequest& request) const
{
    try
    {
        m_guard.checkSender(request);
        if (!startsWith(request.path, api_prefix))
            return pageFile(request);
        m_guard.checkToken(request);
        return jsonAnswer(200, called(request));
    }
    catch (const RequestError& error)
    {
        Json answer = {{"error", error.what()}};
        if (!error.console.empty())
            answer["console"] = error.console;
        return jsonAnswer(error.status, answer);
    }
    catch (const std::exception& error)
    {
        return jsonAnswer(500, {{"error", std::string("The preview stumbled: ") + error.what()}});
    }
}

HttpAnswer FrontRequests::pageFile(const HttpRequest& request) const
{
    if (request.method != "GET" && request.method != "HEAD")
        throw RequestError(405, "The page can only be read.");
    const PageFile* file = m_pages.find(request.path);
    if (!file)
        throw RequestError(404, "There is no such page.");
    return {200, file->contentType, file->text};
}

Json FrontRequests::called(const HttpRequest& request) const
{
    const std::string path = request.path.substr(std::string(api_prefix).size());
    for (const Route& route : routes)
        if (path == route.path)
        {
            if (request.method != route.method)
                throw RequestError(405, fmt::format("{} is asked for with {}.", request.path, route.method));
            return (this->*route.run)(request);
        }
    throw RequestError(404, fmt::format("There is no {}.", kshop::quoted(request.path)));
}

Json FrontRequests::state(const HttpRequest&) const { return m_supervisor.state(); }

Json FrontRequests::wait(const HttpRequest& request) const
{
    return m_supervisor.wait(numberParam(request, "generation"), longest_wait);
}

Json FrontRequests::node(const HttpRequest& request) const
{
    return m_supervisor.ask({{"op", "node"}, {"type", param(request, "type")}})["answer"];
}

Json FrontRequests::nodes(const HttpRequest&) const { return m_supervisor.ask({{"op", "nodes"}})["answer"]; }

Json FrontRequests::edit(const HttpRequest& request) const
{
    const Json done = m_supervisor.ask({{"op", "edit"}, {"body", bodyOf(request)}});
    return {{"node", done["answer"]["node"]},
            {"records", done["records"]},
            {"console", done["console"]},
            {"errors", done["answer"]["errors"]}};
}

Json FrontRequests::records(const HttpRequest& request) const
{
    return m_supervisor.records(request.params.count("since") != 0 ? numberParam(request, "since") : 0);
}

Json FrontRequests::lint(const HttpRequest&) const { return m_supervisor.ask({{"op", "lint"}})["answer"]; }

Json FrontRequests::source(const HttpRequest& request) const
{
    const std::int64_t id = numberParam(request, "file");
    const Json state = m_supervisor.state();
    for (const Json& file : state["files"])
        if (file["id"] == id)
            return sourceJson(file["path"]);
    throw RequestError(404, fmt::format("There is no metadata file {}.", id));
}

Json FrontRequests::exported(const HttpRequest& request) const
{
    return m_supervisor.ask(
        {{"op", "export"}, {"type", param(request, "type")}, {"as", param(request, "as")}})["answer"];
}

} // namespace kshop
