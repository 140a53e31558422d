#include "op_otl_index.h"

#include <standin/host.h>

#include <cstdint>
#include <cstdlib>

OP_OTLDefinition::OP_OTLDefinition()
    : myName(UT_String::ALWAYS_DEEP, ""),
      myLabel(UT_String::ALWAYS_DEEP, ""),
      myPath(UT_String::ALWAYS_DEEP, ""),
      myIcon(UT_String::ALWAYS_DEEP, ""),
      myTable(UT_String::ALWAYS_DEEP, ""),
      myExtra(UT_String::ALWAYS_DEEP, ""),
      myUserInfo(UT_String::ALWAYS_DEEP, ""),
      myMinInputs(0),
      myMaxInputs(0),
      myMaxOutputs(0),
      myModTime(0),
      mySubnet(false),
      myEmpty(false),
      myPython(false)
{
}

std::string OP_OTLDefinition::sectionName() const
{
    const std::string path = myPath.toStdString();
    const std::size_t mark = path.find('?');
    return mark != std::string::npos ? path.substr(mark + 1)
                                     : standin::tableAndName(myTable.toStdString(), myName.toStdString());
}

/// The one who fills definitions.
struct OP_OTLDefinitionFields
{
    static OP_OTLDefinition make(const standin::DefinitionFields& from)
    {
        OP_OTLDefinition made;
        made.myName = from.name.c_str();
        made.myLabel = from.label.c_str();
        made.myPath = from.path.c_str();
        made.myIcon = from.icon.c_str();
        made.myTable = from.table.c_str();
        made.myExtra = from.extra.c_str();
        made.myUserInfo = from.userInfo.c_str();
        made.myMinInputs = from.minInputs;
        made.myMaxInputs = from.maxInputs;
        made.myMaxOutputs = from.maxOutputs;
        made.myModTime = from.modTime;
        made.mySubnet = from.subnet;
        made.myEmpty = from.empty;
        made.myPython = from.python;
        return made;
    }
};

namespace standin
{

namespace
{

constexpr std::uint32_t written_version = 4;
constexpr std::uint32_t version_with_outputs = 5;

/// Reads big-endian numbers and counted texts; once something is not there, everything after it reads as nothing.
class RecordReader
{
public:
    explicit RecordReader(const std::string& bytes) : m_bytes(bytes) {}

    bool good() const { return m_good; }
    std::size_t place() const { return m_next; }

    std::uint32_t number()
    {
        std::uint32_t number = 0;
        for (const char byte : take(4))
            number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    }

    std::string text() { return take(number()); }

    bool flag()
    {
        const std::string byte = take(1);
        return !byte.empty() && byte[0] != 0;
    }

private:
    std::string take(std::size_t size)
    {
        m_good = m_good && size <= m_bytes.size() - m_next;
        if (!m_good)
            return std::string();
        m_next += size;
        return m_bytes.substr(m_next - size, size);
    }

    const std::string& m_bytes;
    std::size_t m_next = 0;
    bool m_good = true;
};

DefinitionFields readRecord(RecordReader& reader)
{
    DefinitionFields fields;
    const std::uint32_t version = reader.number();
    fields.name = reader.text();
    fields.label = reader.text();
    fields.path = reader.text();
    fields.icon = reader.text();
    reader.text(); // two texts that are empty in all files
    reader.text();
    fields.table = reader.text();
    reader.text(); // of the host's own definitions: the kind of subnet
    reader.text();
    fields.userInfo = reader.text();
    fields.extra = reader.text();
    fields.minInputs = reader.number();
    fields.maxInputs = reader.number();
    fields.modTime = reader.number();
    fields.subnet = reader.flag();
    fields.empty = reader.flag();
    fields.python = reader.flag();
    if (version >= version_with_outputs)
        fields.maxOutputs = reader.number();
    return fields;
}

void appendNumber(std::string& bytes, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xff);
}

void appendText(std::string& bytes, const std::string& text)
{
    appendNumber(bytes, static_cast<std::uint32_t>(text.size()));
    bytes += text;
}

} // namespace

OP_OTLDefinition makeDefinition(const DefinitionFields& fields)
{
    return OP_OTLDefinitionFields::make(fields);
}

DefinitionFields fieldsOf(const OP_OTLDefinition& definition)
{
    DefinitionFields fields;
    fields.name = definition.getName().toStdString();
    fields.label = definition.getLabel().toStdString();
    fields.path = definition.getPath().toStdString();
    fields.icon = definition.getIcon().toStdString();
    fields.table = definition.getTable().toStdString();
    fields.extra = definition.getExtra().toStdString();
    fields.userInfo = definition.getUserInfo().toStdString();
    fields.minInputs = definition.getMinInputs();
    fields.maxInputs = definition.getMaxInputs();
    fields.maxOutputs = definition.getMaxOutputs();
    fields.modTime = definition.getModTime();
    fields.subnet = definition.isSubnet();
    fields.empty = definition.isEmpty();
    fields.python = definition.isPython();
    return fields;
}

std::vector<OP_OTLDefinition> readDefinitions(const std::string& bytes, std::string& why)
{
    std::vector<OP_OTLDefinition> definitions;
    RecordReader reader(bytes);
    const std::uint32_t count = reader.number();
    while (reader.good() && definitions.size() < count)
    {
        const DefinitionFields fields = readRecord(reader);
        if (reader.good())
            definitions.push_back(makeDefinition(fields));
    }
    if (!reader.good())
        why = "its list of types announces " + std::to_string(count) + " types, and breaks off after " +
              std::to_string(definitions.size()) + ".";
    return definitions;
}

// --- text form --------------------------------------------------------------------------------------------------

namespace
{

struct TextRow
{
    const char* key;
    std::string DefinitionFields::*field;
};

const TextRow text_rows[] = {
    {"Operator", &DefinitionFields::name}, {"Label", &DefinitionFields::label},
    {"Path", &DefinitionFields::path},     {"Icon", &DefinitionFields::icon},
    {"Table", &DefinitionFields::table},   {"Extra", &DefinitionFields::extra},
    {"User", &DefinitionFields::userInfo},
};

struct FlagRow
{
    const char* key;
    bool DefinitionFields::*field;
};

const FlagRow flag_rows[] = {
    {"Subnet", &DefinitionFields::subnet},
    {"Python", &DefinitionFields::python},
    {"Empty", &DefinitionFields::empty},
};

std::string trimmed(const std::string& text)
{
    const char* const blanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string::npos ? std::string()
                                      : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

unsigned wholeNumber(const std::string& text)
{
    return static_cast<unsigned>(std::strtoul(text.c_str(), nullptr, 10));
}

/// "0 to 4".
void setInputs(DefinitionFields& fields, const std::string& value)
{
    const std::size_t to = value.find("to");
    fields.minInputs = wholeNumber(value);
    fields.maxInputs = to == std::string::npos ? fields.minInputs : wholeNumber(value.substr(to + 2));
}

void setField(DefinitionFields& fields, const std::string& key, const std::string& value)
{
    for (const TextRow& row : text_rows)
        if (key == row.key)
            fields.*row.field = value;
    for (const FlagRow& row : flag_rows)
        if (key == row.key)
            fields.*row.field = value == "true" || value == "1";
    if (key == "Inputs")
        setInputs(fields, value);
    if (key == "Outputs")
        fields.maxOutputs = wholeNumber(value.substr(value.find_last_of(' ') + 1));
}

} // namespace

std::vector<OP_OTLDefinition> readDefinitionText(const std::string& text, std::string& why)
{
    std::vector<DefinitionFields> records;
    int lineNumber = 0;
    for (std::size_t begin = 0; begin < text.size();)
    {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        begin = end + 1;
        ++lineNumber;
        const std::size_t colon = line.find(':');
        if (trimmed(line).empty())
            continue;
        const std::string key = trimmed(line.substr(0, colon));
        if (colon == std::string::npos || (records.empty() && key != "Operator"))
        {
            why = "line " + std::to_string(lineNumber) +
                  " of its list of types is not of the form "
                  "\"Key: value\", or stands before the first \"Operator:\".";
            break;
        }
        if (key == "Operator")
            records.emplace_back();
        setField(records.back(), key, trimmed(line.substr(colon + 1)));
    }
    std::vector<OP_OTLDefinition> definitions;
    definitions.reserve(records.size());
    for (const DefinitionFields& fields : records)
        definitions.push_back(makeDefinition(fields));
    return definitions;
}

// --- writing ----------------------------------------------------------------------------------------------------

std::string writeDefinitions(const std::vector<OP_OTLDefinition>& definitions)
{
    std::string bytes;
    appendNumber(bytes, static_cast<std::uint32_t>(definitions.size()));
    for (const OP_OTLDefinition& definition : definitions)
    {
        const DefinitionFields fields = fieldsOf(definition);
        appendNumber(bytes, fields.maxOutputs ? version_with_outputs : written_version);
        const std::string none;
        for (const std::string* text : {&fields.name, &fields.label, &fields.path, &fields.icon, &none, &none,
                                        &fields.table, &none, &none, &fields.userInfo, &fields.extra})
            appendText(bytes, *text);
        for (const unsigned number : {fields.minInputs, fields.maxInputs, fields.modTime})
            appendNumber(bytes, number);
        for (const bool flag : {fields.subnet, fields.empty, fields.python})
            bytes += flag ? '\1' : '\0';
        if (fields.maxOutputs)
            appendNumber(bytes, fields.maxOutputs);
    }
    return bytes;
}

std::string tableAndName(const std::string& table, const std::string& name)
{
    const OperatorName parts = splitOperatorName(name);
    std::string full;
    for (const std::string& part : {parts.scope, parts.nameSpace})
        if (!part.empty())
            full += part + "::";
    full += table + "/" + parts.name;
    return parts.version.empty() ? full : full + "::" + parts.version;
}

} // namespace standin
