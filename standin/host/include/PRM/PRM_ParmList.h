#pragma once
#include <PRM/PRM_Parm.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// The parameters of a node. First one for each template, index = place in the template list; then the spare
/// ones; then those of multi-parameter instances: for each multi-parameter all parameters of its instances in
/// instance order, followed by those of the multi-parameters inside.
class PRM_ParmList
{
public:
    /// `owner` may be null: values then come from defaults and scripts have no node. It must live longer.
    explicit PRM_ParmList(PRM_ParmOwner* owner);
    ~PRM_ParmList();

    /// Appends a parameter for each template up to the terminator. Templates must live as long as the list. A
    /// token that is taken already is found by its first parameter only.
    void addTemplates(PRM_Template* templates, bool spare);
    /// Removes a spare parameter with its instances. False for any other.
    bool removeSpareParm(PRM_Parm* parm);

    PRM_ParmOwner* getOwner() const { return m_owner; }

    int getEntries() const { return static_cast<int>(m_parms.size()); }
    /// Null when out of range, or when no parameter has this token.
    PRM_Parm* getParmPtr(int index)
    {
        return index >= 0 && index < getEntries() ? m_parms[static_cast<std::size_t>(index)] : 0;
    }
    const PRM_Parm* getParmPtr(int index) const { return const_cast<PRM_ParmList*>(this)->getParmPtr(index); }
    PRM_Parm* getParmPtr(const char* token);
    const PRM_Parm* getParmPtr(const char* token) const
    {
        return const_cast<PRM_ParmList*>(this)->getParmPtr(token);
    }
    PRM_Parm* getParmPtr(const PRM_Name& name) { return getParmPtr(name.getToken()); }
    /// -1 when there is none. The pointer is only compared, so one to a parameter that was removed may be asked for.
    int getParmIndex(const PRM_Parm* parm) const;
    int getParmIndex(const char* token) const;
    /// Looks for a channel name, or a token, which stands for component 0.
    int getParmIndexFromChannel(const char* channel, int* component = 0, bool allowAlias = true) const;
    PRM_Parm* getParmPtrFromChannel(const char* channel, int* component = 0);

    /// Expires when the list is destroyed: for who calls out to code that may delete the node.
    std::weak_ptr<const char> getLifetime() const { return m_alive; }

    /// Number of parameters made straight from templates, spare ones among them.
    int getTopLevelEntries() const { return static_cast<int>(m_topLevel.size()); }

    /// While off, changes are stored but the owner is not told. On at first.
    void setNotifying(bool on) { m_notifying = on; }

private:
    friend class PRM_Parm;

    PRM_ParmList(const PRM_ParmList&);
    PRM_ParmList& operator=(const PRM_ParmList&);

    void rebuild();
    void appendInstances(PRM_Parm& multi);
    void tellChanged(int index);
    void tellChanged(const std::vector<int>& indices);

    PRM_ParmOwner* m_owner;
    bool m_notifying;
    std::vector<std::unique_ptr<PRM_Parm>> m_topLevel;
    std::vector<PRM_Parm*> m_parms;
    std::unordered_map<std::string, int> m_indexOfToken;
    std::shared_ptr<const char> m_alive; // expires with the list
};
