#pragma once

#include "kr.h"
#include "kr_observe.h"
#include "kr_plugin.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

using Messages = std::vector<std::string>;

/// A running renderer, silent on the console. A message that no test has taken fails the test.
class Renderer
{
public:
    Renderer()
    {
        KrMsgSetConsoleFlags(0);
        KrMsgSetObserver(&Renderer::collect, &m_messages);
        KrBegin();
    }

    ~Renderer()
    {
        KrEnd();
        KrMsgSetObserver(nullptr, nullptr);
        KrMsgSetConsoleFlags(KR_MSG_INFO | KR_MSG_WARNING | KR_MSG_ERROR);
        EXPECT_EQ(m_messages, Messages{});
    }

    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// The messages so far, each after its severity: "error: [kr] ...".
    Messages takeMessages() { return std::exchange(m_messages, {}); }

    /// The only message so far.
    std::string takeMessage()
    {
        const Messages messages = takeMessages();
        EXPECT_EQ(messages.size(), 1u);
        return messages.empty() ? "" : messages.front();
    }

private:
    static void collect(int severity, const char* text, void* messages)
    {
        const char* word = severity == KR_MSG_ERROR     ? "error: "
                           : severity == KR_MSG_WARNING ? "warning: "
                                                        : "info: ";
        static_cast<Messages*>(messages)->push_back(std::string(word) + text);
    }

    Messages m_messages;
};

/// A directory of its own for one test.
class Folder
{
public:
    Folder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "korvan_renderer_XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~Folder() { std::filesystem::remove_all(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& path() const { return m_path; }

    /// Writes a file; returns its path.
    std::string write(const std::string& name, const std::string& text) const
    {
        std::string file = m_path + "/" + name;
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

private:
    std::string m_path;
};

/// Sets an environment variable until the end of the scope.
class Environment
{
public:
    Environment(const char* name, const std::string& value) : m_name(name)
    {
        ::setenv(name, value.c_str(), 1);
    }
    ~Environment() { ::unsetenv(m_name); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    const char* m_name;
};

/// A metadata item as text: "key=text", "key=true", "key=1.5".
inline std::string asText(const KtMetaDataEntry& item)
{
    std::string text = std::string(item.name) + "=";
    if (item.type == KR_TYPE_STRING)
        return text + item.value.str;
    if (item.type == KR_TYPE_BOOLEAN)
        return text + (item.value.bool_ ? "true" : "false");
    char number[32];
    std::snprintf(number, sizeof number, "%g", static_cast<double>(item.value.flt));
    return text + number;
}

/// All items of an entry (param null) or of a parameter, in order.
inline std::vector<std::string> metaDataOf(const KtNodeEntry* entry, const char* param = nullptr)
{
    std::vector<std::string> items;
    KtMetaDataIterator* iterator = KrNodeEntryGetMetaDataIterator(entry, param);
    while (!KrMetaDataIteratorFinished(iterator))
        items.push_back(asText(*KrMetaDataIteratorGetNext(iterator)));
    KrMetaDataIteratorDestroy(iterator);
    return items;
}

/// Names of an entry's parameters, in order; those that the iterator gives.
inline std::vector<std::string> paramNamesOf(const KtNodeEntry* entry)
{
    std::vector<std::string> names;
    KtParamIterator* iterator = KrNodeEntryGetParamIterator(entry);
    while (!KrParamIteratorFinished(iterator))
        names.push_back(KrParamGetName(KrParamIteratorGetNext(iterator)));
    KrParamIteratorDestroy(iterator);
    return names;
}

/// The entries of the kinds in `mask`, in order.
inline std::vector<const KtNodeEntry*> entriesOf(int mask)
{
    std::vector<const KtNodeEntry*> entries;
    KtNodeEntryIterator* iterator = KrUniverseGetNodeEntryIterator(mask);
    while (!KrNodeEntryIteratorFinished(iterator))
        entries.push_back(KrNodeEntryIteratorGetNext(iterator));
    KrNodeEntryIteratorDestroy(iterator);
    return entries;
}

/// The parameter of that name; null when there is none.
inline const KtParamEntry* findParam(const KtNodeEntry* entry, const std::string& name)
{
    for (int i = 0; i < KrNodeEntryGetNumParams(entry); ++i)
        if (KrParamGetName(KrNodeEntryGetParameter(entry, i)) == name)
            return KrNodeEntryGetParameter(entry, i);
    return nullptr;
}
