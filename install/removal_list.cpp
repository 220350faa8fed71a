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

void RemovalListReader::Feed(const char* bytes, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i, ++offset) {
        const unsigned char c = static_cast<unsigned char>(bytes[i]);
        if (c == '\n') {
            EndLine(offset + 1);
        } else if (c == '\r' || overlong) {
            continue;
        } else {
            // UTF-16 units as the bytes come, as UTF-8 counts them: one for each byte that starts a
            // character, two for one past U+FFFF. An ANSI line is counted again when it ends.
            units += (c & 0xC0) == 0x80 ? 0 : c >= 0xF0 ? 2 : 1;
            if (units > sys::maxPathUnits || line.size() == sys::maxPathBytes) {
                overlong = true;
                line.clear();
            } else {
                line += static_cast<char>(c);
            }
        }
    }
}

void RemovalListReader::Finish()
{
    if (!line.empty() || overlong) {
        EndLine(offset);
        extent.lastLineOpen = true;
    }
}

void RemovalListReader::EndLine(std::uint64_t lineEnd)
{
    // A line an earlier version wrote in the system's ANSI code page is not UTF-8, and may count
    // more characters than its bytes showed while they came.
    if (!overlong && !line.empty()) {
        const std::string text = IsUtf8(line) ? line : sys::AnsiToUtf8(line);
        if (Utf16Length(text) <= sys::maxPathUnits)
            visit(text);
    }
    overlong = false;
    units = 0;
    line.clear();
    extent.linesEnd = lineEnd;
}

sys::Status ReadLines(const std::string& path, const RemovalListReader::Visit& visit, ListExtent* extent)
{
    sys::File file = sys::File::OpenForReading(path);
    if (!file.IsOpen())
        return sys::Status::Failed(file.OpenFailure());
    // No more than the size it had when opened: a file that keeps growing still ends.
    std::uint64_t size = std::min(file.Size(), linesFileLimit);
    const bool whole = size == file.Size();
    RemovalListReader lines(visit);
    std::vector<char> block(static_cast<std::size_t>(std::min<std::uint64_t>(size, 64 * 1024)));
    sys::Status read;
    while (size > 0) {
        const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, block.size()));
        read = file.Read(block.data(), wanted);
        if (!read)
            break;
        lines.Feed(block.data(), wanted);
        size -= wanted;
    }
    // Past the limit there is no line; a line cut there is none either.
    if (size == 0 && whole)
        lines.Finish();
    if (extent)
        *extent = lines.Extent();
    const sys::Status closed = file.Close();
    return read ? closed : read;
}
