#include "runtime_directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace zelk::ipr
{
namespace
{
std::string ownDirectory() { return "/tmp/korvan-" + std::to_string(geteuid()); }

// Why the directory is no private one; empty if it is.
std::string objectionTo(const std::string& directory)
{
    struct stat status = {};
    if (lstat(directory.c_str(), &status) != 0)
        return std::string("cannot be used: ") + std::strerror(errno);
    if (!S_ISDIR(status.st_mode))
        return "is no directory";
    if (status.st_uid != geteuid())
        return "belongs to another user";
    return (status.st_mode & 077) != 0 ? "can be entered by other users" : "";
}
} // namespace

std::string runtimeDirectory()
{
    const char* directory = std::getenv("XDG_RUNTIME_DIR");
    return directory && *directory ? directory : ownDirectory();
}

bool prepareRuntimeDirectory(const std::string& directory, std::string& error)
{
    if (directory == ownDirectory())
        mkdir(directory.c_str(), 0700); // what it is afterwards counts, whoever made it
    const std::string objection = objectionTo(directory);
    if (!objection.empty())
        error = "The runtime directory " + directory + " " + objection +
                ". Make it yours with mode 0700, or set ZELK_IPR_ENDPOINT.";
    return objection.empty();
}

} // namespace zelk::ipr
