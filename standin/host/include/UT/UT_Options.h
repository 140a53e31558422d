#pragma once
#include <UT/UT_StringHolder.h>

#include <map>
#include <string>

/// Named texts; options of other kinds are not here. Names and texts are copied; setting a name again replaces its
/// text. The order of iteration promises nothing.
class UT_Options
{
    typedef std::map<std::string, UT_StringHolder> Entries;

public:
    class iterator
    {
    public:
        iterator(Entries::const_iterator at, Entries::const_iterator end) : m_at(at), m_end(end) {}
        bool atEnd() const { return m_at == m_end; }
        iterator& operator++()
        {
            ++m_at;
            return *this;
        }
        const char* name() const { return m_at->first.c_str(); }

    private:
        Entries::const_iterator m_at;
        Entries::const_iterator m_end;
    };

    UT_Options& setOptionS(const UT_StringRef& name, const UT_StringHolder& value)
    {
        m_entries[name.toStdString()] = value;
        return *this;
    }

    /// The text under a name; empty when it is absent.
    const UT_StringHolder& getOptionS(const UT_StringRef& name) const
    {
        static const UT_StringHolder nothing("");
        const Entries::const_iterator found = m_entries.find(name.toStdString());
        return found == m_entries.end() ? nothing : found->second;
    }
    bool hasOption(const UT_StringRef& name) const { return m_entries.count(name.toStdString()) != 0; }

    iterator begin() const { return iterator(m_entries.begin(), m_entries.end()); }

private:
    Entries m_entries;
};
