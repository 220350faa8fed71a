#include "folder_view.h"

#include <algorithm>
#include <utility>

#include "safe_paths.h"

FolderView::FolderView(std::string gameFolder, const std::string& contentFolder)
    : gameFolder(std::move(gameFolder)),
      contentDepth(static_cast<std::size_t>(std::count(contentFolder.begin() + this->gameFolder.size(), contentFolder.end(), '/')) - 1)
{
}

std::unique_ptr<FolderView::Listed> FolderView::List(const std::string& folder)
{
    auto listed = std::make_unique<Listed>();
    sys::Listing listing = sys::ListFolder(folder + "/");
    listed->status = listing.status;
    for (sys::ListedEntry& entry : listing.entries)
        if (entry.name != "." && entry.name != "..") {
            const std::string key = sys::NameKey(entry.name);
            listed->entries.emplace(key, Listed::Child{std::move(entry), nullptr});
        }
    return listed;
}

FolderView::Seen FolderView::Look(const std::string& path)
{
    if (!IsBelow(path, gameFolder))
        return {sys::EntryKind::unknown, false, 0, sys::Reason::Refused(sys::Reason::Own::gameFolderGone)};
    if (!root)
        root = List(gameFolder);
    Listed* folder = root.get();
    std::size_t depth = 0;  // segments below the game's folder walked so far
    for (std::size_t begin = gameFolder.size() + 1;; ++depth) {
        const std::size_t end = path.find('/', begin);
        if (!folder->status)
            return {sys::EntryKind::unknown, false, 0, folder->status.Why()};
        const auto found = folder->entries.find(sys::NameKey(path.substr(begin, end == std::string::npos ? end : end - begin)));
        if (found == folder->entries.end())
            return {};
        Listed::Child& child = found->second;
        if (end == std::string::npos)
            return {child.entry.folder ? sys::EntryKind::folder : sys::EntryKind::file, child.entry.link, child.entry.size, {}};
        // Nothing lies below a file; what lies behind a link below the content folder is not ours.
        if (!child.entry.folder && !child.entry.link)
            return {};
        if (child.entry.link && depth >= contentDepth)
            return {sys::EntryKind::unknown, true, 0, sys::Reason::Refused(sys::Reason::Own::link)};
        if (!child.listed)
            child.listed = List(path.substr(0, end));
        folder = child.listed.get();
        begin = end + 1;
    }
}
