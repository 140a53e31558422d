#ifndef ZELK_SHOP_UTILS_PUBLISH_H
#define ZELK_SHOP_UTILS_PUBLISH_H

#include <string>
#include <vector>

namespace zelk
{
namespace ipr
{
class Delta;
}

namespace shop
{

/// Sends a filled record, `nodePath` included, to the running render. Whether one listens is the library's concern.
void publish(const ipr::Delta& delta);

/// Sends a record once for each target path, in order. The records differ only in `nodePath`, which is left at the last
/// target.
void publish(ipr::Delta& delta, const std::vector<std::string>& targetPaths);

} // namespace shop
} // namespace zelk

#endif
