#include "template_facts.h"

#include <CH/CH_ExprLanguage.h>
#include <PRM/PRM_Template.h>
#include <UT/UT_String.h>
#include <UT/UT_StringArray.h>

namespace kshop
{

namespace
{

const char* const callback_language_token = "script_callback_language";

std::string textOf(const char* text) { return text ? text : ""; }

std::optional<std::string> optionalText(const char* text)
{
    return text ? std::optional<std::string>(text) : std::nullopt;
}

const char* typeName(const PRM_Template& source)
{
    return source.isMultiParm() ? PRMmultiTypeName(source.getMultiType()) : PRMtypeName(source.getType());
}

std::vector<DefaultFacts> readDefaults(const PRM_Template& source)
{
    std::vector<DefaultFacts> result;
    const PRM_Default* defaults = source.getFactoryDefaults();
    for (int i = 0; defaults && i < source.getVectorSize(); ++i)
        result.push_back({defaults[i].getFloat(),
                          defaults[i].gotString() ? optionalText(defaults[i].getString()) : std::nullopt,
                          defaults[i].getStringMeaning()});
    return result;
}

/// The items of a fixed menu, up to the one without a token.
std::vector<std::pair<std::string, std::string>> readItems(const PRM_Name* names)
{
    std::vector<std::pair<std::string, std::string>> items;
    for (; names && names->getToken() && *names->getToken(); ++names)
        items.emplace_back(names->getToken(), textOf(names->getLabel()));
    return items;
}

std::optional<MenuFacts> readMenu(const PRM_Template& source)
{
    const PRM_ChoiceList* menu = source.getChoiceListPtr();
    if (!menu)
        return std::nullopt;
    MenuFacts facts;
    facts.type = menu->getType();
    facts.scripted = menu->getScript().buffer() != nullptr;
    facts.items = readItems(menu->choiceNamesPtr());
    facts.script = textOf(menu->getScript().buffer());
    facts.language = CHscriptLanguageAsString(menu->getScriptLanguage());
    return facts;
}

std::optional<RangeFacts> readRange(const PRM_Template& source)
{
    const PRM_Range* range = source.getRangePtr();
    if (!range)
        return std::nullopt;
    return RangeFacts{range->getMinFlag(), range->getMin(), range->getMaxFlag(), range->getMax()};
}

std::optional<SpareFacts> readSpare(const PRM_Template& source)
{
    const PRM_SpareData* spare = source.getSparePtr();
    if (!spare)
        return std::nullopt;
    SpareFacts facts;
    facts.callbackLanguage = CHscriptLanguageAsString(spare->getCallbackLanguage());
    UT_StringArray tokens;
    spare->getTokens(tokens);
    for (const UT_StringHolder& token : tokens)
    {
        const std::string name = textOf(token);
        if (name != callback_language_token)
            facts.values.emplace_back(name, textOf(spare->getValue(token)));
    }
    return facts;
}

std::optional<std::string> readCondition(const PRM_Template& source, PRM_ConditionalType type)
{
    const PRM_Conditional* condition = source.getConditionalPtr(type);
    UT_String text;
    if (!condition || !condition->getStringFromList(text))
        return std::nullopt;
    return textOf(text.buffer());
}

/// A ramp's per-key templates are the host's own, so only lists have children here.
std::optional<std::vector<TemplateFacts>> readChildren(const PRM_Template& source)
{
    if (!source.isMultiParm() || source.isRampType())
        return std::nullopt;
    return readTemplates(source.getMultiParmTemplate());
}

TemplateFacts readTemplate(const PRM_Template& source)
{
    TemplateFacts facts;
    facts.type = typeName(source);
    facts.extended = source.getTypeExtended();
    facts.size = source.getVectorSize();
    facts.token = textOf(source.getToken());
    facts.label = textOf(source.getLabel());
    facts.defaults = readDefaults(source);
    facts.menu = readMenu(source);
    facts.range = readRange(source);
    facts.callback = source.getCallback().isNotNull();
    facts.spare = readSpare(source);
    facts.parmGroup = source.getParmGroup();
    facts.exportLevel = source.exportLevel();
    facts.help = optionalText(source.getHelpText());
    facts.disableWhen = readCondition(source, PRM_CONDTYPE_DISABLE);
    facts.hideWhen = readCondition(source, PRM_CONDTYPE_HIDE);
    facts.invisible = source.getInvisible();
    facts.joinNext = source.getJoinNext();
    facts.isRamp = source.isRampType();
    facts.children = readChildren(source);
    return facts;
}

} // namespace

std::vector<TemplateFacts> readTemplates(const PRM_Template* list)
{
    std::vector<TemplateFacts> result;
    for (; list && list->getType() != PRM_LIST_TERMINATOR; ++list)
        result.push_back(readTemplate(*list));
    return result;
}

} // namespace kshop
