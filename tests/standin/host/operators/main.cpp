#include "test_types.h"

#include <gmock/gmock.h>

#include <cstdlib>

// The host reads its paths once, when it starts; so they are set before anything else.
int main(int argc, char** argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    ::setenv("HOUDINI_DSO_PATH", TEST_PLUGIN_DIR ":" TEST_PLUGIN_DIR "/later", 1);
    ::setenv("HOUDINI_PATH", TEST_HOUDINI_DIR, 1);
    // Its complaints about the bad plug-ins belong to a run, not to the list of tests.
    if (!::testing::GTEST_FLAG(list_tests))
        startTestHost();
    return RUN_ALL_TESTS();
}
