#include "link_rule.h"

#include "system.h"

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
