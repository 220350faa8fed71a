#include "folders.h"

#include "system.h"

namespace {

// "The folder could not be created! I am exiting!", followed by the folder on its own line.
const char folderFailedText[] = "Nem sikerült a könyvtár létrehozása!\nKilépek!\n";

// Looks `path` up unless the run knows it already; false when nothing stands there.
bool Found(const std::string& path, KnownFolders* known)
{
    if (known && known->count(path))
        return true;
    sys::Entry entry = sys::LookUp(path);
    if (entry.kind == sys::EntryKind::none)
        return false;
    if (known)
        (*known)[path] = entry.link;
    return true;
}

// The first folder on the way to `path` that can neither be found nor made; empty when all
// are there.
std::string FirstFolderNotMade(const std::string& path, std::vector<std::string>* created,
                               KnownFolders* known)
{
    for (std::size_t slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        std::string prefix = path.substr(0, slash);
        if (prefix.size() <= 3 || Found(prefix, known))
            continue;
        if (created)
            created->push_back(prefix);
        if (sys::MakeFolder(prefix)) {
            if (known)
                (*known)[prefix] = false;
            continue;
        }
        // Someone else may have made it between the test and the attempt.
        if (!Found(prefix, known))
            return prefix;
    }
    return std::string();
}

}  // namespace

void CreateFolders(std::string path, std::vector<std::string>* created, KnownFolders* known,
                   const std::function<void()>& beforeExit)
{
    std::string failed = FirstFolderNotMade(path, created, known);
    if (failed.empty())
        return;
    if (beforeExit)
        beforeExit();
    sys::ExitWithMessage(folderFailedText + failed, "Hiba:", sys::mbOk);
}

bool TryCreateFolders(const std::string& path, KnownFolders* known)
{
    return FirstFolderNotMade(path, nullptr, known).empty();
}

bool MeetsLink(const std::string& accountFolder, const std::string& path, KnownFolders* known)
{
    const std::string prefix = accountFolder + "/";
    if (path != accountFolder &&
        (path.size() <= prefix.size() || path.compare(0, prefix.size(), prefix) != 0))
        return true;
    // The account folder, each folder below it on the way, then the path itself.
    std::size_t end = accountFolder.size();
    for (;;) {
        const std::string step = path.substr(0, end);
        const bool last = end == path.size();
        if (known && known->count(step)) {
            if (known->at(step))
                return true;
        } else {
            sys::Entry entry = sys::LookUp(step);
            if (entry.kind == sys::EntryKind::none)
                return false;  // nothing deeper exists either
            if (entry.link)
                return true;
            if (known && entry.kind == sys::EntryKind::folder)
                (*known)[step] = false;
        }
        if (last)
            return false;
        end = path.find('/', end + 1);
        if (end == std::string::npos)
            end = path.size();
    }
}

void RemovePath(std::string path)
{
    const sys::Entry entry = sys::LookUp(path);
    if (entry.link)
        return;
    switch (entry.kind) {
    case sys::EntryKind::folder:
        sys::RemoveFolder(path);
        break;
    case sys::EntryKind::file:
        sys::RemoveFile(path);
        break;
    case sys::EntryKind::none:
        break;
    }
}
