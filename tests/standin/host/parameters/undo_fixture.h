#pragma once
#include "parm_node.h"

#include <UT/UT_UndoManager.h>

#include <gtest/gtest.h>

/// The host's own undo manager, empty before and after each test.
class UndoTest : public ::testing::Test
{
protected:
    UndoTest() : undos(*UTgetUndoManager()) { undos.clear(); }
    ~UndoTest() override
    {
        EXPECT_EQ(undos.getLevel(), 0) << "a block was left open";
        EXPECT_TRUE(undos.isRecording()) << "recording was left switched off";
        undos.clear();
    }

    UT_UndoManager& undos;
};
