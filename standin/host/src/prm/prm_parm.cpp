#include <PRM/PRM_Parm.h>

#include "prm/prm_channels.h"
#include "prm/prm_parm_data.h"

#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>

#include <algorithm>
#include <cstring>

namespace
{
/// A folder set has one value, the open tab, however many tabs it has. What has no basic type has no value.
int countComponents(const PRM_Template& tmpl)
{
    if (tmpl.getType().isSwitcher())
        return 1;
    return tmpl.getType().getBasicType() == PRM_BASIC_NONE ? 0 : tmpl.getVectorSize();
}
} // namespace

PRM_Parm::PRM_Parm(PRM_ParmList& list, PRM_Template* tmpl, PRM_Parm* parent)
    : m_list(&list),
      m_template(tmpl),
      m_parent(parent),
      m_instanceNumber(0),
      m_index(-1),
      m_spare(parent && parent->m_spare),
      m_token(tmpl->getToken()),
      m_label(tmpl->getLabel())
{
    const auto states = static_cast<std::size_t>(std::max(tmpl->getVectorSize(), 1));
    m_disabled.assign(states, false);
    m_hidden.assign(states, false);
    if (tmpl->isMultiParm())
        return;
    for (int i = 0; i < countComponents(*tmpl); ++i)
        m_components.push_back(makeDefault(i));
}

PRM_Parm::~PRM_Parm() {}

void PRM_Parm::nameFor(const UT_IntArray& indices)
{
    m_token = PRMinstanceToken(m_template->getToken(), indices);
    m_label = PRMinstanceLabel(m_template->getLabel(), indices);
}

UT_StringHolder PRM_Parm::getChannelToken(int component) const
{
    return UT_StringHolder(m_token + PRMchannelSuffix(getType(), getVectorSize(), component));
}

void PRM_Parm::getChannelToken(UT_String& token, int component) const
{
    token.harden(getChannelToken(component));
}

PRM_Parm::Component* PRM_Parm::findComponent(int component)
{
    const bool there = component >= 0 && component < static_cast<int>(m_components.size());
    return there ? &m_components[static_cast<std::size_t>(component)] : nullptr;
}

const PRM_Parm::Component* PRM_Parm::findComponent(int component) const
{
    return const_cast<PRM_Parm*>(this)->findComponent(component);
}

int PRM_Parm::findMenuItem(const char* token) const
{
    const PRM_ChoiceList* menu = getTemplatePtr()->getChoiceListPtr();
    if (!menu || !token || !*token)
        return -1;
    PRM_ParmOwner* owner = m_list->getOwner();
    const PRM_Name* names = nullptr;
    menu->getChoiceNames(names, owner ? owner->parmData() : nullptr, getSparePtr(), this, true);
    for (int i = 0; names[i].getToken() && *names[i].getToken(); ++i)
        if (std::strcmp(names[i].getToken(), token) == 0)
            return i;
    return -1;
}

bool PRM_Parm::isActionMenu() const
{
    return getType().hasOrdinalType(PRM_ORD_CALLBACK) && getTemplatePtr()->getChoiceListPtr();
}

void PRM_Parm::getMultiInstanceIndex(UT_IntArray& indices) const
{
    indices.clear();
    for (const PRM_Parm* parm = this; parm->m_parent; parm = parm->m_parent)
        indices.insert(parm->m_instanceNumber, 0);
}

namespace
{
typedef std::vector<bool> Flags;

bool isValid(const Flags& flags, int component)
{
    return component >= 0 && component < static_cast<int>(flags.size());
}

/// Whether the flag is clear: of one component, or of any when `component` is negative.
bool isClear(const Flags& flags, int component)
{
    if (component >= 0)
        return isValid(flags, component) && !flags[static_cast<std::size_t>(component)];
    return std::find(flags.begin(), flags.end(), false) != flags.end();
}

bool set(Flags& flags, bool on, int component)
{
    const Flags before = flags;
    if (component < 0)
        flags.assign(flags.size(), on);
    else if (isValid(flags, component))
        flags[static_cast<std::size_t>(component)] = on;
    return flags != before;
}
} // namespace

bool PRM_Parm::getEnableState(int component) const { return isClear(m_disabled, component); }

bool PRM_Parm::getVisibleState(int component) const
{
    return !m_template->getInvisible() && isClear(m_hidden, component);
}

bool PRM_Parm::setEnableState(bool on, int component) { return set(m_disabled, !on, component); }

bool PRM_Parm::setVisibleState(bool on, int component) { return set(m_hidden, !on, component); }
