// Multi-parameters: instances, their numbers, and the keys of ramps.
#include "prm/prm_channels.h"
#include "prm/prm_undo.h"

#include <CH/CH_Manager.h>
#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>
#include <PRM/PRM_Shared.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_IntArray.h>
#include <UT/UT_UndoManager.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{
PRM_Range unit_range(PRM_RANGE_UI, 0, PRM_RANGE_UI, 1);
}

PRM_Parm::RampTemplates::RampTemplates(const PRM_Template& ramp)
{
    const bool color = ramp.isRampTypeColor();
    const char* const suffixes[] = {"#pos", color ? "#c" : "#value", "#interp"};
    const char* const labels[] = {"Position", color ? "Color" : "Value", "Interpolation"};
    for (int i = 0; i < PRM_RAMP_NUM_PARMS; ++i)
    {
        tokens[i] = std::string(ramp.getToken()) + suffixes[i];
        names[i] = PRM_Name(tokens[i].c_str(), labels[i]);
    }
    templates[PRM_RAMP_PARM_POS] =
        PRM_Template(PRM_FLT, 1, &names[PRM_RAMP_PARM_POS], PRMzeroDefaults, nullptr, &unit_range);
    templates[PRM_RAMP_PARM_VAL] =
        PRM_Template(color ? PRM_RGB : PRM_FLT, color ? 3 : 1, &names[PRM_RAMP_PARM_VAL], PRMzeroDefaults,
                     nullptr, &unit_range);
    templates[PRM_RAMP_PARM_INTERP] =
        PRM_Template(PRM_ORD, 1, &names[PRM_RAMP_PARM_INTERP], PRMoneDefaults, PRMgetRampInterpMenu());
}

PRM_Template* PRM_Parm::childTemplates() const
{
    return m_rampTemplates ? m_rampTemplates->templates : m_template->getMultiParmTemplate();
}

int PRM_Parm::defaultInstanceCount() const
{
    const PRM_Default* count = getTemplatePtr()->getDefault(0);
    const fpreal wanted = count ? count->getFloat() : 0;
    return static_cast<int>(std::max(0.0, std::min(wanted, static_cast<fpreal>(PRM_MAX_INSTANCES))));
}

void PRM_Parm::makeDefaultInstances()
{
    if (!isMultiParm())
        return;
    if (isRampType() && !m_template->getMultiParmTemplate())
        m_rampTemplates.reset(new RampTemplates(*m_template));
    insertInstances(0, defaultInstanceCount());
}

PRM_Parm::Instance PRM_Parm::makeInstance()
{
    Instance instance;
    PRM_Template* tmpl = childTemplates();
    for (; tmpl && tmpl->getType() != PRM_LIST_TERMINATOR; ++tmpl)
    {
        instance.emplace_back(new PRM_Parm(*m_list, tmpl, this));
        instance.back()->makeDefaultInstances();
    }
    return instance;
}

void PRM_Parm::addInstances(int position, int count)
{
    std::vector<Instance> made;
    made.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i)
        made.push_back(makeInstance());
    m_instances.insert(m_instances.begin() + position, std::make_move_iterator(made.begin()),
                       std::make_move_iterator(made.end()));
    renumber(position);
}

void PRM_Parm::insertInstances(int position, int count)
{
    addInstances(position, count);
    if (m_rampTemplates)
        spreadRampKeys(position, count);
}

/// Takes them out of the list as well: making others may run menu scripts, which may look at any parameter.
void PRM_Parm::eraseInstances(int position, int count)
{
    const auto first = m_instances.begin() + position;
    m_instances.erase(first, first + count);
    if (count > 0)
        m_list->rebuild();
}

void PRM_Parm::renumber(int first)
{
    UT_IntArray indices;
    getMultiInstanceIndex(indices);
    indices.append(0);
    for (int i = first; i < getMultiParmNumItems(); ++i)
    {
        indices.last() = getMultiStartOffset() + i;
        for (const std::unique_ptr<PRM_Parm>& child : m_instances[static_cast<std::size_t>(i)])
        {
            child->m_instanceNumber = indices.last();
            child->nameFor(indices);
            child->renumber(0);
        }
    }
}

bool PRM_Parm::refuseCount(fpreal count)
{
    if (!(count > PRM_MAX_INSTANCES))
        return false;
    if (PRM_ParmOwner* owner = m_list->getOwner())
        owner->setParmError(*this, 0,
                            CHprintNumber(count, 15) + " instances are too many; it can have up to " +
                                std::to_string(PRM_MAX_INSTANCES));
    return true;
}

bool PRM_Parm::setInstanceCount(fpreal wanted, bool propagate)
{
    if (refuseCount(wanted))
        return false;
    const int count = wanted > 0 ? static_cast<int>(wanted) : 0;
    const int before = getMultiParmNumItems();
    const UT_AutoUndoBlock step(PRM_CHANGE_LABEL, ANYLEVEL);
    const int kept = std::min(count, before);
    recordInstances(kept, valuesOfInstances(kept, before - kept), count - kept);
    m_instances.resize(static_cast<std::size_t>(kept));
    insertInstances(kept, count - kept);
    instancesChanged(kept, count - kept, propagate);
    return true;
}

bool PRM_Parm::insertMultiParmItem(int position)
{
    const bool good = isMultiParm() && position >= 0 && position <= getMultiParmNumItems();
    if (!good || refuseCount(getMultiParmNumItems() + 1))
        return false;
    const UT_AutoUndoBlock step(PRM_CHANGE_LABEL, ANYLEVEL);
    recordInstances(position, std::vector<std::vector<Values>>(), 1);
    insertInstances(position, 1);
    instancesChanged(position, 1, true);
    return true;
}

bool PRM_Parm::removeMultiParmItem(int position)
{
    if (!isMultiParm() || position < 0 || position >= getMultiParmNumItems())
        return false;
    const UT_AutoUndoBlock step(PRM_CHANGE_LABEL, ANYLEVEL);
    recordInstances(position, valuesOfInstances(position, 1), 0);
    m_instances.erase(m_instances.begin() + position);
    renumber(position);
    instancesChanged(position, 0, true);
    return true;
}

/// After instances came or went: `count` new ones at `first`. Last in every change: the node may be deleted when it
/// hears of it.
void PRM_Parm::instancesChanged(int first, int count, bool propagate)
{
    m_list->rebuild();
    if (PRM_ParmOwner* owner = m_list->getOwner())
        owner->setParmError(*this, 0, std::string());
    std::vector<int> changed(1, m_index);
    // Of many new instances listeners hear once: each event may make them read all instances.
    if (count > 1)
        changed.push_back(PRM_MANY_CHANGED);
    else
        collectIndices(first, count, changed);
    if (propagate)
        m_list->tellChanged(changed);
}

void PRM_Parm::collectIndices(int first, int count, std::vector<int>& indices) const
{
    for (int i = first; i < first + count; ++i)
        for (const std::unique_ptr<PRM_Parm>& child : m_instances[static_cast<std::size_t>(i)])
        {
            indices.push_back(child->m_index);
            child->collectIndices(0, child->getMultiParmNumItems(), indices);
        }
}

int PRM_Parm::getMultiParmInstanceSize() const
{
    return isMultiParm() ? PRM_Template::countTemplates(childTemplates()) : 0;
}

PRM_Parm* PRM_Parm::getMultiParm(int n) const
{
    const int size = getMultiParmInstanceSize();
    if (n < 0 || size == 0 || n / size >= getMultiParmNumItems())
        return nullptr;
    return m_instances[static_cast<std::size_t>(n / size)][static_cast<std::size_t>(n % size)].get();
}

void PRM_Parm::instanceMultiString(UT_String& text, const UT_IntArray& indices, bool toToken)
{
    const std::string given = text.toStdString();
    text.harden((toToken ? PRMinstanceToken(given, indices) : PRMfillInstances(given, indices)).c_str());
}

namespace
{
fpreal numberOf(const PRM_Parm& parm, int component)
{
    fpreal value = 0;
    parm.getValue(CHgetEvalTime(), value, component, SYSgetSTID());
    return value;
}
} // namespace

/// New keys of a new ramp lie evenly from 0 to 1, and so do their values; one put between two others lies between
/// them; one put at an end lies there, with the value of its neighbour.
void PRM_Parm::spreadRampKeys(int first, int count)
{
    const int after = first + count;
    const bool hasLeft = first > 0;
    const bool hasRight = after < getMultiParmNumItems();
    for (int i = 0; i < count; ++i)
    {
        const int place = first + i;
        Instance& key = m_instances[static_cast<std::size_t>(place)];
        const fpreal even = count > 1 ? static_cast<fpreal>(i) / (count - 1) : 0;
        const fpreal between = static_cast<fpreal>(i + 1) / (count + 1);
        if (hasLeft || hasRight)
        {
            const auto left = static_cast<std::size_t>(hasLeft ? first - 1 : after);
            const auto right = static_cast<std::size_t>(hasRight ? after : first - 1);
            placeRampKey(key, m_instances[left], m_instances[right], between);
        }
        else
            placeRampKey(key, even);
        if (hasLeft != hasRight)
            key[PRM_RAMP_PARM_POS]->m_components[0].number = hasLeft ? 1 : 0;
    }
}

void PRM_Parm::placeRampKey(Instance& key, fpreal place)
{
    for (const int parm : {PRM_RAMP_PARM_POS, PRM_RAMP_PARM_VAL})
        for (Component& component : key[static_cast<std::size_t>(parm)]->m_components)
            component.number = place;
}

void PRM_Parm::placeRampKey(Instance& key, const Instance& left, const Instance& right, fpreal place)
{
    for (const int parm : {PRM_RAMP_PARM_POS, PRM_RAMP_PARM_VAL})
    {
        const auto at = static_cast<std::size_t>(parm);
        for (int c = 0; c < key[at]->getVectorSize(); ++c)
        {
            const fpreal from = numberOf(*left[at], c);
            key[at]->m_components[static_cast<std::size_t>(c)].number =
                from + place * (numberOf(*right[at], c) - from);
        }
    }
    key[PRM_RAMP_PARM_INTERP]->m_components[0].number = numberOf(*left[PRM_RAMP_PARM_INTERP], 0);
}
