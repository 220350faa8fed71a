#include "folders.h"

#include "system.h"

namespace {

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

}  // namespace

std::string CreateFolders(const std::string& path, std::vector<std::string>* created, KnownFolders* known)
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

void RemovePath(const std::string& path)
{
    const sys::Entry entry = sys::LookUp(path);
    if (entry.link)
        return;
    // A folder that still holds something, or a file in use, stays: nothing to report.
    if (entry.kind == sys::EntryKind::folder)
        static_cast<void>(sys::RemoveFolder(path));
    else if (entry.kind == sys::EntryKind::file)
        static_cast<void>(sys::RemoveFile(path));
}
