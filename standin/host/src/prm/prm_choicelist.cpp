#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Parm.h>
#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>

#include <string>
#include <vector>

namespace
{
/// Room given to a menu generator.
const int generator_size = 4096;

/// What the last dynamic menu of a thread consists of.
struct DynamicMenu
{
    PRM_MenuItems texts;
    std::vector<PRM_Name> names;

    const PRM_Name* use(PRM_MenuItems items)
    {
        texts.swap(items);
        names.clear();
        for (const auto& item : texts)
            names.emplace_back(item.first.c_str(), item.second.c_str());
        names.emplace_back();
        return names.data();
    }
    const PRM_Name* generate(PRM_ChoiceGenFunc generator, void* data, const PRM_SpareData* spare,
                             const PRM_Parm* parm)
    {
        std::vector<PRM_Name> made(generator_size);
        generator(data, made.data(), generator_size, spare, parm);
        made.back() = PRM_Name();
        names.swap(made);
        return names.data();
    }
};

DynamicMenu& dynamicMenu()
{
    thread_local DynamicMenu menu;
    return menu;
}

bool isEnd(const PRM_Name& name) { return !name.getToken() || !*name.getToken(); }

/// Runs a menu script. Its items are empty when it fails.
PRM_MenuItems runScript(const PRM_ChoiceList& menu, const PRM_Parm* parm, bool blockErrors)
{
    PRM_ParmOwner* owner = parm ? parm->getParmList().getOwner() : nullptr;
    const bool python = menu.getScriptLanguage() == CH_PYTHON_SCRIPT;
    const auto run = python ? PRMscriptHooks().runPythonMenu : PRMscriptHooks().runHscriptMenu;
    PRM_MenuItems items;
    std::string error = std::string("nothing here runs menu scripts in ") + (python ? "Python" : "hscript");
    const bool done = run && run(owner ? owner->parmNode() : nullptr, parm, menu.getScript(), items, error);
    if (!done)
        items.clear();
    if (owner && !(blockErrors && !done))
        owner->setParmError(*parm, PRM_MENU_ERROR, done ? std::string() : "its menu script failed: " + error);
    return items;
}
} // namespace

PRM_ChoiceList::PRM_ChoiceList(PRM_ChoiceListType type, PRM_Name* names)
    : m_type(type), m_names(names), m_generator(nullptr), m_language(CH_HSCRIPT)
{
}

PRM_ChoiceList::PRM_ChoiceList(PRM_ChoiceListType type, PRM_ChoiceGenFunc generator)
    : m_type(type), m_names(nullptr), m_generator(generator), m_language(CH_HSCRIPT)
{
}

PRM_ChoiceList::PRM_ChoiceList(PRM_ChoiceListType type, const char* script, CH_ScriptLanguage language)
    : m_type(type), m_names(nullptr), m_generator(nullptr), m_script(script), m_language(language)
{
}

void PRM_ChoiceList::getChoiceNames(const PRM_Name*& names, void* data, const PRM_SpareData* spare,
                                    const PRM_Parm* parm, bool blockErrors) const
{
    if (m_names)
        names = m_names;
    else if (m_generator)
        names = dynamicMenu().generate(m_generator, data, spare, parm);
    else if (m_script.isstring())
        names = dynamicMenu().use(runScript(*this, parm, blockErrors));
    else
        names = dynamicMenu().use(PRM_MenuItems());
}

int PRM_ChoiceList::getSize(const PRM_Parm* parm) const
{
    PRM_ParmOwner* owner = parm ? parm->getParmList().getOwner() : nullptr;
    const PRM_Name* names = nullptr;
    getChoiceNames(names, owner ? owner->parmData() : nullptr, parm ? parm->getSparePtr() : nullptr, parm,
                   true);
    int size = 0;
    while (!isEnd(names[size]))
        ++size;
    return size;
}
