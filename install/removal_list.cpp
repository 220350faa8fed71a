#include "removal_list.h"

#include <algorithm>
#include <cstdint>

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

std::vector<std::string> ReadRemovalList(const std::string& bytes)
{
    std::vector<std::string> paths;
    RemovalLines lines([&](const std::string& path) { paths.push_back(path); });
    lines.Feed(bytes.data(), bytes.size());
    lines.Finish();
    return paths;
}

bool ReadRemovalListFile(const std::string& path, const RemovalLines::Visit& visit)
{
    sys::FileHandle file;
    std::uint64_t size = 0;
    if (!sys::OpenForReading(path, file, size))
        return false;
    RemovalLines lines(visit);
    // No more than the size it had when opened: a file that keeps growing still ends.
    std::vector<char> block(static_cast<std::size_t>(std::min<std::uint64_t>(size, 64 * 1024)));
    bool read = true;
    while (size > 0) {
        const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, block.size()));
        if (!sys::ReadExactly(file, block.data(), wanted)) {
            read = false;
            break;
        }
        if (!lines.Feed(block.data(), wanted))
            break;  // the list has ended at an empty line
        size -= wanted;
    }
    if (size == 0)
        lines.Finish();
    sys::CloseFile(file);
    return read;
}
