#ifndef KORVAN_TESTS_ASSET_CONTENTS_H
#define KORVAN_TESTS_ASSET_CONTENTS_H

#include <UT/UT_IStream.h>
#include <UT/UT_WorkBuffer.h>

#include <string>

// What holds the container's filter against something plainer.

/// The next word; false at the end.
inline bool readWord(UT_IStream& stream, std::string& word)
{
    UT_WorkBuffer buffer;
    const bool read = stream.getWord(buffer);
    word.assign(buffer.buffer(), static_cast<std::size_t>(buffer.length()));
    return read;
}

inline bool isForeign(const std::string& type)
{
    return type != "null" && type != "subnet" && type != "subinput" && type != "suboutput";
}

/// The filter's question, answered by reading one word after the other.
inline bool acceptsByWords(UT_IStream& stream, bool stored)
{
    static const std::string separator("init\0type", 9);
    int words = 0, korvan = 0;
    bool isOwn = true;
    std::string word;
    while (readWord(stream, word))
    {
        ++words;
        if (word.find(separator) == std::string::npos)
            continue;
        if (!readWord(stream, word))
            break;
        if (word != "=")
            continue;
        if (isOwn)
        {
            isOwn = false;
            continue;
        }
        if (!readWord(stream, word))
            break;
        if (word.compare(0, 8, "korvan::") == 0)
            ++korvan;
        else if (isForeign(word))
            return stored && words == 1;
    }
    return (stored && words == 1) || korvan > 0;
}

#endif
