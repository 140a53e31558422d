#include <PRM/PRM_Template.h>

#include "prm/prm_channels.h"

#include <UT/UT_StringArray.h>

#include <algorithm>

PRM_Template::PRM_Template(PRM_Type type, int vectorSize, PRM_Name* name, PRM_Default* defaults,
                           PRM_ChoiceList* menu, PRM_Range* range, PRM_Callback callback,
                           PRM_SpareData* spare, int parmGroup, const char* help,
                           PRM_ConditionalBase* conditional)
{
    initialize(type, PRM_TYPE_NONE, PRM_EXPORT_MIN, vectorSize, name, defaults, menu, range, callback, spare,
               parmGroup, help, conditional);
}

PRM_Template::PRM_Template(PRM_Type type, PRM_Export level, int vectorSize, PRM_Name* name,
                           PRM_Default* defaults, PRM_ChoiceList* menu, PRM_Range* range,
                           PRM_Callback callback, PRM_SpareData* spare, int parmGroup, const char* help,
                           PRM_ConditionalBase* conditional)
{
    initialize(type, PRM_TYPE_NONE, level, vectorSize, name, defaults, menu, range, callback, spare,
               parmGroup, help, conditional);
}

PRM_Template::PRM_Template(PRM_Type type, PRM_TypeExtended extended, int vectorSize, PRM_Name* name,
                           PRM_Default* defaults, PRM_ChoiceList* menu, PRM_Range* range,
                           PRM_Callback callback, PRM_SpareData* spare, int parmGroup, const char* help,
                           PRM_ConditionalBase* conditional)
{
    initialize(type, extended, PRM_EXPORT_MIN, vectorSize, name, defaults, menu, range, callback, spare,
               parmGroup, help, conditional);
}

PRM_Template::PRM_Template(PRM_Type type, PRM_TypeExtended extended, PRM_Export level, int vectorSize,
                           PRM_Name* name, PRM_Default* defaults, PRM_ChoiceList* menu, PRM_Range* range,
                           PRM_Callback callback, PRM_SpareData* spare, int parmGroup, const char* help,
                           PRM_ConditionalBase* conditional)
{
    initialize(type, extended, level, vectorSize, name, defaults, menu, range, callback, spare, parmGroup,
               help, conditional);
}

PRM_Template::PRM_Template(PRM_MultiType multi, PRM_Template* children, fpreal uiSize, PRM_Name* name,
                           PRM_Default* count, PRM_Range* range, PRM_SpareData* spare, const char* help,
                           PRM_ConditionalBase* conditional)
{
    initMulti(multi, children, PRM_EXPORT_MIN, uiSize, name, count, range, PRM_Callback(), spare, help,
              conditional);
}

PRM_Template::PRM_Template(PRM_MultiType multi, PRM_Template* children, PRM_Export level, fpreal uiSize,
                           PRM_Name* name, PRM_Default* count, PRM_Range* range, PRM_Callback callback,
                           PRM_SpareData* spare, const char* help, PRM_ConditionalBase* conditional)
{
    initMulti(multi, children, level, uiSize, name, count, range, callback, spare, help, conditional);
}

void PRM_Template::initialize(PRM_Type type, PRM_TypeExtended extended, PRM_Export level, int vectorSize,
                              PRM_Name* name, PRM_Default* defaults, PRM_ChoiceList* menu, PRM_Range* range,
                              PRM_Callback callback, PRM_SpareData* spare, int parmGroup, const char* help,
                              PRM_ConditionalBase* conditional)
{
    m_type = type;
    m_extended = extended;
    m_export = level;
    m_vectorSize = std::max(vectorSize, 0);
    m_parmGroup = parmGroup;
    m_multiType = PRM_MULTITYPE_NONE;
    m_name = name;
    m_defaults = defaults;
    m_menu = menu;
    m_range = range;
    m_spare = spare;
    m_help = help;
    m_conditional = conditional;
    m_children = nullptr;
    m_callback = callback;
}

void PRM_Template::initMulti(PRM_MultiType multi, PRM_Template* children, PRM_Export level, fpreal,
                             PRM_Name* name, PRM_Default* count, PRM_Range* range, PRM_Callback callback,
                             PRM_SpareData* spare, const char* help, PRM_ConditionalBase* conditional)
{
    // Its own value is the number of instances.
    initialize(PRM_INT, PRM_TYPE_NONE, level, 1, name, count, nullptr, range, callback, spare, 1, help,
               conditional);
    m_multiType = multi;
    m_children = children;
}

void PRM_Template::assign(const PRM_Template& source, int vectorSize, PRM_Default* defaults)
{
    *this = source;
    m_vectorSize = std::max(vectorSize, 0);
    m_defaults = defaults;
}

const char* PRM_Template::getToken() const { return m_name && m_name->getToken() ? m_name->getToken() : ""; }

const char* PRM_Template::getLabel() const { return m_name && m_name->getLabel() ? m_name->getLabel() : ""; }

PRM_Default* PRM_Template::getDefault(int component)
{
    return m_defaults && component >= 0 && component < m_vectorSize ? m_defaults + component : nullptr;
}

const PRM_Default* PRM_Template::getDefault(int component) const
{
    return const_cast<PRM_Template*>(this)->getDefault(component);
}

int PRM_Template::getMultiStartOffset() const
{
    const char* first = m_spare ? m_spare->getValue("multistartoffset") : nullptr;
    return first && *first ? UT_String(first).toInt() : 1;
}

UT_StringHolder PRM_Template::getChannelToken(int component) const
{
    return UT_StringHolder(getToken() + PRMchannelSuffix(m_type, m_vectorSize, component));
}

void PRM_Template::getChannelToken(UT_String& token, int component) const
{
    token.harden(getChannelToken(component));
}

namespace
{
bool isEnd(const PRM_Template& tmpl) { return tmpl.getType() == PRM_LIST_TERMINATOR; }

/// Number of templates that the tabs of a folder set hold, folder sets inside with what they hold.
int contentsOf(const PRM_Template& switcher, const PRM_Template* following)
{
    int entries = 0;
    for (int tab = 0; tab < switcher.getVectorSize(); ++tab)
        entries += switcher.getDefault(tab) ? std::max(switcher.getDefault(tab)->getOrdinal(), 0) : 0;
    int count = 0;
    for (; entries > 0 && !isEnd(following[count]); --entries)
    {
        const PRM_Template& tmpl = following[count++];
        if (tmpl.getType().isSwitcher())
            count += contentsOf(tmpl, following + count);
    }
    return count;
}
} // namespace

int PRM_Template::countTemplates(const PRM_Template* list, bool forSwitcher, bool forJoins, bool forRows)
{
    int count = 0;
    for (int i = 0; list && !isEnd(list[i]); ++i)
    {
        const bool joined = forJoins && (list[i].getJoinNext() || PRM_IS_JOIN(list[i].getTypeExtended())) &&
                            !isEnd(list[i + 1]);
        const bool unseen = forRows && list[i].getInvisible();
        count += !joined && !unseen;
        if (forSwitcher && list[i].getType().isSwitcher())
            i += contentsOf(list[i], list + i + 1);
    }
    return count;
}
