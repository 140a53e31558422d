#include <UT/UT_UndoManager.h>
#include <standin/host.h>

#include <cstdio>
#include <mutex>

namespace standin
{

namespace
{

struct Log
{
    std::mutex mutex;
    std::vector<Message> messages;
    std::function<void(const Message&)> observer;
};

// Never destroyed: complaints may come while static objects go.
Log& log()
{
    static auto* all = new Log;
    return *all;
}

const char* prefixOf(Severity severity)
{
    switch (severity)
    {
    case Severity::Information:
        return "";
    case Severity::Warning:
        return "Warning: ";
    case Severity::Error:
        break;
    }
    return "Error: ";
}

} // namespace

void report(Severity severity, const std::string& text)
{
    const Message message{severity, text};
    std::function<void(const Message&)> observer;
    {
        const std::lock_guard<std::mutex> lock(log().mutex);
        log().messages.push_back(message);
        observer = log().observer;
        std::fprintf(stderr, "%s%s\n", prefixOf(severity), text.c_str());
    }
    // Outside the lock: the observer may report, and may look at the log.
    if (observer)
        observer(message);
}

std::vector<Message> messages()
{
    const std::lock_guard<std::mutex> lock(log().mutex);
    return log().messages;
}

std::vector<Message> takeMessages()
{
    const std::lock_guard<std::mutex> lock(log().mutex);
    return std::move(log().messages);
}

void setMessageObserver(std::function<void(const Message&)> observer)
{
    const std::lock_guard<std::mutex> lock(log().mutex);
    log().observer = std::move(observer);
}

namespace
{

/// What has no way of its own to the person says it through here.
struct Registration
{
    Registration()
    {
        UTgetUndoManager()->setComplaint([](const std::string& sentence)
                                         { report(Severity::Warning, sentence); });
    }
};

const Registration registration;

} // namespace

} // namespace standin
