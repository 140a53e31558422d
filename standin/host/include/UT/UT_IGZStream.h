#pragma once
#include <UT/UT_IStream.h>

/// What a stream holds in gzip form, inflated in blocks. It ends with the first gzip member; what follows that stays
/// unread.
class UT_IGZStream : public UT_IStream
{
public:
    /// Reads `source` from where it stands. `source` stays the caller's and must outlive this stream.
    explicit UT_IGZStream(UT_IStream& source);
    virtual ~UT_IGZStream();

protected:
    virtual exint readBytes(char* bytes, exint size);

private:
    struct Inflater;
    UT_IStream& m_source;
    std::unique_ptr<Inflater> m_inflater;
};
