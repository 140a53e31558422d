#pragma once
#include <SYS/SYS_Types.h>

enum PRM_RangeFlag
{
    PRM_RANGE_FREE = 0,
    PRM_RANGE_UI = 1,
    PRM_RANGE_PRM = 2,
    PRM_RANGE_RESTRICTED = 3
};

/// Extent of a slider (UI ends) and limits of what can be entered (PRM ends). Evaluation is never limited.
class PRM_Range
{
public:
    PRM_Range(PRM_RangeFlag minFlag = PRM_RANGE_UI, fpreal min = 0, PRM_RangeFlag maxFlag = PRM_RANGE_UI,
              fpreal max = 1)
        : m_minFlag(minFlag), m_maxFlag(maxFlag), m_min(min), m_max(max)
    {
    }

    PRM_RangeFlag getMinFlag() const { return m_minFlag; }
    PRM_RangeFlag getMaxFlag() const { return m_maxFlag; }
    bool hasParmMin() const { return (m_minFlag & PRM_RANGE_PRM) != 0; }
    bool hasParmMax() const { return (m_maxFlag & PRM_RANGE_PRM) != 0; }
    bool hasUIMin() const { return (m_minFlag & PRM_RANGE_UI) != 0; }
    bool hasUIMax() const { return (m_maxFlag & PRM_RANGE_UI) != 0; }
    /// Of a free end the most negative or most positive number.
    fpreal getParmMin() const;
    fpreal getParmMax() const;
    fpreal getUIMin() const;
    fpreal getUIMax() const;
    /// Clamps to the ends that limit what can be entered.
    void constrain(fpreal& value) const;

    /// The numbers as given, whatever the flags say.
    fpreal getMin() const { return m_min; }
    fpreal getMax() const { return m_max; }

private:
    PRM_RangeFlag m_minFlag;
    PRM_RangeFlag m_maxFlag;
    fpreal m_min;
    fpreal m_max;
};
