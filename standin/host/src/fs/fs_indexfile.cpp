#include <FS/FS_IndexFile.h>

#include "fs_table.h"
#include "fs_write.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <ctime>
#include <unordered_map>
#include <vector>

using standin::Section;

struct FS_IndexFile::Contents
{
    std::string path;
    std::string problem;
    bool good = true;
    bool expanded = false;
    std::vector<Section> sections;
    std::unordered_map<std::string, std::size_t> byName;

    void take(standin::SectionTable table)
    {
        problem = table.problem;
        good = table.readable;
        sections = std::move(table.sections);
        reindex();
    }

    void reindex()
    {
        byName.clear();
        for (std::size_t i = 0; i < sections.size(); ++i)
            byName.emplace(sections[i].name, i);
    }

    Section* find(const char* name)
    {
        const auto found = name ? byName.find(name) : byName.end();
        return found == byName.end() ? nullptr : &sections[found->second];
    }

    void open(const FS_Reader::Source& source, const char* shownName)
    {
        path = source.place.path;
        expanded = source.directory;
        take(expanded ? standin::readExpandedTable(path)
                      : standin::readTable(source.place, shownName ? shownName : path));
    }
};

namespace
{

int clampToInt(int64 value) { return static_cast<int>(std::min<int64>(value, INT_MAX)); }

standin::BytesPlace placeInMemory(const std::string& path, const char* data, int length, int modtime)
{
    standin::BytesPlace place;
    place.path = path;
    place.memory = std::make_shared<std::string>(data ? data : "",
                                                 data && length > 0 ? static_cast<std::size_t>(length) : 0);
    place.length = static_cast<int64>(place.memory->size());
    place.modTime = modtime >= 0 ? modtime : static_cast<int64>(std::time(nullptr));
    return place;
}

} // namespace

FS_IndexFile::FS_IndexFile() : myContents(new Contents) {}

FS_IndexFile::FS_IndexFile(const char* source) : myContents(new Contents)
{
    FS_Reader::Source opened;
    opened.place.path = source ? source : "";
    opened.directory = standin::isDirectory(opened.place.path);
    if (opened.directory || standin::placeOfFile(opened.place.path, opened.place, myContents->problem))
        myContents->open(opened, nullptr);
    else
    {
        myContents->path = opened.place.path;
        myContents->good = false;
    }
}

FS_IndexFile::FS_IndexFile(FS_Reader* reader, const char* source) : myContents(new Contents)
{
    if (reader)
        myContents->open(*reader->mySource, source);
}

FS_IndexFile::~FS_IndexFile() {}

const std::string& FS_IndexFile::problem() const { return myContents->problem; }
bool FS_IndexFile::isGood() const { return myContents->good; }
const std::string& FS_IndexFile::filePath() const { return myContents->path; }
bool FS_IndexFile::isExpanded() const { return myContents->expanded; }

// --- sections ---------------------------------------------------------------------------------------------------

bool FS_IndexFile::hasSection(const char* name) const { return myContents->find(name) != nullptr; }

int FS_IndexFile::getSectionDataSize(const char* name) const
{
    const Section* section = myContents->find(name);
    return section ? clampToInt(section->place.length) : 0;
}

int FS_IndexFile::getNumSections() const { return static_cast<int>(myContents->sections.size()); }

const char* FS_IndexFile::getSectionName(int index) const
{
    const bool there = index >= 0 && index < getNumSections();
    return there ? myContents->sections[static_cast<std::size_t>(index)].name.c_str() : nullptr;
}

FS_Reader* FS_IndexFile::getSectionReader(const char* name) const
{
    const Section* section = myContents->find(name);
    if (!section)
        return nullptr;
    std::unique_ptr<FS_Reader::Source> source(new FS_Reader::Source);
    source->place = section->place;
    source->directory = section->directory;
    return new FS_Reader(std::move(source));
}

bool FS_IndexFile::readSection(const char* name, UT_WorkBuffer& data) const
{
    data.clear();
    const std::unique_ptr<FS_Reader> reader(getSectionReader(name));
    return reader && reader->getStream() && reader->getStream()->getAll(data);
}

bool FS_IndexFile::readSection(const char* name, char* data) const
{
    UT_WorkBuffer bytes;
    if (!readSection(name, bytes))
        return false;
    std::memcpy(data, bytes.buffer(), static_cast<std::size_t>(bytes.length()));
    return true;
}

// --- changing ---------------------------------------------------------------------------------------------------

void FS_IndexFile::addSection(const char* name, const char* data, int length, int modtime)
{
    if (!name || modifySection(name, data, length, modtime))
        return;
    myContents->byName.emplace(name, myContents->sections.size());
    myContents->sections.push_back({name, placeInMemory(filePath(), data, length, modtime), false});
}

bool FS_IndexFile::modifySection(const char* name, const char* data, int length, int modtime)
{
    Section* section = myContents->find(name);
    if (!section)
        return false;
    section->place = placeInMemory(filePath(), data, length, modtime);
    section->directory = false;
    return true;
}

bool FS_IndexFile::writeFile(const char* path)
{
    const std::string target = path && *path ? path : filePath();
    if (standin::isDirectory(target))
        myContents->problem =
            "\"" + target + "\" was not written: it is a directory, and only files are written. Name a file.";
    else
    {
        std::string why;
        if (standin::writeIndexFile(myContents->sections, target, why))
        {
            *myContents = *FS_IndexFile(target.c_str()).myContents;
            return isGood();
        }
        myContents->problem = why;
    }
    return false;
}

std::string FS_IndexFile::toBytes() const { return standin::indexBytes(myContents->sections); }
