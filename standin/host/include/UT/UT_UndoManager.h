#pragma once
#include <string>
#include <vector>

/// TOPLEVEL opens a block only when none is open; ANYLEVEL opens one inside whatever is open.
enum UT_UndoBlockType
{
    TOPLEVEL = 0,
    ANYLEVEL = 1
};

/// Keeps the undo blocks that are open. Not for several threads: changes are made on the main one.
class UT_UndoManager
{
public:
    UT_UndoManager() {}

    /// Opens a block and returns its level, from 1; 0 when `type` asks for none to be opened.
    int beginUndoBlock(const char* name, UT_UndoBlockType type);
    /// Closes the block of this level, and any that were left open inside it. Level 0 and unknown levels do
    /// nothing.
    void endUndoBlock(int level);

    /// Number of open blocks, and their labels from the outermost.
    int getLevel() const { return static_cast<int>(m_labels.size()); }
    const char* getLabel(int levelFromOne) const;

private:
    std::vector<std::string> m_labels;
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
