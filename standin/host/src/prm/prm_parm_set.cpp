#include "prm/prm_channels.h"
#include "prm/prm_undo.h"

#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_UndoManager.h>

#include <algorithm>
#include <cmath>

PRM_Parm::Component PRM_Parm::makeDefault(int index) const
{
    Component component;
    if (getType().isSwitcher())
        return component; // its defaults describe the tabs; the first one is open
    const PRM_Default* given = getTemplatePtr()->getDefault(index);
    if (!given)
        return component;
    const char* text = given->getString() ? given->getString() : "";
    const bool literal = given->getStringMeaning() == CH_STRING_LITERAL;
    if (!literal && *text)
        setExpressionOf(component, text, CHstringMeaningToExprLanguage(given->getStringMeaning()));
    else if (getType().isStringType())
        component.text = text;
    else if (!*text)
        setNumber(component, given->getFloat());
    else if (!setLiteral(component, text))
        setExpressionOf(component, text, CH_OLD_EXPR_LANGUAGE);
    return component;
}

void PRM_Parm::setNumber(Component& component, fpreal value) const
{
    component = Component();
    const bool whole = getType().isOrdinalType() || getType().hasFloatType(PRM_FLOAT_INTEGER);
    component.number = whole ? std::trunc(value) : value;
    // A text keeps what the number looks like.
    if (getType().isStringType())
        component.text = CHprintNumber(value, 15);
}

void PRM_Parm::setExpressionOf(Component& component, const char* text, CH_ExprLanguage language)
{
    component = Component();
    component.isExpression = true;
    component.language = language;
    component.text = text;
    if (language == CH_OLD_EXPR_LANGUAGE)
        component.parsed = std::make_shared<const CH_Expression>(component.text);
}

namespace
{
const char* const toggle_words[] = {"off", "on"};

std::vector<std::string> wordsOf(const std::string& text)
{
    std::vector<std::string> words(1);
    for (const char c : text)
    {
        if (c == ' ')
            words.emplace_back();
        else
            words.back() += c;
    }
    return words;
}
} // namespace

bool PRM_Parm::readLiteral(const char* text, fpreal& value) const
{
    if (CHreadNumber(text, value))
        return true;
    if (!getType().isOrdinalType())
        return false;
    if (isButtonMask())
        return readButtonMask(text, value);
    const int item = findMenuItem(text);
    if (item >= 0)
        value = item;
    if (item >= 0 || !getType().hasOrdinalType(PRM_ORD_TOGGLE))
        return item >= 0;
    for (int i = 0; i < 2; ++i)
        if (std::string(text) == toggle_words[i])
        {
            value = i;
            return true;
        }
    return false;
}

bool PRM_Parm::readButtonMask(const char* text, fpreal& value) const
{
    fpreal mask = 0;
    for (const std::string& word : wordsOf(text))
    {
        const int item = findMenuItem(word.c_str());
        if (item < 0 || item > 30)
            return false;
        const auto bit = static_cast<fpreal>(1u << item);
        if (std::fmod(std::floor(mask / bit), 2) == 0)
            mask += bit;
    }
    value = mask;
    return true;
}

bool PRM_Parm::setLiteral(Component& component, const char* text) const
{
    if (getType().isStringType())
    {
        component = Component();
        component.text = text;
        return true;
    }
    fpreal value = 0;
    if (!readLiteral(text, value))
        return false;
    setNumber(component, value);
    return true;
}

void PRM_Parm::valueChanged(int component, const Component& before, bool propagate)
{
    // What listeners change in turn is undone together with this.
    const UT_AutoUndoBlock step(PRM_CHANGE_LABEL, ANYLEVEL);
    recordValue(component, before);
    if (PRM_ParmOwner* owner = m_list->getOwner())
        owner->setParmError(*this, component, std::string());
    // Last: the node may change its parameters, or be deleted, when it hears of it.
    if (propagate)
        m_list->tellChanged(m_index);
}

bool PRM_Parm::setValue(fpreal, fpreal value, bool propagate, PRM_AddKeyType, int index)
{
    if (isMultiParm() && index == 0)
        return setInstanceCount(value, propagate);
    Component* component = findComponent(index);
    if (!component)
        return false;
    const Component before = *component;
    setNumber(*component, value);
    valueChanged(index, before, propagate);
    return true;
}

bool PRM_Parm::setValue(fpreal time, int32 value, bool propagate, PRM_AddKeyType addKey, int component)
{
    return setValue(time, static_cast<fpreal>(value), propagate, addKey, component);
}

bool PRM_Parm::setValue(fpreal time, int64 value, bool propagate, PRM_AddKeyType addKey, int component)
{
    return setValue(time, static_cast<fpreal>(value), propagate, addKey, component);
}

bool PRM_Parm::setValue(fpreal time, const char* text, CH_StringMeaning meaning, bool propagate,
                        PRM_AddKeyType addKey, int index)
{
    if (!text)
        text = "";
    if (meaning != CH_STRING_LITERAL)
        return setExpression(time, text, CHstringMeaningToExprLanguage(meaning), propagate, index);
    fpreal count = 0;
    if (isMultiParm() && CHreadNumber(text, count))
        return setValue(time, count, propagate, addKey, index);
    Component* component = findComponent(index);
    if (!component)
        return false;
    const Component before = *component;
    if (!setLiteral(*component, text))
        return setExpression(time, text, CH_OLD_EXPR_LANGUAGE, propagate, index);
    valueChanged(index, before, propagate);
    return true;
}

bool PRM_Parm::setExpression(fpreal, const char* text, CH_ExprLanguage language, bool propagate, int index)
{
    Component* component = findComponent(index);
    if (!component)
        return false;
    const Component before = *component;
    setExpressionOf(*component, text ? text : "", language);
    valueChanged(index, before, propagate);
    return true;
}

void PRM_Parm::deleteExpression(fpreal time, int index, bool propagate)
{
    Component* component = findComponent(index);
    if (!component || !component->isExpression)
        return;
    fpreal number = 0;
    UT_String text;
    if (getType().isStringType())
        getValue(time, text, index, true, SYSgetSTID());
    else
        getValue(time, number, index, SYSgetSTID());
    const Component before = *component;
    setNumber(*component, number);
    component->text = getType().isStringType() ? text.toStdString() : std::string();
    valueChanged(index, before, propagate);
}

bool PRM_Parm::hasExpression(int index) const
{
    const Component* component = findComponent(index);
    return component && component->isExpression;
}

const char* PRM_Parm::getExpression(int index) const
{
    return hasExpression(index) ? findComponent(index)->text.c_str() : nullptr;
}

CH_ExprLanguage PRM_Parm::getExpressionLanguage(int index) const
{
    return hasExpression(index) ? findComponent(index)->language : CH_OLD_EXPR_LANGUAGE;
}

bool PRM_Parm::isDefault(int index) const
{
    if (isMultiParm())
        return getMultiParmNumItems() == defaultInstanceCount();
    const Component* component = findComponent(index);
    if (!component)
        return true;
    return *component == makeDefault(index);
}

void PRM_Parm::revertToDefault(fpreal, int index, bool propagate)
{
    const UT_AutoUndoBlock step(PRM_CHANGE_LABEL, ANYLEVEL);
    if (isMultiParm())
    {
        const int count = defaultInstanceCount();
        recordInstances(0, valuesOfInstances(0, getMultiParmNumItems()), count);
        eraseInstances(0, getMultiParmNumItems());
        insertInstances(0, count);
        instancesChanged(0, count, propagate);
        return;
    }
    for (int i = 0; i < static_cast<int>(m_components.size()); ++i)
        if (index < 0 || index == i)
        {
            Component& component = m_components[static_cast<std::size_t>(i)];
            const Component before = component;
            component = makeDefault(i);
            recordValue(i, before);
        }
    const int told = std::max(index, 0);
    if (const Component* component = findComponent(told))
        valueChanged(told, Component(*component), propagate);
}
