// Messages: usable at any time, whether or not the renderer runs.
#include "kr_observe.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace
{

struct Console
{
    int flags = KR_MSG_INFO | KR_MSG_WARNING | KR_MSG_ERROR;
    KtMsgObserver observer = nullptr;
    void* user = nullptr;
};

Console console;

std::string formatted(const char* format, std::va_list arguments)
{
    char* text = nullptr;
    if (::vasprintf(&text, format, arguments) < 0)
        return format; // better than nothing
    const std::unique_ptr<char, void (*)(void*)> owner(text, &std::free);
    return text;
}

void report(int severity, const char* word, const std::string& text)
{
    if (console.flags & severity)
        std::fprintf(stderr, "korvan %s: %s\n", word, text.c_str());
    if (console.observer)
        console.observer(severity, text.c_str(), console.user);
}

} // namespace

void KrMsgSetConsoleFlags(int flags) { console.flags = flags; }

int KrMsgGetConsoleFlags(void) { return console.flags; }

void KrMsgSetObserver(KtMsgObserver observer, void* user)
{
    console.observer = observer;
    console.user = user;
}

void KrMsgInfo(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    report(KR_MSG_INFO, "info", formatted(format, arguments));
    va_end(arguments);
}

void KrMsgWarning(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    report(KR_MSG_WARNING, "warning", formatted(format, arguments));
    va_end(arguments);
}

void KrMsgError(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    report(KR_MSG_ERROR, "error", formatted(format, arguments));
    va_end(arguments);
}
