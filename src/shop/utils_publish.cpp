#include "utils_publish.h"

#include <zelk/ipr/delta.h>
#include <zelk/ipr/publisher.h>

namespace zelk
{
namespace shop
{

void publish(const ipr::Delta& delta) { ipr::DeltaPublisher::instance().send(delta.serialize()); }

void publish(ipr::Delta& delta, const std::vector<std::string>& targetPaths)
{
    for (const std::string& path : targetPaths)
    {
        delta.nodePath = path;
        publish(delta);
    }
}

} // namespace shop
} // namespace zelk
