#include "backup_archive.h"

#include <algorithm>
#include <vector>

#include "little_endian.h"

namespace {

// Large enough that every file of the payloads goes in one read and one write.
constexpr std::uint64_t copyBlock = 1 << 20;

}  // namespace

void AppendArchiveHeader(OutputFile& archive)
{
    std::string header;
    AppendLittleEndian32(header, 1);
    archive.Append(header);
}

bool AppendBackupRecord(OutputFile& archive, const std::string& name, const std::string& existingFile)
{
    sys::File in = sys::File::OpenForReading(existingFile);
    if (!in.IsOpen())
        return false;
    const std::uint64_t size = in.Size();
    const std::uint64_t start = archive.End();
    bool copied = size <= largestBackup;
    if (copied) {
        std::string head;
        AppendLittleEndian32(head, static_cast<std::uint32_t>(name.size()));
        head += name;
        AppendLittleEndian32(head, static_cast<std::uint32_t>(size));
        copied = archive.Append(head);
        std::vector<char> block(static_cast<std::size_t>(std::min(size, copyBlock)));
        for (std::uint64_t left = size; copied && left > 0;) {
            const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(left, block.size()));
            copied = in.Read(block.data(), part) && archive.Append(block.data(), part);
            left -= part;
        }
        copied = in.Close() && copied;
        if (!copied)
            static_cast<void>(archive.CutBack(start));  // else a cut record ends the archive: passed over
    }
    return copied;
}

ArchiveReader::ArchiveReader(const std::string& path) : file(sys::File::OpenForReading(path))
{
    if (!file.IsOpen())
        return;
    size = file.Size();
    // The header's four bytes are skipped unread; an archive no longer than them holds nothing.
    position = 4;
    wholeEnd = size < 4 ? 0 : 4;
    if (size > 4 && !file.Skip(4))
        failed = true;
}

bool ArchiveReader::ReadLength(std::uint32_t& value)
{
    char bytes[4];
    if (!file.Read(bytes, sizeof bytes)) {
        failed = true;
        return false;
    }
    position += 4;
    value = DecodeLittleEndian32(bytes);
    return true;
}

bool ArchiveReader::Next(std::string& name, bool& nameTooLong, std::uint32_t& dataSize)
{
    if (!file.IsOpen() || failed)
        return false;
    if (unreadData > 0) {
        if (!file.Skip(unreadData)) {
            failed = true;
            return false;
        }
        position += unreadData;
        unreadData = 0;
    }
    // Both lengths are signed 32-bit values; a negative one, like one that runs past the
    // end, ends the walk.
    std::uint32_t nameSize = 0;
    if (position >= size || size - position < 4 || !ReadLength(nameSize) ||
        nameSize > 0x7FFFFFFF || size - position < std::uint64_t{nameSize} + 4)
        return false;
    nameTooLong = nameSize > sys::maxPathBytes;
    name.assign(nameTooLong ? 0 : nameSize, '\0');
    const bool nameRead = nameTooLong ? file.Skip(nameSize) : file.Read(&name[0], nameSize);
    if (!nameRead) {
        failed = true;
        return false;
    }
    position += nameSize;
    if (!ReadLength(dataSize) || dataSize > 0x7FFFFFFF || size - position < dataSize)
        return false;
    // Eight zero bytes, a record with no name and no data, is what a hole in a sparse or
    // half-written file reads as; walking a hole of gigabytes eight bytes at a time would
    // never end, and the install never writes such a record.
    if (nameSize == 0 && dataSize == 0)
        return false;
    unreadData = dataSize;
    wholeEnd = position + dataSize;
    return true;
}

bool ArchiveReader::CopyData(const std::function<bool(const char* bytes, std::size_t size)>& write)
{
    std::vector<char> block(static_cast<std::size_t>(std::min(unreadData, copyBlock)));
    while (unreadData > 0) {
        const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(unreadData, block.size()));
        if (!file.Read(block.data(), part)) {
            failed = true;
            return false;
        }
        position += part;
        unreadData -= part;
        if (!write(block.data(), part))
            return false;  // the rest is skipped by the next Next()
    }
    return true;
}
