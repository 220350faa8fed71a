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

sys::Status AppendBackupRecord(OutputFile& archive, const std::string& name, const std::string& existingFile)
{
    sys::File in = sys::File::OpenForReading(existingFile);
    if (!in.IsOpen())
        return sys::Status::Failed(in.OpenFailure());
    const std::uint64_t size = in.Size();
    if (size > largestBackup)
        return sys::Status::Failed(sys::Reason::Refused(sys::Reason::Own::tooLargeToBackUp));
    const std::uint64_t start = archive.End();
    std::string head;
    AppendLittleEndian32(head, static_cast<std::uint32_t>(name.size()));
    head += name;
    AppendLittleEndian32(head, static_cast<std::uint32_t>(size));
    bool appended = archive.Append(head);
    sys::Status read;
    std::vector<char> block(static_cast<std::size_t>(std::min(size, copyBlock)));
    for (std::uint64_t left = size; appended && read && left > 0;) {
        const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(left, block.size()));
        read = in.Read(block.data(), part);
        appended = read && archive.Append(block.data(), part);
        left -= part;
    }
    if (read)
        read = in.Close();
    if (read && appended)
        return read;
    // Should the cut fail too, the archive ends in a cut record, which every reader passes over.
    static_cast<void>(archive.CutBack(start));
    return read ? archive.State() : read;
}

ArchiveReader::ArchiveReader(const std::string& path) : file(sys::File::OpenForReading(path))
{
    if (!file.IsOpen())
        return;
    size = file.Size();
    // The header's four bytes are skipped unread; an archive no longer than them holds nothing.
    position = 4;
    wholeEnd = size < 4 ? 0 : 4;
    if (size > 4)
        Fail(file.Skip(4));
}

bool ArchiveReader::Fail(const sys::Status& read)
{
    if (!read && !failed) {
        failed = true;
        failure = read.Why();
    }
    return false;
}

bool ArchiveReader::ReadLength(std::uint32_t& value)
{
    char bytes[4];
    const sys::Status read = file.Read(bytes, sizeof bytes);
    if (!read)
        return Fail(read);
    position += 4;
    value = DecodeLittleEndian32(bytes);
    return true;
}

bool ArchiveReader::Next(std::string& name, bool& nameTooLong, std::uint32_t& dataSize)
{
    if (!file.IsOpen() || failed)
        return false;
    if (unreadData > 0) {
        const sys::Status skipped = file.Skip(unreadData);
        if (!skipped)
            return Fail(skipped);
        position += unreadData;
        unreadData = 0;
    }
    // Both lengths are signed 32-bit values; a negative one, like one that runs past the
    // end, ends the walk.
    std::uint32_t nameSize = 0;
    if (position >= size || size - position < 4 || !ReadLength(nameSize) ||
        nameSize > largestBackup || size - position < std::uint64_t{nameSize} + 4)
        return false;
    nameTooLong = nameSize > sys::maxPathBytes;
    name.assign(nameTooLong ? 0 : nameSize, '\0');
    const sys::Status nameRead = nameTooLong ? file.Skip(nameSize) : file.Read(&name[0], nameSize);
    if (!nameRead)
        return Fail(nameRead);
    position += nameSize;
    if (!ReadLength(dataSize) || dataSize > largestBackup || size - position < dataSize)
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

sys::Status ArchiveReader::CopyData(const std::function<sys::Status(const char* bytes, std::size_t size)>& write)
{
    // One block for every record: a fresh one each time would be memory the system maps anew.
    // A larger one replaces it, the old one freed first: growing in place would hold both.
    const std::size_t needed = static_cast<std::size_t>(std::min(unreadData, copyBlock));
    if (needed > block.size()) {
        std::vector<char>().swap(block);
        block.resize(needed);
    }
    while (unreadData > 0) {
        const std::size_t part = static_cast<std::size_t>(std::min<std::uint64_t>(unreadData, block.size()));
        const sys::Status read = file.Read(block.data(), part);
        if (!read) {
            Fail(read);
            return read;
        }
        position += part;
        unreadData -= part;
        const sys::Status written = write(block.data(), part);
        if (!written)
            return written;  // the rest is skipped by the next Next()
    }
    return sys::Status();
}
