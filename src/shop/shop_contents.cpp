#include "shop_contents.h"

#include <FS/FS_IndexFile.h>
#include <FS/FS_Reader.h>
#include <UT/UT_IGZStream.h>
#include <UT/UT_IStream.h>
#include <UT/UT_WorkBuffer.h>

#include <kr.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <string>

namespace zelk
{
namespace shop
{

namespace
{

/// Where the name of a node's entry ends and its text begins.
const std::string& opsep()
{
    static const std::string separator("init\0type", 9);
    return separator;
}

std::size_t opsep_size()
{
    static const std::size_t size = opsep().size();
    return size;
}

/// White space as the host's streams split words.
bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// A stretch of bytes, which may hold NUL bytes.
struct Bytes
{
    const char* begin;
    const char* end;

    bool empty() const { return begin == end; }
    bool equals(const char* text) const
    {
        const std::size_t size = std::strlen(text);
        return static_cast<std::size_t>(end - begin) == size && std::equal(begin, end, text);
    }
    bool startsWith(const char* text) const
    {
        const std::size_t size = std::strlen(text);
        return static_cast<std::size_t>(end - begin) >= size && std::equal(text, text + size, begin);
    }
};

/// Takes the next word off the front of a line; an empty one when there is none.
Bytes takeWord(Bytes& line)
{
    line.begin = std::find_if(line.begin, line.end, [](char c) { return !isSpace(c); });
    const Bytes word = {line.begin, std::find_if(line.begin, line.end, isSpace)};
    line.begin = word.end;
    return word;
}

/// Whether a line may hold the separator at all: text has no NUL.
bool holdsNul(const Bytes& line)
{
    return std::memchr(line.begin, '\0', static_cast<std::size_t>(line.end - line.begin)) != nullptr;
}

/// First place of the separator; the end of the line when there is none. It is found by its NUL, since text has none.
const char* findSeparator(const Bytes& line)
{
    const std::ptrdiff_t upToNul = static_cast<std::ptrdiff_t>(opsep().find('\0'));
    const std::ptrdiff_t size = static_cast<std::ptrdiff_t>(opsep_size());
    const char* from = line.begin;
    while (from != line.end)
    {
        const void* found = std::memchr(from, '\0', static_cast<std::size_t>(line.end - from));
        if (!found)
            return line.end;
        const char* start = static_cast<const char*>(found) - upToNul;
        const bool fits = start >= line.begin && line.end - start >= size;
        if (fits && std::equal(opsep().begin(), opsep().end(), start))
            return start;
        from = static_cast<const char*>(found) + 1;
    }
    return line.end;
}

/// Whether nodes of a type, one of the host's own, only pass values on.
bool passesValuesOn(const Bytes& type)
{
    static const char* const types[] = {"null", "subnet", "subinput", "suboutput"};
    return std::any_of(std::begin(types), std::end(types), [&type](const char* t) { return type.equals(t); });
}

/// Reads contents as words, line by line: no word goes beyond a line.
///
/// It looks for a word that holds the separator; the word behind it must be "="; and the word behind that is the type of
/// a node.
class TypeScan
{
public:
    /// False once a foreign type was met; the rest is of no interest then.
    bool readLine(Bytes line)
    {
        // Nearly every line holds nothing of interest: it is left by the first look at it.
        if (m_next == &TypeScan::findNode && m_words > 1 && !holdsNul(line))
            return m_good;
        while (m_good && !line.empty())
            (this->*m_next)(line);
        return m_good;
    }

    /// Deliberate: stored contents of a single word are accepted; no archive is that short.
    bool verdict(bool stored) const { return (stored && m_words == 1) || (m_korvanNodes > 0 && m_good); }

private:
    void findNode(Bytes& line)
    {
        const char* separator = findSeparator(line);
        if (separator == line.end)
        {
            countWords(line);
            line.begin = line.end;
            return;
        }
        const Bytes upToNode = {line.begin, std::find_if(separator, line.end, isSpace)};
        countWords(upToNode);
        line.begin = upToNode.end;
        m_next = &TypeScan::readAssignment;
    }

    void readAssignment(Bytes& line)
    {
        const Bytes word = takeWord(line);
        if (word.empty())
            return;
        m_next = &TypeScan::findNode;
        if (!word.equals("="))
            return;
        if (m_isOwnNode) // the asset's own node, not one of its children
            m_isOwnNode = false;
        else
            m_next = &TypeScan::readType;
    }

    void readType(Bytes& line)
    {
        const Bytes type = takeWord(line);
        if (type.empty())
            return;
        m_next = &TypeScan::findNode;
        if (type.startsWith("korvan::"))
            ++m_korvanNodes;
        else if (!passesValuesOn(type))
            m_good = false;
    }

    /// Counts to two: all that matters is whether there is exactly one.
    void countWords(Bytes line)
    {
        while (m_words < 2 && !takeWord(line).empty())
            ++m_words;
    }

    void (TypeScan::*m_next)(Bytes&) = &TypeScan::findNode;
    int m_words = 0;
    int m_korvanNodes = 0;
    bool m_isOwnNode = true;
    bool m_good = true;
};

/// Path of the asset file behind a reader; empty without one. The host's text class differs from release to release.
std::string fileNameOf(const FS_Reader* reader)
{
    if (!reader)
        return std::string();
    const auto& name = reader->getFilename();
    return name.buffer() ? name.buffer() : "";
}

/// The host's opinion on a reader that was just opened.
bool isOpen(const FS_Reader* reader)
{
    return reader && reader->isGood() && reader->getStream() && !reader->getStream()->isError();
}

} // namespace

bool areKorvanContents(UT_IStream& contents, bool stored)
{
    TypeScan scan;
    UT_WorkBuffer line;
    bool wantsMore = true;
    while (wantsMore && contents.getLine(line, '\n'))
        wantsMore = scan.readLine({line.buffer(), line.buffer() + line.length()});
    return scan.verdict(stored);
}

namespace
{

bool holdsKorvanContents(const FS_IndexFile& asset)
{
    const bool compressed = asset.hasSection("Contents.gz");
    if (!compressed && !asset.hasSection("Contents"))
        return false;

    const std::unique_ptr<FS_Reader> reader(asset.getSectionReader(compressed ? "Contents.gz" : "Contents"));
    if (!isOpen(reader.get()))
    {
        KrMsgError("[zelk::shop::shop] Cannot open OTL file %s", fileNameOf(reader.get()).c_str());
        return false;
    }
    if (!compressed)
        return areKorvanContents(*reader->getStream(), true);
    UT_IGZStream inflated(*reader->getStream());
    return areKorvanContents(inflated, false);
}

} // namespace

bool isKorvanAsset(const FS_IndexFile& asset)
{
    try
    {
        return holdsKorvanContents(asset);
    }
    catch (const std::bad_alloc&) // a line without an end, which a small compressed file can hold
    {
        return false;
    }
}

} // namespace shop
} // namespace zelk
