#pragma once
// The backup archive: a 4-byte header (written as 1, never read) followed by records in the
// payload container layout, one per file the first install overwrote, named relative to the
// content folder.

#include <cstdint>
#include <string>
#include <vector>

#include "container.h"
#include "file_io.h"

constexpr std::uint32_t backupArchiveHeader = 1;

// Appends the record of `existingFile` under `name`: its whole content, read in one piece just
// before it is overwritten. A file that cannot be read is recorded as empty.
void AppendBackupRecord(OutputFile& archive, const std::string& name, const std::string& existingFile);

// Calls `visit(record)` for each record of a loaded archive. An archive of 4 bytes or less holds
// none; a record that runs past the end stops the walk, keeping those before it.
template <class Visit>
void WalkBackupArchive(const std::vector<char>& archive, Visit visit)
{
    if (archive.size() > 4)
        WalkRecords(archive, 4, visit);
}
