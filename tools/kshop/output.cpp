#include "output.h"

#include "text.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace kshop
{

int writeOut(const std::string& text)
{
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (written && std::fflush(stdout) == 0)
        return exit_ok;
    if (errno != EPIPE)
        complain(std::string("cannot write the output: ") + std::strerror(errno));
    return exit_failure;
}

void complain(const std::string& sentence)
{
    const std::string line = "kshop: " + printable(sentence) + "\n";
    std::fputs(line.c_str(), stderr);
}

} // namespace kshop
