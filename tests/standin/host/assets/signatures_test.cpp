#include <FS/FS_IndexFile.h>
#include <FS/FS_Reader.h>
#include <OP/OP_OTLLibrary.h>
#include <OP/OP_Operator.h>
#include <UT/UT_IGZStream.h>

#include <type_traits>

// The toolkit's signatures of what reads asset files. A call that fits here fits there.
namespace
{

template <typename Pointer, Pointer member>
struct Has
{
    static constexpr bool value = true;
};

static_assert(Has<bool (FS_IndexFile::*)(const char*) const, &FS_IndexFile::hasSection>::value, "");
static_assert(Has<FS_Reader* (FS_IndexFile::*)(const char*) const, &FS_IndexFile::getSectionReader>::value,
              "");
static_assert(Has<int (FS_IndexFile::*)(const char*) const, &FS_IndexFile::getSectionDataSize>::value, "");
static_assert(
    Has<bool (FS_IndexFile::*)(const char*, UT_WorkBuffer&) const, &FS_IndexFile::readSection>::value, "");
static_assert(Has<int (FS_IndexFile::*)() const, &FS_IndexFile::getNumSections>::value, "");
static_assert(std::is_constructible<FS_IndexFile, const char*>::value, "");
static_assert(std::is_constructible<FS_IndexFile, FS_Reader*>::value, "");

static_assert(std::is_constructible<FS_Reader, const char*>::value, "");
static_assert(Has<UT_IStream* (FS_Reader::*)() const, &FS_Reader::getStream>::value, "");
static_assert(Has<bool (FS_Reader::*)() const, &FS_Reader::isGood>::value, "");
static_assert(Has<void (FS_Reader::*)(), &FS_Reader::close>::value, "");

static_assert(Has<bool (UT_IStream::*)() const, &UT_IStream::isEof>::value, "");
static_assert(Has<bool (UT_IStream::*)() const, &UT_IStream::isError>::value, "");
static_assert(Has<bool (UT_IStream::*)(UT_WorkBuffer&), &UT_IStream::getWord>::value, "");
static_assert(Has<bool (UT_IStream::*)(UT_WorkBuffer&), &UT_IStream::getString>::value, "");
static_assert(Has<bool (UT_IStream::*)(UT_WorkBuffer&, int), &UT_IStream::getLine>::value, "");
static_assert(Has<bool (UT_IStream::*)(UT_WorkBuffer&), &UT_IStream::getAll>::value, "");
static_assert(Has<bool (UT_IStream::*)(const char*), &UT_IStream::checkToken>::value, "");
static_assert(Has<bool (UT_IStream::*)(), &UT_IStream::skipWhitespace>::value, "");
static_assert(Has<UT_IStream* (UT_IStream::*)(), &UT_IStream::getGzipStream>::value, "");
static_assert(std::is_base_of<UT_IStream, UT_IGZStream>::value, "");
static_assert(std::is_constructible<UT_IGZStream, UT_IStream&>::value, "");
static_assert(std::has_virtual_destructor<UT_IStream>::value, "");
static_assert(std::has_virtual_destructor<FS_Reader>::value, "");
static_assert(std::has_virtual_destructor<FS_IndexFile>::value, "");

static_assert(std::is_base_of<FS_IndexFile, OP_OTLLibrary>::value, "");
static_assert(Has<int (OP_OTLLibrary::*)() const, &OP_OTLLibrary::getNumDefinitions>::value, "");
static_assert(Has<const OP_OTLDefinition& (OP_Operator::*)() const, &OP_Operator::getOTLDefinition>::value,
              "");

} // namespace
