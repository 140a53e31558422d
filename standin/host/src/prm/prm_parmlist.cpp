#include <PRM/PRM_ParmList.h>

#include "prm/prm_channels.h"
#include "prm/prm_parm_data.h"

#include <PRM/PRM_ParmOwner.h>

#include <algorithm>
#include <cstring>

PRM_ParmList::PRM_ParmList(PRM_ParmOwner* owner)
    : m_owner(owner), m_notifying(true), m_alive(std::make_shared<const char>('\0'))
{
}

PRM_ParmList::~PRM_ParmList() {}

void PRM_ParmList::addTemplates(PRM_Template* templates, bool spare)
{
    for (PRM_Template* tmpl = templates; tmpl && tmpl->getType() != PRM_LIST_TERMINATOR; ++tmpl)
    {
        m_topLevel.emplace_back(new PRM_Parm(*this, tmpl, nullptr));
        m_topLevel.back()->m_spare = spare;
        m_topLevel.back()->makeDefaultInstances();
    }
    rebuild();
}

bool PRM_ParmList::removeSpareParm(PRM_Parm* parm)
{
    const auto found = std::find_if(m_topLevel.begin(), m_topLevel.end(),
                                    [&](const std::unique_ptr<PRM_Parm>& held)
                                    { return held.get() == parm && held->m_spare; });
    if (found == m_topLevel.end())
        return false;
    m_topLevel.erase(found);
    rebuild();
    return true;
}

void PRM_ParmList::rebuild()
{
    m_parms.clear();
    m_indexOfToken.clear();
    for (const std::unique_ptr<PRM_Parm>& parm : m_topLevel)
        m_parms.push_back(parm.get());
    for (const std::unique_ptr<PRM_Parm>& parm : m_topLevel)
        appendInstances(*parm);
    for (std::size_t i = 0; i < m_parms.size(); ++i)
    {
        m_parms[i]->m_index = static_cast<int>(i);
        m_indexOfToken.emplace(m_parms[i]->m_token, static_cast<int>(i));
    }
}

void PRM_ParmList::appendInstances(PRM_Parm& multi)
{
    for (const PRM_Parm::Instance& instance : multi.m_instances)
        for (const std::unique_ptr<PRM_Parm>& child : instance)
            m_parms.push_back(child.get());
    for (const PRM_Parm::Instance& instance : multi.m_instances)
        for (const std::unique_ptr<PRM_Parm>& child : instance)
            appendInstances(*child);
}

PRM_Parm* PRM_ParmList::getParmPtr(const char* token) { return getParmPtr(getParmIndex(token)); }

int PRM_ParmList::getParmIndex(const PRM_Parm* parm) const
{
    const auto found = std::find(m_parms.begin(), m_parms.end(), parm);
    return found == m_parms.end() ? -1 : static_cast<int>(found - m_parms.begin());
}

int PRM_ParmList::getParmIndex(const char* token) const
{
    // What has no token is found by index only.
    if (!token || !*token)
        return -1;
    const auto found = m_indexOfToken.find(token);
    return found == m_indexOfToken.end() ? -1 : found->second;
}

namespace
{
int findComponent(const PRM_Parm& parm, const std::string& suffix)
{
    for (int i = 0; i < parm.getVectorSize(); ++i)
        if (PRMchannelSuffix(parm.getType(), parm.getVectorSize(), i) == suffix)
            return i;
    return -1;
}

/// No kind's suffix is longer than this.
const std::size_t longest_suffix = 4;
} // namespace

int PRM_ParmList::getParmIndexFromChannel(const char* channel, int* component, bool) const
{
    int found = 0;
    int index = getParmIndex(channel);
    const std::string name = channel ? channel : "";
    for (std::size_t size = 1; index < 0 && size <= longest_suffix && size < name.size(); ++size)
    {
        const std::size_t end = name.size() - size;
        const int candidate = getParmIndex(name.substr(0, end).c_str());
        found = candidate < 0 ? -1 : findComponent(*getParmPtr(candidate), name.substr(end));
        if (found >= 0)
            index = candidate;
    }
    if (component && index >= 0)
        *component = found;
    return index;
}

PRM_Parm* PRM_ParmList::getParmPtrFromChannel(const char* channel, int* component)
{
    return getParmPtr(getParmIndexFromChannel(channel, component));
}

void PRM_ParmList::tellChanged(int index)
{
    if (m_notifying && m_owner)
        m_owner->parmChanged(index);
}

void PRM_ParmList::tellChanged(const std::vector<int>& indices)
{
    // The node may be deleted when it hears of a change.
    const std::weak_ptr<const char> alive = m_alive;
    for (const int index : indices)
    {
        if (alive.expired())
            return;
        if (index < getEntries())
            tellChanged(index);
    }
}
