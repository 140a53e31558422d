#include "op_otl_manager.h"

#include "op_otl_orphans.h"
#include "op_otl_types.h"

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <standin/host.h>

#include <algorithm>
#include <filesystem>
#include <list>
#include <unordered_map>

namespace standin
{

namespace
{

/// The installed files, of which there may be thousands.
class InstalledFiles
{
public:
    typedef std::pair<const std::string, std::shared_ptr<OP_OTLLibrary>> File; ///< path and its state

    /// Null when the file is not installed.
    File* find(const std::string& path)
    {
        const auto found = m_byPath.find(path);
        return found == m_byPath.end() ? nullptr : &*found->second;
    }

    void add(const std::string& path, const std::shared_ptr<OP_OTLLibrary>& library)
    {
        m_byPath[path] = m_inOrder.emplace(m_inOrder.end(), path, library);
    }

    void erase(const std::string& path)
    {
        const auto found = m_byPath.find(path);
        m_inOrder.erase(found->second);
        m_byPath.erase(found);
    }

    /// In the order of their installing.
    const std::list<File>& inOrder() const { return m_inOrder; }

private:
    std::list<File> m_inOrder;
    std::unordered_map<std::string, std::list<File>::iterator> m_byPath;
};

// Never destroyed: operators keep their libraries for as long as the process lives.
InstalledFiles& installed()
{
    static auto* all = new InstalledFiles;
    return *all;
}

/// The operators that come from a file.
std::vector<OP_Operator*> operatorsFrom(const std::string& path)
{
    std::vector<OP_Operator*> found;
    for (const OP_OperatorTable* table : operatorTables())
        for (OP_Operator* op : operatorsOf(*table))
            if (op->getOTLLibrary() && op->getOTLLibrary()->filePath() == path)
                found.push_back(op);
    return found;
}

/// Some node of one of these types; null when there is none.
OP_Node* findNodeOf(const std::vector<OP_Operator*>& operators)
{
    std::vector<OP_Network*> networks{OPgetDirector()};
    while (!networks.empty())
    {
        const OP_Network* network = networks.back();
        networks.pop_back();
        for (int i = 0; i < network->getNchildren(); ++i)
        {
            OP_Node* child = network->getChild(i);
            if (std::count(operators.begin(), operators.end(), child->getOperator()))
                return child;
            if (OP_Network* inside = child->castToOPNetwork())
                networks.push_back(inside);
        }
    }
    return nullptr;
}

void remove(OP_Operator* op)
{
    if (OP_OperatorTable* table = op->getTable())
        table->removeOperator(op);
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string takenSentence(OP_Operator& held, const std::string& table, const std::string& path)
{
    const std::string plugin = pluginOf(held);
    const std::string owner = held.getOTLLibrary() ? quoted(held.getOTLLibrary()->filePath())
                              : plugin.empty()     ? "the host itself"
                                                   : quoted(plugin);
    return "The " + table + " type " + quoted(held.getName().toStdString()) + " of " + quoted(path) +
           " is left out: " + owner +
           " has a type of that name already. Rename one of the two, or uninstall the other file.";
}

/// Makes one type, or brings it up to date.
void install(const std::shared_ptr<OP_OTLLibrary>& library, int index)
{
    const OP_OTLDefinition& definition = library->getDefinition(index);
    const std::string tableName = definition.getTable().toStdString();
    if (definition.isEmpty() || !definition.getName().isstring() || !canMakeAssets(tableName))
        return;
    OP_OperatorTable* table = OP_Network::getOperatorTable(tableName.c_str());
    OP_Operator* held = table->getOperator(definition.getName());
    if (!held)
        table->addOperator(makeAssetOperator(library, index));
    else if (held->getOTLLibrary() && held->getOTLLibrary()->filePath() == library->filePath())
        held->setOTLLibrary(library, index);
    else
        report(Severity::Error, takenSentence(*held, tableName, library->filePath()));
}

/// Types that the file had when it was installed before, and has no more, go unless there are nodes of them.
void removeVanished(const OP_OTLLibrary& library)
{
    for (OP_Operator* op : operatorsFrom(library.filePath()))
        if (library.findDefinition(op->getTable()->getName(), op->getName()) < 0 && !findNodeOf({op}))
            remove(op);
}

} // namespace

std::string libraryPath(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    std::string text = (error ? std::filesystem::path(path) : absolute).lexically_normal().string();
    while (text.size() > 1 && text.back() == '/')
        text.pop_back();
    return text;
}

std::shared_ptr<OP_OTLLibrary> openLibrary(const std::string& path, std::string& why)
{
    if (path.empty())
    {
        why = "An asset file needs a name.";
        return nullptr;
    }
    auto library = std::make_shared<OP_OTLLibrary>(libraryPath(path).c_str());
    why = library->problem();
    const bool usable = library->isGood() && library->getNumDefinitions() > 0;
    if (why.empty())
        why = library->definitionProblem();
    if (!usable)
        return nullptr;
    if (!why.empty())
        report(Severity::Warning, why);
    why.clear();
    return library;
}

bool installLibrary(const std::string& path, std::string& why)
{
    OPgetDirector(); // plug-ins have their types first
    const std::shared_ptr<OP_OTLLibrary> library = openLibrary(path, why);
    if (!library)
        return false;
    InstalledFiles::File* const held = installed().find(library->filePath());
    if (held)
        held->second = library;
    else
        installed().add(library->filePath(), library);
    for (int i = 0; i < library->getNumDefinitions(); ++i)
        install(library, i);
    if (held)
        removeVanished(*library);
    return true;
}

bool uninstallLibrary(const std::string& path, std::string& why)
{
    const std::string full = libraryPath(path);
    if (!installed().find(full))
    {
        why = quoted(full) + " is not installed.";
        return false;
    }
    const std::vector<OP_Operator*> operators = operatorsFrom(full);
    Orphans orphans(operators);
    for (OP_Operator* op : operators)
        remove(op);
    installed().erase(full);
    orphans.restore();
    const std::size_t count = orphans.paths().size();
    const std::string others = " and " + std::to_string(count - 1) + " more stay as placeholders";
    if (count)
        report(Severity::Warning, quoted(full) + " was uninstalled while there were nodes of its types: " +
                                      orphans.paths().front() +
                                      (count > 1 ? others : " stays as a placeholder") +
                                      ". Install it again and load the scene anew to use them.");
    return true;
}

std::vector<std::string> installedLibraries()
{
    std::vector<std::string> paths;
    for (const InstalledFiles::File& file : installed().inOrder())
        paths.push_back(file.first);
    return paths;
}

std::shared_ptr<OP_OTLLibrary> installedLibrary(const std::string& path)
{
    const InstalledFiles::File* held = installed().find(libraryPath(path));
    return held ? held->second : nullptr;
}

} // namespace standin
