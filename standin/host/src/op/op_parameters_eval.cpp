#include <OP/OP_Parameters.h>

#include <UT/UT_IntArray.h>

namespace
{
/// Missing parameters read as 0 or empty.
exint intOf(const PRM_Parm* parm, int vi, fpreal t, int thread)
{
    int64 value = 0;
    if (parm)
        parm->getValue(t, value, vi, thread);
    return value;
}

fpreal floatOf(const PRM_Parm* parm, int vi, fpreal t, int thread)
{
    fpreal value = 0;
    if (parm)
        parm->getValue(t, value, vi, thread);
    return value;
}

/// A component's expression may delete the node; those after it read as 0 then.
void floatsOf(const PRM_ParmList& list, const PRM_Parm* parm, fpreal* values, fpreal t, int thread)
{
    const std::weak_ptr<const char> life = list.getLifetime();
    const int size = parm ? parm->getVectorSize() : 0;
    for (int i = 0; i < size; ++i)
        values[i] = life.expired() ? 0 : floatOf(parm, i, t, thread);
}

void stringOf(UT_String& value, const PRM_Parm* parm, int vi, fpreal t, bool expand, int thread)
{
    if (parm)
        parm->getValue(t, value, vi, expand, thread);
    else
        value.harden("");
}

/// The token of an instance's parameter.
std::string instanceToken(const char* name, const int* inst, int nest)
{
    UT_IntArray indices;
    for (int i = 0; inst && i < nest; ++i)
        indices.append(inst[i]);
    UT_String token(name);
    // Numbers that the name has no '#' for are added as they are to the instance's token.
    PRM_Parm::instanceMultiString(token, indices, token.toStdString().find('#') != std::string::npos);
    return token.toStdString();
}
} // namespace

exint OP_Parameters::evalInt(int pi, int vi, fpreal t) const { return evalIntT(pi, vi, t, SYSgetSTID()); }

exint OP_Parameters::evalInt(const char* name, int vi, fpreal t) const
{
    return evalIntT(name, vi, t, SYSgetSTID());
}

exint OP_Parameters::evalIntT(int pi, int vi, fpreal t, int thread) const
{
    return intOf(findParm(pi), vi, t, thread);
}

exint OP_Parameters::evalIntT(const char* name, int vi, fpreal t, int thread) const
{
    return intOf(findParm(name), vi, t, thread);
}

fpreal OP_Parameters::evalFloat(int pi, int vi, fpreal t) const
{
    return evalFloatT(pi, vi, t, SYSgetSTID());
}

fpreal OP_Parameters::evalFloat(const char* name, int vi, fpreal t) const
{
    return evalFloatT(name, vi, t, SYSgetSTID());
}

fpreal OP_Parameters::evalFloatT(int pi, int vi, fpreal t, int thread) const
{
    return floatOf(findParm(pi), vi, t, thread);
}

fpreal OP_Parameters::evalFloatT(const char* name, int vi, fpreal t, int thread) const
{
    return floatOf(findParm(name), vi, t, thread);
}

void OP_Parameters::evalFloats(int pi, fpreal* values, fpreal t) const
{
    evalFloatsT(pi, values, t, SYSgetSTID());
}

void OP_Parameters::evalFloats(const char* name, fpreal* values, fpreal t) const
{
    evalFloatsT(name, values, t, SYSgetSTID());
}

void OP_Parameters::evalFloatsT(int pi, fpreal* values, fpreal t, int thread) const
{
    floatsOf(*m_parms, findParm(pi), values, t, thread);
}

void OP_Parameters::evalFloatsT(const char* name, fpreal* values, fpreal t, int thread) const
{
    floatsOf(*m_parms, findParm(name), values, t, thread);
}

void OP_Parameters::evalString(UT_String& value, int pi, int vi, fpreal t) const
{
    evalStringT(value, pi, vi, t, SYSgetSTID());
}

void OP_Parameters::evalString(UT_String& value, const char* name, int vi, fpreal t) const
{
    evalStringT(value, name, vi, t, SYSgetSTID());
}

void OP_Parameters::evalStringT(UT_String& value, int pi, int vi, fpreal t, int thread) const
{
    stringOf(value, findParm(pi), vi, t, true, thread);
}

void OP_Parameters::evalStringT(UT_String& value, const char* name, int vi, fpreal t, int thread) const
{
    stringOf(value, findParm(name), vi, t, true, thread);
}

void OP_Parameters::evalStringRaw(UT_String& value, int pi, int vi, fpreal t) const
{
    stringOf(value, findParm(pi), vi, t, false, SYSgetSTID());
}

void OP_Parameters::evalStringRaw(UT_String& value, const char* name, int vi, fpreal t) const
{
    stringOf(value, findParm(name), vi, t, false, SYSgetSTID());
}

exint OP_Parameters::evalIntInst(const char* name, const int* inst, int vi, fpreal t, int nest) const
{
    return evalIntInstT(name, inst, vi, t, SYSgetSTID(), nest);
}

fpreal OP_Parameters::evalFloatInst(const char* name, const int* inst, int vi, fpreal t, int nest) const
{
    return evalFloatInstT(name, inst, vi, t, SYSgetSTID(), nest);
}

void OP_Parameters::evalStringInst(const char* name, const int* inst, UT_String& value, int vi, fpreal t,
                                   int nest) const
{
    evalString(value, instanceToken(name, inst, nest).c_str(), vi, t);
}

exint OP_Parameters::evalIntInstT(const char* name, const int* inst, int vi, fpreal t, int thread,
                                  int nest) const
{
    return evalIntT(instanceToken(name, inst, nest).c_str(), vi, t, thread);
}

fpreal OP_Parameters::evalFloatInstT(const char* name, const int* inst, int vi, fpreal t, int thread,
                                     int nest) const
{
    return evalFloatT(instanceToken(name, inst, nest).c_str(), vi, t, thread);
}

PRM_Parm* OP_Parameters::findParameterOrProperty(const char* name, OP_Parameters** node) const
{
    PRM_Parm* parm = m_parms->getParmPtr(name);
    OP_Parameters* properties = parm ? nullptr : propertiesNode();
    if (properties && properties != this)
        parm = properties->getParmPtr(name);
    if (node)
        *node = properties;
    return parm;
}

bool OP_Parameters::evalParameterOrProperty(const char* name, int vi, fpreal now, int& value,
                                            PRM_Parm** source) const
{
    return evalParameterOrPropertyT(name, vi, now, value, SYSgetSTID(), source);
}

bool OP_Parameters::evalParameterOrProperty(const char* name, int vi, fpreal now, fpreal& value,
                                            PRM_Parm** source) const
{
    return evalParameterOrPropertyT(name, vi, now, value, SYSgetSTID(), source);
}

bool OP_Parameters::evalParameterOrProperty(const char* name, int vi, fpreal now, UT_String& value,
                                            PRM_Parm** source) const
{
    return evalParameterOrPropertyT(name, vi, now, value, SYSgetSTID(), source);
}

bool OP_Parameters::evalParameterOrPropertyT(const char* name, int vi, fpreal now, int& value, int thread,
                                             PRM_Parm** source) const
{
    PRM_Parm* parm = findParameterOrProperty(name);
    if (source)
        *source = parm;
    if (parm)
        parm->getValue(now, value, vi, thread);
    return parm != nullptr;
}

bool OP_Parameters::evalParameterOrPropertyT(const char* name, int vi, fpreal now, fpreal& value, int thread,
                                             PRM_Parm** source) const
{
    PRM_Parm* parm = findParameterOrProperty(name);
    if (source)
        *source = parm;
    if (parm)
        parm->getValue(now, value, vi, thread);
    return parm != nullptr;
}

bool OP_Parameters::evalParameterOrPropertyT(const char* name, int vi, fpreal now, UT_String& value,
                                             int thread, PRM_Parm** source) const
{
    PRM_Parm* parm = findParameterOrProperty(name);
    if (source)
        *source = parm;
    if (parm)
        parm->getValue(now, value, vi, true, thread);
    return parm != nullptr;
}

// Setting an instance's parameter names it in the same way.

void OP_Parameters::setFloatInst(fpreal value, const char* name, const int* inst, int vi, fpreal t, int nest)
{
    setFloat(instanceToken(name, inst, nest).c_str(), vi, t, value);
}
