#include "support.h"

#include <zelk/ipr/observe.h>
#include <zelk/ipr/publisher.h>

#include <stdexcept>

using namespace zelk::ipr;

namespace
{
struct ObserverEnd
{
    ~ObserverEnd() { setSendObserver(nullptr); }
};
} // namespace

TEST(SendObserver, SeesEachTextWhetherOrNotARenderListens)
{
    const ObserverEnd end;
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    std::vector<std::string> seen;
    setSendObserver([&](const std::string& text) { seen.push_back(text); });
    publisher.send("a");
    publisher.send(std::string("b\0c", 3));
    setSendObserver(nullptr);
    publisher.send("d");
    EXPECT_EQ(seen, (std::vector<std::string>{"a", std::string("b\0c", 3)}));
}

TEST(SendObserver, DoesNotPassItsTroubleOn)
{
    const ObserverEnd end;
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    int calls = 0;
    setSendObserver(
        [&](const std::string&)
        {
            ++calls;
            throw std::runtime_error("disk full");
        });
    publisher.send("a");
    publisher.send("b");
    EXPECT_EQ(calls, 2);
}

TEST(SendObserver, MayReplaceItself)
{
    const ObserverEnd end;
    const TemporaryDirectory directory;
    const Publisher publisher(directory.endpoint());
    int calls = 0;
    setSendObserver(
        [&](const std::string&)
        {
            ++calls;
            setSendObserver(nullptr);
        });
    publisher.send("a");
    publisher.send("b");
    EXPECT_EQ(calls, 1);
}
