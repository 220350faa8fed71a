#pragma once
// The backup archive: a 4-byte header (written as 1, never read) followed by records in the
// payload container layout, one per file the first install overwrote, named relative to the
// content folder.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "output_file.h"
#include "system.h"


// Writes the header a new archive starts with; a failure sticks to `archive` (OutputFile).
void AppendArchiveHeader(OutputFile& archive);

// A record's lengths are read as signed 32-bit values: a file of 2 GiB or more cannot be
// recorded, and no record's name or data is longer.
constexpr std::uint64_t largestBackup = 0x7FFFFFFF;

// Appends the record of `existingFile` under `name`: its size and whole content, read just
// before it is overwritten. Failed when the file cannot be read whole, is too large to record,
// or a write to the archive falls short; what reached the archive is then cut away again (and
// should that fail too, the archive ends in one cut record, which every reader passes over).
sys::Status AppendBackupRecord(OutputFile& archive, const std::string& name, const std::string& existingFile);

// Reads an archive file one record at a time, in the walk's order and with its end rules, so
// that memory follows the largest record copied, never the archive's size.
class ArchiveReader {
public:
    explicit ArchiveReader(const std::string& path);
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;

    bool Opened() const { return file.IsOpen(); }
    // Why it could not be opened, or why a read failed.
    const sys::Reason& Why() const { return failed ? failure : file.OpenFailure(); }

    // Moves to the next record and reads its name and data length. A name longer than any path
    // the program can use is skipped unread and comes back empty with `nameTooLong` set. False
    // at the end, at a record that runs past the end, at a record of eight zero bytes, and
    // after a failed read (`Failed()`).
    bool Next(std::string& name, bool& nameTooLong, std::uint32_t& size);

    // Hands the current record's data to `write` in blocks of at most 1 MiB; done when every
    // byte was read and `write` took each block. What is left of the data is skipped.
    sys::Status CopyData(const std::function<sys::Status(const char* bytes, std::size_t size)>& write);

    // A read failed: the archive's later records are unknown.
    bool Failed() const { return failed; }

    // Where the last whole record read so far ends (the header's end before any); 0 while the
    // file is shorter than the header. After the walk, what follows is no record anyone wrote
    // whole.
    std::uint64_t WholeEnd() const { return wholeEnd; }

private:
    bool ReadLength(std::uint32_t& value);
    // Notes a failed read; false, for the caller to return.
    bool Fail(const sys::Status& read);

    sys::File file;
    std::uint64_t size = 0;      // the file's size when opened
    std::uint64_t position = 0;  // where the next unread byte lies
    std::uint64_t unreadData = 0;  // data bytes of the current record not yet read
    std::uint64_t wholeEnd = 0;
    bool failed = false;
    sys::Reason failure;
    std::vector<char> block;  // what CopyData copies through
};
