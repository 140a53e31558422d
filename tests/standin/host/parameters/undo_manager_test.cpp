#include <UT/UT_UndoManager.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{
typedef std::vector<std::string> Texts;

/// Writes what is asked of it into a log.
class NotedUndo : public UT_Undo
{
public:
    NotedUndo(Texts& log, const std::string& name) : m_log(log), m_name(name) {}

    void undo() override { m_log.push_back("undo " + m_name); }
    void redo() override { m_log.push_back("redo " + m_name); }
    bool isAlive() const override { return alive; }
    std::size_t getMemoryUsage() const override { return memory; }
    std::string getTarget() const override { return target; }

    bool alive = true;
    std::size_t memory = 100;
    std::string target;

private:
    Texts& m_log;
    std::string m_name;
};

class ThrowingUndo : public NotedUndo
{
public:
    using NotedUndo::NotedUndo;
    void undo() override
    {
        NotedUndo::undo();
        throw std::runtime_error("listener");
    }
};

class UndoManager : public ::testing::Test
{
protected:
    /// Records a change; the pointer is good as long as the manager keeps it.
    NotedUndo* change(const std::string& name, const char* label = "Change")
    {
        auto* made = new NotedUndo(log, name);
        undos.addToUndoBlock(std::unique_ptr<UT_Undo>(made), label);
        return made;
    }
    /// A change of something that has a name.
    void changeOf(const std::string& target, const std::string& name)
    {
        std::unique_ptr<NotedUndo> made(new NotedUndo(log, name));
        made->target = target;
        undos.addToUndoBlock(std::move(made), "Change");
    }
    void changeOfSize(std::size_t memory)
    {
        std::unique_ptr<NotedUndo> made(new NotedUndo(log, "large"));
        made->memory = memory;
        undos.addToUndoBlock(std::move(made), "Large");
    }

    UT_UndoManager undos;
    Texts log;
};

Texts complaints;

const std::size_t mebibyte = std::size_t(1) << 20;
} // namespace

TEST_F(UndoManager, HasNothingToUndoAtFirst)
{
    EXPECT_FALSE(undos.performUndo());
    EXPECT_FALSE(undos.performRedo());
    EXPECT_EQ(undos.whyNotNow(), "");
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST_F(UndoManager, MakesOneStepOfAChangeOutsideOfBlocks)
{
    change("a", "First");
    change("b", "Second");
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Second", "First"}));
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(log, (Texts{"undo b"}));
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"First"}));
    EXPECT_EQ(undos.getRedoLabels(), (Texts{"Second"}));
}

TEST_F(UndoManager, UndoesABlockBackwardsAndRedoesItForwards)
{
    const int level = undos.beginUndoBlock("Block", ANYLEVEL);
    change("a");
    change("b");
    undos.endUndoBlock(level);
    EXPECT_TRUE(undos.performUndo());
    EXPECT_TRUE(undos.performRedo());
    EXPECT_EQ(log, (Texts{"undo b", "undo a", "redo a", "redo b"}));
    EXPECT_FALSE(undos.performRedo());
}

TEST_F(UndoManager, CollapsesNestedBlocksUnderTheOutermostLabel)
{
    EXPECT_EQ(undos.beginUndoBlock("Outer", ANYLEVEL), 1);
    change("a");
    EXPECT_EQ(undos.beginUndoBlock("Inner", ANYLEVEL), 2);
    EXPECT_STREQ(undos.getLabel(1), "Outer");
    EXPECT_STREQ(undos.getLabel(2), "Inner");
    EXPECT_EQ(undos.getLabel(3), nullptr);
    change("b");
    undos.endUndoBlock(2);
    EXPECT_TRUE(undos.getUndoLabels().empty());
    undos.endUndoBlock(1);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Outer"}));
}

TEST_F(UndoManager, OpensATopLevelBlockOnlyOutsideOfOthers)
{
    EXPECT_EQ(undos.beginUndoBlock("Top", TOPLEVEL), 1);
    EXPECT_EQ(undos.beginUndoBlock("Not top", TOPLEVEL), 0);
    undos.endUndoBlock(0);
    EXPECT_EQ(undos.getLevel(), 1);
    undos.endUndoBlock(1);
    EXPECT_EQ(undos.getLevel(), 0);
}

TEST_F(UndoManager, ClosesTheBlocksThatWereLeftOpenInsideAndIgnoresUnknownLevels)
{
    undos.beginUndoBlock("Outer", ANYLEVEL);
    undos.beginUndoBlock("Left open", ANYLEVEL);
    undos.endUndoBlock(7);
    undos.endUndoBlock(-1);
    EXPECT_EQ(undos.getLevel(), 2);
    change("a");
    undos.endUndoBlock(1);
    EXPECT_EQ(undos.getLevel(), 0);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Outer"}));
}

TEST_F(UndoManager, LeavesNothingOfAnEmptyBlock)
{
    const int outer = undos.beginUndoBlock("Outer", ANYLEVEL);
    const int inner = undos.beginUndoBlock(nullptr, ANYLEVEL);
    EXPECT_STREQ(undos.getLabel(inner), "");
    undos.endUndoBlock(inner);
    undos.endUndoBlock(outer);
    EXPECT_TRUE(undos.getUndoLabels().empty());
    EXPECT_FALSE(undos.performUndo());
}

TEST_F(UndoManager, KeepsWhatCanBeRedoneOverAnEmptyBlockAndDropsItForAChange)
{
    change("a", "First");
    undos.performUndo();
    undos.endUndoBlock(undos.beginUndoBlock("Empty", ANYLEVEL));
    EXPECT_EQ(undos.getRedoLabels(), (Texts{"First"}));
    change("b", "Second");
    EXPECT_TRUE(undos.getRedoLabels().empty());
    EXPECT_FALSE(undos.performRedo());
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Second"}));
}

TEST_F(UndoManager, UndoesNothingWhileABlockIsOpen)
{
    change("a");
    const int level = undos.beginUndoBlock("Busy", ANYLEVEL);
    EXPECT_FALSE(undos.performUndo());
    EXPECT_EQ(undos.whyNotNow(), "The undo block \"Busy\" is open; undo and redo when it is closed.");
    undos.endUndoBlock(level);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(undos.performUndo());
}

TEST_F(UndoManager, KeepsTheFirstChangeOfATargetInABlock)
{
    const int level = undos.beginUndoBlock("Drag", ANYLEVEL);
    changeOf("slider", "first");
    changeOf("slider", "second");
    changeOf("other", "third");
    undos.endUndoBlock(level);
    undos.performUndo();
    EXPECT_EQ(log, (Texts{"undo third", "undo first"}));
}

TEST_F(UndoManager, KeepsLaterChangesOfATargetBehindAChangeOfTheStructure)
{
    const int level = undos.beginUndoBlock("Block", ANYLEVEL);
    changeOf("slider", "first");
    change("structure");
    changeOf("slider", "second");
    undos.endUndoBlock(level);
    undos.performUndo();
    EXPECT_EQ(log, (Texts{"undo second", "undo structure", "undo first"}));
}

TEST_F(UndoManager, RecordsNothingWhileItIsSwitchedOffHoweverOften)
{
    undos.disable(true);
    undos.disable(true);
    change("a");
    undos.disable(false);
    EXPECT_FALSE(undos.isRecording());
    change("b");
    undos.disable(false);
    EXPECT_TRUE(undos.isRecording());
    change("c", "Recorded");
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Recorded"}));
}

TEST_F(UndoManager, KeepsWhatCanBeRedoneOverAChangeThatIsNotRecorded)
{
    change("a", "First");
    undos.performUndo();
    {
        const UT_AutoDisableUndos off(&undos);
        change("b");
    }
    EXPECT_EQ(undos.getRedoLabels(), (Texts{"First"}));
}

TEST_F(UndoManager, PassesOverStepsOfWhichEverythingIsGone)
{
    change("a", "Alive");
    NotedUndo* gone = change("b", "Gone");
    gone->alive = false;
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Alive"}));
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(log, (Texts{"undo a"}));
    EXPECT_EQ(undos.getRedoLabels(), (Texts{"Alive"}));
    EXPECT_FALSE(undos.performUndo());
}

TEST_F(UndoManager, DoesTheWholeStepBeforeAnExceptionComesOut)
{
    const int level = undos.beginUndoBlock("Block", ANYLEVEL);
    change("a");
    undos.addToUndoBlock(std::unique_ptr<UT_Undo>(new ThrowingUndo(log, "b")), "Change");
    undos.endUndoBlock(level);
    EXPECT_THROW(undos.performUndo(), std::runtime_error);
    EXPECT_EQ(log, (Texts{"undo b", "undo a"}));
    EXPECT_TRUE(undos.isRecording());
    EXPECT_EQ(undos.getRedoLabels(), (Texts{"Block"}));
    EXPECT_TRUE(undos.performRedo());
}

TEST_F(UndoManager, HoldsAThousandStepsTheOldestGoFirst)
{
    for (int i = 0; i < 1500; ++i)
        change("a", std::to_string(i).c_str());
    const Texts labels = undos.getUndoLabels();
    ASSERT_EQ(labels.size(), 1000u);
    EXPECT_EQ(labels.front(), "1499");
    EXPECT_EQ(labels.back(), "500");
}

TEST_F(UndoManager, HoldsBoundedMemory)
{
    for (int i = 0; i < 10; ++i)
        changeOfSize(10 * mebibyte);
    EXPECT_EQ(undos.getUndoLabels().size(), 6u);
    // Moving steps over and back loses none.
    while (undos.performUndo())
        ;
    EXPECT_EQ(undos.getRedoLabels().size(), 6u);
    while (undos.performRedo())
        ;
    EXPECT_EQ(undos.getUndoLabels().size(), 6u);
}

TEST_F(UndoManager, GivesUpAStepThatIsTooLargeAndSaysSoOnce)
{
    complaints.clear();
    undos.setComplaint([](const std::string& sentence) { complaints.push_back(sentence); });
    change("a", "Before");
    const int level = undos.beginUndoBlock("Import", ANYLEVEL);
    for (int i = 0; i < 20; ++i)
        changeOfSize(10 * mebibyte);
    undos.endUndoBlock(level);
    EXPECT_TRUE(undos.getUndoLabels().empty());
    EXPECT_EQ(complaints,
              (Texts{"\"Import\" changes too much to be undone; it and everything before it cannot be "
                     "undone any more. Do it in smaller blocks to keep them undoable."}));
    change("b", "After");
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"After"}));
}

TEST_F(UndoManager, ForgetsEverythingOnRequestAlsoWhatAnOpenBlockHolds)
{
    change("a");
    undos.performUndo();
    change("b");
    const int level = undos.beginUndoBlock("Block", ANYLEVEL);
    change("c");
    undos.clear();
    changeOf("slider", "d");
    undos.endUndoBlock(level);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Block"}));
    undos.performUndo();
    EXPECT_EQ(log, (Texts{"undo a", "undo d"}));
}

TEST_F(UndoManager, TakesNoChangeForNone)
{
    undos.addToUndoBlock(nullptr, "Nothing");
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST(UndoBlock, IsClosedWhenAnExceptionPasses)
{
    UT_UndoManager& undos = *UTgetUndoManager();
    try
    {
        const UT_AutoUndoBlock outer("Outer", ANYLEVEL);
        const UT_AutoUndoBlock inner("Inner", ANYLEVEL);
        EXPECT_EQ(undos.getLevel(), 2);
        throw std::runtime_error("stop");
    }
    catch (const std::runtime_error&)
    {
        EXPECT_EQ(undos.getLevel(), 0);
    }
}

TEST(UndoBlock, BelongsToTheHostsManagerUnlessAnotherIsGiven)
{
    UT_UndoManager own;
    const int level = UTbeginUndoBlock("Own", TOPLEVEL, &own);
    EXPECT_EQ(own.getLevel(), 1);
    EXPECT_EQ(UTgetUndoManager()->getLevel(), 0);
    UTendUndoBlock(level, &own);
    EXPECT_EQ(own.getLevel(), 0);
}
