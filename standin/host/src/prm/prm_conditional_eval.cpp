#include "prm/prm_conditional.h"

#include "prm/prm_channels.h"

#include <CH/CH_Expression.h>
#include <CH/CH_Manager.h>
#include <PRM/PRM_Parm.h>
#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_StringArray.h>

#include <cstring>

namespace
{
/// One side of a comparison: its text, and its number when it has one.
struct Side
{
    std::string text;
    bool isNumber;
    fpreal number;
};

Side sideOf(const std::string& text)
{
    Side side = {text, false, 0};
    side.isNumber = CHreadNumber(text.c_str(), side.number);
    return side;
}

Side sideOf(fpreal number) { return Side{CHprintNumber(number), true, number}; }

bool operatorHolds(PRM_ConditionalOperator op, int order)
{
    switch (op)
    {
    case PRM_CONDOP_EQ:
        return order == 0;
    case PRM_CONDOP_NE:
        return order != 0;
    case PRM_CONDOP_GE:
        return order >= 0;
    case PRM_CONDOP_LE:
        return order <= 0;
    case PRM_CONDOP_GT:
        return order > 0;
    case PRM_CONDOP_LT:
        return order < 0;
    default:
        return false;
    }
}

int orderOf(const Side& left, const Side& right)
{
    if (left.isNumber && right.isNumber)
        return (left.number > right.number) - (left.number < right.number);
    return left.text.compare(right.text);
}

bool isPatternMatch(PRM_ConditionalOperator op)
{
    return op == PRM_CONDOP_REGEX_EQ || op == PRM_CONDOP_REGEX_NE;
}

bool compare(PRM_ConditionalOperator op, const Side& left, const Side& right)
{
    if (isPatternMatch(op))
        return PRMmatchPattern(left.text.c_str(), right.text.c_str()) == (op == PRM_CONDOP_REGEX_EQ);
    return operatorHolds(op, orderOf(left, right));
}

/// The n of "hasinput(n)" and the like. Null when `subject` is no call of `function`.
const char* argumentOf(const std::string& subject, const char* function, std::string& argument)
{
    const std::string start = std::string(function) + "(";
    if (subject.compare(0, start.size(), start) != 0 || subject.back() != ')')
        return nullptr;
    argument = subject.substr(start.size(), subject.size() - start.size() - 1);
    return argument.c_str();
}

class TermEvaluation
{
public:
    TermEvaluation(const PRM_Parm& parm, const PRM_ParmList& list, const UT_StringArray* skip)
        : m_list(list), m_skip(skip), m_time(CHgetEvalTime()), m_thread(SYSgetSTID())
    {
        parm.getMultiInstanceIndex(m_indices);
    }

    bool holds(const PRM_ConditionalTerm& term) const
    {
        const std::string subject = PRMfillInstances(term.subject, m_indices);
        const Side value = sideOf(PRMfillInstances(term.value, m_indices));
        Side result;
        if (callFunction(subject, result))
            return compare(term.op, result, value);
        int component = 0;
        const PRM_Parm* parm = m_list.getParmPtr(m_list.getParmIndexFromChannel(subject.c_str(), &component));
        if (!parm || (m_skip && m_skip->find(parm->getToken()) >= 0))
            return false;
        return compareParm(*parm, component, term.op, value);
    }

private:
    bool callFunction(const std::string& subject, Side& result) const
    {
        const PRM_ParmOwner* owner = m_list.getOwner();
        std::string argument;
        if (argumentOf(subject, "ninputs", argument))
            result = sideOf(owner ? owner->connectedInputCount() : 0);
        else if (argumentOf(subject, "hasinput", argument))
            result = sideOf(owner && owner->isInputConnected(UT_String(argument.c_str()).toInt()) ? 1 : 0);
        else if (argumentOf(subject, "isparm", argument))
            result = sideOf(m_list.getParmPtr(argument.c_str()) ? 1 : 0);
        else
            return false;
        return true;
    }

    Side textOf(const PRM_Parm& parm, int component) const
    {
        UT_String text;
        parm.getValue(m_time, text, component, true, m_thread);
        return sideOf(text.toStdString());
    }

    Side numberOf(const PRM_Parm& parm, int component) const
    {
        fpreal number = 0;
        parm.getValue(m_time, number, component, m_thread);
        return sideOf(number);
    }

    bool compareParm(const PRM_Parm& parm, int component, PRM_ConditionalOperator op, const Side& value) const
    {
        const PRM_ChoiceList* menu = parm.getTemplatePtr()->getChoiceListPtr();
        // A menu made by a script is not run for this.
        if (menu && !menu->isDynamic() && !isPatternMatch(op))
            return compareMenu(parm, component, op, value);
        const bool text = parm.getType().isStringType() || isPatternMatch(op) || !value.isNumber;
        return compare(op, text ? textOf(parm, component) : numberOf(parm, component), value);
    }

    /// Items are meant by token or by index, whichever the value is. A field may hold what is no item at all.
    bool compareMenu(const PRM_Parm& parm, int component, PRM_ConditionalOperator op, const Side& value) const
    {
        const Side present = textOf(parm, component);
        const int wanted = parm.findMenuItem(value.text.c_str());
        int64 index = parm.findMenuItem(present.text.c_str());
        if (!parm.getType().isStringType())
            parm.getValue(m_time, index, component, m_thread);
        if (index < 0 || (wanted < 0 && !value.isNumber))
            return compare(op, present, value);
        if (wanted >= 0)
            return compareIndices(op, index, wanted);
        return compare(op, sideOf(static_cast<fpreal>(index)), value);
    }

    static bool compareIndices(PRM_ConditionalOperator op, int64 left, int64 right)
    {
        return operatorHolds(op, (left > right) - (left < right));
    }

    const PRM_ParmList& m_list;
    const UT_StringArray* m_skip;
    const fpreal m_time;
    const int m_thread;
    UT_IntArray m_indices;
};
} // namespace

bool PRM_Conditional::eval(const PRM_Parm& parm, const PRM_ParmList& list, const UT_StringArray* skip) const
{
    const TermEvaluation evaluation(parm, list, skip);
    bool all = false;
    for (std::size_t i = 0; i < m_terms.size(); ++i)
    {
        const bool first = i == 0 || m_terms[i].group != m_terms[i - 1].group;
        if (first && all)
            return true;
        all = (first || all) && evaluation.holds(m_terms[i]);
    }
    return all;
}
