#pragma once
#include <SYS/SYS_Types.h>
#include <UT/UT_WorkBuffer.h>

#include <memory>

/// How a stream's bytes are meant. Both are read the same here.
enum UT_IStreamType
{
    UT_ISTREAM_ASCII,
    UT_ISTREAM_BINARY
};

/// Bytes read from front to end, in blocks: memory does not grow with what is read, but with the longest word or line
/// that is asked for.
///
/// White space is that of the C locale: blank, tab, newline, vertical tab, form feed, carriage return. A NUL byte is a
/// byte like any other. A stream that breaks off, for a damaged file as for a short one, gives what stands before the
/// break like the last word of a sound stream; isError() tells the two apart.
class UT_IStream
{
public:
    virtual ~UT_IStream();

    /// True once reading has met the end; a stream of no bytes meets it with the first read.
    bool isEof() const { return m_ended && m_next == m_end; }
    /// True once the bytes could not be read on: the file could not be read, or what was to be inflated is damaged.
    bool isError() const { return m_failed; }

    /// Skips white space and reads up to the next, which stays. False, and an empty word, when there is none.
    bool getWord(UT_WorkBuffer& word);
    /// The same, but a text between double quotes is one word, without them; a backslash keeps the character after it.
    bool getString(UT_WorkBuffer& text);
    /// Reads up to the end mark, which is taken but not given. False, and an empty line, at the end of the stream.
    bool getLine(UT_WorkBuffer& line, int end = '\n');
    /// Reads the rest. False when the stream broke off.
    bool getAll(UT_WorkBuffer& rest);
    /// Reads a word and tells whether it is this one; the word is gone either way.
    bool checkToken(const char* token);
    /// False when nothing but white space was left.
    bool skipWhitespace();

    /// A stream of what the rest of this one holds in gzip form; the caller deletes it, before this one. This one is
    /// not to be read meanwhile.
    UT_IStream* getGzipStream();

protected:
    UT_IStream();

    /// Gives up to `size` bytes and returns how many; 0 at the end, -1 when they cannot be read.
    virtual exint readBytes(char* bytes, exint size) = 0;

private:
    friend class UT_IGZStream;
    friend bool UTreadLimited(UT_IStream& stream, std::string& bytes, exint most);

    UT_IStream(const UT_IStream&);
    UT_IStream& operator=(const UT_IStream&);

    bool fill();

    std::unique_ptr<char[]> m_block;
    const char* m_next; ///< the unread bytes of the block: [m_next, m_end)
    const char* m_end;
    bool m_ended;
    bool m_failed;
};
