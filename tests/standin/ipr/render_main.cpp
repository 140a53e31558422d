// A render for tests: listens, and prints a line for each text that arrives.
#include <zelk/ipr/listener.h>

#include <cstdio>

namespace
{
// Long texts by their beginning and length.
void print(const std::string& text)
{
    if (text.size() <= 100)
        std::printf("%s\n", text.c_str());
    else
        std::printf("%s... %zu\n", text.substr(0, text.find(' ', 5)).c_str(), text.size());
    std::fflush(stdout);
}
} // namespace

int main(int count, char** arguments)
{
    zelk::ipr::Listener listener;
    std::string text;
    if (!listener.open(count > 1 ? arguments[1] : "", text))
    {
        std::printf("refused: %s\n", text.c_str());
        return 1;
    }
    for (const std::string& endpoint : listener.endpoints())
        print("listening at " + endpoint);
    while (listener.receive(text, -1))
        print(text);
    return 0;
}
