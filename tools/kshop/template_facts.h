#ifndef KSHOP_TEMPLATE_FACTS_H
#define KSHOP_TEMPLATE_FACTS_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

class PRM_Template;

/// @file
/// A host template as plain values, so that the writers of JSON and text share one reading of it. Texts are the
/// bytes that the template holds, whatever their encoding.

namespace kshop
{

struct DefaultFacts
{
    double value;
    std::optional<std::string> text;
    int meaning; ///< CH_StringMeaning
};

struct MenuFacts
{
    int type; ///< PRM_ChoiceListType
    bool scripted;
    std::vector<std::pair<std::string, std::string>> items; ///< token, label; none of a scripted menu
    std::string script;                                     ///< of a scripted menu
    const char* language;                                   ///< "hscript" or "python"
};

struct RangeFacts
{
    int minFlag; ///< PRM_RangeFlag
    double min;
    int maxFlag;
    double max;
};

struct SpareFacts
{
    std::vector<std::pair<std::string, std::string>>
        values;                   ///< in the host's order, callback language left out
    const char* callbackLanguage; ///< "hscript" or "python"
};

struct TemplateFacts
{
    const char* type; ///< name of the host's constant; null for the empty host type
    int extended;     ///< PRM_TypeExtended
    int size;         ///< components; tabs of a folder
    std::string token;
    std::string label;
    std::vector<DefaultFacts> defaults; ///< `size` of them, or none
    std::optional<MenuFacts> menu;
    std::optional<RangeFacts> range;
    bool callback;
    std::optional<SpareFacts> spare;
    int parmGroup;
    int exportLevel;
    std::optional<std::string> help;
    std::optional<std::string> disableWhen; ///< as it was written
    std::optional<std::string> hideWhen;
    bool invisible;
    bool joinNext;
    bool isRamp;
    std::optional<std::vector<TemplateFacts>> children; ///< of a multi-parameter list
};

/// Reads a list up to its first terminator; null is an empty list.
std::vector<TemplateFacts> readTemplates(const PRM_Template* list);

} // namespace kshop

#endif
