#include "http_server.h"

#include <standin/host.h>

#include <dlfcn.h>

#include <utility>

namespace kshop
{

std::unique_ptr<HttpServer> loadHttpServer(HttpServer::Handler&& handler, std::string& why)
{
    const std::string file = standin::treeRoot() + "/lib/kshop_http.so";
    void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL); // never closed: its threads are in it
    void* const make = module ? dlsym(module, make_http_server_name) : nullptr;
    if (!make)
    {
        const char* const reason = dlerror();
        why = "the preview's web server cannot be loaded: " + std::string(reason ? reason : file) +
              ". Install kshop again, and libcpp-httplib with it";
        return nullptr;
    }
    return std::unique_ptr<HttpServer>(reinterpret_cast<MakeHttpServer>(make)(std::move(handler)));
}

} // namespace kshop
