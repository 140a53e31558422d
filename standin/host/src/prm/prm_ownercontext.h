#pragma once
#include <CH/CH_Expression.h>
#include <PRM/PRM_ParmList.h>

class PRM_ParmOwner;

/// What an expression sees of a node: its variables, its channels and those of other nodes.
class PRM_OwnerContext : public CH_ExprContext
{
public:
    /// The list's owner answers; without one the list and the session do.
    PRM_OwnerContext(PRM_ParmList& list, fpreal evalTime, int evalThread);

    bool getVariable(const char* name, CH_ExprValue& value) override;
    bool getChannel(const char* path, bool asText, CH_ExprValue& value, std::string& error) override;

    /// Whether a channel that was asked for depends on time.
    bool sawTime() const { return m_sawTime; }
    /// From now on, ask that of every channel.
    void watchTime() { m_watchTime = true; }

private:
    PRM_ParmList& m_parms;
    bool m_watchTime;
    bool m_sawTime;
};
