#pragma once
#include <CH/CH_ExprLanguage.h>
#include <SYS/SYS_Types.h>
#include <UT/UT_StringHolder.h>

#include <string>
#include <utility>
#include <vector>

class UT_StringArray;

/// One token with its value, for making spare data.
class PRM_SpareToken
{
public:
    PRM_SpareToken(const char* token, const char* value);

    const std::string& getToken() const { return m_token; }
    const std::string& getValue() const { return m_value; }

private:
    std::string m_token;
    std::string m_value;
};

/// PRM_SpareArgs() << PRM_SpareToken("a", "1") << PRM_SpareToken("b", "2")
class PRM_SpareArgs
{
public:
    PRM_SpareArgs& operator<<(const PRM_SpareToken& token)
    {
        m_tokens.push_back(token);
        return *this;
    }
    const std::vector<PRM_SpareToken>& getTokens() const { return m_tokens; }

private:
    std::vector<PRM_SpareToken> m_tokens;
};

/// Token/value pairs of a template. Copies its texts and keeps the order in which tokens first came.
class PRM_SpareData
{
public:
    PRM_SpareData() {}
    PRM_SpareData(const PRM_SpareToken& token);
    PRM_SpareData(const PRM_SpareArgs& args);

    /// Replaces the value of a token that is there. A null value is an empty one.
    void addTokenValue(const UT_StringRef& token, const char* value);
    /// Null when absent; lives until the token is set again.
    const char* getValue(const UT_StringRef& token) const;
    uint entries() const { return static_cast<uint>(m_pairs.size()); }
    void clear() { m_pairs.clear(); }
    /// Appends the tokens in order.
    void getTokens(UT_StringArray& tokens) const;

    /// "script_callback_language"; hscript when absent.
    void setCallbackLanguage(CH_ScriptLanguage language);
    CH_ScriptLanguage getCallbackLanguage() const;

    const char* getOpFilter() const { return getValue("opfilter"); }

    // Shared ones: a node chooser, a first instance number, a folder's look.
    static PRM_SpareData vopPath;
    static PRM_SpareData multiStartOffsetZero;
    static PRM_SpareData groupTypeSimple;

private:
    typedef std::vector<std::pair<std::string, std::string>> Pairs;
    Pairs::iterator find(const UT_StringRef& token);
    Pairs::const_iterator find(const UT_StringRef& token) const;

    Pairs m_pairs;
};
