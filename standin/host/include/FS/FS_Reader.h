#ifndef FS_READER_H
#define FS_READER_H

#include <SYS/SYS_Types.h>
#include <UT/UT_IStream.h>
#include <UT/UT_StringHolder.h>

#include <memory>

class UT_Options;

/// Bytes to read: a file, or a section of an indexed file.
///
/// The file is opened here and closed with the reader. It is read while the stream is.
class FS_Reader
{
public:
    /// Reads a file from its beginning. A directory, and a file that cannot be opened, give a reader without a stream.
    FS_Reader(const char* source, const UT_Options* options = 0);
    virtual ~FS_Reader();

    /// Belongs to the reader. Null when the source could not be opened, and after close().
    UT_IStream* getStream() const;
    /// True while there is a stream, and it did not break off.
    bool isGood() const;
    /// Path of the file; for a section that of the file which holds it.
    UT_StringHolder getFilename() const;
    /// Unix seconds; 0 when unknown.
    int64 getModTime() const;
    void close();

private:
    friend class FS_IndexFile;
    struct Source;

    explicit FS_Reader(std::unique_ptr<Source> source);
    FS_Reader(const FS_Reader&);
    FS_Reader& operator=(const FS_Reader&);

    std::unique_ptr<Source> mySource;
    std::unique_ptr<UT_IStream> myStream;
};

#endif
