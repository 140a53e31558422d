#pragma once
// How changes of parameters are recorded for undo.
#include "prm/prm_parm_data.h"

#include <UT/UT_Undo.h>

#include <string>
#include <vector>

/// Label of the step that one change makes.
extern const char* const PRM_CHANGE_LABEL;

/// The values of a parameter: its components, or the parameters of its instances.
struct PRM_Parm::Values
{
    std::vector<Component> components;
    std::vector<std::vector<Values>> instances;

    std::size_t getMemoryUsage() const;
};

/// A parameter of a node, found again by its token: parameters of instances come and go while steps are undone. Several
/// may share a token, or have none; of those it is the one at the same index.
class PRM_Parm::Place
{
public:
    explicit Place(const PRM_Parm& parm);

    bool isAlive() const { return !m_alive.expired(); }
    /// Null when the node or the parameter is gone.
    PRM_Parm* find() const;
    /// A text that no other parameter has while this lives.
    std::string key() const;
    std::size_t getMemoryUsage() const { return sizeof(*this) + m_token.size(); }

private:
    PRM_ParmList* m_list;
    std::weak_ptr<const char> m_alive;
    const char* m_identity; // only compared; it belongs to no other list as long as the pointer above is kept
    std::string m_token;
    int m_index;
};

/// A new value or expression of one component.
class PRM_Parm::ValueUndo : public UT_Undo
{
public:
    ValueUndo(const PRM_Parm& parm, int component, const Component& before);

    void undo() override;
    void redo() override;
    bool isAlive() const override { return m_place.isAlive(); }
    std::size_t getMemoryUsage() const override;
    std::string getTarget() const override;

private:
    Place m_place;
    int m_component;
    Component m_before;
    std::unique_ptr<Component> m_after; // noted when the change is taken back first
};

/// Instances of a multi-parameter that were put in place of others.
class PRM_Parm::InstancesUndo : public UT_Undo
{
public:
    /// @param before  values of the instances that were at `position`
    /// @param count   number of instances that are there now
    InstancesUndo(const PRM_Parm& multi, int position, std::vector<std::vector<Values>> before, int count);

    void undo() override;
    void redo() override;
    bool isAlive() const override { return m_place.isAlive(); }
    std::size_t getMemoryUsage() const override;
    std::string getTarget() const override { return std::string(); }

private:
    Place m_place;
    int m_position;
    std::vector<std::vector<Values>> m_before;
    std::vector<std::vector<Values>> m_after; // noted when the change is taken back first
    int m_count;
};
