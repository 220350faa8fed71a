#include "long_paths.h"

#include <vector>

namespace {

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

}  // namespace

std::string ExtendedLengthPath(const std::string& path)
{
    std::string root;
    std::size_t rest = 0;
    if (path.compare(0, 4, "\\\\?\\") == 0) {
        return path;
    } else if (path.size() >= 3 && path[1] == ':' && IsSeparator(path[2]) &&
               ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'))) {
        root = "\\\\?\\" + path.substr(0, 2) + "\\";
        rest = 3;
    } else if (path.size() > 2 && IsSeparator(path[0]) && IsSeparator(path[1]) && !IsSeparator(path[2])) {
        root = "\\\\?\\UNC\\";
        rest = 2;
    } else {
        return path;
    }
    // A UNC path's server and share are its root: ".." never climbs above them.
    const bool unc = root == "\\\\?\\UNC\\";
    std::vector<std::string> segments;
    std::size_t fixed = 0;
    for (std::size_t begin = rest; begin <= path.size();) {
        std::size_t end = begin;
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        const std::string segment = path.substr(begin, end - begin);
        begin = end + 1;
        if (segment.empty() || segment == ".")
            continue;
        if (segment == "..") {
            if (segments.size() > fixed)
                segments.pop_back();
            continue;
        }
        segments.push_back(segment);
        if (unc && segments.size() <= 2)
            fixed = segments.size();
    }
    const bool folderPath = !path.empty() && IsSeparator(path.back());
    if (!folderPath && segments.size() > fixed) {
        std::string& last = segments.back();
        last.erase(last.find_last_not_of(". ") + 1);
        if (last.empty())
            segments.pop_back();
    }
    std::string extended = root;
    for (std::size_t i = 0; i < segments.size(); ++i)
        extended += (i ? "\\" : "") + segments[i];
    if (folderPath && !segments.empty())
        extended += "\\";
    return extended;
}
