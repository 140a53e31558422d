// Bytes as a change record. What the reader accepts must be written and read again as the same record; what it refuses
// must leave no record and a sentence.
#include "fuzzing.h"

#include <zelk/ipr/reader.h>

#include <kr_observe.h>

using zelk::ipr::readDelta;
using zelk::ipr::ReceivedDelta;

namespace
{
bool haveSameParms(const ReceivedDelta& a, const ReceivedDelta& b)
{
    if (a.size() != b.size())
        return false;
    for (const auto& parm : a)
    {
        const auto other = b.find(parm.first);
        if (other == b.end() || other->second.type != parm.second.type ||
            other->second.str != parm.second.str)
            return false;
    }
    return true;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    KrMsgSetConsoleFlags(0);
    const std::string text(reinterpret_cast<const char*>(data), size);
    ReceivedDelta read, again;
    std::string error;
    if (!readDelta(text, read, error))
    {
        require(!error.empty(), "a refusal has a sentence");
        require(read.empty() && read.nodePath.empty() && read.entryName.empty(),
                "a refusal leaves no record");
        return 0;
    }
    const std::string written = read.serialize();
    require(readDelta(written, again, error), "what was written can be read");
    require(again.nodePath == read.nodePath && again.entryName == read.entryName, "the names stay");
    require(haveSameParms(read, again), "the parameters stay");
    require(again.serialize() == written, "the values stay, to the bit");
    return 0;
}
