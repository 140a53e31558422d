#pragma once
#include <cstddef>
#include <string>

/// A change that can be taken back. Code that changes something hands one to UT_UndoManager::addToUndoBlock().
///
/// What it changed may be gone by the time it is asked to restore it; then it does nothing.
class UT_Undo
{
public:
    virtual ~UT_Undo() {}

    /// Restore what was before the change, and what was after it. They alternate, undo() comes first, and everything
    /// that was changed later has been taken back then.
    virtual void undo() = 0;
    virtual void redo() = 0;

    /// False when what was changed is gone for good.
    virtual bool isAlive() const = 0;
    /// Roughly how many bytes it holds.
    virtual std::size_t getMemoryUsage() const = 0;
    /// What was changed, as a text without meaning: inside one block only the first change of a target is kept, since
    /// that one knows what was before the block. Empty for a change of the structure, which ends this for the
    /// changes before it.
    virtual std::string getTarget() const = 0;
};
