// Declares the node entries that JSON files list. KORVAN_CATALOGUE names the files, separated by ':'.
#include "kr_plugin.h"
#include "node_reader.h"
#include "read_file.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <new>
#include <sstream>

namespace zelk::catalogue
{

namespace
{

// Reports a mistake; `dropped` says what is left out because of it.
void report(const std::string& file, const Place& node, const Mistake& mistake, const char* dropped)
{
    const bool named = node.json.is_object() && node.json.contains("name") && node.json["name"].is_string();
    const std::string owner = named ? " (" + quoted(node.json["name"]) + ")" : "";
    KrMsgError("[korvan_catalogue] %s: %s%s: %s. Skipping this %s; %s.", file.c_str(),
               mistake.pointer.c_str(), owner.c_str(), mistake.what(), dropped, mistake.remedy.c_str());
}

KtNodeDecl* declareNode(const std::string& file, const Place& place, const Node& node)
{
    if (const KtNodeEntry* taken = KrNodeEntryLookUp(node.name.c_str()))
    {
        const char* owner = KrNodeEntryGetFilename(taken);
        throw Mistake(place.member("name"),
                      std::string("The name is taken already by an entry of ") +
                          (owner ? owner : "the renderer"),
                      "rename one of them");
    }
    KtNodeDecl* decl = KrDeclareNode(node.name.c_str(), node.kind, node.output);
    KrDeclareNodeSource(decl, file.c_str());
    if (node.builtin)
        KrDeclareNodeFile(decl, nullptr);
    for (const Parameter& parameter : node.parameters)
    {
        const KtParamValue* value = parameter.defaultValue ? &parameter.defaultValue->record() : nullptr;
        KrDeclareParam(decl, parameter.name.c_str(), parameter.type, value);
        if (parameter.type == KR_TYPE_ENUM)
            KrDeclareItems(decl, parameter.name.c_str(), parameter.items.data());
    }
    return decl;
}

bool hasParameter(const Node& node, const std::string& name)
{
    return std::any_of(node.parameters.begin(), node.parameters.end(),
                       [&name](const Parameter& parameter) { return parameter.name == name; });
}

// The parameter that a metadata item belongs to; empty for the node itself.
std::string parameterOf(const Place& item, const Node& node)
{
    const Place parameter = item.member("parameter");
    std::string name = parameter.json.is_null() ? "" : textAt(parameter);
    if (!name.empty() && !hasParameter(node, name))
        throw Mistake(parameter, "There is no parameter " + quoted(parameter.json),
                      "name a parameter of this node");
    return name;
}

void declareItem(KtNodeDecl* decl, const Place& item, const Node& node)
{
    if (!item.json.is_object())
        throw Mistake(item, "Expected an object, found " + quoted(item.json), "write it in braces");
    const std::string owner = parameterOf(item, node);
    const char* parameter = owner.empty() ? nullptr : owner.c_str();
    const char* key = textAt(item.member("key")).c_str();
    const Place value = item.member("value");
    if (value.json.is_boolean())
        KrDeclareMetaDataBool(decl, parameter, key, value.json.get<bool>());
    else if (value.json.is_number())
        KrDeclareMetaDataFlt(decl, parameter, key, floatNumber(value));
    else if (value.json.is_string())
        KrDeclareMetaDataStr(decl, parameter, key, textAt(value).c_str());
    else
        throw Mistake(value, "Expected a text, a boolean or a number, found " + quoted(value.json),
                      "write one of these");
}

void declareMetaData(KtNodeDecl* decl, const std::string& file, const Place& place, const Node& node)
{
    const Place items = place.member("metadata");
    for (std::size_t i = 0; i < items.json.size(); ++i)
    {
        try
        {
            declareItem(decl, items.element(i), node);
        }
        catch (const Mistake& mistake)
        {
            report(file, place, mistake, "metadata item");
        }
    }
}

void declareListedNode(const std::string& file, const Place& place)
{
    try
    {
        const Node node = readNode(place);
        declareMetaData(declareNode(file, place, node), file, place, node);
    }
    catch (const Mistake& mistake)
    {
        report(file, place, mistake, "node");
    }
}

void declareDocument(const std::string& file, const Json& document)
{
    const Place root = {document, ""};
    if (!document.is_object() || !root.member("nodes").json.is_array())
    {
        KrMsgError("[korvan_catalogue] %s: There is no list \"nodes\" at the top. Skipping the file; write "
                   "{\"nodes\": [...]}.",
                   file.c_str());
        return;
    }
    const Place nodes = root.member("nodes");
    for (std::size_t i = 0; i < nodes.json.size(); ++i)
        declareListedNode(file, nodes.element(i));
}

// The parser's own words without its heading, which ends with the column.
std::string explanationOf(const Json::parse_error& problem)
{
    const std::string text = problem.what();
    const std::size_t column = text.find(", column ");
    const std::size_t end = column == std::string::npos ? column : text.find(": ", column);
    return end == std::string::npos ? text : text.substr(end + 2);
}

void reportSyntax(const std::string& file, const std::string& text, const Json::parse_error& problem)
{
    const std::size_t at = std::min(problem.byte > 0 ? problem.byte - 1 : 0, text.size());
    const std::string before = text.substr(0, at);
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 when there is none
    KrMsgError("[korvan_catalogue] %s:%zu:%zu: %s. Skipping the whole file; correct this line.", file.c_str(),
               static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1,
               at - lineStart + 1, explanationOf(problem).c_str());
}

// What else can stop a file: a number beyond all bounds, for which the parser knows no place, or too little memory.
// The catalogues behind it count all the same.
void reportStop(const std::string& file, const std::exception& problem)
{
    const bool memory = dynamic_cast<const std::bad_alloc*>(&problem);
    const std::string text = problem.what();
    const std::size_t heading = text.find("] "); // the parser's own
    KrMsgError("[korvan_catalogue] %s: %s. Skipping the rest of the file; %s.", file.c_str(),
               memory ? "There is not enough memory for it"
                      : text.substr(heading == std::string::npos ? 0 : heading + 2).c_str(),
               memory ? "make it smaller" : "write another number");
}

void declareFile(const std::string& file)
{
    std::string why;
    const std::optional<std::string> text = renderer::readFile(file.c_str(), why);
    if (!text)
    {
        KrMsgError(
            "[korvan_catalogue] Cannot read the catalogue %s: %s. Skipping it; correct KORVAN_CATALOGUE.",
            file.c_str(), why.c_str());
        return;
    }
    try
    {
        declareDocument(file, Json::parse(*text));
    }
    catch (const Json::parse_error& problem)
    {
        reportSyntax(file, *text, problem);
    }
}

void declareOrSayWhyNot(const std::string& file)
{
    try
    {
        declareFile(file);
    }
    catch (const std::exception& problem)
    {
        reportStop(file, problem);
    }
}

} // namespace

} // namespace zelk::catalogue

void KrPluginDeclare(void)
{
    const char* files = std::getenv("KORVAN_CATALOGUE");
    std::istringstream names(files ? files : "");
    for (std::string file; std::getline(names, file, ':');)
        if (!file.empty())
            zelk::catalogue::declareOrSayWhyNot(file);
}
