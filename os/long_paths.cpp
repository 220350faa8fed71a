#include "long_paths.h"

#include "resolved_path.h"

std::string ExtendedLengthPath(const std::string& path)
{
    if (path.compare(0, 4, "\\\\?\\") == 0)
        return path;
    const ResolvedPath resolved = ResolvePath(path);
    std::string extended;
    if (resolved.root == ResolvedPath::Root::drive)
        extended = "\\\\?\\" + JoinResolved(resolved, '\\');
    else if (resolved.root == ResolvedPath::Root::network)
        extended = "\\\\?\\UNC" + JoinResolved(resolved, '\\').substr(1);
    else
        return path;
    if (resolved.endsWithSeparator && !resolved.segments.empty())
        extended += "\\";
    return extended;
}
