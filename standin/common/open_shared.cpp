#include <common/open_shared.h>

#include <dlfcn.h>

#include <exception>

namespace standin
{

namespace
{

// dlopen() is declared as one that never throws, and the compiler would leave out the handlers around it: hence the
// pointer, which it cannot see through.
void* (*const volatile open_file)(const char*, int) = &dlopen;

} // namespace

OpenedShared openShared(const std::string& file)
{
    try
    {
        if (void* handle = open_file(file.c_str(), RTLD_NOW | RTLD_LOCAL))
            return {handle, false, ""};
        const char* why = dlerror();
        return {nullptr, false, why ? why : "unknown reason"};
    }
    catch (const std::exception& problem)
    {
        return {nullptr, true, std::string("its constructors threw: ") + problem.what()};
    }
    catch (...)
    {
        return {nullptr, true, "its constructors threw something that is no standard exception"};
    }
}

} // namespace standin
