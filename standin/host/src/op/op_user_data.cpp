#include "op_user_data.h"

#include <OP/OP_Node.h>

#include <cstdint>

namespace standin
{

namespace
{

constexpr std::uint64_t whole_number = 1;
constexpr std::uint64_t text = 3;
constexpr std::uint64_t list_of_numbers = 13;
constexpr std::uint64_t long_text = 1003;
constexpr std::size_t longest_short_text = 0xFFFF;

void append(std::string& bytes, std::uint64_t value, int size)
{
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
}

/// Walks over the bytes; after the first read beyond their end everything is 0 or empty.
class Reader
{
public:
    explicit Reader(const std::string& bytes) : m_bytes(bytes) {}

    bool isBroken() const { return m_broken; }
    std::size_t place() const { return m_place; }

    std::uint64_t number(std::size_t size)
    {
        std::uint64_t value = 0;
        for (const char c : take(size))
            value = value << 8 | static_cast<unsigned char>(c);
        return value;
    }

    std::string take(std::uint64_t size)
    {
        m_broken = m_broken || size > m_bytes.size() - m_place;
        if (m_broken)
            return std::string();
        m_place += size;
        return m_bytes.substr(m_place - size, size);
    }

private:
    const std::string& m_bytes;
    std::size_t m_place = 0;
    bool m_broken = false;
};

/// False for a type that is unknown.
bool readValue(Reader& reader, std::uint64_t type, std::string& value)
{
    if (type == text)
        value = reader.take(reader.number(2));
    else if (type == long_text)
        value = reader.take(reader.number(4));
    else if (type == whole_number)
        value = std::to_string(static_cast<std::int32_t>(reader.number(4)));
    else if (type == list_of_numbers)
        for (std::uint64_t left = reader.number(8); left > 0 && !reader.isBroken(); --left)
            value += (value.empty() ? "" : " ") + std::to_string(static_cast<std::int64_t>(reader.number(8)));
    else
        return false;
    return true;
}

} // namespace

std::string writeUserData(const OP_Node& node, std::vector<std::string>& problems)
{
    UT_StringArray names;
    node.getUserDataNames(names);
    std::string items;
    std::uint64_t count = 0;
    for (exint i = 0; i < names.entries(); ++i)
    {
        const std::string name = names(i).toStdString();
        UT_StringHolder held;
        node.getUserData(UT_String(name.c_str()), held);
        const std::string value = held.toStdString();
        if (name.size() > longest_short_text)
        {
            problems.push_back("a user data name of " + std::to_string(name.size()) +
                               " bytes is too long for a file and is left out with its text");
            continue;
        }
        const bool isLong = value.size() > longest_short_text;
        append(items, name.size(), 2);
        items += name;
        append(items, isLong ? long_text : text, 4);
        append(items, value.size(), isLong ? 4 : 2);
        items += value;
        ++count;
    }
    std::string bytes;
    if (count)
        append(bytes, count, 4);
    return bytes + items;
}

void readUserData(OP_Node& node, const std::string& bytes, std::vector<std::string>& problems)
{
    Reader reader(bytes);
    for (std::uint64_t left = reader.number(4); left > 0 && !reader.isBroken(); --left)
    {
        const std::string name = reader.take(reader.number(2));
        const std::uint64_t type = reader.number(4);
        std::string value;
        const bool known = readValue(reader, type, value);
        if (!known && !reader.isBroken())
        {
            problems.push_back("the user data \"" + name + "\" has the unknown type " + std::to_string(type) +
                               " and is left out, with all behind it");
            return;
        }
        if (!reader.isBroken())
            node.setUserData(UT_String(name.c_str()), UT_String(value.c_str()), false);
    }
    if (reader.isBroken())
        problems.push_back("the user data is cut off at byte " + std::to_string(reader.place()));
}

} // namespace standin
