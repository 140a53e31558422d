#pragma once

enum CH_ScriptLanguage
{
    CH_HSCRIPT = 0,
    CH_PYTHON_SCRIPT = 1,
    CH_NUM_SCRIPT_LANGUAGES = 2
};

/// What the text of a value is.
enum CH_StringMeaning
{
    CH_STRING_LITERAL = 0,
    CH_OLD_EXPRESSION = 1, ///< hscript expression
    CH_PYTHON_EXPRESSION = 2,
    CH_EXPRESSION_IN_DEFAULT_LANGUAGE = 4
};

enum CH_ExprLanguage
{
    CH_OLD_EXPR_LANGUAGE = 0,
    CH_PYTHON = 1
};

/// "hscript" or "python".
const char* CHscriptLanguageAsString(CH_ScriptLanguage language);
/// Hscript for every text but "python", a null one included.
CH_ScriptLanguage CHstringToScriptLanguage(const char* text);
/// Hscript for every meaning but Python's.
CH_ExprLanguage CHstringMeaningToExprLanguage(CH_StringMeaning meaning);
