#include "utils_publish.h"

#include <zelk/ipr/delta.h>
#include <zelk/ipr/publisher.h>

namespace zelk
{
namespace shop
{

void publish(ipr::Delta& delta, const std::vector<std::string>& targetPaths)
{
    for (const std::string& path : targetPaths)
    {
        delta.nodePath = path;
        ipr::DeltaPublisher::instance().send(delta.serialize());
    }
}

} // namespace shop
} // namespace zelk
