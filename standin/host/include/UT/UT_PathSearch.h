#pragma once
#include <UT/UT_KnownPath.h>
#include <UT/UT_String.h>
#include <UT/UT_StringArray.h>

/// Looks for files and directories below the entries of a search path.
///
/// The text of a path: entries separated by ':' or ';'; '&' stands for the default path; $VAR, ${VAR} and a
/// leading ~ are expanded; entries that are no directories are left out. The default path is
/// $HOME/houdini15.5, then the root of the tree that holds the host's libraries. Results keep the order of
/// the entries and are sorted inside each.
class UT_PathSearch
{
public:
    /// The shared searcher of a known path, which reads its environment variable at first use. Null for a
    /// number that is no known path.
    static const UT_PathSearch* getInstance(UT_KnownPath path);
    static const UT_PathSearch* getInstance(int path) { return getInstance(static_cast<UT_KnownPath>(path)); }

    /// Reads the environment variable again, now.
    void rehash() const;

    /// The directories of the path, in order.
    int getEntries() const;
    UT_StringHolder getEntry(int index) const;

    /// Each appends every match to `list` and returns how many there were. `search` is relative to each
    /// entry.
    int findAllDirectories(const char* search, UT_StringArray& list) const;
    int findAllFiles(const char* search, UT_StringArray& list) const;

    /// First match; 0 and `result` untouched when there is none, else 1.
    int findFile(UT_String& result, const char* search) const;

    /// Appends the files whose names end in `extension` (".so", dot included) and returns how many there
    /// were.
    ///
    /// @param subdirectory        relative to each entry of the path
    /// @param returnFullPaths     true: whole paths; false: paths relative to the entry's subdirectory
    /// @param recurse             true: look into all directories below as well
    /// @param skipDuplicatePaths  true: of files with the same relative path only the first is listed
    int matchAllFilesInSubdirectory(const char* extension, const char* subdirectory, bool returnFullPaths,
                                    UT_StringArray& list, bool recurse = false,
                                    bool skipDuplicatePaths = false) const;

    /// Appends the existing directories that the path text `text` names; '&' stands for `defaults`.
    static void expandPathText(const char* text, const UT_StringArray& defaults, UT_StringArray& list);

private:
    UT_PathSearch();
    ~UT_PathSearch();
    UT_PathSearch(const UT_PathSearch&);
    UT_PathSearch& operator=(const UT_PathSearch&);

    struct Cache;
    Cache* m_cache;
};
