#include "renderer_fixture.h"

namespace
{

// What the console shows while `act` runs under those flags.
template <typename Act>
std::string consoleOf(int flags, Act act)
{
    KrMsgSetConsoleFlags(flags);
    testing::internal::CaptureStderr();
    act();
    std::string shown = testing::internal::GetCapturedStderr();
    KrMsgSetConsoleFlags(KR_MSG_INFO | KR_MSG_WARNING | KR_MSG_ERROR);
    return shown;
}

void sayAll()
{
    KrMsgInfo("one");
    KrMsgWarning("two");
    KrMsgError("three");
}

} // namespace

TEST(Messages, ShowTheirSeverityOnTheConsole)
{
    EXPECT_EQ(consoleOf(3655, sayAll), "korvan info: one\nkorvan warning: two\nkorvan error: three\n");
}

TEST(Messages, AreShownOnlyWhenTheirFlagIsSet)
{
    EXPECT_EQ(consoleOf(KR_MSG_INFO, sayAll), "korvan info: one\n");
    EXPECT_EQ(consoleOf(KR_MSG_WARNING | KR_MSG_ERROR, sayAll), "korvan warning: two\nkorvan error: three\n");
    EXPECT_EQ(consoleOf(0, sayAll), "");
    EXPECT_EQ(consoleOf(~(KR_MSG_INFO | KR_MSG_WARNING | KR_MSG_ERROR), sayAll), "");
}

TEST(Messages, FillInTheirArgumentsHoweverLongTheyAre)
{
    const std::string name(10000, 'n');
    EXPECT_EQ(consoleOf(KR_MSG_INFO, [&] { KrMsgInfo("%s %i", name.c_str(), 7); }),
              "korvan info: " + name + " 7\n");
}

TEST(Messages, KeepTheirFlagsFromStartToEndOfTheRenderer)
{
    KrMsgSetConsoleFlags(KR_MSG_ERROR);
    KrBegin();
    EXPECT_EQ(KrMsgGetConsoleFlags(), KR_MSG_ERROR);
    KrEnd();
    EXPECT_EQ(KrMsgGetConsoleFlags(), KR_MSG_ERROR);
    KrMsgSetConsoleFlags(KR_MSG_INFO | KR_MSG_WARNING | KR_MSG_ERROR);
}

TEST(MessageObserver, SeesWhatTheConsoleDoesNotShow)
{
    Renderer renderer; // sets the flags to 0
    EXPECT_EQ(consoleOf(0, sayAll), "");
    EXPECT_EQ(renderer.takeMessages(), (Messages{"info: one", "warning: two", "error: three"}));
}
