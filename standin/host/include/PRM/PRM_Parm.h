#pragma once
#include <CH/CH_ExprLanguage.h>
#include <PRM/PRM_Template.h>
#include <PRM/PRM_Type.h>
#include <SYS/SYS_Types.h>
#include <UT/UT_String.h>
#include <UT/UT_StringHolder.h>

#include <memory>
#include <string>
#include <vector>

class CH_Expression;
class PRM_ParmList;
class PRM_ParmOwner;
class UT_IntArray;

/// Whether setting a value makes a key. The stand-in has no keyframes; the argument is there for its callers.
enum PRM_AddKeyType
{
    PRM_AK_NEVER,
    PRM_AK_MARK_PENDING,
    PRM_AK_FORCE_KEY,
    PRM_AK_SET_KEY
};

/// One parameter of a node: the values of its components, its states and, for a multi-parameter, its
/// instances.
///
/// A component holds a number, a text, or an expression. Belongs to a PRM_ParmList, at whose end the
/// parameters of multi-parameter instances stand; a parameter keeps its address until its instance is
/// removed. Components that are out of range read as 0 or empty and cannot be set.
class PRM_Parm
{
public:
    ~PRM_Parm();

    /// Token and label, instance numbers filled in.
    const char* getToken() const { return m_token.c_str(); }
    const char* getLabel() const { return m_label.c_str(); }
    UT_StringHolder getChannelToken(int component = 0) const;
    void getChannelToken(UT_String& token, int component = 0) const;
    const PRM_Type& getType() const { return m_template->getType(); }
    int getVectorSize() const { return m_template->getVectorSize(); }
    /// The template that the parameter was made from; of an instance, the one with '#' in its token.
    PRM_Template* getTemplatePtr() { return m_template; }
    const PRM_Template* getTemplatePtr() const { return m_template; }
    PRM_SpareData* getSparePtr() { return m_template->getSparePtr(); }
    const PRM_SpareData* getSparePtr() const
    {
        const PRM_Template* tmpl = m_template;
        return tmpl->getSparePtr();
    }
    /// The list that holds the parameter, and its index there.
    PRM_ParmList& getParmList() { return *m_list; }
    const PRM_ParmList& getParmList() const { return *m_list; }
    bool isSpareParm() const { return m_spare; }

    // Evaluation. Never throws: what has no value reads as 0 or empty, with an error on the node.
    void getValue(fpreal time, int32& value, int component, int thread) const;
    void getValue(fpreal time, int64& value, int component, int thread) const;
    void getValue(fpreal time, fpreal& value, int component, int thread) const;
    /// As text: toggles "off" and "on", menus the token, floats up to six digits. Without `expand`, a text as
    /// typed and an expression as its source.
    void getValue(fpreal time, UT_String& value, int component, bool expand, int thread) const;
    bool isTimeDependent() const;

    // Setting. Each stores, then tells the node unless `propagate` is false; ranges are not looked at. A
    // value takes the place of an expression. Setting the value of a multi-parameter changes its number of
    // instances. Each returns false when nothing could be stored. All of it can be undone, with what the node's
    // listeners change when they hear of it as part of the same step; see UT_UndoManager.
    bool setValue(fpreal time, fpreal value, bool propagate = true, PRM_AddKeyType addKey = PRM_AK_NEVER,
                  int component = 0);
    bool setValue(fpreal time, int32 value, bool propagate = true, PRM_AddKeyType addKey = PRM_AK_NEVER,
                  int component = 0);
    bool setValue(fpreal time, int64 value, bool propagate = true, PRM_AddKeyType addKey = PRM_AK_NEVER,
                  int component = 0);
    /// A literal text on a numeric kind may be a number or, with a menu, a token; anything else is taken as
    /// an hscript expression.
    bool setValue(fpreal time, const char* text, CH_StringMeaning meaning, bool propagate = true,
                  PRM_AddKeyType addKey = PRM_AK_NEVER, int component = 0);
    bool setExpression(fpreal time, const char* text, CH_ExprLanguage language, bool propagate = true,
                       int component = 0);
    /// Replaces an expression by its value at `time`; does nothing to a component without one.
    void deleteExpression(fpreal time, int component, bool propagate = true);

    bool hasExpression(int component) const;
    /// Source and language; null and hscript when the component has no expression.
    const char* getExpression(int component) const;
    CH_ExprLanguage getExpressionLanguage(int component) const;

    bool isDefault(int component) const;
    /// All components when `component` is negative.
    void revertToDefault(fpreal time, int component, bool propagate = true);

    /// Reads a text as a value of a numeric kind: a number, the token of a menu item, "on" or "off" for a toggle, the
    /// tokens of a button strip. False when it is none of these.
    bool readLiteral(const char* text, fpreal& value) const;
    /// Index of the menu item with this token, in the present menu; -1 when there is none.
    int findMenuItem(const char* token) const;
    /// True for a button with a menu: choosing an item calls the callback with the item's index.
    bool isActionMenu() const;

    // Multi-parameters.
    bool isMultiParm() const { return m_template->isMultiParm(); }
    bool isRampType() const { return m_template->isRampType(); }
    bool isRampTypeColor() const { return m_template->isRampTypeColor(); }
    int getMultiStartOffset() const { return m_template->getMultiStartOffset(); }
    int getMultiParmNumItems() const { return static_cast<int>(m_instances.size()); }
    /// Parameters of one instance.
    int getMultiParmInstanceSize() const;
    /// n-th parameter of all instances in order, nested ones not counted. Null when out of range.
    PRM_Parm* getMultiParm(int n) const;
    /// Puts a new instance before position `position` (from 0; the number of instances appends), or removes
    /// one; later ones are renumbered. False when out of range.
    bool insertMultiParmItem(int position);
    bool removeMultiParmItem(int position);
    /// Instance numbers of the multi-parameters around this parameter, the outermost first; none when there
    /// are none.
    void getMultiInstanceIndex(UT_IntArray& indices) const;
    bool isMultiParmInstance() const { return m_parent != 0; }
    /// The multi-parameter whose instance this is part of; null when none.
    PRM_Parm* getParentMultiParm() const { return m_parent; }
    /// Fills instance numbers into a text with '#', the outermost first. With `toToken`, a text without '#'
    /// gets the last number appended.
    static void instanceMultiString(UT_String& text, const UT_IntArray& indices, bool toToken);

    // States. A component is -1 for all: enabled or visible when any component is.
    bool getEnableState(int component = -1) const;
    bool getVisibleState(int component = -1) const;
    /// Return whether the state changed.
    bool setEnableState(bool on, int component = -1);
    bool setVisibleState(bool on, int component = -1);

private:
    friend class PRM_ParmList;
    class Evaluation;
    class InstancesUndo;
    class Place;
    class ValueUndo;
    struct Component;
    struct Values;
    typedef std::vector<std::unique_ptr<PRM_Parm>> Instance;

    PRM_Parm(PRM_ParmList& list, PRM_Template* tmpl, PRM_Parm* parent);
    PRM_Parm(const PRM_Parm&);
    PRM_Parm& operator=(const PRM_Parm&);

    void nameFor(const UT_IntArray& indices);
    Component* findComponent(int component);
    const Component* findComponent(int component) const;

    std::string expandedText(fpreal time, int component, int thread) const;
    std::string numberAsText(fpreal time, int component, int thread) const;
    bool isButtonMask() const;
    std::string menuToken(int item) const;

    Component makeDefault(int component) const;
    void setNumber(Component& component, fpreal value) const;
    bool setLiteral(Component& component, const char* text) const;
    static void setExpressionOf(Component& component, const char* text, CH_ExprLanguage language);
    bool readButtonMask(const char* text, fpreal& value) const;
    void valueChanged(int component, const Component& before, bool propagate);

    PRM_Template* childTemplates() const;
    int defaultInstanceCount() const;
    void makeDefaultInstances();
    bool setInstanceCount(fpreal count, bool propagate);
    bool refuseCount(fpreal count);
    Instance makeInstance();
    void addInstances(int position, int count);
    void insertInstances(int position, int count);
    void eraseInstances(int position, int count);
    void renumber(int first);
    void spreadRampKeys(int first, int count);
    static void placeRampKey(Instance& key, fpreal place);
    static void placeRampKey(Instance& key, const Instance& left, const Instance& right, fpreal place);
    void collectIndices(int first, int count, std::vector<int>& indices) const;
    void instancesChanged(int first, int count, bool propagate);

    // Undo. Restoring tells the node as setting does.
    void recordValue(int component, const Component& before) const;
    void recordInstances(int position, std::vector<std::vector<Values>> before, int count) const;
    void restore(int component, const Component& value);
    Values values() const;
    std::vector<std::vector<Values>> valuesOfInstances(int position, int count) const;
    void takeValues(const Values& values);
    void putInstances(int position, const std::vector<std::vector<Values>>& instances);
    void replaceInstances(int position, int count, const std::vector<std::vector<Values>>& instances);

    PRM_ParmList* m_list;
    PRM_Template* m_template;
    PRM_Parm* m_parent;
    int m_instanceNumber;
    int m_index;
    bool m_spare;
    std::string m_token;
    std::string m_label;
    std::vector<Component> m_components;
    std::vector<bool> m_disabled;
    std::vector<bool> m_hidden;
    std::vector<Instance> m_instances;
    struct RampTemplates;
    std::unique_ptr<RampTemplates> m_rampTemplates;
};
