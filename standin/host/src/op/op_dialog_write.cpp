#include "op_dialog_parms.h"

#include <UT/UT_StringArray.h>

namespace standin
{

namespace
{

std::string textLine(const char* key, const char* value)
{
    return value && *value ? std::string("\t") + key + "\t" + quoteText(value) + "\n" : std::string();
}

std::string bracketed(const char* text, bool isPython)
{
    return "[ " + quoteText(text) + (isPython ? " python" : "") + " ]";
}

std::string defaultText(const PRM_Default& one, bool isText)
{
    if (one.getString() && one.getStringMeaning() != CH_STRING_LITERAL)
        return bracketed(one.getString(), one.getStringMeaning() == CH_PYTHON_EXPRESSION);
    if (isText)
        return quoteText(one.getString() ? one.getString() : "");
    // Numeric kinds take a text as an expression too.
    return one.getString() && *one.getString() ? bracketed(one.getString(), false)
                                               : quoteText(printNumber(one.getFloat()));
}

std::string defaultsText(const PRM_Template& tmpl)
{
    const bool isText = tmpl.getType().getBasicType() == PRM_BASIC_STRING;
    std::string text;
    for (int i = 0; i < tmpl.getVectorSize(); ++i)
        if (const PRM_Default* one = tmpl.getDefault(i))
            text += defaultText(*one, isText) + " ";
    return text.empty() ? text : "\tdefault\t{ " + text + "}\n";
}

std::string endText(PRM_RangeFlag flag, fpreal value)
{
    return printNumber(value) + (flag & PRM_RANGE_PRM ? "!" : "");
}

std::string rangeText(const PRM_Range* range)
{
    return range ? "\trange\t{ " + endText(range->getMinFlag(), range->getMin()) + " " +
                       endText(range->getMaxFlag(), range->getMax()) + " }\n"
                 : std::string();
}

const char* menuWord(PRM_ChoiceListType type)
{
    if (type & PRM_CHOICELIST_TOGGLE)
        return "menutoggle";
    return type & PRM_CHOICELIST_EXCLUSIVE ? "menu" : "menureplace";
}

std::string menuText(const PRM_ChoiceList* menu)
{
    if (!menu || (!menu->getScript().isstring() && !menu->choiceNamesPtr()))
        return std::string();
    std::string text = std::string("\t") + menuWord(menu->getType()) + "\t{\n";
    if (menu->getScript().isstring())
        text += "\t    [ " + quoteText(menu->getScript().toStdString()) + " ]\n" +
                (menu->getScriptLanguage() == CH_PYTHON_SCRIPT ? "\t    language python\n" : "");
    else
        for (const PRM_Name* item = menu->choiceNamesPtr(); item->getToken() && *item->getToken(); ++item)
            text += "\t    " + quoteText(item->getToken()) + "\t" +
                    quoteText(item->getLabel() ? item->getLabel() : "") + "\n";
    return text + "\t}\n";
}

std::string tagsText(const PRM_SpareData* spare)
{
    std::string text;
    UT_StringArray tokens;
    if (spare)
        spare->getTokens(tokens);
    for (exint i = 0; i < tokens.entries(); ++i)
        text += "\tparmtag\t{ " + quoteText(tokens(i).buffer()) + " " +
                quoteText(spare->getValue(tokens(i))) + " }\n";
    return text;
}

std::string conditionText(const char* key, const PRM_Template& tmpl, PRM_ConditionalType type)
{
    const PRM_Conditional* condition = tmpl.getConditionalPtr(type);
    UT_String text;
    return condition && condition->getStringFromList(text) ? textLine(key, text.nonNullBuffer())
                                                           : std::string();
}

} // namespace

std::string dialogParmText(const PRM_Template& tmpl)
{
    const DialogKind* kind = tmpl.isMultiParm() ? nullptr : findDialogKind(tmpl.getType());
    if (!kind)
        return std::string();
    const std::string menu = menuText(tmpl.getChoiceListPtr());
    std::string text = "    parm {\n" + textLine("name", tmpl.getToken());
    text += std::string("\tlabel\t") + quoteText(tmpl.getLabel()) + "\n";
    text += std::string("\ttype\t") + kind->word + "\n";
    for (const auto& flag :
         {std::make_pair("invisible", tmpl.getInvisible()), std::make_pair("joinnext", tmpl.getJoinNext()),
          std::make_pair("nolabel", tmpl.getLabelNone())})
        if (flag.second)
            text += std::string("\t") + flag.first + "\n";
    if (tmpl.getVectorSize() > 1)
        text += "\tsize\t" + std::to_string(tmpl.getVectorSize()) + "\n";
    text += defaultsText(tmpl) + textLine("help", tmpl.getHelpText()) + menu;
    text += conditionText("disablewhen", tmpl, PRM_CONDTYPE_DISABLE);
    text += conditionText("hidewhen", tmpl, PRM_CONDTYPE_HIDE);
    text += rangeText(tmpl.getRangePtr()) + tagsText(tmpl.getSparePtr());
    return text + "\texport\tnone\n    }\n";
}

} // namespace standin
