#include "fs_table.h"

#include <algorithm>
#include <cstdint>

namespace standin
{

namespace
{

const char* const magic = "INDX";
constexpr int64 header_size = 16; // magic, two numbers that are always 0, the number of sections

const char* const copy_remedy = " Get an undamaged copy of it.";

/// Reads numbers and texts one after another, in blocks, and never beyond the end of the place.
class TableReader
{
public:
    explicit TableReader(const BytesPlace& place)
        : m_bytes(place.open()), m_offset(place.offset), m_left(place.length)
    {
    }

    bool isOpen() const { return m_bytes != nullptr; }
    int64 left() const { return m_left; }

    bool text(int64 size, std::string& text)
    {
        text.clear();
        if (size > m_left)
            return false;
        m_left -= size;
        while (static_cast<int64>(text.size()) < size)
        {
            if (m_next == m_block.size() && !refill())
                return false;
            const std::size_t wanted = static_cast<std::size_t>(size) - text.size();
            const std::size_t count = std::min(wanted, m_block.size() - m_next);
            text.append(m_block, m_next, count);
            m_next += count;
        }
        return true;
    }

    bool number(std::uint32_t& number)
    {
        std::string bytes;
        if (!text(4, bytes))
            return false;
        number = 0;
        for (const char byte : bytes)
            number = number << 8 | static_cast<unsigned char>(byte);
        return true;
    }

private:
    bool refill()
    {
        m_block.resize(block_size);
        const exint count = m_bytes->readAt(m_offset, &m_block[0], block_size);
        m_block.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        m_offset += static_cast<int64>(m_block.size());
        m_next = 0;
        return count > 0;
    }

    static constexpr exint block_size = 4096;

    std::shared_ptr<const Bytes> m_bytes;
    int64 m_offset; ///< of the next block
    int64 m_left;
    std::string m_block;
    std::size_t m_next = 0;
};

/// One record of the table. Its place counts from the first data byte until the table's end is known.
bool readRecord(TableReader& reader, Section& section)
{
    std::uint32_t nameLength, offset, size, modTime;
    if (!reader.number(nameLength) || !reader.text(nameLength, section.name) || !reader.number(offset) ||
        !reader.number(size) || !reader.number(modTime))
        return false;
    section.directory = false;
    section.place.offset = offset;
    section.place.length = size;
    section.place.modTime = modTime;
    return true;
}

/// Gives a section its place in the file, cut where the file ends; false when it was cut.
bool settle(Section& section, const BytesPlace& file, int64 dataBegin)
{
    const BytesPlace asked = section.place;
    const int64 there = file.length - dataBegin;
    section.place = file;
    section.place.modTime = asked.modTime;
    section.place.offset = file.offset + dataBegin + std::min(asked.offset, there);
    section.place.length = std::min(asked.length, std::max<int64>(0, there - asked.offset));
    return section.place.length == asked.length;
}

SectionTable unreadable(const std::string& problem) { return {{}, problem, false}; }

std::string number(int64 value) { return std::to_string(value); }

} // namespace

SectionTable readTable(const BytesPlace& place, const std::string& name)
{
    TableReader reader(place);
    const std::string file = "\"" + name + "\"";
    if (!reader.isOpen())
        return unreadable(file +
                          " cannot be read: the file was changed since it was opened, or may not be read."
                          " Install it anew.");
    std::string start;
    std::uint32_t count = 0;
    if (!reader.text(4, start) || start != magic)
        return unreadable(file + " is no asset file: it does not begin with \"" + magic +
                          "\". Name a file that the host wrote.");
    std::string reserved;
    if (!reader.text(8, reserved) || !reader.number(count))
        return unreadable(file + " is damaged: it ends within its first " + number(header_size) + " bytes." +
                          copy_remedy);

    SectionTable table{{}, "", true};
    Section section;
    while (table.sections.size() < count && readRecord(reader, section))
        table.sections.push_back(section);
    if (table.sections.size() < count)
        table.problem = file + " is damaged: its table announces " + number(count) +
                        " sections, and breaks off after " +
                        number(static_cast<int64>(table.sections.size())) + "." + copy_remedy;
    const int64 dataBegin = place.length - reader.left();
    for (Section& one : table.sections)
    {
        const int64 size = one.place.length;
        if (!settle(one, place, dataBegin) && table.problem.empty())
            table.problem = file + " is damaged: its section \"" + one.name + "\" has " + number(size) +
                            " bytes, of which " + number(one.place.length) + " are there." + copy_remedy;
    }
    return table;
}

// --- directories ------------------------------------------------------------------------------------------------

namespace
{

const char* const list_name = "Sections.list";

/// Reads one line, "file<tab>section"; false for lines that name no file of this directory.
bool readListLine(const std::string& line, std::string& file, std::string& section)
{
    const std::size_t tab = line.find('\t');
    if (tab == std::string::npos)
        return false;
    file = line.substr(0, tab);
    section = line.substr(tab + 1);
    return !file.empty() && file != "." && file != ".." && file.find('/') == std::string::npos &&
           file.find('\0') == std::string::npos;
}

bool findFile(const std::string& directory, const std::string& file, Section& section, std::string& why)
{
    const std::string path = directory + "/" + file;
    section.directory = isDirectory(path);
    section.place = BytesPlace();
    section.place.path = path;
    return section.directory || placeOfFile(path, section.place, why);
}

std::string leftOut(const std::string& listPath, int lineNumber, const std::string& why)
{
    return "\"" + listPath + "\", line " + number(lineNumber) + " is left out: " + why;
}

} // namespace

SectionTable readExpandedTable(const std::string& directory)
{
    const std::string listPath = directory + "/" + list_name;
    BytesPlace list;
    std::string why;
    const std::unique_ptr<UT_IStream> stream = placeOfFile(listPath, list, why) ? openStream(list) : nullptr;
    if (!stream)
        return unreadable("\"" + directory + "\" is no expanded asset: " + why);

    SectionTable table{{}, "", true};
    UT_WorkBuffer line;
    stream->getLine(line); // always two quotes
    for (int lineNumber = 2; stream->getLine(line); ++lineNumber)
    {
        Section section;
        std::string file;
        const std::string text(line.buffer(), static_cast<std::size_t>(line.length()));
        if (text.empty())
            continue;
        why = "it is not of the form \"file<tab>section\" with a file of the same directory.";
        if (readListLine(text, file, section.name) && findFile(directory, file, section, why))
            table.sections.push_back(section);
        else if (table.problem.empty())
            table.problem = leftOut(listPath, lineNumber, why);
    }
    return table;
}

// --- writing ----------------------------------------------------------------------------------------------------

namespace
{

void appendNumber(std::string& bytes, int64 number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xff);
}

} // namespace

std::string writeTable(const std::vector<Section>& sections)
{
    std::string bytes = magic;
    bytes.append(8, '\0');
    appendNumber(bytes, static_cast<int64>(sections.size()));
    int64 offset = 0;
    for (const Section& section : sections)
    {
        appendNumber(bytes, static_cast<int64>(section.name.size()));
        bytes += section.name;
        appendNumber(bytes, offset);
        appendNumber(bytes, section.place.length);
        appendNumber(bytes, section.place.modTime);
        offset += section.place.length;
    }
    return bytes;
}

} // namespace standin
