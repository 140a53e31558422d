#include <zelk/ipr/endpoint.h>

#include "runtime_directory.h"

#include <cstdlib>

namespace zelk::ipr
{

std::string defaultEndpoint() { return "ipc://" + runtimeDirectory() + "/korvan-ipr"; }

std::string configuredEndpoints()
{
    const char* endpoints = std::getenv("ZELK_IPR_ENDPOINT");
    return endpoints && *endpoints ? endpoints : defaultEndpoint();
}

} // namespace zelk::ipr
