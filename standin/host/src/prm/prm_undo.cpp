#include "prm/prm_undo.h"

#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>
#include <UT/UT_UndoManager.h>

#include <algorithm>

const char* const PRM_CHANGE_LABEL = "Parameter Change";

namespace
{
template <typename Component>
std::size_t memoryOf(const Component& component)
{
    // A parsed expression is a small tree: a few nodes for each token of its text.
    const std::size_t tree = component.parsed ? 16 * component.text.size() : 0;
    return sizeof(component) + component.text.size() + tree;
}

template <typename Instances>
std::size_t memoryOfAll(const Instances& instances)
{
    std::size_t memory = 0;
    for (const auto& instance : instances)
        for (const auto& parm : instance)
            memory += sizeof(parm) + parm.getMemoryUsage();
    return memory;
}
} // namespace

std::size_t PRM_Parm::Values::getMemoryUsage() const
{
    std::size_t memory = memoryOfAll(instances);
    for (const Component& component : components)
        memory += memoryOf(component);
    return memory;
}

PRM_Parm::Place::Place(const PRM_Parm& parm)
    : m_list(parm.m_list),
      m_alive(parm.m_list->getLifetime()),
      m_identity(m_alive.lock().get()),
      m_token(parm.m_token),
      m_index(parm.m_index)
{
}

PRM_Parm* PRM_Parm::Place::find() const
{
    if (!isAlive())
        return nullptr;
    PRM_Parm* parm = m_list->getParmPtr(m_index);
    return parm && parm->m_token == m_token ? parm : m_list->getParmPtr(m_token.c_str());
}

std::string PRM_Parm::Place::key() const
{
    return std::string(reinterpret_cast<const char*>(&m_identity), sizeof(m_identity)) + m_token + "@" +
           std::to_string(m_index);
}

// Values

PRM_Parm::ValueUndo::ValueUndo(const PRM_Parm& parm, int component, const Component& before)
    : m_place(parm), m_component(component), m_before(before)
{
}

void PRM_Parm::ValueUndo::undo()
{
    PRM_Parm* parm = m_place.find();
    const Component* present = parm ? parm->findComponent(m_component) : nullptr;
    if (!present)
        return;
    if (!m_after)
        m_after.reset(new Component(*present));
    parm->restore(m_component, m_before);
}

void PRM_Parm::ValueUndo::redo()
{
    PRM_Parm* parm = m_place.find();
    if (parm && m_after)
        parm->restore(m_component, *m_after);
}

std::size_t PRM_Parm::ValueUndo::getMemoryUsage() const
{
    return sizeof(*this) + m_place.getMemoryUsage() + memoryOf(m_before);
}

std::string PRM_Parm::ValueUndo::getTarget() const
{
    return m_place.key() + ":" + std::to_string(m_component);
}

void PRM_Parm::restore(int index, const Component& value)
{
    if (Component* component = findComponent(index))
    {
        *component = value;
        valueChanged(index, value, true);
    }
}

void PRM_Parm::recordValue(int index, const Component& before) const
{
    UT_UndoManager& undos = *UTgetUndoManager();
    const Component* component = findComponent(index);
    if (undos.isRecording() && component && !(*component == before))
        undos.addToUndoBlock(std::unique_ptr<UT_Undo>(new ValueUndo(*this, index, before)), PRM_CHANGE_LABEL);
}

// Instances

PRM_Parm::InstancesUndo::InstancesUndo(const PRM_Parm& multi, int position,
                                       std::vector<std::vector<Values>> before, int count)
    : m_place(multi), m_position(position), m_before(std::move(before)), m_count(count)
{
}

void PRM_Parm::InstancesUndo::undo()
{
    PRM_Parm* multi = m_place.find();
    if (!multi || m_position + m_count > multi->getMultiParmNumItems())
        return;
    m_after = multi->valuesOfInstances(m_position, m_count);
    multi->replaceInstances(m_position, m_count, m_before);
}

void PRM_Parm::InstancesUndo::redo()
{
    PRM_Parm* multi = m_place.find();
    const int present = static_cast<int>(m_before.size());
    const bool noted = static_cast<int>(m_after.size()) == m_count;
    if (multi && noted && m_position + present <= multi->getMultiParmNumItems())
        multi->replaceInstances(m_position, present, m_after);
}

std::size_t PRM_Parm::InstancesUndo::getMemoryUsage() const
{
    return sizeof(*this) + m_place.getMemoryUsage() + memoryOfAll(m_before);
}

void PRM_Parm::recordInstances(int position, std::vector<std::vector<Values>> before, int count) const
{
    UT_UndoManager& undos = *UTgetUndoManager();
    if (undos.isRecording() && (count > 0 || !before.empty()))
        undos.addToUndoBlock(
            std::unique_ptr<UT_Undo>(new InstancesUndo(*this, position, std::move(before), count)),
            PRM_CHANGE_LABEL);
}

std::vector<std::vector<PRM_Parm::Values>> PRM_Parm::valuesOfInstances(int position, int count) const
{
    std::vector<std::vector<Values>> instances;
    for (int i = position; i < position + count; ++i)
    {
        instances.emplace_back();
        for (const std::unique_ptr<PRM_Parm>& parm : m_instances[static_cast<std::size_t>(i)])
            instances.back().push_back(parm->values());
    }
    return instances;
}

PRM_Parm::Values PRM_Parm::values() const
{
    return Values{m_components, valuesOfInstances(0, getMultiParmNumItems())};
}

// Tells nobody: that is for who puts the whole in place. Its instances are not in the list yet.
void PRM_Parm::takeValues(const Values& values)
{
    for (std::size_t i = 0; i < std::min(m_components.size(), values.components.size()); ++i)
        m_components[i] = values.components[i];
    if (!isMultiParm())
        return;
    m_instances.clear();
    putInstances(0, values.instances);
}

void PRM_Parm::putInstances(int position, const std::vector<std::vector<Values>>& instances)
{
    // Not spread like new keys of a ramp: that looks at neighbours, whose expressions may ask for what was just
    // erased.
    addInstances(position, static_cast<int>(instances.size()));
    for (std::size_t i = 0; i < instances.size(); ++i)
    {
        Instance& made = m_instances[static_cast<std::size_t>(position) + i];
        for (std::size_t j = 0; j < std::min(made.size(), instances[i].size()); ++j)
            made[j]->takeValues(instances[i][j]);
    }
}

void PRM_Parm::replaceInstances(int position, int count, const std::vector<std::vector<Values>>& instances)
{
    eraseInstances(position, count);
    putInstances(position, instances);
    instancesChanged(position, static_cast<int>(instances.size()), true);
}
