#include <PRM/PRM_ParmOwner.h>

#include "prm/prm_ownercontext.h"

#include <CH/CH_Manager.h>

PRM_ParmOwner::~PRM_ParmOwner() {}

PRM_ScriptHooks& PRMscriptHooks()
{
    static PRM_ScriptHooks hooks = {nullptr, nullptr, nullptr};
    return hooks;
}

PRM_OwnerContext::PRM_OwnerContext(PRM_ParmList& list, fpreal evalTime, int evalThread)
    : CH_ExprContext(evalTime, evalThread), m_parms(list), m_watchTime(false), m_sawTime(false)
{
}

bool PRM_OwnerContext::getVariable(const char* name, CH_ExprValue& value)
{
    std::string text;
    PRM_ParmOwner* owner = m_parms.getOwner();
    const bool found = owner ? owner->findVariable(name, text) : CHgetManager()->getVariable(name, text);
    if (found)
        value = CH_ExprValue(text);
    return found;
}

bool PRM_OwnerContext::getChannel(const char* path, bool asText, CH_ExprValue& value, std::string& error)
{
    int component = 0;
    PRM_ParmOwner* owner = m_parms.getOwner();
    const PRM_Parm* parm =
        owner ? owner->findChannel(path, component) : m_parms.getParmPtrFromChannel(path, &component);
    if (!parm)
    {
        error = std::string("there is no parameter \"") + path + "\"";
        return false;
    }
    m_sawTime |= m_watchTime && parm->isTimeDependent();
    if (asText)
    {
        UT_String text;
        parm->getValue(time, text, component, true, thread);
        value = CH_ExprValue(text.toStdString());
        return true;
    }
    fpreal number = 0;
    parm->getValue(time, number, component, thread);
    value = CH_ExprValue(number);
    return true;
}
