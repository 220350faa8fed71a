#pragma once
// A path as Windows resolves it in a plain call: '\' and '/' alike, doubled separators one, "."
// segments dropped, a ".." taking the segment before it but never the root (a drive, the
// server and share of a network path, the root folder), and the last segment's trailing dots and
// spaces dropped. One normaliser for every place that must know whether two spellings name the
// same folder, and for the extended-length form of a long path.

#include <string>
#include <vector>

struct ResolvedPath {
    enum class Root {
        none,       // relative, or relative to a drive's current folder ("C:x")
        drive,      // "C:\..."
        network,    // "\\server\share\...": the server and the share are the first two segments
        separator,  // "\..." (the current drive's root), or a POSIX path
    };
    Root root = Root::none;
    std::string drive;  // "C:" for a drive root, as written
    std::vector<std::string> segments;
    bool endsWithSeparator = false;  // then the last segment keeps its trailing dots and spaces
};

ResolvedPath ResolvePath(const std::string& path);

// The resolved path written with `separator`: "C:", "\\server\share" or the root separator, then
// the segments. Not case-folded.
std::string JoinResolved(const ResolvedPath& path, char separator);
