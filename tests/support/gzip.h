#ifndef KORVAN_TESTS_GZIP_H
#define KORVAN_TESTS_GZIP_H

#include <zlib.h>

#include <string>

/// Bytes as one gzip member.
inline std::string gzip(const std::string& bytes)
{
    z_stream stream = z_stream();
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, bytes.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(&packed[0]);
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

#endif
