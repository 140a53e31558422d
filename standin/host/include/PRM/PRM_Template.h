#pragma once
#include <PRM/PRM_Callback.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Conditional.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_Range.h>
#include <PRM/PRM_SpareData.h>
#include <PRM/PRM_Type.h>
#include <SYS/SYS_Types.h>
#include <UT/UT_StringHolder.h>

class UT_StringArray;

/// Description of one parameter. Keeps pointers to all it is made of; copies share them. A list of templates
/// ends with one of type PRM_LIST_TERMINATOR, as a default-made one is.
class PRM_Template
{
public:
    enum PRM_Export
    {
        PRM_EXPORT_MIN = 0,
        PRM_EXPORT_MED = 1,
        PRM_EXPORT_MAX = 2,
        PRM_EXPORT_TBX = 3
    };

    PRM_Template(PRM_Type type = PRM_LIST_TERMINATOR, int vectorSize = 1, PRM_Name* name = 0,
                 PRM_Default* defaults = 0, PRM_ChoiceList* menu = 0, PRM_Range* range = 0,
                 PRM_Callback callback = 0, PRM_SpareData* spare = 0, int parmGroup = 1, const char* help = 0,
                 PRM_ConditionalBase* conditional = 0);
    PRM_Template(PRM_Type type, PRM_Export level, int vectorSize = 1, PRM_Name* name = 0,
                 PRM_Default* defaults = 0, PRM_ChoiceList* menu = 0, PRM_Range* range = 0,
                 PRM_Callback callback = 0, PRM_SpareData* spare = 0, int parmGroup = 1, const char* help = 0,
                 PRM_ConditionalBase* conditional = 0);
    PRM_Template(PRM_Type type, PRM_TypeExtended extended, int vectorSize = 1, PRM_Name* name = 0,
                 PRM_Default* defaults = 0, PRM_ChoiceList* menu = 0, PRM_Range* range = 0,
                 PRM_Callback callback = 0, PRM_SpareData* spare = 0, int parmGroup = 1, const char* help = 0,
                 PRM_ConditionalBase* conditional = 0);
    PRM_Template(PRM_Type type, PRM_TypeExtended extended, PRM_Export level, int vectorSize = 1,
                 PRM_Name* name = 0, PRM_Default* defaults = 0, PRM_ChoiceList* menu = 0,
                 PRM_Range* range = 0, PRM_Callback callback = 0, PRM_SpareData* spare = 0, int parmGroup = 1,
                 const char* help = 0, PRM_ConditionalBase* conditional = 0);
    /// A multi-parameter. `count` is its default number of instances; `children` are the templates of one
    /// instance, ended as any list, null for a ramp's usual ones. `uiSize` is the number of rows shown, which nothing
    /// here looks at.
    PRM_Template(PRM_MultiType multi, PRM_Template* children, fpreal uiSize, PRM_Name* name = 0,
                 PRM_Default* count = 0, PRM_Range* range = 0, PRM_SpareData* spare = 0, const char* help = 0,
                 PRM_ConditionalBase* conditional = 0);
    PRM_Template(PRM_MultiType multi, PRM_Template* children, PRM_Export level, fpreal uiSize,
                 PRM_Name* name = 0, PRM_Default* count = 0, PRM_Range* range = 0, PRM_Callback callback = 0,
                 PRM_SpareData* spare = 0, const char* help = 0, PRM_ConditionalBase* conditional = 0);

    /// Make an existing template anew, as the constructors do.
    void initialize(PRM_Type type, PRM_TypeExtended extended, PRM_Export level, int vectorSize,
                    PRM_Name* name, PRM_Default* defaults, PRM_ChoiceList* menu, PRM_Range* range,
                    PRM_Callback callback, PRM_SpareData* spare, int parmGroup, const char* help,
                    PRM_ConditionalBase* conditional);
    void initMulti(PRM_MultiType multi, PRM_Template* children, PRM_Export level, fpreal uiSize,
                   PRM_Name* name, PRM_Default* count, PRM_Range* range, PRM_Callback callback,
                   PRM_SpareData* spare, const char* help, PRM_ConditionalBase* conditional);
    /// A copy of `source` with another size and other defaults.
    void assign(const PRM_Template& source, int vectorSize, PRM_Default* defaults);

    /// Empty when there is no name, or its token is null.
    const char* getToken() const;
    const char* getLabel() const;
    const PRM_Type& getType() const { return m_type; }
    PRM_TypeExtended getTypeExtended() const { return m_extended; }
    int getVectorSize() const { return m_vectorSize; }
    int getParmGroup() const { return m_parmGroup; }
    PRM_Export exportLevel() const { return m_export; }
    const PRM_Callback& getCallback() const { return m_callback; }
    /// Null when there is none.
    const char* getHelpText() const { return m_help; }

    // What the template was made of; null where nothing was given.
    PRM_Name* getNamePtr() { return m_name; }
    const PRM_Name* getNamePtr() const { return m_name; }
    PRM_SpareData* getSparePtr() { return m_spare; }
    const PRM_SpareData* getSparePtr() const { return m_spare; }
    PRM_ChoiceList* getChoiceListPtr() { return m_menu; }
    const PRM_ChoiceList* getChoiceListPtr() const { return m_menu; }
    PRM_Range* getRangePtr() { return m_range; }
    const PRM_Range* getRangePtr() const { return m_range; }
    PRM_Default* getFactoryDefaults() { return m_defaults; }
    const PRM_Default* getFactoryDefaults() const { return m_defaults; }
    /// Null for a component that is out of range.
    PRM_Default* getDefault(int component);
    const PRM_Default* getDefault(int component) const;
    PRM_ConditionalBase* getConditionalBasePtr() { return m_conditional; }
    const PRM_ConditionalBase* getConditionalBasePtr() const { return m_conditional; }
    PRM_Conditional* getConditionalPtr(PRM_ConditionalType type)
    {
        return m_conditional ? m_conditional->getConditional(type) : 0;
    }
    const PRM_Conditional* getConditionalPtr(PRM_ConditionalType type) const
    {
        const PRM_ConditionalBase* conditional = m_conditional;
        return conditional ? conditional->getConditional(type) : 0;
    }

    bool isMultiParm() const { return m_multiType != PRM_MULTITYPE_NONE; }
    /// PRM_MULTITYPE_NONE for anything but a multi-parameter.
    PRM_MultiType getMultiType() const { return m_multiType; }
    bool isRampType() const { return isMultiParm() && (m_multiType & PRM_MULTITYPE_RAMP_MASK) != 0; }
    bool isRampTypeColor() const { return isMultiParm() && (m_multiType & PRM_MULTITYPE_RAMP_RGB) != 0; }
    /// Number of the first instance: "multistartoffset" of the spare data, else 1.
    int getMultiStartOffset() const;
    /// The children as given: null for anything but a multi-parameter, and for a ramp with the usual ones.
    PRM_Template* getMultiParmTemplate() { return m_children; }
    const PRM_Template* getMultiParmTemplate() const { return m_children; }

    /// Token of a component's channel: the template's own when it has one component, else with the kind's
    /// suffix.
    void getChannelToken(UT_String& token, int component) const;
    UT_StringHolder getChannelToken(int component) const;

    bool getInvisible() const { return m_type.hasInterfaceType(PRM_IFACE_INVISIBLE); }
    bool getJoinNext() const { return m_type.hasInterfaceType(PRM_IFACE_JOIN_NEXT); }
    bool getLabelNone() const { return m_type.hasInterfaceType(PRM_IFACE_LABEL_NONE); }
    // The three flags live in the type.
    void setInvisible(bool on) { m_type = m_type.withInterfaceFlag(PRM_IFACE_INVISIBLE, on); }
    void setJoinNext(bool on) { m_type = m_type.withInterfaceFlag(PRM_IFACE_JOIN_NEXT, on); }
    void setLabelNone(bool on) { m_type = m_type.withInterfaceFlag(PRM_IFACE_LABEL_NONE, on); }
    void setType(const PRM_Type& type) { m_type = type; }
    void setNamePtr(PRM_Name* name) { m_name = name; }

    /// Number of templates before the terminator. With `forSwitcher`, what a folder set holds counts as part
    /// of it; with `forJoins`, templates joined into one row count once; `forRows` leaves out the invisible
    /// ones.
    static int countTemplates(const PRM_Template* list, bool forSwitcher = false, bool forJoins = false,
                              bool forRows = false);

private:
    PRM_Type m_type;
    PRM_TypeExtended m_extended;
    PRM_Export m_export;
    int m_vectorSize;
    int m_parmGroup;
    PRM_MultiType m_multiType;
    PRM_Name* m_name;
    PRM_Default* m_defaults;
    PRM_ChoiceList* m_menu;
    PRM_Range* m_range;
    PRM_SpareData* m_spare;
    const char* m_help;
    PRM_ConditionalBase* m_conditional;
    PRM_Template* m_children;
    PRM_Callback m_callback;
};

/// True for the extended types that put a template on one row with the next.
inline bool PRM_IS_JOIN(PRM_TypeExtended extended)
{
    return extended == PRM_TYPE_TOGGLE_JOIN || extended == PRM_TYPE_JOIN_PAIR ||
           extended == PRM_TYPE_MENU_JOIN;
}
