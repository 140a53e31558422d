#pragma once
#include <SYS/SYS_Types.h>

#include <string>

class UT_StringRef;

/// A text that is either borrowed (shallow: only the pointer is kept) or its own (hard).
///
/// A default-made text is null: it converts to a null pointer and is no string. Assigning a `const char *`
/// borrows unless the text is always-deep; assigning or constructing from a std::string or a UT_StringHolder
/// copies.
class UT_String
{
public:
    enum UT_AlwaysDeepType
    {
        ALWAYS_DEEP
    };

    /// Borrows `text`, which may be null.
    UT_String(const char* text = 0) : m_text(text), m_hard(false), m_alwaysDeep(false) {}
    /// Copies `text` when `deepCopy`; `length` limits the copy, -1 takes all of it. A limited text is always
    /// copied.
    UT_String(const char* text, bool deepCopy, int length = -1);
    explicit UT_String(UT_AlwaysDeepType, const char* text = 0);
    UT_String(const std::string& text);
    UT_String(const UT_StringRef& text);
    /// Copies what owns its text, borrows what borrows.
    UT_String(const UT_String& other);
    ~UT_String();

    UT_String& operator=(const UT_String& other);
    UT_String& operator=(const char* text);
    UT_String& operator=(const std::string& text);
    UT_String& operator=(const UT_StringRef& text);

    /// Takes a private copy now, of the present text or of another one.
    void harden();
    void harden(const char* text, int length = -1);
    void hardenIfNeeded();
    bool isHard() const { return m_hard; }

    /// True for a text of at least one character.
    bool isstring() const { return m_text && *m_text; }
    unsigned length() const;
    /// The text; may be null.
    const char* buffer() const { return m_text; }
    const char* nonNullBuffer() const { return m_text ? m_text : ""; }
    operator const char*() const { return m_text; }
    /// The text, empty when null.
    std::string toStdString() const { return std::string(nonNullBuffer()); }
    /// Leading decimal number of the text, 0 when there is none. The same under every locale.
    int toInt() const;
    /// Replaces the text, in the manner of std::sprintf but with '.' as decimal point under every locale.
    /// Returns the length.
    int sprintf(const char* format, ...) __attribute__((format(printf, 2, 3)));
    bool startsWith(const char* prefix) const;
    bool endsWith(const char* suffix) const;
    void append(const char* text);
    void clear();

    /// Null equals null only; everything else is compared character by character.
    bool operator==(const char* text) const;
    bool operator==(const UT_String& other) const { return *this == other.m_text; }
    bool operator!=(const char* text) const { return !(*this == text); }
    bool operator!=(const UT_String& other) const { return !(*this == other.m_text); }
    bool operator<(const UT_String& other) const;

    /// The text as a literal that Python reads back unchanged: in the quotes that need no escaping inside,
    /// `defaultDelimiter` when either does or neither. Backslashes and control characters, newlines among
    /// them, are always escaped.
    UT_String makeSmartQuotedString(char defaultDelimiter = '\'', bool escapeNonprinting = false) const;

private:
    void release();

    const char* m_text;
    bool m_hard;
    bool m_alwaysDeep;
};
