#pragma once
#include <CH/CH_ExprLanguage.h>
#include <SYS/SYS_Types.h>

/// Default of one component. Keeps the pointer to its text.
///
/// Numeric kinds start with the number, or with the text as an expression when there is one. String kinds
/// start with the text. A folder set has one default for each tab: the number of entries in it and its title.
class PRM_Default
{
public:
    PRM_Default(fpreal number = 0, const char* text = 0, CH_StringMeaning meaning = CH_STRING_LITERAL)
        : m_float(number), m_string(text), m_meaning(meaning)
    {
    }

    fpreal getFloat() const { return m_float; }
    int getOrdinal() const { return static_cast<int>(m_float); }
    bool gotString() const { return m_string != 0; }
    /// Null when there is none.
    const char* getString() const { return m_string; }
    CH_StringMeaning getStringMeaning() const { return m_meaning; }
    void set(fpreal number, const char* text, CH_StringMeaning meaning)
    {
        m_float = number;
        m_string = text;
        m_meaning = meaning;
    }
    void setFloat(fpreal number) { m_float = number; }
    /// With `freeExisting`, the present text must have come from strdup and is freed.
    void setString(const char* text, bool freeExisting = false);
    void setStringMeaning(CH_StringMeaning meaning) { m_meaning = meaning; }

private:
    fpreal m_float;
    const char* m_string;
    CH_StringMeaning m_meaning;
};
