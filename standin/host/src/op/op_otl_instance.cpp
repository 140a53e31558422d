#include "op_otl_instance.h"

#include "../ut/ut_readlimited.h"
#include "op_contents.h"

#include <FS/FS_IndexFile.h>
#include <OP/OP_Network.h>
#include <OP/OP_OTLLibrary.h>
#include <standin/host.h>

#include <memory>
#include <set>

namespace standin
{

namespace
{

/// A few compressed bytes can become any number of bytes; no asset is as large as this.
constexpr exint most_bytes = 512 * 1024 * 1024;

/// Where the section is, for messages.
std::string placeOf(OP_Operator& op, const char* section)
{
    return "\"" + op.getOTLLibrary()->filePath() + "\", section \"" + section + "\" of \"" +
           op.getName().toStdString() + "\"";
}

bool readSection(OP_Operator& op, const char* section, bool compressed, std::string& bytes, std::string& why)
{
    const std::unique_ptr<FS_Reader> reader(op.getOTLIndexFile()->getSectionReader(section));
    if (!reader->getStream())
    {
        why = placeOf(op, section) +
              ", cannot be read: the file was moved or changed since it was installed. "
              "Install it anew.";
        return false;
    }
    const std::unique_ptr<UT_IStream> inflated(compressed ? reader->getStream()->getGzipStream() : nullptr);
    if (UTreadLimited(compressed ? *inflated : *reader->getStream(), bytes, most_bytes))
        return true;
    const bool large = static_cast<exint>(bytes.size()) > most_bytes;
    why = placeOf(op, section) +
          ", cannot be read: " + (large ? "it holds more than 512 MB." : "its bytes are damaged.") +
          " Get an undamaged copy.";
    return false;
}

/// Assets hold locked nodes of other assets, and a damaged file may hold one of itself. Loading happens on one thread.
class LoadingType
{
public:
    explicit LoadingType(const OP_Operator& op) : m_isFirst(types().insert(&op).second), m_op(&op) {}
    ~LoadingType()
    {
        if (m_isFirst)
            types().erase(m_op);
    }
    bool isFirst() const { return m_isFirst; }

private:
    static std::set<const OP_Operator*>& types()
    {
        static std::set<const OP_Operator*> underWay;
        return underWay;
    }

    bool m_isFirst;
    const OP_Operator* m_op;
};

} // namespace

bool readAssetContents(OP_Operator& op, std::string& bytes, std::string& why)
{
    bytes.clear();
    const FS_IndexFile* index = op.getOTLIndexFile();
    if (index && index->hasSection("Contents.gz"))
        return readSection(op, "Contents.gz", true, bytes, why);
    if (index && index->hasSection("Contents"))
        return readSection(op, "Contents", false, bytes, why);
    return true;
}

void loadAssetContents(OP_Node& node)
{
    OP_Operator* op = node.getOperator();
    OP_Network* network = node.castToOPNetwork();
    if (!op || !op->getOTLLibrary() || !network)
        return;
    const std::string path = node.getFullPath().toStdString();
    std::string bytes;
    std::string why;
    const LoadingType loading(*op);
    bool good = loading.isFirst();
    if (!good)
        why = placeOf(*op, "Contents") + ", holds a node of its own type. Get an undamaged copy.";
    good = good && readAssetContents(*op, bytes, why);
    if (good && !bytes.empty() && !readContents(*network, bytes, why))
    {
        good = false;
        why = placeOf(*op, "Contents") + ", cannot be read: " + why + ". Get an undamaged copy.";
    }
    if (!good)
        report(Severity::Error, path + " stays without its contents: " + why);
}

} // namespace standin
