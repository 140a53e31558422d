#include <UT/UT_UndoManager.h>

#include "ut/ut_held.h"

#include <algorithm>
#include <deque>
#include <exception>

namespace
{
const std::size_t most_steps = 1000;
const std::size_t most_memory = std::size_t(64) << 20;

/// Runs every change, whatever the listeners of the ones before it throw; the first exception comes out at the end.
template <typename Iterator>
void runAll(Iterator begin, Iterator end, void (UT_Undo::*run)())
{
    std::exception_ptr first;
    for (Iterator at = begin; at != end; ++at)
        try
        {
            (**at.*run)();
        }
        catch (...)
        {
            if (!first)
                first = std::current_exception();
        }
    if (first)
        std::rethrow_exception(first);
}
} // namespace

struct UT_UndoManager::Step
{
    std::string label;
    std::vector<std::unique_ptr<UT_Undo>> changes; ///< in the order of their making
    std::size_t memory = 0;

    bool isAlive() const
    {
        return std::any_of(changes.begin(), changes.end(),
                           [](const std::unique_ptr<UT_Undo>& change) { return change->isAlive(); });
    }
    void undo() { runAll(changes.rbegin(), changes.rend(), &UT_Undo::undo); }
    void redo() { runAll(changes.begin(), changes.end(), &UT_Undo::redo); }
};

/// Steps, the next one to be performed last.
class UT_UndoManager::History
{
public:
    void add(std::unique_ptr<Step> step)
    {
        m_memory += step->memory;
        m_steps.push_back(std::move(step));
        while (m_steps.size() > most_steps || m_memory > most_memory)
        {
            m_memory -= m_steps.front()->memory;
            m_steps.pop_front();
        }
    }

    /// The next step that is of use; those before it are dropped. Null when there is none.
    std::unique_ptr<Step> take()
    {
        std::unique_ptr<Step> step;
        while (!step && !m_steps.empty())
        {
            m_memory -= m_steps.back()->memory;
            if (m_steps.back()->isAlive())
                step = std::move(m_steps.back());
            m_steps.pop_back();
        }
        return step;
    }

    std::vector<std::string> labels() const
    {
        std::vector<std::string> texts;
        for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step)
            if ((*step)->isAlive())
                texts.push_back((*step)->label);
        return texts;
    }

    void clear()
    {
        m_steps.clear();
        m_memory = 0;
    }

private:
    std::deque<std::unique_ptr<Step>> m_steps;
    std::size_t m_memory = 0;
};

UT_UndoManager::UT_UndoManager()
    : m_overflowed(false),
      m_undo(new History),
      m_redo(new History),
      m_disabled(0),
      m_performing(false),
      m_complain(nullptr)
{
}

UT_UndoManager::~UT_UndoManager() {}

int UT_UndoManager::beginUndoBlock(const char* name, UT_UndoBlockType type)
{
    if (type == TOPLEVEL && !m_labels.empty())
        return 0;
    m_labels.push_back(name ? name : "");
    return getLevel();
}

void UT_UndoManager::endUndoBlock(int level)
{
    if (level <= 0 || level > getLevel())
        return;
    if (level == 1)
        finishStep();
    m_labels.resize(static_cast<std::size_t>(level) - 1);
}

const char* UT_UndoManager::getLabel(int levelFromOne) const
{
    const bool open = levelFromOne > 0 && levelFromOne <= getLevel();
    return open ? m_labels[static_cast<std::size_t>(levelFromOne) - 1].c_str() : nullptr;
}

void UT_UndoManager::addToUndoBlock(std::unique_ptr<UT_Undo> change, const char* label)
{
    if (!isRecording() || !change)
        return;
    const int ownBlock = beginUndoBlock(label, TOPLEVEL);
    // What was taken back came before this change, and can no longer follow it.
    m_redo->clear();
    addToOpenStep(std::move(change));
    endUndoBlock(ownBlock);
}

void UT_UndoManager::addToOpenStep(std::unique_ptr<UT_Undo> change)
{
    const std::string target = change->getTarget();
    if (target.empty())
        m_targets.clear();
    if (m_overflowed || (!target.empty() && !m_targets.insert(target).second))
        return;
    if (!m_open)
        m_open.reset(new Step);
    m_open->memory += change->getMemoryUsage() + target.size();
    m_open->changes.push_back(std::move(change));
    if (m_open->memory > most_memory)
        giveUpOpenStep();
}

void UT_UndoManager::giveUpOpenStep()
{
    clear();
    m_overflowed = true;
    if (m_complain)
        m_complain("\"" + m_labels.front() +
                   "\" changes too much to be undone; it and everything before it cannot be undone any more. "
                   "Do it in smaller blocks to keep them undoable.");
}

void UT_UndoManager::finishStep()
{
    m_overflowed = false;
    m_targets.clear();
    if (!m_open)
        return;
    m_open->label = m_labels.front();
    m_undo->add(std::move(m_open));
}

void UT_UndoManager::clear()
{
    m_open.reset();
    m_targets.clear();
    m_undo->clear();
    m_redo->clear();
}

std::string UT_UndoManager::whyNotNow() const
{
    if (m_performing)
        return "A step is being undone or redone right now.";
    if (!m_labels.empty())
        return "The undo block \"" + m_labels.front() + "\" is open; undo and redo when it is closed.";
    return std::string();
}

bool UT_UndoManager::perform(History& from, History& to, void (Step::*run)())
{
    if (m_performing || !m_labels.empty())
        return false;
    std::unique_ptr<Step> step = from.take();
    if (!step)
        return false;
    const UT_Held held(m_performing);
    std::exception_ptr thrown;
    try
    {
        ((*step).*run)();
    }
    catch (...)
    {
        thrown = std::current_exception();
    }
    to.add(std::move(step));
    if (thrown)
        std::rethrow_exception(thrown);
    return true;
}

bool UT_UndoManager::performUndo() { return perform(*m_undo, *m_redo, &Step::undo); }

bool UT_UndoManager::performRedo() { return perform(*m_redo, *m_undo, &Step::redo); }

std::vector<std::string> UT_UndoManager::getUndoLabels() const { return m_undo->labels(); }

std::vector<std::string> UT_UndoManager::getRedoLabels() const { return m_redo->labels(); }

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
