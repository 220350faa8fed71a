#include "folder_view.h"

#include <utility>

#include "safe_paths.h"

FolderView::FolderView(std::string gameFolder, const std::string& contentFolder)
    : gameFolder(std::move(gameFolder)), contentFolder(contentFolder.substr(0, contentFolder.size() - 1))
{
}

const FolderView::Listed& FolderView::ListingOf(const std::string& folder)
{
    const std::string key = sys::NameKey(folder);
    const auto known = listings.find(key);
    if (known != listings.end())
        return known->second;
    Listed listed;
    sys::Listing listing = sys::ListFolder(folder + "/");
    listed.status = listing.status;
    for (sys::ListedEntry& entry : listing.entries)
        if (entry.name != "." && entry.name != "..")
            listed.entries.emplace(sys::NameKey(entry.name), std::move(entry));
    return listings.emplace(key, std::move(listed)).first->second;
}

FolderView::Seen FolderView::Look(const std::string& path)
{
    if (!IsBelow(path, gameFolder))
        return {sys::EntryKind::unknown, false, 0, sys::Reason::Refused(sys::Reason::Own::gameFolderGone)};
    std::string folder = gameFolder;
    for (std::size_t begin = gameFolder.size() + 1;;) {
        const std::size_t end = path.find('/', begin);
        const std::string name = path.substr(begin, end == std::string::npos ? std::string::npos : end - begin);
        const Listed& listed = ListingOf(folder);
        if (!listed.status)
            return {sys::EntryKind::unknown, false, 0, listed.status.Why()};
        const auto found = listed.entries.find(sys::NameKey(name));
        if (found == listed.entries.end())
            return {};
        const sys::ListedEntry& entry = found->second;
        const std::string at = path.substr(0, end);
        if (end == std::string::npos)
            return {entry.folder ? sys::EntryKind::folder : sys::EntryKind::file, entry.link, entry.size, {}};
        // Nothing lies below a file; what lies behind a link below the content folder is not ours.
        if (!entry.folder && !entry.link)
            return {};
        if (entry.link && IsBelow(at, contentFolder))
            return {sys::EntryKind::unknown, true, 0, sys::Reason::Refused(sys::Reason::Own::link)};
        folder = at;
        begin = end + 1;
    }
}
