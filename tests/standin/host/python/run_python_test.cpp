#include "python_fixture.h"

#include <standin/python.h>

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace
{

/// A directory of its own for each test, with a script in it.
class RunPythonFile : public PythonTest
{
protected:
    RunPythonFile()
    {
        std::string name = (fs::temp_directory_path() / "run_python_XXXXXX").string();
        directory = ::mkdtemp(&name[0]);
    }
    ~RunPythonFile() override { fs::remove_all(directory); }

    std::string script(const std::string& text, const std::string& name = "script.py")
    {
        const fs::path path = directory / name;
        std::ofstream(path) << text;
        return path.string();
    }

    int runScript(const std::string& text, const std::vector<std::string>& args = {})
    {
        testing::internal::CaptureStderr();
        const int status = standin::runPythonFile(script(text), args);
        errors = testing::internal::GetCapturedStderr();
        return status;
    }

    std::string written(const std::string& name)
    {
        std::ifstream file(directory / name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    fs::path directory;
    std::string errors;
};

TEST_F(RunPythonFile, GivesZeroForAScriptThatEnds) { EXPECT_EQ(runScript("x = 1\n"), 0); }

TEST_F(RunPythonFile, GivesTheStatusOfSysExit)
{
    EXPECT_EQ(runScript("import sys; sys.exit(7)"), 7);
    EXPECT_EQ(runScript("import sys; sys.exit()"), 0);
}

TEST_F(RunPythonFile, PrintsTheTextOfSysExitAndGivesOne)
{
    EXPECT_EQ(runScript("import sys; sys.exit('nothing to do')"), 1);
    EXPECT_EQ(errors, "nothing to do\n");
}

TEST_F(RunPythonFile, PrintsTheTracebackOfAnExceptionAndGivesOne)
{
    EXPECT_EQ(runScript("def f():\n    return nowhere\nf()\n"), 1);
    EXPECT_NE(errors.find("script.py\", line 2, in f"), std::string::npos) << errors;
    EXPECT_NE(errors.find("NameError: name 'nowhere' is not defined"), std::string::npos) << errors;
}

TEST_F(RunPythonFile, PrintsASyntaxErrorWithItsLine)
{
    EXPECT_EQ(runScript("x = 1\nif:\n"), 1);
    EXPECT_NE(errors.find("script.py\", line 2"), std::string::npos) << errors;
}

TEST_F(RunPythonFile, RefusesNullBytesWithASentence)
{
    EXPECT_EQ(runScript(std::string("x = 1\0\n", 7)), 1);
    EXPECT_NE(errors.find("script.py holds a null byte, so it is no Python script. Save it as UTF-8 text."),
              std::string::npos)
        << errors;
}

TEST_F(RunPythonFile, NamesAFileThatCannotBeReadAndGivesTwo)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(standin::runPythonFile("/nowhere/at/all.py", {}), 2);
    const std::string text = testing::internal::GetCapturedStderr();
    EXPECT_NE(text.find("\"/nowhere/at/all.py\": No such file or directory"), std::string::npos) << text;
}

TEST_F(RunPythonFile, RefusesADirectory)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(standin::runPythonFile(directory.string(), {}), 2);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Is a directory"), std::string::npos);
}

TEST_F(RunPythonFile, SetsArgumentsMainAndHou)
{
    EXPECT_EQ(runScript("import sys, os\n"
                        "assert sys.argv[1:] == ['a', '--b'], sys.argv\n"
                        "assert os.path.basename(sys.argv[0]) == 'script.py'\n"
                        "assert __name__ == '__main__' and __file__ == sys.argv[0]\n"
                        "assert hou.root().path() == '/'\n",
                        {"a", "--b"}),
              0)
        << errors;
}

TEST_F(RunPythonFile, ImportsModulesThatLieBesideIt)
{
    script("value = 12\n", "neighbour_module.py");
    EXPECT_EQ(runScript("import neighbour_module\nassert neighbour_module.value == 12"), 0) << errors;
}

TEST_F(RunPythonFile, LeavesArgumentsAndModulePathAsTheyWere)
{
    run("import sys\nbefore = list(sys.argv), list(sys.path)");
    EXPECT_EQ(runScript("x = 1", {"a"}), 0);
    EXPECT_EQ(evaluate("(list(sys.argv), list(sys.path)) == before"), "True");
}

TEST_F(RunPythonFile, RunsExitHandlersAndWaitsForThreads)
{
    EXPECT_EQ(runScript("import atexit, os, threading, time\n"
                        "here = os.path.dirname(__file__)\n"
                        "def note(name):\n    open(os.path.join(here, name), 'w').write('done')\n"
                        "def slowly():\n    time.sleep(0.05)\n    note('thread')\n"
                        "atexit.register(note, 'exit')\n"
                        "threading.Thread(target=slowly).start()\n"),
              0)
        << errors;
    EXPECT_EQ(written("thread"), "done");
    EXPECT_EQ(written("exit"), "done");
}

TEST_F(RunPythonFile, IsInterruptedByCtrlC)
{
    EXPECT_EQ(runScript("import os, signal, time\nos.kill(os.getpid(), signal.SIGINT)\ntime.sleep(5)\n"),
              130);
    EXPECT_NE(errors.find("KeyboardInterrupt"), std::string::npos) << errors;
}

TEST_F(RunPythonFile, GivesCtrlCBackAfterwards)
{
    struct sigaction before, after;
    sigaction(SIGINT, nullptr, &before);
    runScript("x = 1");
    sigaction(SIGINT, nullptr, &after);
    EXPECT_EQ(before.sa_handler, after.sa_handler);
}

TEST_F(RunPythonFile, KnowsWhereThePackageLies)
{
    EXPECT_TRUE(fs::exists(fs::path(standin::pythonDirectory()) / "hou" / "__init__.py"))
        << standin::pythonDirectory();
}

} // namespace
