#pragma once
#include <UT/UT_Undo.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

/// TOPLEVEL opens a block only when none is open; ANYLEVEL opens one inside whatever is open.
enum UT_UndoBlockType
{
    TOPLEVEL = 0,
    ANYLEVEL = 1
};

/// What can be undone and redone, in named steps, and the undo blocks that are open.
///
/// All changes made while blocks are open become one step when the outermost is closed; it carries that block's label.
/// A block without changes leaves nothing. Values, expressions and numbers of multi-parameter instances are
/// recorded; making, deleting, renaming and wiring nodes is not, nor are changes made while a scene loads or a
/// creation script runs. Steps of which everything was deleted are passed over and forgotten.
///
/// Holds 1000 steps and about 64 MiB, the oldest go first; what is undone holds up to twice as much. A single step
/// that is larger cannot be undone, and as nothing before it could be either, all is forgotten and the person is
/// told. Not for several threads: changes are made on the main one.
class UT_UndoManager
{
public:
    UT_UndoManager();
    ~UT_UndoManager();

    /// Opens a block and returns its level, from 1; 0 when `type` asks for none to be opened.
    int beginUndoBlock(const char* name, UT_UndoBlockType type);
    /// Closes the block of this level, and any that were left open inside it. Level 0 and unknown levels do
    /// nothing.
    void endUndoBlock(int level);

    /// Number of open blocks, and their labels from the outermost.
    int getLevel() const { return static_cast<int>(m_labels.size()); }
    const char* getLabel(int levelFromOne) const;

    /// Switches recording off, and on again once for each time it was switched off.
    void disable(bool on) { m_disabled += on ? 1 : -1; }
    /// True when changes are to be recorded: not while they are switched off, nor while a step is undone or redone.
    bool isRecording() const { return m_disabled == 0 && !m_performing; }
    /// Takes a change that was just made. Outside of blocks it is a step of its own, called `label`. Forgotten
    /// while nothing is recorded.
    void addToUndoBlock(std::unique_ptr<UT_Undo> change, const char* label);

    /// Takes back the last step, or brings back the one that was taken back last. False when there is none, and, with
    /// nothing done, while a block is open or another step is under way. An exception that listeners let pass comes
    /// out after the whole step is done.
    bool performUndo();
    bool performRedo();
    /// Why neither would do anything now, as a sentence; empty when there is no such reason.
    std::string whyNotNow() const;

    /// Labels of the steps, the next one to be undone or redone first.
    std::vector<std::string> getUndoLabels() const;
    std::vector<std::string> getRedoLabels() const;
    /// Forgets all steps, and what the open blocks hold so far. The changes stay.
    void clear();

    /// Host's side: who is told when a step is too large to be kept; null for nobody.
    void setComplaint(void (*complain)(const std::string& sentence)) { m_complain = complain; }

private:
    struct Step;
    class History;

    UT_UndoManager(const UT_UndoManager&);
    UT_UndoManager& operator=(const UT_UndoManager&);

    void addToOpenStep(std::unique_ptr<UT_Undo> change);
    void giveUpOpenStep();
    void finishStep();
    bool perform(History& from, History& to, void (Step::*run)());

    std::vector<std::string> m_labels;
    std::unique_ptr<Step> m_open;    // of the blocks that are open; null before their first change
    std::set<std::string> m_targets; // that the open step has already
    bool m_overflowed;               // the open step became too large
    std::unique_ptr<History> m_undo;
    std::unique_ptr<History> m_redo;
    int m_disabled;
    bool m_performing;
    void (*m_complain)(const std::string& sentence);
};

UT_UndoManager* UTgetUndoManager();

/// As the members; a null manager means the host's own.
int UTbeginUndoBlock(const char* name, UT_UndoBlockType type, UT_UndoManager* manager = 0);
void UTendUndoBlock(int level, UT_UndoManager* manager = 0);

/// Holds a block open for as long as it lives.
class UT_AutoUndoBlock
{
public:
    UT_AutoUndoBlock(const char* name, UT_UndoBlockType type) : m_level(UTbeginUndoBlock(name, type)) {}
    ~UT_AutoUndoBlock() { UTendUndoBlock(m_level); }

private:
    UT_AutoUndoBlock(const UT_AutoUndoBlock&);
    UT_AutoUndoBlock& operator=(const UT_AutoUndoBlock&);

    int m_level;
};

/// Nothing is recorded for as long as this lives.
class UT_AutoDisableUndos
{
public:
    explicit UT_AutoDisableUndos(UT_UndoManager* manager = 0)
        : m_manager(manager ? *manager : *UTgetUndoManager())
    {
        m_manager.disable(true);
    }
    ~UT_AutoDisableUndos() { m_manager.disable(false); }

private:
    UT_AutoDisableUndos(const UT_AutoDisableUndos&);
    UT_AutoDisableUndos& operator=(const UT_AutoDisableUndos&);

    UT_UndoManager& m_manager;
};
