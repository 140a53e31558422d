#include "prm/prm_ownercontext.h"
#include "prm/prm_parm_data.h"

#include <CH/CH_Manager.h>
#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>
#include <SYS/SYS_SequentialThreadIndex.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace
{
/// A component that is being evaluated by the calling thread.
struct Frame
{
    const PRM_Parm* parm;
    int component;
    bool askedAgain;
};

/// The components under way, the outermost first.
std::vector<Frame>& frames()
{
    thread_local std::vector<Frame> underWay;
    return underWay;
}

/// Longer chains of channel references are refused, so that none can exhaust the stack.
const std::size_t max_frames = 150;

template <typename Integer>
Integer truncated(fpreal value)
{
    if (std::isnan(value))
        return 0;
    if (value >= static_cast<fpreal>(std::numeric_limits<Integer>::max()))
        return std::numeric_limits<Integer>::max();
    if (value <= static_cast<fpreal>(std::numeric_limits<Integer>::min()))
        return std::numeric_limits<Integer>::min();
    return static_cast<Integer>(value);
}

bool isWhole(const PRM_Type& type) { return type.isOrdinalType() || type.hasFloatType(PRM_FLOAT_INTEGER); }
} // namespace

/// The road from one component's expression or text to a value.
///
/// A Python expression may do anything, also change or delete the parameter that it belongs to. So everything needed
/// afterwards is copied before, and isGone() tells.
class PRM_Parm::Evaluation : public PRM_OwnerContext
{
public:
    Evaluation(const PRM_Parm& parm, int component, fpreal evalTime, int evalThread)
        : PRM_OwnerContext(*parm.m_list, evalTime, evalThread),
          m_parm(parm),
          m_list(*parm.m_list),
          m_alive(parm.m_list->m_alive),
          m_index(component),
          m_component(*parm.findComponent(component))
    {
    }

    CH_ExprValue expression()
    {
        CH_ExprValue value;
        const std::string error = guarded([&](std::string& why) { return run(value, why); });
        report(error);
        return error.empty() ? value : CH_ExprValue();
    }

    std::string expandedText()
    {
        std::string result;
        report(guarded([&](std::string& why)
                       { return CHexpandString(m_component.text.c_str(), *this, result, why); }));
        return result;
    }

    bool isTimeDependent()
    {
        const std::string& text = m_component.text;
        if (m_component.isExpression && m_component.language == CH_PYTHON)
            return text.find("hou.frame") != std::string::npos || text.find("hou.time") != std::string::npos;
        watchTime();
        if (m_component.isExpression)
            return m_component.parsed->usesTime() || (expression(), sawTime());
        return CHstringUsesTime(text.c_str()) || (expandedText(), sawTime());
    }

    /// Whether evaluating removed the parameter, or its whole node.
    bool isGone() const
    {
        return m_component.language == CH_PYTHON && (m_alive.expired() || m_list.getParmIndex(&m_parm) < 0);
    }

private:
    /// Runs `evaluate` unless this component is under way already. Returns what went wrong, empty when nothing did.
    template <typename Evaluate>
    std::string guarded(Evaluate evaluate)
    {
        for (Frame& frame : frames())
            if (frame.parm == &m_parm && frame.component == m_index)
            {
                frame.askedAgain = true;
                return "its expression refers to itself";
            }
        if (frames().size() >= max_frames)
            return "too many parameters refer to one another";
        frames().push_back(Frame{&m_parm, m_index, false});
        std::string error;
        const bool good = evaluate(error);
        const bool askedAgain = frames().back().askedAgain;
        frames().pop_back();
        // What was asked for inside had no value then, so this has none either.
        if (askedAgain)
            return "its expression refers to itself";
        return good ? std::string() : error.empty() ? "it has no value" : error;
    }

    bool run(CH_ExprValue& value, std::string& error)
    {
        if (m_component.language != CH_PYTHON)
            return m_component.parsed->evaluate(*this, value, error);
        if (!PRMscriptHooks().evaluatePython)
        {
            error = "nothing here runs Python";
            return false;
        }
        PRM_ParmOwner* owner = m_list.getOwner();
        const CH_AutoEvalTime now(thread, time);
        return PRMscriptHooks().evaluatePython(owner ? owner->parmNode() : nullptr, m_component.text.c_str(),
                                               time, thread, value, error);
    }

    void report(const std::string& error) const
    {
        if (isGone())
            return;
        if (PRM_ParmOwner* owner = m_list.getOwner())
            owner->setParmError(m_parm, m_index, error);
    }

    const PRM_Parm& m_parm;
    const PRM_ParmList& m_list;
    const std::weak_ptr<const char> m_alive;
    const int m_index;
    const Component m_component;
};

std::string PRM_Parm::expandedText(fpreal time, int index, int thread) const
{
    const std::string& text = findComponent(index)->text;
    if (!std::strpbrk(text.c_str(), "$`"))
        return text;
    return Evaluation(*this, index, time, thread).expandedText();
}

void PRM_Parm::getValue(fpreal time, fpreal& value, int index, int thread) const
{
    value = isMultiParm() && index == 0 ? getMultiParmNumItems() : 0;
    const Component* component = findComponent(index);
    if (!component)
        return;
    const bool whole = isWhole(getType());
    CH_ExprValue result(component->number);
    bool gone = false;
    if (component->isExpression)
    {
        Evaluation evaluation(*this, index, time, thread);
        result = evaluation.expression();
        gone = evaluation.isGone();
    }
    else if (getType().isStringType())
        result = CH_ExprValue(expandedText(time, index, thread));
    // The text of a menu item counts as the item's place.
    const int item = result.isText && !gone ? findMenuItem(result.text.c_str()) : -1;
    value = item >= 0 ? item : result.asNumber();
    if (whole)
        value = std::trunc(value);
}

void PRM_Parm::getValue(fpreal time, int64& value, int component, int thread) const
{
    fpreal number = 0;
    getValue(time, number, component, thread);
    value = truncated<int64>(number);
}

void PRM_Parm::getValue(fpreal time, int32& value, int component, int thread) const
{
    fpreal number = 0;
    getValue(time, number, component, thread);
    value = truncated<int32>(number);
}

void PRM_Parm::getValue(fpreal time, UT_String& value, int index, bool expand, int thread) const
{
    const Component* component = findComponent(index);
    const bool text = getType().isStringType();
    if (component && !expand && (component->isExpression || text))
        value.harden(component->text.c_str());
    else if (component && text && component->isExpression)
        value.harden(Evaluation(*this, index, time, thread).expression().asText().c_str());
    else if (component && text)
        value.harden(expandedText(time, index, thread).c_str());
    else if (component || isMultiParm())
        value.harden(numberAsText(time, index, thread).c_str());
    else
        value.harden("");
}

std::string PRM_Parm::numberAsText(fpreal time, int index, int thread) const
{
    // Copied: a Python expression may do away with the parameter.
    const PRM_Type type = getType();
    const bool mask = isButtonMask();
    const std::weak_ptr<const char> alive = m_list->m_alive;
    PRM_ParmList& list = *m_list;
    fpreal number = 0;
    getValue(time, number, index, thread);
    if (type.hasOrdinalType(PRM_ORD_TOGGLE))
        return number != 0 ? "on" : "off";
    if (type.isOrdinalType() && !mask && !alive.expired() && list.getParmIndex(this) >= 0)
    {
        std::string token = menuToken(truncated<int>(number));
        if (!token.empty())
            return token;
    }
    return isWhole(type) ? std::to_string(truncated<int64>(number)) : CHprintNumber(number);
}

bool PRM_Parm::isButtonMask() const
{
    const PRM_ChoiceList* menu = getTemplatePtr()->getChoiceListPtr();
    return getType().hasOrdinalType(PRM_ORD_BUTTONSTRIP) && menu && menu->getType() == PRM_CHOICELIST_TOGGLE;
}

std::string PRM_Parm::menuToken(int item) const
{
    const PRM_ChoiceList* menu = getTemplatePtr()->getChoiceListPtr();
    if (!menu || item < 0)
        return std::string();
    PRM_ParmOwner* owner = m_list->getOwner();
    const PRM_Name* names = nullptr;
    menu->getChoiceNames(names, owner ? owner->parmData() : nullptr, getSparePtr(), this, true);
    for (int i = 0; names[i].getToken() && *names[i].getToken(); ++i)
        if (i == item)
            return names[i].getToken();
    return std::string();
}

bool PRM_Parm::isTimeDependent() const
{
    const fpreal time = CHgetEvalTime();
    for (int i = 0; i < static_cast<int>(m_components.size()); ++i)
    {
        const Component& component = m_components[static_cast<std::size_t>(i)];
        const bool moves = component.isExpression || getType().isStringType();
        if (moves && Evaluation(*this, i, time, SYSgetSTID()).isTimeDependent())
            return true;
    }
    return false;
}
