#include <UT/UT_IStream.h>

#include "ut/ut_readlimited.h"

#include <UT/UT_IGZStream.h>

#include <cstring>

namespace
{

constexpr exint block_size = 64 * 1024;

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The first white space of a range; its end when there is none.
const char* findSpace(const char* begin, const char* end)
{
    while (begin != end && !isSpace(*begin))
        ++begin;
    return begin;
}

} // namespace

UT_IStream::UT_IStream() : m_next(nullptr), m_end(nullptr), m_ended(false), m_failed(false) {}

UT_IStream::~UT_IStream() {}

bool UT_IStream::fill()
{
    if (m_next != m_end)
        return true;
    if (m_ended)
        return false;
    if (!m_block)
        m_block.reset(new char[block_size]);
    const exint count = readBytes(m_block.get(), block_size);
    m_next = m_block.get();
    m_end = m_next + (count > 0 ? count : 0);
    m_ended = count <= 0;
    m_failed = count < 0;
    return count > 0;
}

bool UT_IStream::skipWhitespace()
{
    while (fill())
    {
        while (m_next != m_end && isSpace(*m_next))
            ++m_next;
        if (m_next != m_end)
            return true;
    }
    return false;
}

bool UT_IStream::getWord(UT_WorkBuffer& word)
{
    word.clear();
    if (!skipWhitespace())
        return false;
    do
    {
        const char* end = findSpace(m_next, m_end);
        word.append(m_next, end - m_next);
        m_next = end;
    } while (m_next == m_end && fill());
    return true;
}

bool UT_IStream::getString(UT_WorkBuffer& text)
{
    text.clear();
    if (!skipWhitespace())
        return false;
    if (*m_next != '"')
        return getWord(text);
    ++m_next;
    for (bool kept = false; fill(); ++m_next)
    {
        if (!kept && *m_next == '"')
        {
            ++m_next;
            return true;
        }
        kept = !kept && *m_next == '\\';
        if (!kept)
            text.append(*m_next);
    }
    return true;
}

bool UT_IStream::getLine(UT_WorkBuffer& line, int end)
{
    line.clear();
    bool any = false;
    while (m_next != m_end || fill())
    {
        any = true;
        const void* mark = std::memchr(m_next, end, static_cast<std::size_t>(m_end - m_next));
        const char* stop = mark ? static_cast<const char*>(mark) : m_end;
        line.append(m_next, stop - m_next);
        m_next = mark ? stop + 1 : stop;
        if (mark)
            return true;
    }
    return any;
}

bool UT_IStream::getAll(UT_WorkBuffer& rest)
{
    rest.clear();
    while (fill())
    {
        rest.append(m_next, m_end - m_next);
        m_next = m_end;
    }
    return !m_failed;
}

bool UT_IStream::checkToken(const char* token)
{
    UT_WorkBuffer word;
    return getWord(word) && token && static_cast<std::size_t>(word.length()) == std::strlen(token) &&
           std::memcmp(word.buffer(), token, std::strlen(token)) == 0;
}

UT_IStream* UT_IStream::getGzipStream() { return new UT_IGZStream(*this); }

bool UTreadLimited(UT_IStream& stream, std::string& bytes, exint most)
{
    while (static_cast<exint>(bytes.size()) <= most && stream.fill())
    {
        bytes.append(stream.m_next, stream.m_end);
        stream.m_next = stream.m_end;
    }
    return !stream.m_failed && static_cast<exint>(bytes.size()) <= most;
}
