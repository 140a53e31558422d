// Bytes as a scene file: loaded, looked at, saved, loaded again.
#include "fuzzing.h"
#include "host_world.h"

#include <standin/scene.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>
#include <vector>

namespace
{
std::string filePath(const char* name)
{
    static const bool has_shm = std::filesystem::is_directory("/dev/shm");
    const std::filesystem::path folder = has_shm ? "/dev/shm" : std::filesystem::temp_directory_path();
    return (folder / ("korvan_" + std::string(name) + std::to_string(::getpid()) + ".hip")).string();
}

int countNodes(OP_Network& network)
{
    int count = network.getNchildren();
    for (int i = 0; i < network.getNchildren(); ++i)
        if (network.getChild(i)->isNetwork())
            count += countNodes(static_cast<OP_Network&>(*network.getChild(i)));
    return count;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool started = (startQuietHost(), true);
    (void)started;
    const std::string path = filePath("given"), saved = filePath("saved");
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data), static_cast<long>(size));
    std::vector<std::string> warnings;
    std::string why;
    const bool loaded = standin::loadScene(path, warnings, why);
    std::filesystem::remove(path);
    if (!loaded)
    {
        require(!why.empty(), "a scene that cannot be loaded has a sentence");
        forgetMessages();
        return 0;
    }
    const int nodes = countNodes(*OPgetDirector());
    require(standin::saveScene(saved, why), "what was loaded can be saved");
    require(standin::loadScene(saved, warnings, why), "what was saved can be loaded");
    require(countNodes(*OPgetDirector()) == nodes, "no node is lost by saving");
    require(standin::clearScene(why), "the scene can be emptied");
    std::filesystem::remove(saved);
    forgetMessages();
    return 0;
}
