#pragma once
#include <SYS/SYS_Types.h>
#include <UT/UT_StringHolder.h>

#include <map>
#include <memory>
#include <string>

/// Kind of an option's value.
enum UT_OptionType
{
    UT_OPTION_INVALID,
    UT_OPTION_INT,
    UT_OPTION_BOOL,
    UT_OPTION_FPREAL,
    UT_OPTION_STRING
};

/// One value of an option set.
class UT_OptionEntry
{
public:
    UT_OptionEntry() : m_type(UT_OPTION_INVALID), m_int(0), m_float(0) {}
    explicit UT_OptionEntry(int64 value) : m_type(UT_OPTION_INT), m_int(value), m_float(0) {}
    explicit UT_OptionEntry(bool value) : m_type(UT_OPTION_BOOL), m_int(value), m_float(0) {}
    explicit UT_OptionEntry(fpreal64 value) : m_type(UT_OPTION_FPREAL), m_int(0), m_float(value) {}
    explicit UT_OptionEntry(const UT_StringHolder& value)
        : m_type(UT_OPTION_STRING), m_int(0), m_float(0), m_text(value)
    {
    }

    UT_OptionType getType() const { return m_type; }
    int64 getOptionI() const { return m_int; }
    bool getOptionB() const { return m_int != 0; }
    fpreal64 getOptionF() const { return m_float; }
    const UT_StringHolder& getOptionS() const { return m_text; }

private:
    UT_OptionType m_type;
    int64 m_int;
    fpreal64 m_float;
    UT_StringHolder m_text;
};

/// Named values. Names and texts are copied; setting a name again replaces its value. The order of iteration
/// promises nothing.
class UT_Options
{
    typedef std::map<std::string, UT_OptionEntry> Entries;

public:
    class iterator
    {
    public:
        iterator(Entries::const_iterator at, Entries::const_iterator end) : m_at(at), m_end(end) {}
        bool atEnd() const { return m_at == m_end; }
        void advance() { ++m_at; }
        iterator& operator++()
        {
            ++m_at;
            return *this;
        }
        bool operator==(const iterator& other) const { return m_at == other.m_at; }
        bool operator!=(const iterator& other) const { return m_at != other.m_at; }
        const char* name() const { return m_at->first.c_str(); }
        const UT_OptionEntry* entry() const { return &m_at->second; }
        UT_OptionType type() const { return m_at->second.getType(); }

    private:
        Entries::const_iterator m_at;
        Entries::const_iterator m_end;
    };

    UT_Options& setOptionS(const UT_StringRef& name, const UT_StringHolder& value)
    {
        return set(name, UT_OptionEntry(value));
    }
    UT_Options& setOptionI(const UT_StringRef& name, int64 value) { return set(name, UT_OptionEntry(value)); }
    UT_Options& setOptionF(const UT_StringRef& name, fpreal64 value)
    {
        return set(name, UT_OptionEntry(value));
    }
    UT_Options& setOptionB(const UT_StringRef& name, bool value) { return set(name, UT_OptionEntry(value)); }

    /// The value under a name; zero or empty when it is absent or of another kind.
    const UT_StringHolder& getOptionS(const UT_StringRef& name) const { return find(name).getOptionS(); }
    int64 getOptionI(const UT_StringRef& name) const { return find(name).getOptionI(); }
    fpreal64 getOptionF(const UT_StringRef& name) const { return find(name).getOptionF(); }
    bool getOptionB(const UT_StringRef& name) const { return find(name).getOptionB(); }
    bool hasOption(const UT_StringRef& name) const { return m_entries.count(name.toStdString()) != 0; }
    /// Null when absent. Belongs to the set, and lives until the name is set again or removed.
    const UT_OptionEntry* getOptionEntry(const UT_StringRef& name) const
    {
        const Entries::const_iterator found = m_entries.find(name.toStdString());
        return found == m_entries.end() ? 0 : &found->second;
    }
    bool removeOption(const UT_StringRef& name) { return m_entries.erase(name.toStdString()) != 0; }
    int getNumOptions() const { return static_cast<int>(m_entries.size()); }
    int entries() const { return getNumOptions(); }
    void clear() { m_entries.clear(); }

    iterator begin() const { return iterator(m_entries.begin(), m_entries.end()); }
    iterator end() const { return iterator(m_entries.end(), m_entries.end()); }

private:
    UT_Options& set(const UT_StringRef& name, const UT_OptionEntry& entry)
    {
        m_entries[name.toStdString()] = entry;
        return *this;
    }
    const UT_OptionEntry& find(const UT_StringRef& name) const
    {
        static const UT_OptionEntry nothing;
        const UT_OptionEntry* entry = getOptionEntry(name);
        return entry ? *entry : nothing;
    }

    Entries m_entries;
};
