#include "report.h"

#include <cstdio>

namespace zelk::ipr
{

// One call, so that lines of several threads do not mix.
void report(const std::string& sentence) noexcept
{
    std::fprintf(stderr, "[zelk::ipr] %s\n", sentence.c_str());
}

} // namespace zelk::ipr
