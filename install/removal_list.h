#pragma once
// The removal list: the absolute paths of everything the first install created, one per line,
// each line ended by CR LF; the created files first, then the created folders innermost first.

#include <cstddef>
#include <functional>
#include <string>

// Adds one line, the path and CR LF, to the list's bytes.
void AppendRemovalLine(std::string& lines, const std::string& path);

// Cuts a removal list into paths as its bytes arrive, holding one line at a time: each line
// runs up to LF with every CR dropped, a last line without LF still counts, and the list ends
// at the first empty line. A line longer than any path the program can use is passed over.
class RemovalLines {
public:
    using Visit = std::function<void(const std::string& path)>;
    explicit RemovalLines(Visit visit) : visit(std::move(visit)) {}

    // False once the list has ended; later bytes are not looked at.
    bool Feed(const char* bytes, std::size_t size);
    // The end of the file: a last line without LF.
    void Finish();

private:
    void EndLine();

    Visit visit;
    std::string line;
    bool overlong = false;
    bool ended = false;
};

// Visits the paths of the removal list file at `path`, read in blocks; false when it could
// not be read to its end (or to its first empty line).
bool ReadRemovalListFile(const std::string& path, const RemovalLines::Visit& visit);
