#include "removal_list.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "system.h"
#include "text_encoding.h"

std::string RemovalLines(const std::vector<std::string>& paths)
{
    std::string lines;
    for (const std::string& path : paths)
        lines += path + "\r\n";
    return lines;
}

bool RemovalListReader::Feed(const char* bytes, std::size_t size)
{
    for (std::size_t i = 0; i < size && !ended; ++i, ++offset) {
        if (bytes[i] == '\n')
            EndLine(offset + 1);
        else if (bytes[i] == '\r')
            continue;
        else if (line.size() < sys::maxPathBytes)
            line += bytes[i];
        else
            overlong = true;
    }
    return !ended;
}

void RemovalListReader::Finish()
{
    if (!ended && (!line.empty() || overlong)) {
        EndLine(offset);
        extent.lastLineOpen = true;
    }
    ended = true;
}

void RemovalListReader::EndLine(std::uint64_t lineEnd)
{
    if (!overlong && line.empty()) {
        ended = true;
        return;
    }
    // A line an earlier version wrote in the system's ANSI code page is not UTF-8.
    if (!overlong)
        visit(IsUtf8(line) ? line : sys::AnsiToUtf8(line));
    overlong = false;
    line.clear();
    extent.linesEnd = lineEnd;
}

sys::Status ReadRemovalListFile(const std::string& path, const RemovalListReader::Visit& visit, ListExtent* extent)
{
    sys::File file = sys::File::OpenForReading(path);
    if (!file.IsOpen())
        return sys::Status::Failed(file.OpenFailure());
    std::uint64_t size = file.Size();
    RemovalListReader lines(visit);
    // No more than the size it had when opened: a file that keeps growing still ends.
    std::vector<char> block(static_cast<std::size_t>(std::min<std::uint64_t>(size, 64 * 1024)));
    sys::Status read;
    while (size > 0) {
        const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, block.size()));
        read = file.Read(block.data(), wanted);
        if (!read || !lines.Feed(block.data(), wanted))
            break;  // a failed read, or the list has ended at an empty line
        size -= wanted;
    }
    if (size == 0)
        lines.Finish();
    if (extent)
        *extent = lines.Extent();
    const sys::Status closed = file.Close();
    return read ? closed : read;
}
