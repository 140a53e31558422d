#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_Range.h>
#include <PRM/PRM_Shared.h>
#include <PRM/PRM_Template.h>

#include <cstdlib>
#include <limits>

#define SIXTEEN(NUMBER)                                                                                      \
    {                                                                                                        \
        NUMBER, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER,      \
            NUMBER, NUMBER, NUMBER, NUMBER                                                                   \
    }

PRM_Default PRMzeroDefaults[] = SIXTEEN(PRM_Default(0));
PRM_Default PRMoneDefaults[] = SIXTEEN(PRM_Default(1));
PRM_Default PRMtwoDefaults[] = SIXTEEN(PRM_Default(2));
PRM_Default PRMthreeDefaults[] = SIXTEEN(PRM_Default(3));

namespace
{

// In the order of PRM_RampInterpType.
PRM_Name interpolation_items[] = {
    PRM_Name("constant", "Constant"),       PRM_Name("linear", "Linear"),
    PRM_Name("catmull-rom", "Catmull-Rom"), PRM_Name("monotonecubic", "Monotone Cubic"),
    PRM_Name("bezier", "Bezier"),           PRM_Name("bspline", "B-Spline"),
    PRM_Name("hermite", "Hermite"),         PRM_Name(),
};
} // namespace

PRM_ChoiceList* PRMgetRampInterpMenu()
{
    static PRM_ChoiceList menu(PRM_CHOICELIST_SINGLE, interpolation_items);
    return &menu;
}

void PRM_Name::harden()
{
    if (m_token)
        m_ownToken = std::make_shared<const std::string>(m_token);
    if (m_label)
        m_ownLabel = std::make_shared<const std::string>(m_label);
    m_token = m_token ? m_ownToken->c_str() : nullptr;
    m_label = m_label ? m_ownLabel->c_str() : nullptr;
}

void PRM_Default::setString(const char* text, bool freeExisting)
{
    if (freeExisting)
        std::free(const_cast<char*>(m_string));
    m_string = text;
}

namespace
{
const fpreal most = std::numeric_limits<fpreal>::max();
}

fpreal PRM_Range::getParmMin() const { return hasParmMin() ? m_min : -most; }

fpreal PRM_Range::getParmMax() const { return hasParmMax() ? m_max : most; }

fpreal PRM_Range::getUIMin() const { return hasUIMin() || hasParmMin() ? m_min : -most; }

fpreal PRM_Range::getUIMax() const { return hasUIMax() || hasParmMax() ? m_max : most; }

void PRM_Range::constrain(fpreal& value) const
{
    if (hasParmMax() && value > m_max)
        value = m_max;
    if (hasParmMin() && value < m_min)
        value = m_min;
}
