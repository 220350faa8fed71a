#pragma once
// What the uninstall has seen of the folders below a game's folder. Each folder on the way to a
// path asked about is listed once, and every path is answered from those listings, so that a
// removal list of any length costs a listing for each folder that is really there, not calls
// for each line.

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "call_status.h"
#include "system.h"

class FolderView {
public:
    // Below `gameFolder` (there and a folder), through `contentFolder` (ends with '/').
    FolderView(std::string gameFolder, const std::string& contentFolder);

    struct Seen {
        sys::EntryKind kind = sys::EntryKind::none;
        bool link = false;        // the entry itself is a link: never deleted through
        std::uint64_t size = 0;   // a file's
        sys::Reason reason;       // for `unknown`
    };
    // What stands at `path`, the game's folder followed by '/' and the path below it: `none` when
    // a folder on the way lacks it or a file stands on the way; `unknown` when a folder on the way
    // could not be listed (a link whose target is gone, access denied), or when a link stands on
    // the way below the content folder (Own::link: what lies behind it may be anywhere). Links
    // at or above the content folder are the player's layout, and are followed.
    Seen Look(const std::string& path);

private:
    // A folder as listed: each entry by sys::NameKey, with the listing of each folder among them
    // once it was asked for.
    struct Listed {
        sys::Status status;
        struct Child {
            sys::ListedEntry entry;
            std::unique_ptr<Listed> listed;
        };
        std::map<std::string, Child> entries;
    };
    static std::unique_ptr<Listed> List(const std::string& folder);

    std::string gameFolder;
    std::size_t contentDepth;  // segments from the game's folder down to the content folder
    std::unique_ptr<Listed> root;
};
