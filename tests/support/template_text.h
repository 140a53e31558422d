#ifndef KORVAN_TESTS_TEMPLATE_TEXT_H
#define KORVAN_TESTS_TEMPLATE_TEXT_H

#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_SpareData.h>
#include <PRM/PRM_Template.h>
#include <PRM/PRM_Type.h>

#include <string>
#include <utility>
#include <vector>

// Reading back what a template list says, for comparing with expected values.

/// The templates before the list's end.
inline std::vector<const PRM_Template*> templatesOf(const PRM_Template* list)
{
    std::vector<const PRM_Template*> templates;
    for (; list->getType() != PRM_LIST_TERMINATOR; ++list)
        templates.push_back(list);
    return templates;
}

inline std::vector<std::string> tokensOf(const PRM_Template* list)
{
    std::vector<std::string> tokens;
    for (const PRM_Template* tmpl : templatesOf(list))
        tokens.push_back(tmpl->getToken());
    return tokens;
}

/// Tokens and labels of a menu that is not made by a script, up to its end.
inline std::vector<std::pair<std::string, std::string>> menuOf(const PRM_Template& tmpl)
{
    std::vector<std::pair<std::string, std::string>> items;
    const PRM_Name* names = nullptr;
    tmpl.getChoiceListPtr()->getChoiceNames(names);
    for (; names->getToken() && *names->getToken(); ++names)
        items.emplace_back(names->getToken(), names->getLabel());
    return items;
}

/// Spare value of a token; "<none>" when there is no such token, or no spare data.
inline std::string spareOf(const PRM_Template& tmpl, const char* token)
{
    const PRM_SpareData* spare = tmpl.getSparePtr();
    const char* value = spare ? spare->getValue(token) : nullptr;
    return value ? value : "<none>";
}

/// Text of the first default; "<null>" when it has none.
inline std::string defaultTextOf(const PRM_Template& tmpl)
{
    const PRM_Default* value = tmpl.getDefault(0);
    return value && value->getString() ? value->getString() : "<null>";
}

#endif
