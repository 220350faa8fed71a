#include "resolved_path.h"

namespace {

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

bool IsDriveLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

ResolvedPath ResolvePath(const std::string& path)
{
    ResolvedPath resolved;
    std::size_t rest = 0;
    std::size_t fixed = 0;  // leading segments a ".." never takes away
    if (path.size() >= 3 && IsDriveLetter(path[0]) && path[1] == ':' && IsSeparator(path[2])) {
        resolved.root = ResolvedPath::Root::drive;
        resolved.drive = path.substr(0, 2);
        rest = 3;
    } else if (path.size() > 2 && IsSeparator(path[0]) && IsSeparator(path[1]) && !IsSeparator(path[2])) {
        resolved.root = ResolvedPath::Root::network;
        rest = 2;
        fixed = 2;
    } else if (!path.empty() && IsSeparator(path[0])) {
        resolved.root = ResolvedPath::Root::separator;
        rest = 1;
    }
    std::vector<std::string>& segments = resolved.segments;
    std::size_t kept = 0;  // the fixed segments met so far
    for (std::size_t begin = rest; begin <= path.size();) {
        std::size_t end = begin;
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        std::string segment = path.substr(begin, end - begin);
        begin = end + 1;
        if (segment.empty() || (segment == "." && kept == fixed))
            continue;
        if (segment == ".." && kept == fixed) {
            if (segments.size() > fixed)
                segments.pop_back();
            continue;
        }
        segments.push_back(std::move(segment));
        if (kept < fixed)
            ++kept;
    }
    resolved.endsWithSeparator = !path.empty() && IsSeparator(path.back());
    if (!resolved.endsWithSeparator && segments.size() > fixed) {
        std::string& last = segments.back();
        last.erase(last.find_last_not_of(". ") + 1);
        if (last.empty())
            segments.pop_back();
    }
    return resolved;
}

std::string JoinResolved(const ResolvedPath& path, char separator)
{
    std::string joined;
    switch (path.root) {
    case ResolvedPath::Root::drive:
        joined = path.drive + separator;
        break;
    case ResolvedPath::Root::network:
        joined = std::string(2, separator);
        break;
    case ResolvedPath::Root::separator:
        joined = separator;
        break;
    case ResolvedPath::Root::none:
        break;
    }
    for (std::size_t i = 0; i < path.segments.size(); ++i)
        joined += (i ? std::string(1, separator) : std::string()) + path.segments[i];
    return joined;
}
