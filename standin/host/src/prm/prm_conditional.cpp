#include "prm/prm_conditional.h"

#include "prm/prm_channels.h"

PRM_ConditionalBase::~PRM_ConditionalBase() {}

PRM_Conditional::PRM_Conditional(PRM_ConditionalType type) : m_type(type) {}

PRM_Conditional::PRM_Conditional(const char* text, PRM_ConditionalType type) : m_type(type)
{
    UT_String ignored;
    setListFromString(text, ignored);
}

PRM_ConditionalGroupType PRM_Conditional::groupType() const { return PRM_CONDGROUP_NONE; }

PRM_ConditionalBase* PRM_Conditional::instance(const UT_IntArray& indices) const
{
    return new PRM_Conditional(PRMfillInstances(m_text, indices).c_str(), m_type);
}

PRM_Conditional* PRM_Conditional::getConditional(PRM_ConditionalType type)
{
    return type == m_type ? this : nullptr;
}

const PRM_Conditional* PRM_Conditional::getConditional(PRM_ConditionalType type) const
{
    return type == m_type ? this : nullptr;
}

int64 PRM_Conditional::getMemoryUsage(bool inclusive) const
{
    std::size_t size = inclusive ? sizeof(*this) : 0;
    size += m_text.capacity() + m_terms.capacity() * sizeof(PRM_ConditionalTerm);
    return static_cast<int64>(size);
}

bool PRM_Conditional::setListFromString(const char* text, UT_String& error)
{
    m_text = text ? text : "";
    std::string sentence;
    const bool good = PRMparseConditions(m_text, m_terms, sentence);
    if (!good)
        error.harden(sentence.c_str());
    return good;
}

bool PRM_Conditional::getStringFromList(UT_String& text) const
{
    text.harden(m_text.c_str());
    return !m_text.empty();
}

PRM_ConditionalGroup::PRM_ConditionalGroup() {}

PRM_ConditionalGroup::PRM_ConditionalGroup(const PRM_ConditionalGroupArgs& args)
{
    for (const PRM_Conditional& conditional : args.getConditionals())
        addConditional(conditional);
}

PRM_ConditionalGroup::PRM_ConditionalGroup(const PRM_ConditionalGroup& other) : PRM_ConditionalBase(other)
{
    *this = other;
}

PRM_ConditionalGroup& PRM_ConditionalGroup::operator=(const PRM_ConditionalGroup& other)
{
    if (this == &other)
        return *this;
    clear();
    for (const auto& conditional : other.m_conditionals)
        if (conditional)
            addConditional(*conditional);
    return *this;
}

PRM_ConditionalGroupType PRM_ConditionalGroup::groupType() const { return PRM_CONDGROUP_SINGLE; }

PRM_ConditionalBase* PRM_ConditionalGroup::instance(const UT_IntArray& indices) const
{
    auto* result = new PRM_ConditionalGroup;
    for (const auto& conditional : m_conditionals)
        if (conditional)
        {
            const std::unique_ptr<PRM_ConditionalBase> made(conditional->instance(indices));
            result->addConditional(*made->getConditional(conditional->getType()));
        }
    return result;
}

PRM_Conditional* PRM_ConditionalGroup::getConditional(PRM_ConditionalType type)
{
    return type >= 0 && type < NB_PRM_CONDTYPES ? m_conditionals[type].get() : nullptr;
}

const PRM_Conditional* PRM_ConditionalGroup::getConditional(PRM_ConditionalType type) const
{
    return const_cast<PRM_ConditionalGroup*>(this)->getConditional(type);
}

int64 PRM_ConditionalGroup::getMemoryUsage(bool inclusive) const
{
    int64 size = inclusive ? static_cast<int64>(sizeof(*this)) : 0;
    for (const auto& conditional : m_conditionals)
        if (conditional)
            size += conditional->getMemoryUsage(true);
    return size;
}

void PRM_ConditionalGroup::addConditional(const PRM_Conditional& conditional)
{
    m_conditionals[conditional.getType()].reset(new PRM_Conditional(conditional));
}

void PRM_ConditionalGroup::addConditional(const char* text, PRM_ConditionalType type)
{
    addConditional(PRM_Conditional(text, type));
}

void PRM_ConditionalGroup::clear()
{
    for (auto& conditional : m_conditionals)
        conditional.reset();
}
