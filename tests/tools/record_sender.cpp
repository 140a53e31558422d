// Lets a Python script hand texts to the process's publisher, as a plug-in does.
#include <zelk/ipr/publisher.h>

extern "C" __attribute__((visibility("default"))) void sendText(const char* text, std::size_t size)
{
    zelk::ipr::DeltaPublisher::instance().send(std::string(text, size));
}
