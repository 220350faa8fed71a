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

sys::Failure CreateFolders(const std::string& path, KnownFolders* known)
{
    for (std::size_t slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        std::string prefix = path.substr(0, slash);
        if (prefix.size() <= 3 || Found(prefix, known))
            continue;
        const sys::Status made = sys::MakeFolder(prefix);
        if (made) {
            if (known)
                (*known)[prefix] = false;
            continue;
        }
        // Someone else may have made it between the test and the attempt.
        if (!Found(prefix, known))
            return {prefix, made.Why()};
    }
    return {};
}
