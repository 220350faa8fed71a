#pragma once
// The floor of an uninstall that puts files back: a copy of the same files that writes each and
// flushes it before the next, as the uninstall must (a file put back is on the disk before the
// archive that held it can go). Run in a child of its own and timed inside it, as the
// operations are.

#include <filesystem>
#include <string>

namespace bench {

// Copies every file below `source` to the same place below `destination`, as a copy tool does:
// each created or emptied, written, flushed (fsync natively, FlushFileBuffers under Windows)
// and closed in turn. False when one of them failed.
bool CopyFlushingEachFile(const std::string& source, const std::string& destination);

// One file of it: the platform's own calls.
bool WriteAndFlush(const std::filesystem::path& path, const std::string& bytes);

}  // namespace bench
