#include <standin/scene.h>

#include "../op/op_loading.h"
#include "../op/op_node_entries.h"
#include "../op/op_text.h"
#include "../op/op_tree_reader.h"
#include "../op/op_user_data.h"
#include "scene_file.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Director.h>
#include <UT/UT_UndoManager.h>
#include <standin/host.h>

#include <cmath>
#include <filesystem>
#include <set>

namespace standin
{

namespace
{

namespace fs = std::filesystem;

const char* const start_entry = ".start";
const char* const variables_entry = ".variables";
const char* const user_data_entry = ".userdata";

constexpr double usual_rate = 24;

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

// --- the scene's own file ---------------------------------------------------------------------------------------

/// Empty before the scene has one.
std::string& fileOfScene()
{
    static auto* path = new std::string;
    return *path;
}

std::string absolute(const std::string& path)
{
    std::error_code error;
    const fs::path made = fs::absolute(path, error).lexically_normal();
    return error ? path : made.string();
}

struct VariableRow
{
    const char* name;
    std::string (*value)(const fs::path& file);
};

const VariableRow variable_rows[] = {
    {"HIP", [](const fs::path& file) { return file.parent_path().string(); }},
    {"HIPFILE", [](const fs::path& file) { return file.string(); }},
    {"HIPNAME", [](const fs::path& file) { return file.stem().string(); }},
};

bool isOfTheFile(const std::string& variable)
{
    for (const VariableRow& row : variable_rows)
        if (variable == row.name)
            return true;
    return false;
}

void setFileOfScene(const std::string& path)
{
    fileOfScene() = path;
    for (const VariableRow& row : variable_rows)
        CHgetManager()->setVariable(row.name, row.value(scenePath()).c_str());
}

// --- writing ----------------------------------------------------------------------------------------------------

std::string startText()
{
    const CH_Manager& manager = *CHgetManager();
    return "fps " + printNumber(manager.getSamplesPerSec()) + "\ntime " + printNumber(manager.getEvalTime()) +
           "\n";
}

std::string variablesText()
{
    std::string text;
    for (const std::string& name : CHgetManager()->getVariableNames())
    {
        std::string value;
        if (!isOfTheFile(name) && CHgetManager()->getVariable(name.c_str(), value))
            text += "set " + nameText(name) + " = " + quoteText(value) + "\n";
    }
    return text;
}

std::vector<ArchiveEntry> entriesOfScene(std::vector<std::string>& problems)
{
    OP_Director& root = *OPgetDirector();
    std::vector<ArchiveEntry> entries{{start_entry, startText()}, {variables_entry, variablesText()}};
    const std::string userData = writeUserData(root, problems);
    if (!userData.empty())
        entries.push_back({user_data_entry, userData});
    for (int i = 0; i < root.getNchildren(); ++i)
        appendManager(*root.getChild(i), root.getChild(i)->getName().toStdString(), entries, problems);
    return entries;
}

// --- reading ----------------------------------------------------------------------------------------------------

bool readScene(const std::string& path, std::vector<ArchiveEntry>& entries, std::string& why)
{
    std::string bytes;
    if (loadingDepth() > 0)
    {
        why = "The scene " + quoted(path) + " cannot be loaded while another one is. Load it afterwards.";
        return false;
    }
    if (!readWhole(path, bytes, why))
        return false;
    if (readArchive(bytes, entries, why) && (entries.empty() || entries.front().name != start_entry))
        why = "it is an archive, but not one of a scene";
    if (why.empty())
        return true;
    why = "The scene " + quoted(path) + " cannot be loaded: " + why +
          ". Load another copy of it, or save it again where it was made.";
    return false;
}

/// The lines of the entry that a scene begins with: a key and a number.
void readStart(const std::string& text, std::vector<std::string>& warnings)
{
    std::string why;
    for (const Line& line : readLines(text, why))
    {
        double value = 0;
        const bool good = line.size() == 2 && readNumber(line[1].text, value) && std::isfinite(value);
        if (good && line[0].is("fps") && value > 0)
            CHgetManager()->setSamplesPerSec(value);
        else if (good && line[0].is("time"))
            CHgetManager()->setEvalTime(value);
        else
            warnings.push_back("The scene's " + quoted(line[0].text) + " is not understood and is left out.");
    }
}

void readVariables(const std::string& text, std::vector<std::string>& warnings)
{
    std::string why;
    for (const Line& line : readLines(text, why))
        if (line.size() == 4 && line[0].is("set") && line[2].is("=") && why.empty())
            CHgetManager()->setVariable(line[1].text.c_str(), line[3].text.c_str());
        else
            warnings.push_back("A variable of the scene is not understood and is left out: " + line[0].text +
                               (line.size() > 1 ? " " + line[1].text : "") + ".");
}

std::string missingSentence(const std::string& type, const std::vector<std::string>& paths)
{
    const std::size_t others = paths.size() - 1;
    std::string sentence = "The " + type + " is missing: " + paths.front();
    if (others)
        sentence += " and " + std::to_string(others) + (others == 1 ? " other node" : " other nodes");
    return sentence + (others ? " are placeholders" : " is a placeholder") +
           " until the plug-in or the asset that has it is there.";
}

/// Adds what the reader has to say, and begins each sentence with the file.
void addWarnings(const TreeReader& reader, const std::string& file, std::vector<std::string>& warnings)
{
    for (const auto& missing : reader.missingTypes())
        warnings.push_back(missingSentence(missing.first, missing.second));
    warnings.insert(warnings.end(), reader.problems().begin(), reader.problems().end());
    for (std::string& warning : warnings)
        warning.insert(0, file + ": ");
}

void reportUnsaved(const std::string& file, const std::string& problem)
{
    report(Severity::Warning, "Saving " + file + ": " + problem + ".");
}

void makeNodes(TreeReader& reader, bool replacing, std::vector<std::string>& warnings)
{
    OP_Director& root = *OPgetDirector();
    const LoadingScope loading;
    if (replacing)
        reader.takeOver(root, std::string());
    for (const std::string& name : reader.topNodes())
    {
        OP_Network* manager = root.getManager(name.c_str());
        if (!manager)
        {
            warnings.push_back("There is no manager /" + name +
                               " here; what the scene has in it is left out.");
            continue;
        }
        if (replacing)
            reader.takeOver(*manager, name);
        reader.makeChildren(*manager, name);
    }
    reader.finish();
}

void removeUserData(OP_Node& node)
{
    UT_StringArray names;
    node.getUserDataNames(names);
    for (exint i = 0; i < names.entries(); ++i)
        node.deleteUserData(UT_String(names(i).buffer()), false);
}

/// Deletes what is in a manager. Listeners may delete more, and what they make meanwhile goes too.
void empty(OP_Network& manager)
{
    std::set<int> tried;
    for (int i = manager.getNchildren() - 1; i >= 0; i = manager.getNchildren() - 1)
    {
        OP_Node* child = manager.getChild(i);
        if (!tried.insert(child->getUniqueId()).second)
            return; // it is being deleted already, by who called this
        manager.destroyNode(child);
    }
    removeUserData(manager);
}

void emptyScene()
{
    const UT_AutoDisableUndos noUndos;
    OP_Director& root = *OPgetDirector();
    for (int i = 0; i < root.getNchildren(); ++i)
        empty(*root.getChild(i)->castToOPNetwork());
    removeUserData(root);
    CHgetManager()->setSamplesPerSec(usual_rate);
    CHgetManager()->setEvalTime(0);
}

} // namespace

std::string scenePath() { return absolute(fileOfScene().empty() ? "untitled.hip" : fileOfScene()); }

bool saveScene(const std::string& path, std::string& why)
{
    const std::string target = path.empty() ? scenePath() : absolute(path);
    std::vector<std::string> problems;
    const std::string bytes = writeArchive(entriesOfScene(problems));
    for (const std::string& problem : problems)
        reportUnsaved(target, problem);
    if (!writeWhole(target, bytes, why))
        return false;
    setFileOfScene(target);
    return true;
}

bool loadScene(const std::string& path, std::vector<std::string>& warnings, std::string& why)
{
    const std::string source = absolute(path);
    std::vector<ArchiveEntry> entries;
    if (!readScene(source, entries, why))
        return false;
    TreeReader reader(entries);
    emptyScene();
    setFileOfScene(source);
    readStart(reader.entry(start_entry), warnings);
    readVariables(reader.entry(variables_entry), warnings);
    makeNodes(reader, true, warnings);
    UTgetUndoManager()->clear();
    addWarnings(reader, source, warnings);
    return true;
}

bool mergeScene(const std::string& path, std::vector<std::string>& warnings, std::string& why)
{
    const std::string source = absolute(path);
    std::vector<ArchiveEntry> entries;
    if (!readScene(source, entries, why))
        return false;
    TreeReader reader(entries);
    makeNodes(reader, false, warnings);
    addWarnings(reader, source, warnings);
    return true;
}

bool clearScene(std::string& why)
{
    if (loadingDepth() > 0)
    {
        why = "The scene cannot be cleared while one is loaded. Clear it afterwards.";
        return false;
    }
    emptyScene();
    setFileOfScene(std::string());
    UTgetUndoManager()->clear();
    return true;
}

} // namespace standin
