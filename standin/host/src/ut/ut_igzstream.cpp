#include <UT/UT_IGZStream.h>

#include <zlib.h>

struct UT_IGZStream::Inflater
{
    z_stream stream;
    const bool started;
    int state; ///< what zlib said last: Z_OK while there may be more

    Inflater()
        : stream(),
          started(inflateInit2(&stream, 16 + MAX_WBITS) == Z_OK),
          state(started ? Z_OK : Z_MEM_ERROR)
    {
    }
    ~Inflater()
    {
        if (started)
            inflateEnd(&stream);
    }
};

UT_IGZStream::UT_IGZStream(UT_IStream& source) : m_source(source), m_inflater(new Inflater) {}

UT_IGZStream::~UT_IGZStream() {}

exint UT_IGZStream::readBytes(char* bytes, exint size)
{
    z_stream& stream = m_inflater->stream;
    int& state = m_inflater->state;
    stream.next_out = reinterpret_cast<Bytef*>(bytes);
    stream.avail_out = static_cast<uInt>(size);
    // At the end of the source zlib is asked once more: it may hold back bytes for which there was no room. Then it has
    // nothing to go on with, and says so with Z_BUF_ERROR.
    while (state == Z_OK && stream.avail_out > 0)
    {
        m_source.fill();
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(m_source.m_next));
        stream.avail_in = static_cast<uInt>(m_source.m_end - m_source.m_next);
        state = inflate(&stream, Z_NO_FLUSH);
        m_source.m_next = m_source.m_end - stream.avail_in;
    }
    const exint count = size - static_cast<exint>(stream.avail_out);
    // What was inflated before a break is given first; the break itself is told by the next call.
    if (count > 0)
        return count;
    return state == Z_STREAM_END ? 0 : -1;
}
