#include "scene_fixture.h"

#include <gmock/gmock.h>

#include <cstdlib>

// The host reads its paths once, when it starts: it is to find no plug-ins here.
int main(int argc, char** argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    ::setenv("HOUDINI_DSO_PATH", "/nowhere", 1);
    ::setenv("HOUDINI_PATH", "/nowhere", 1);
    if (!::testing::GTEST_FLAG(list_tests))
        startSceneHost();
    return RUN_ALL_TESTS();
}
