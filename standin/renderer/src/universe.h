#pragma once

#include "arena.h"
#include "kr.h"
#include "kr_plugin.h"
#include "meta_data.h"
#include "name_index.h"

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// One parameter of a node entry. Its texts and values live in the universe's arena.
struct KtParamEntry
{
    const char* name;
    int type;
    bool hasDefault;
    KtParamValue value; ///< meaningful with hasDefault only
    const char** items; ///< KR_TYPE_ENUM: item names, ended by null; null for other types
    zelk::renderer::MetaData metaData;
    KtPlace table; ///< its last table in a metadata file; without a file when there was none
};

/// What a plug-in holds while it declares an entry: the entry itself, seen from the other side.
struct KtNodeDecl
{
};

/// One kind of node: a shader, camera, light or shape.
struct KtNodeEntry : KtNodeDecl
{
    const char* name = nullptr;
    const char* file = nullptr;   ///< null when built in
    const char* source = nullptr; ///< where it is declared: its plug-in, or a file that this one has read
    int nodeType = 0;
    int outputType = 0;
    std::deque<KtParamEntry> params; ///< a deque, so that parameters stay where they are
    zelk::renderer::NameIndex paramNames;
    zelk::renderer::MetaData metaData;
    KtPlace table = {nullptr, 0,
                     0}; ///< its last table in a metadata file; without a file when there was none

    /// The parameter of that name, or null.
    const KtParamEntry* findParam(std::string_view name) const;
    KtParamEntry* findParam(std::string_view name);

    /// Metadata of the entry (param null) or of one parameter; null for a parameter that does not exist.
    const zelk::renderer::MetaData* metaDataOf(const char* param) const;
    zelk::renderer::MetaData* metaDataOf(const char* param);
};

namespace zelk::renderer
{

/// Everything that is known between KrBegin() and KrEnd().
class Universe
{
public:
    /// The running renderer's universe; null when it is not running.
    static Universe* current();

    /// The same, with an error that names `caller` when the renderer is not running.
    static Universe* require(const char* caller);

    Universe() = default;
    ~Universe();
    Universe(const Universe&) = delete;
    Universe& operator=(const Universe&) = delete;

    Arena& arena() { return m_arena; }
    const std::deque<KtNodeEntry>& entries() const { return m_entries; }

    /// The entry of that name, or null.
    KtNodeEntry* find(std::string_view name);

    /// Adds an entry under a new name; its file is the plug-in being loaded.
    KtNodeEntry& add(std::string_view name, int nodeType, int outputType);

    /// Notes something that a metadata file held in vain. Its texts must live as long as the universe.
    void leaveOut(const KtLeftOut& item) { m_leftOut.push_back(item); }
    const std::deque<KtLeftOut>& leftOut() const { return m_leftOut; }

    /// Opens one plug-in and lets it declare its entries. Failures are reported; a file that is loaded
    /// already is passed over.
    void loadPlugin(const std::string& file);

    /// Path of the plug-in being loaded; null between plug-ins.
    const char* pluginBeingLoaded() const { return m_plugin; }

    /// Notes that the plug-in being loaded declares the name of an entry that there is. It is said when the plug-in is
    /// through, in one message for each owner of such names: a plug-in that is there twice has many of them.
    void noteTaken(const KtNodeEntry& owner) { m_taken.push_back(&owner); }

private:
    struct Plugin
    {
        std::string file;
        void* handle;
    };

    bool isLoaded(const std::string& file) const;
    void declareEntriesOf(const Plugin& plugin);

    Arena m_arena;
    std::deque<KtNodeEntry> m_entries;
    NameIndex m_names;
    std::vector<Plugin> m_plugins;
    const char* m_plugin = nullptr;
    std::vector<const KtNodeEntry*> m_taken; ///< see noteTaken(), of the plug-in being loaded
    std::deque<KtLeftOut> m_leftOut;
};

/// Declares the cameras, lights and shapes that come with the renderer itself.
void declareBuiltins();

/// Reports entries whose names were declared once more, by `plugin` (null: not by a plug-in): a message for each file that
/// has some of them.
void reportTaken(const char* plugin, const std::vector<const KtNodeEntry*>& taken);

} // namespace zelk::renderer
