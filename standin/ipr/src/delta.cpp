#include <zelk/ipr/delta.h>

#include "wire.h"

namespace zelk::ipr
{
namespace
{
// Null when the array cannot be told: there is none, or its elements mean something in the sender's process
// only.
const Codec* elementCodec(const DeltaParm& parm)
{
    if (parm.type != KR_TYPE_ARRAY || !parm.value.array)
        return nullptr;
    const WireType* element = findWireType(parm.value.array->type);
    return element ? element->element : nullptr;
}

void packArray(Packer& packer, const KtArray& array, const Codec& codec)
{
    const std::uint64_t count = array.data ? std::uint64_t(array.nelements) * array.nkeys : 0;
    packer.pack_map(array.nkeys == 1 ? 2 : 3);
    packer.packText("element_type");
    packer.pack(array.type);
    if (array.nkeys != 1)
    {
        packer.packText("key_count");
        packer.pack(array.nkeys);
    }
    packer.packText("values");
    packer.pack_array(static_cast<std::uint32_t>(count));
    for (std::uint64_t i = 0; i < count; ++i)
        codec.pack(packer, static_cast<const char*>(array.data) + i * codec.bytes);
}

void packValue(Packer& packer, const DeltaParm& parm)
{
    const WireType* type = findWireType(parm.type);
    if (const Codec* element = elementCodec(parm))
        packArray(packer, *parm.value.array, *element);
    else if (type && type->place == Place::Value)
        type->single->pack(packer, &parm.value);
    else if (type && type->place == Place::Matrix)
        type->single->pack(packer, &parm.matrix);
    else if (parm.type == KR_TYPE_ARRAY && parm.value.array)
        packer.packText("<unhandled>");
    else
        packer.packText(parm.str);
}

void packParm(Packer& packer, const DeltaParm& parm)
{
    packer.pack_map(2);
    packer.packText("type");
    packer.pack(parm.type);
    packer.packText("value");
    packValue(packer, parm);
}
} // namespace

Delta::Delta() = default;

Delta::~Delta() = default;

std::string Delta::serialize() const
{
    std::string text;
    TextStream stream{text};
    Packer packer(stream);
    packer.pack_map(3);
    packer.packText("node_path");
    packer.packText(nodePath);
    packer.packText("entry_name");
    packer.packText(entryName);
    packer.packText("parms");
    packer.pack_map(static_cast<std::uint32_t>(size()));
    for (const auto& [name, parm] : *this)
    {
        packer.packText(name);
        packParm(packer, parm);
    }
    return text;
}

} // namespace zelk::ipr
