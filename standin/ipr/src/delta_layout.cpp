// The layout of the records, which plug-ins were compiled against. It holds under both string ABIs: a text
// takes 32 or 8 bytes, and everything else follows from that.
#include <zelk/ipr/delta.h>

#include <cstddef>
#include <type_traits>

namespace
{
using zelk::ipr::Delta;
using zelk::ipr::DeltaParm;

constexpr std::size_t text_bytes = sizeof(std::string);
constexpr std::size_t map_bytes = sizeof(std::map<std::string, DeltaParm>);

static_assert(text_bytes == 32 || text_bytes == 8, "a text of one of the two ABIs");

static_assert(std::is_standard_layout<DeltaParm>::value, "a plain record");
static_assert(offsetof(DeltaParm, type) == 0 && sizeof(DeltaParm::type) == 1, "type");
static_assert(offsetof(DeltaParm, value) == 8 && sizeof(DeltaParm::value) == 16, "value");
static_assert(offsetof(DeltaParm, matrix) == 24 && sizeof(DeltaParm::matrix) == 64, "matrix");
static_assert(offsetof(DeltaParm, str) == 88, "str");
static_assert(offsetof(DeltaParm, reserved) == 88 + text_bytes && sizeof(DeltaParm::reserved) == 8,
              "reserved");
static_assert(sizeof(DeltaParm) == 96 + text_bytes, "nothing else");

static_assert(std::has_virtual_destructor<Delta>::value, "its only virtual operation");
static_assert(std::is_base_of<std::map<std::string, DeltaParm>, Delta>::value, "a record is a map");
static_assert(map_bytes == 48, "the map itself");
// A class with a virtual operation has no standard layout, but no virtual base either: the offsets are
// constants.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(Delta, nodePath) == sizeof(void*) + map_bytes, "first member after the map");
static_assert(offsetof(Delta, entryName) == sizeof(void*) + map_bytes + text_bytes, "second member");
#pragma GCC diagnostic pop
static_assert(sizeof(Delta) == sizeof(void*) + map_bytes + 2 * text_bytes, "nothing else");
} // namespace
