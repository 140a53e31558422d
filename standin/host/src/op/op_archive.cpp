#include "op_archive.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace standin
{

namespace
{

const char* const magic = "070707";
const char* const trailer = "TRAILER!!!";

/// The fields between magic and time of every entry: device, inode, mode, user, group, links, special device.
const char* const middle_fields = "000001"
                                  "000000"
                                  "000666"
                                  "000000"
                                  "000000"
                                  "000001"
                                  "000000";

constexpr std::size_t header_size = 76;
constexpr std::size_t name_size_at = 59;
constexpr std::size_t name_size_digits = 6;
constexpr std::size_t data_size_at = 65;
constexpr std::size_t data_size_digits = 11;
constexpr std::size_t time_digits = 11;

std::string octal(std::uint64_t value, std::size_t digits)
{
    std::string text(digits, '0');
    for (std::size_t i = digits; i > 0; --i, value >>= 3)
        text[i - 1] = static_cast<char>('0' + (value & 7));
    return text;
}

bool readOctal(const std::string& bytes, std::size_t at, std::size_t digits, std::uint64_t& value)
{
    value = 0;
    for (std::size_t i = at; i < at + digits; ++i)
    {
        if (bytes[i] < '0' || bytes[i] > '7')
            return false;
        value = value * 8 + static_cast<std::uint64_t>(bytes[i] - '0');
    }
    return true;
}

void append(std::string& bytes, const std::string& name, const std::string& data)
{
    bytes += magic;
    bytes += middle_fields;
    bytes += octal(0, time_digits);
    bytes += octal(name.size() + 1, name_size_digits);
    bytes += octal(data.size(), data_size_digits);
    bytes.append(name.c_str(), name.size() + 1);
    bytes += data;
}

std::string at(std::size_t place) { return "at byte " + std::to_string(place); }

/// Reads the entry at `place` and moves there behind it; a sentence when it is none.
std::string readEntry(const std::string& bytes, std::size_t& place, ArchiveEntry& entry)
{
    std::uint64_t nameSize = 0;
    std::uint64_t dataSize = 0;
    const std::size_t left = bytes.size() - place;
    if (bytes.compare(place, 6, magic, std::min<std::size_t>(left, 6)) != 0)
        return "there is no archive entry " + at(place) + ", where one must begin";
    if (left < header_size)
        return "it ends " + at(bytes.size()) + ", inside the header of an archive entry";
    if (!readOctal(bytes, place + name_size_at, name_size_digits, nameSize) ||
        !readOctal(bytes, place + data_size_at, data_size_digits, dataSize) || nameSize == 0)
        return "the header of the archive entry " + at(place) + " holds no sizes";
    if (nameSize > left - header_size)
        return "it ends " + at(bytes.size()) + ", inside the name of the archive entry " + at(place);
    entry.name = bytes.substr(place + header_size, nameSize - 1);
    if (bytes[place + header_size + nameSize - 1] != '\0' || entry.name.find('\0') != std::string::npos)
        return "the name of the archive entry " + at(place) + " does not end where its header says";
    if (dataSize > left - header_size - nameSize)
        return "it ends " + at(bytes.size()) + ", inside the entry \"" + entry.name + "\", which has " +
               std::to_string(dataSize) + " bytes";
    entry.data = bytes.substr(place + header_size + nameSize, dataSize);
    place += header_size + nameSize + dataSize;
    return std::string();
}

} // namespace

std::string writeArchive(const std::vector<ArchiveEntry>& entries)
{
    std::string bytes;
    for (const ArchiveEntry& entry : entries)
        append(bytes, entry.name, entry.data);
    append(bytes, trailer, std::string());
    return bytes;
}

bool readArchive(const std::string& bytes, std::vector<ArchiveEntry>& entries, std::string& why)
{
    std::vector<ArchiveEntry> read;
    std::size_t place = 0;
    for (ArchiveEntry entry; place < bytes.size(); read.push_back(std::move(entry)))
    {
        why = readEntry(bytes, place, entry);
        if (!why.empty())
            return false;
        if (entry.name != trailer)
            continue;
        if (place != bytes.size())
        {
            why = "there is something behind its end, " + at(place);
            return false;
        }
        entries.insert(entries.end(), std::make_move_iterator(read.begin()),
                       std::make_move_iterator(read.end()));
        return true;
    }
    why = bytes.empty() ? "it is empty" : "it ends " + at(bytes.size()) + ", before the archive's end mark";
    return false;
}

} // namespace standin
