#include <OP/OP_Parameters.h>

void OP_Parameters::setInt(int pi, int vi, fpreal t, exint value)
{
    if (PRM_Parm* parm = m_parms->getParmPtr(pi))
        parm->setValue(t, value, true, PRM_AK_NEVER, vi);
}

void OP_Parameters::setInt(const char* name, int vi, fpreal t, exint value)
{
    setInt(getParmIndex(name), vi, t, value);
}

void OP_Parameters::setFloat(int pi, int vi, fpreal t, fpreal value, PRM_AddKeyType addKey)
{
    if (PRM_Parm* parm = m_parms->getParmPtr(pi))
        parm->setValue(t, value, true, addKey, vi);
}

void OP_Parameters::setFloat(const char* name, int vi, fpreal t, fpreal value, PRM_AddKeyType addKey)
{
    setFloat(getParmIndex(name), vi, t, value, addKey);
}

void OP_Parameters::setString(const UT_String& value, CH_StringMeaning meaning, int pi, int vi, fpreal t)
{
    if (PRM_Parm* parm = m_parms->getParmPtr(pi))
        parm->setValue(t, value.nonNullBuffer(), meaning, true, PRM_AK_NEVER, vi);
}

void OP_Parameters::setString(const UT_String& value, CH_StringMeaning meaning, const char* name, int vi,
                              fpreal t)
{
    setString(value, meaning, getParmIndex(name), vi, t);
}

bool OP_Parameters::setParameterOrProperty(const char* name, int vi, fpreal now, int value)
{
    PRM_Parm* parm = findParameterOrProperty(name);
    return parm && parm->setValue(now, value, true, PRM_AK_NEVER, vi);
}

bool OP_Parameters::setParameterOrProperty(const char* name, int vi, fpreal now, fpreal value)
{
    PRM_Parm* parm = findParameterOrProperty(name);
    return parm && parm->setValue(now, value, true, PRM_AK_NEVER, vi);
}

bool OP_Parameters::setParameterOrProperty(const char* name, int vi, fpreal now, const UT_String& value)
{
    PRM_Parm* parm = findParameterOrProperty(name);
    return parm && parm->setValue(now, value.nonNullBuffer(), CH_STRING_LITERAL, true, PRM_AK_NEVER, vi);
}
