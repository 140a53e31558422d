// Messages: usable at any time, whether or not the renderer runs.
#include "kr_observe.h"

#include <cstdarg>
#include <cstdio>
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
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0)
        return format;
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(&text[0], text.size(), format, arguments);
    text.pop_back();
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
