#include <FS/FS_Reader.h>

#include "fs_bytes.h"

FS_Reader::FS_Reader(const char* source, const UT_Options*) : mySource(new Source)
{
    std::string why;
    mySource->place.path = source ? source : "";
    mySource->directory = standin::isDirectory(mySource->place.path);
    if (!mySource->directory && standin::placeOfFile(mySource->place.path, mySource->place, why))
        myStream = standin::openStream(mySource->place);
}

FS_Reader::FS_Reader(std::unique_ptr<Source> source) : mySource(std::move(source))
{
    if (!mySource->directory)
        myStream = standin::openStream(mySource->place);
}

FS_Reader::~FS_Reader() {}

UT_IStream* FS_Reader::getStream() const { return myStream.get(); }
bool FS_Reader::isGood() const { return myStream && !myStream->isError(); }
UT_StringHolder FS_Reader::getFilename() const { return UT_StringHolder(mySource->place.path.c_str()); }
int64 FS_Reader::getModTime() const { return mySource->place.modTime; }
void FS_Reader::close() { myStream.reset(); }
