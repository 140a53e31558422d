#include <OP/OP_Parameters.h>

#include "ut/ut_held.h"

#include <vector>

bool OP_Parameters::enableParm(const char* name, int state, int vi)
{
    return enableParm(getParmIndex(name), state, vi);
}

bool OP_Parameters::enableParm(int index, int state, int vi)
{
    PRM_Parm* parm = m_parms->getParmPtr(index);
    return parm && parm->setEnableState(state != 0, vi);
}

bool OP_Parameters::setVisibleState(const char* name, bool state, int vi)
{
    return setVisibleState(getParmIndex(name), state, vi);
}

bool OP_Parameters::setVisibleState(int index, bool state, int vi)
{
    PRM_Parm* parm = m_parms->getParmPtr(index);
    return parm && parm->setVisibleState(state, vi);
}

bool OP_Parameters::updateParmDisableConditional(PRM_Parm& parm, bool force, const UT_StringArray* skip)
{
    const PRM_Template* tmpl = parm.getTemplatePtr();
    const PRM_Conditional* conditional = tmpl->getConditionalPtr(PRM_CONDTYPE_DISABLE);
    if (!conditional)
        return force && parm.setEnableState(true);
    return parm.setEnableState(!conditional->eval(parm, parm.getParmList(), skip));
}

bool OP_Parameters::updateParmHideConditional(PRM_Parm& parm, const UT_StringArray* skip)
{
    const PRM_Template* tmpl = parm.getTemplatePtr();
    const PRM_Conditional* conditional = tmpl->getConditionalPtr(PRM_CONDTYPE_HIDE);
    return conditional && parm.setVisibleState(!conditional->eval(parm, parm.getParmList(), skip));
}

bool OP_Parameters::updateParmsFlags() { return false; }

namespace
{
/// The states of all components, for telling whether any changed.
std::vector<bool> statesOf(const PRM_ParmList& parms)
{
    std::vector<bool> states;
    for (int i = 0; i < parms.getEntries(); ++i)
    {
        const PRM_Parm& parm = *parms.getParmPtr(i);
        for (int vi = 0; vi < parm.getVectorSize(); ++vi)
        {
            states.push_back(parm.getEnableState(vi));
            states.push_back(parm.getVisibleState(vi));
        }
    }
    return states;
}
} // namespace

bool OP_Parameters::refreshParms()
{
    // A node that sets parameters while it refreshes would be refreshed for that again.
    if (m_refreshing)
        return false;
    const UT_Held held(m_refreshing);
    const std::vector<bool> before = statesOf(*m_parms);
    for (int i = 0; i < getNumParms(); ++i)
    {
        updateParmHideConditional(getParm(i));
        updateParmDisableConditional(getParm(i), false);
    }
    updateParmsFlags();
    return statesOf(*m_parms) != before;
}
