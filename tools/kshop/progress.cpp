#include "progress.h"

#include <cstdio>
#include <unistd.h>
#include <utility>

namespace kshop
{

namespace
{

const std::chrono::milliseconds patience(500);
const std::chrono::milliseconds pause_between(100);
const char* const erase_line = "\r\x1b[K";

void put(const std::string& text)
{
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
}

} // namespace

std::string groupedNumber(std::size_t number)
{
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3;)
        text.insert(at -= 3, ",");
    return text;
}

Progress::Progress(std::string verb, std::string nouns)
    : m_verb(std::move(verb)),
      m_nouns(std::move(nouns)),
      m_isTerminal(isatty(STDERR_FILENO) == 1),
      m_next(Clock::now() + patience)
{
}

Progress::~Progress()
{
    if (m_isShown)
        put(erase_line);
}

void Progress::step()
{
    ++m_count;
    if (m_isTerminal && Clock::now() >= m_next)
        show();
}

// The cursor goes back to the line's beginning, so that a message of somebody else does not stand behind it.
void Progress::show()
{
    put(erase_line + m_verb + " " + groupedNumber(m_count) + " " + m_nouns + "\r");
    m_isShown = true;
    m_next = Clock::now() + pause_between;
}

} // namespace kshop
