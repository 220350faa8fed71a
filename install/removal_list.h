#pragma once
// The removal list: the absolute paths of everything the installs created, one per line, each
// line ended by CR LF. A first install that runs to its end writes the created files first, in
// the payload's order, then the created folders innermost first; a list an install stopped or a
// later install completed holds the same lines in another order, which the uninstall accepts.
// The record of what the installs wrote (written_record.h) keeps its lines the same way.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "call_status.h"

// The lines' bytes: each path followed by CR LF.
std::string RemovalLines(const std::vector<std::string>& paths);

// Where a file's lines end: what follows is no line, and a last line without its LF needs one
// before anything is added after it.
struct ListExtent {
    std::uint64_t linesEnd = 0;
    bool lastLineOpen = false;
};

// More than any install writes (a few kilobytes): of a longer file, the lines past this many
// bytes are passed over, so that a damaged file of any size costs no more time and memory.
constexpr std::uint64_t linesFileLimit = 8 << 20;

// Cuts a file of lines into lines as its bytes arrive, holding one line at a time: each line
// runs up to LF with every CR dropped, a last line without LF still counts, and an empty line is
// passed over. A line longer than Windows' longest path (in UTF-16 units) is passed over unread.
// A line is UTF-8, or else (written by an earlier version) in the system's ANSI code page.
class RemovalListReader {
public:
    using Visit = std::function<void(const std::string& line)>;
    explicit RemovalListReader(Visit visit) : visit(std::move(visit)) {}

    void Feed(const char* bytes, std::size_t size);
    // The end of the file: a last line without LF.
    void Finish();
    const ListExtent& Extent() const { return extent; }

private:
    void EndLine(std::uint64_t lineEnd);

    Visit visit;
    std::string line;
    std::size_t units = 0;  // the line's length so far, in UTF-16 units
    bool overlong = false;
    std::uint64_t offset = 0;  // bytes fed so far
    ListExtent extent;
};

// Visits the lines of the file at `path` (the removal list, the record of what the installs
// wrote), read in blocks up to linesFileLimit; failed when it could not be read that far.
// `extent`, when given, gets where its lines end.
sys::Status ReadLines(const std::string& path, const RemovalListReader::Visit& visit, ListExtent* extent = nullptr);
