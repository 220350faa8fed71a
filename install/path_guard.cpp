#include "path_guard.h"

namespace {

// Windows drops trailing dots and spaces from a path segment, so "..", "..." and ".. " all
// lead to the parent folder.
bool IsParentSegment(const std::string& segment)
{
    return segment.compare(0, 2, "..") == 0 &&
           segment.find_first_not_of(". ") == std::string::npos;
}

// True when a segment between separators leads up. Windows also splits on '\\', so a
// backslash counts as a separator here even though the installer never writes one.
bool HasParentSegment(const std::string& path)
{
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = path.find_first_of("/\\", start);
        if (end == std::string::npos)
            end = path.size();
        if (IsParentSegment(path.substr(start, end - start)))
            return true;
        start = end + 1;
    }
    return false;
}

}  // namespace

bool IsRemovableBelow(const std::string& path, const std::string& accountFolder)
{
    std::string prefix = accountFolder + "/";
    return path.size() > prefix.size() && path.compare(0, prefix.size(), prefix) == 0 &&
           !HasParentSegment(path.substr(prefix.size()));
}

bool IsRestorableName(const std::string& name)
{
    return !name.empty() && name[0] != '/' && name.find_first_of("\\:") == std::string::npos &&
           !HasParentSegment(name);
}
