#pragma once
// The removal list: the absolute paths of everything the installs created, one per line, each
// line ended by CR LF. A first install that runs to its end writes the created files first, in
// the payload's order, then the created folders innermost first; a list an install stopped or a
// later install completed holds the same lines in another order, which the uninstall accepts.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "call_status.h"

// The lines' bytes: each path followed by CR LF.
std::string RemovalLines(const std::vector<std::string>& paths);

// Where a list's lines end: what follows is no line (an empty line ends the list), and a last
// line without its LF needs one before anything is added after it.
struct ListExtent {
    std::uint64_t linesEnd = 0;
    bool lastLineOpen = false;
};

// Cuts a removal list into paths as its bytes arrive, holding one line at a time: each line
// runs up to LF with every CR dropped, a last line without LF still counts, and the list ends
// at the first empty line. A line longer than any path the program can use is passed over. A
// line is UTF-8, or else (written by an earlier version) in the system's ANSI code page.
class RemovalListReader {
public:
    using Visit = std::function<void(const std::string& path)>;
    explicit RemovalListReader(Visit visit) : visit(std::move(visit)) {}

    // False once the list has ended; later bytes are not looked at.
    bool Feed(const char* bytes, std::size_t size);
    // The end of the file: a last line without LF.
    void Finish();
    const ListExtent& Extent() const { return extent; }

private:
    void EndLine(std::uint64_t lineEnd);

    Visit visit;
    std::string line;
    bool overlong = false;
    bool ended = false;
    std::uint64_t offset = 0;  // bytes fed so far
    ListExtent extent;
};

// Visits the paths of the removal list file at `path`, read in blocks; failed when it could
// not be read to its end (or to its first empty line). `extent`, when given, gets where its
// lines end.
sys::Status ReadRemovalListFile(const std::string& path, const RemovalListReader::Visit& visit,
                                ListExtent* extent = nullptr);
