#ifndef FS_INDEXFILE_H
#define FS_INDEXFILE_H

#include <FS/FS_Reader.h>
#include <UT/UT_WorkBuffer.h>

#include <memory>
#include <string>

/// A file of named sections, and the like inside a section: an asset library is one whose types are sections, and each
/// type's section is one again. A directory of such sections reads the same.
///
/// Opening reads the table of sections; the data of a section is read when somebody asks for it, from the file as it was
/// then: a file that was replaced or changed since gives readers without a stream until it is opened anew. No file
/// stays open in between. Whatever a file claims, no more is read, and kept, than it really holds: a section that reaches
/// beyond the end has the bytes that are there, and problem() tells.
class FS_IndexFile
{
public:
    /// No sections and no file.
    FS_IndexFile();
    /// Opens a file or a directory. What cannot be read has no sections, and problem() says why.
    explicit FS_IndexFile(const char* source);
    /// Opens what a reader reads. The reader stays the caller's and may be deleted afterwards.
    /// @param source  what problem() calls it; null means the reader's file
    explicit FS_IndexFile(FS_Reader* reader, const char* source = 0);
    virtual ~FS_IndexFile();

    /// What is wrong: sentences with the file, the place and the remedy; empty for a sound file.
    const std::string& problem() const;
    /// True when there is a table of sections, even if something of the file is damaged.
    bool isGood() const;
    /// Path of the file or directory; empty when there is none.
    const std::string& filePath() const;
    bool isExpanded() const;

    /// Section names are compared as they are; of several of one name the first counts. Absent ones have size and time 0.
    bool hasSection(const char* name) const;
    int getSectionDataSize(const char* name) const;
    int getNumSections() const;
    /// In the order of the table; null out of range.
    const char* getSectionName(int index) const;

    /// A new reader of one section; the caller deletes it. Null when there is no such section.
    FS_Reader* getSectionReader(const char* name) const;
    /// The bytes of a section; false when it is absent or cannot be read.
    bool readSection(const char* name, UT_WorkBuffer& data) const;
    /// The same into memory of getSectionDataSize() bytes.
    bool readSection(const char* name, char* data) const;

    /// Puts a section at the end, in memory; of a name that is there, replaces it in its place.
    /// @param modtime  Unix seconds; -1 means now
    void addSection(const char* name, const char* data, int length, int modtime = -1);
    /// False when there is no such section.
    bool modifySection(const char* name, const char* data, int length, int modtime = -1);

    /// Writes everything into a file: beside it first, then that takes its place, so that a failure leaves the old file.
    /// Afterwards this is the new file. False, with a sentence in problem(), when it could not be done.
    /// @param path  null means filePath()
    bool writeFile(const char* path = 0);
    /// The bytes that writeFile() would write; empty when a section cannot be read.
    std::string toBytes() const;

private:
    struct Contents;

    FS_IndexFile(const FS_IndexFile&);
    FS_IndexFile& operator=(const FS_IndexFile&);

    std::unique_ptr<Contents> myContents;
};

#endif
