#include <CH/CH_ExprLanguage.h>

#include <cstring>

const char* CHscriptLanguageAsString(CH_ScriptLanguage language)
{
    return language == CH_PYTHON_SCRIPT ? "python" : "hscript";
}

CH_ScriptLanguage CHstringToScriptLanguage(const char* text)
{
    return text && std::strcmp(text, "python") == 0 ? CH_PYTHON_SCRIPT : CH_HSCRIPT;
}

CH_ExprLanguage CHstringMeaningToExprLanguage(CH_StringMeaning meaning)
{
    return meaning == CH_PYTHON_EXPRESSION ? CH_PYTHON : CH_OLD_EXPR_LANGUAGE;
}
