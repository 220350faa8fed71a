#include "removal_list.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "system.h"

void AppendRemovalLine(std::string& lines, const std::string& path) { lines += path + "\r\n"; }

bool RemovalLines::Feed(const char* bytes, std::size_t size)
{
    for (std::size_t i = 0; i < size && !ended; ++i) {
        if (bytes[i] == '\n')
            EndLine();
        else if (bytes[i] == '\r')
            continue;
        else if (line.size() < sys::maxPathLength)
            line += bytes[i];
        else
            overlong = true;
    }
    return !ended;
}

void RemovalLines::Finish()
{
    if (!ended && (!line.empty() || overlong))
        EndLine();
    ended = true;
}

void RemovalLines::EndLine()
{
    if (overlong) {
        overlong = false;
    } else if (line.empty()) {
        ended = true;
        return;
    } else {
        visit(line);
    }
    line.clear();
}

bool ReadRemovalListFile(const std::string& path, const RemovalLines::Visit& visit)
{
    sys::File file = sys::File::OpenForReading(path);
    if (!file.IsOpen())
        return false;
    std::uint64_t size = file.Size();
    RemovalLines lines(visit);
    // No more than the size it had when opened: a file that keeps growing still ends.
    std::vector<char> block(static_cast<std::size_t>(std::min<std::uint64_t>(size, 64 * 1024)));
    bool read = true;
    while (size > 0) {
        const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, block.size()));
        if (!file.Read(block.data(), wanted)) {
            read = false;
            break;
        }
        if (!lines.Feed(block.data(), wanted))
            break;  // the list has ended at an empty line
        size -= wanted;
    }
    if (size == 0)
        lines.Finish();
    return read;
}
