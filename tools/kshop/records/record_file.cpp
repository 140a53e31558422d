#include "record_file.h"

#include "../output.h"
#include "record_input.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace kshop
{

namespace
{

bool isBlank(const std::string& line) { return line.find_first_not_of(" \t\r") == std::string::npos; }

/// The line's record, serialised. False, with what is wrong in `error`, when it holds none.
bool serialisedLine(const std::string& line, std::string& record, std::string& error)
{
    zelk::ipr::ReceivedDelta delta;
    if (!readRecordJson(line, delta, error))
        return false;
    record = delta.serialize();
    if (record.size() <= zelk::ipr::max_record_bytes)
        return true;
    error = fmt::format("the record takes {} bytes, and no more than {} can be sent; split it", record.size(),
                        zelk::ipr::max_record_bytes);
    return false;
}

bool readRecords(std::istream& stream, const std::string& name, std::vector<std::string>& records)
{
    std::string line, record, error;
    for (std::size_t number = 1; std::getline(stream, line); ++number)
    {
        if (isBlank(line))
            continue;
        if (!serialisedLine(line, record, error))
        {
            complain(fmt::format("{}:{}: {}. Nothing was sent; correct this line, which must be as "
                                 "'kshop listen --json' prints it",
                                 name, number, error));
            return false;
        }
        records.push_back(record);
    }
    if (!stream.bad())
        return true;
    complain(fmt::format("cannot read {}: {}", name, std::strerror(errno)));
    return false;
}

} // namespace

bool isReadable(const std::string& path, const std::string& what, const std::string& example)
{
    if (path == "-")
        return true;
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
    {
        complain(fmt::format("{} is a directory; give the path of {}", path, example));
        return false;
    }
    errno = 0;
    if (std::ifstream(path))
        return true;
    complain(fmt::format("cannot read the {} {}: {}", what, path, std::strerror(errno)));
    return false;
}

bool readRecordFile(const std::string& path, std::vector<std::string>& records)
{
    if (path == "-")
        return readRecords(std::cin, "standard input", records);
    std::ifstream stream(path);
    return isReadable(path, "file", "a file of records") && readRecords(stream, path, records);
}

} // namespace kshop
