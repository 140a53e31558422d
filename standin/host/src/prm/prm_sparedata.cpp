#include <PRM/PRM_SpareData.h>

#include <UT/UT_StringArray.h>

#include <algorithm>

namespace
{
std::string textOf(const char* text) { return text ? text : ""; }

const char language_token[] = "script_callback_language";
} // namespace

PRM_SpareToken::PRM_SpareToken(const char* token, const char* value)
    : m_token(textOf(token)), m_value(textOf(value))
{
}

PRM_SpareData::PRM_SpareData(const PRM_SpareToken& token)
{
    m_pairs.emplace_back(token.getToken(), token.getValue());
}

PRM_SpareData::PRM_SpareData(const PRM_SpareArgs& args)
{
    for (const PRM_SpareToken& token : args.getTokens())
        addTokenValue(token.getToken(), token.getValue().c_str());
}

PRM_SpareData::Pairs::iterator PRM_SpareData::find(const UT_StringRef& token)
{
    return std::find_if(m_pairs.begin(), m_pairs.end(),
                        [&](const Pairs::value_type& pair) { return pair.first == token.buffer(); });
}

PRM_SpareData::Pairs::const_iterator PRM_SpareData::find(const UT_StringRef& token) const
{
    return const_cast<PRM_SpareData*>(this)->find(token);
}

void PRM_SpareData::addTokenValue(const UT_StringRef& token, const char* value)
{
    const Pairs::iterator found = find(token);
    if (found != m_pairs.end())
        found->second = textOf(value);
    else
        m_pairs.emplace_back(token.toStdString(), textOf(value));
}

const char* PRM_SpareData::getValue(const UT_StringRef& token) const
{
    const Pairs::const_iterator found = find(token);
    return found == m_pairs.end() ? nullptr : found->second.c_str();
}

void PRM_SpareData::getTokens(UT_StringArray& tokens) const
{
    for (const Pairs::value_type& pair : m_pairs)
        tokens.append(pair.first);
}

void PRM_SpareData::setCallbackLanguage(CH_ScriptLanguage language)
{
    addTokenValue(language_token, CHscriptLanguageAsString(language));
}

CH_ScriptLanguage PRM_SpareData::getCallbackLanguage() const
{
    return CHstringToScriptLanguage(getValue(language_token));
}

PRM_SpareData PRM_SpareData::vopPath(PRM_SpareToken("opfilter", "!!VOP!!"));
PRM_SpareData PRM_SpareData::multiStartOffsetZero(PRM_SpareToken("multistartoffset", "0"));
PRM_SpareData PRM_SpareData::groupTypeSimple(PRM_SpareToken("group_type", "simple"));
