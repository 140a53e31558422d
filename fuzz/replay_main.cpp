// Stands in for libFuzzer: runs a fuzzer once over each file of the directories that it is given. Exit status 1 when
// there is none, so that a corpus that was moved away does not pass.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{
void replay(const std::filesystem::path& path)
{
    std::printf("%s\n", path.c_str());
    std::fflush(stdout); // the last name printed is that of the file that fails
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}
} // namespace

int main(int count, char** arguments)
{
    int files = 0;
    for (int i = 1; i < count; ++i)
    {
        if (!std::filesystem::is_directory(arguments[i]))
            continue;
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i]))
        {
            replay(entry.path());
            ++files;
        }
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
