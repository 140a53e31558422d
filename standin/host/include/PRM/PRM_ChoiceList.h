#pragma once
#include <CH/CH_ExprLanguage.h>
#include <PRM/PRM_Name.h>
#include <UT/UT_String.h>

class PRM_Parm;
class PRM_SpareData;

enum PRM_ChoiceListType
{
    PRM_CHOICELIST_REPLACE = 0x0001,
    PRM_CHOICELIST_TOGGLE = 0x0002,
    PRM_CHOICELIST_APPEND = 0x0004,
    PRM_CHOICELIST_WILD = 0x0008,
    PRM_CHOICELIST_EXCLUSIVE = 0x1000,
    PRM_CHOICELIST_SINGLE = PRM_CHOICELIST_EXCLUSIVE | PRM_CHOICELIST_REPLACE
};

/// Fills `names`, which has room for `size`, and ends them with an empty name. `data` is the node.
typedef void (*PRM_ChoiceGenFunc)(void* data, PRM_Name* names, int size, const PRM_SpareData* spare,
                                  const PRM_Parm* parm);

/// A menu: of fixed names, made by a function, or made by a script. Keeps pointers to names and script.
class PRM_ChoiceList
{
public:
    PRM_ChoiceList(PRM_ChoiceListType type, PRM_Name* names);
    PRM_ChoiceList(PRM_ChoiceListType type, PRM_ChoiceGenFunc generator);
    PRM_ChoiceList(PRM_ChoiceListType type, const char* script, CH_ScriptLanguage language = CH_HSCRIPT);

    /// Sets `names` to the items, ended by an empty name; never null. A fixed menu gives its own list; what
    /// another one gives lives until the calling thread asks such a menu again. A script that fails gives no
    /// items; its error is reported on the parameter's node unless `blockErrors`.
    ///
    /// @param data  the node; a script menu of a parameter finds its node by itself
    void getChoiceNames(const PRM_Name*& names, void* data = 0, const PRM_SpareData* spare = 0,
                        const PRM_Parm* parm = 0, bool blockErrors = false) const;
    /// Number of items.
    int getSize(const PRM_Parm* parm) const;

    PRM_ChoiceListType getType() const { return m_type; }
    CH_ScriptLanguage getScriptLanguage() const { return m_language; }
    /// Null for a menu without a script.
    const UT_String& getScript() const { return m_script; }
    bool isDynamic() const { return m_names == 0; }
    /// Null when the menu is dynamic.
    PRM_Name* choiceNamesPtr() { return m_names; }
    const PRM_Name* choiceNamesPtr() const { return m_names; }

private:
    PRM_ChoiceListType m_type;
    PRM_Name* m_names;
    PRM_ChoiceGenFunc m_generator;
    UT_String m_script;
    CH_ScriptLanguage m_language;
};
