#include "template_facts.h"

#include "text.h"

#include <PRM/PRM_Include.h>
#include <UT/UT_StringArray.h>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

py::object textOrNone(const char* text) { return text ? py::cast(Text(text)) : py::object(py::none()); }

const char* multiKind(const PRM_Template& tmpl)
{
    if (!tmpl.isMultiParm())
        return nullptr;
    if (!tmpl.isRampType())
        return "list";
    return tmpl.isRampTypeColor() ? "ramp_rgb" : "ramp_float";
}

py::list defaultsOf(const PRM_Template& tmpl)
{
    py::list defaults;
    for (int i = 0; i < tmpl.getVectorSize(); ++i)
        if (const PRM_Default* one = tmpl.getDefault(i))
            defaults.append(py::make_tuple(one->getFloat(), textOrNone(one->getString()),
                                           static_cast<int>(one->getStringMeaning())));
    return defaults;
}

py::list itemsOf(const PRM_Name* names)
{
    py::list items;
    for (; names && names->getToken() && *names->getToken(); ++names)
        items.append(py::make_tuple(Text(names->getToken()), Text(names->getLabel())));
    return items;
}

py::object menuOf(const PRM_ChoiceList* menu)
{
    if (!menu)
        return py::none();
    py::dict facts;
    facts["type"] = static_cast<int>(menu->getType());
    if (menu->getScript().buffer())
    {
        facts["script"] = Text(menu->getScript().buffer());
        facts["python"] = menu->getScriptLanguage() == CH_PYTHON_SCRIPT;
    }
    else
        facts["items"] = itemsOf(menu->choiceNamesPtr());
    return std::move(facts);
}

py::object rangeOf(const PRM_Range* range)
{
    if (!range)
        return py::none();
    return py::make_tuple(static_cast<int>(range->getMinFlag()), range->getMin(),
                          static_cast<int>(range->getMaxFlag()), range->getMax());
}

py::dict spareOf(const PRM_SpareData* spare)
{
    py::dict pairs;
    if (!spare)
        return pairs;
    UT_StringArray tokens;
    spare->getTokens(tokens);
    for (exint i = 0; i < tokens.entries(); ++i)
        pairs[py::cast(Text(tokens(i).buffer()))] = Text(spare->getValue(tokens(i)));
    return pairs;
}

py::object conditionOf(const PRM_Template& tmpl, PRM_ConditionalType type)
{
    const PRM_Conditional* condition = tmpl.getConditionalPtr(type);
    UT_String text;
    if (!condition || !condition->getStringFromList(text))
        return py::none();
    return textOrNone(text.nonNullBuffer());
}

} // namespace

py::dict factsOf(const PRM_Template& tmpl)
{
    const PRM_SpareData* spare = tmpl.getSparePtr();
    py::dict facts;
    facts["type"] = textOrNone(PRMtypeName(tmpl.getType()));
    facts["multi"] = textOrNone(multiKind(tmpl));
    facts["token"] = Text(tmpl.getToken());
    facts["label"] = Text(tmpl.getLabel());
    facts["size"] = tmpl.getVectorSize();
    facts["extended"] = static_cast<int>(tmpl.getTypeExtended());
    facts["defaults"] = defaultsOf(tmpl);
    facts["menu"] = menuOf(tmpl.getChoiceListPtr());
    facts["range"] = rangeOf(tmpl.getRangePtr());
    facts["spare"] = spareOf(spare);
    facts["callback_python"] = spare && spare->getCallbackLanguage() == CH_PYTHON_SCRIPT;
    facts["help"] = textOrNone(tmpl.getHelpText());
    facts["disable_when"] = conditionOf(tmpl, PRM_CONDTYPE_DISABLE);
    facts["hide_when"] = conditionOf(tmpl, PRM_CONDTYPE_HIDE);
    facts["invisible"] = tmpl.getInvisible();
    facts["join_next"] = tmpl.getJoinNext();
    facts["no_label"] = tmpl.getLabelNone() || tmpl.getTypeExtended() == PRM_TYPE_NO_LABEL;
    facts["children"] =
        tmpl.isMultiParm() ? py::object(factsOfList(tmpl.getMultiParmTemplate())) : py::none();
    return facts;
}

py::list factsOfList(const PRM_Template* templates)
{
    py::list facts;
    for (; templates && templates->getType() != PRM_LIST_TERMINATOR; ++templates)
        facts.append(factsOf(*templates));
    return facts;
}

} // namespace python
} // namespace standin
