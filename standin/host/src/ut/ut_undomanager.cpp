#include <UT/UT_UndoManager.h>

int UT_UndoManager::beginUndoBlock(const char* name, UT_UndoBlockType type)
{
    if (type == TOPLEVEL && !m_labels.empty())
        return 0;
    m_labels.push_back(name ? name : "");
    return getLevel();
}

void UT_UndoManager::endUndoBlock(int level)
{
    if (level > 0 && level <= getLevel())
        m_labels.resize(static_cast<std::size_t>(level) - 1);
}

const char* UT_UndoManager::getLabel(int levelFromOne) const
{
    const bool open = levelFromOne > 0 && levelFromOne <= getLevel();
    return open ? m_labels[static_cast<std::size_t>(levelFromOne) - 1].c_str() : nullptr;
}

UT_UndoManager* UTgetUndoManager()
{
    static UT_UndoManager manager;
    return &manager;
}

int UTbeginUndoBlock(const char* name, UT_UndoBlockType type, UT_UndoManager* manager)
{
    return (manager ? manager : UTgetUndoManager())->beginUndoBlock(name, type);
}

void UTendUndoBlock(int level, UT_UndoManager* manager)
{
    (manager ? manager : UTgetUndoManager())->endUndoBlock(level);
}
