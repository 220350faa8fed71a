#pragma once
// The record of what the installs wrote (cs16ludax_2.bak, cssludax_2.bak), beside the backup
// archive and the removal list: whatever becomes of the removal list (cut, emptied, saved in
// another encoding, deleted), the uninstall still knows the files it wrote by their bytes and the
// folders it made by their names. One line each, UTF-8, fields separated by tabs, ended by CR LF:
//   game    <the game's folder, as the install built its path>
//   folder  <a folder the install made, relative to the game's folder>
//   file    <size>  <SHA-256 of the bytes it wrote, 64 hex digits>  <the file, relative to the game's folder>
// Lines are read as the removal list's are; a line that is none of these is passed over.

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "call_status.h"
#include "removal_list.h"
#include "sha256.h"

struct WrittenBytes {
    std::uint64_t size = 0;
    Sha256::Digest digest{};
    bool operator==(const WrittenBytes& other) const { return size == other.size && digest == other.digest; }
};

struct WrittenRecord {
    std::vector<std::string> games;  // the game's folders the installs named, each spelling once
    // Relative to the game's folder, keyed as the system compares names (sys::NameKey), each with
    // its spelling.
    std::map<std::string, std::string> folders;
    std::map<std::string, std::string> fileNames;
    std::map<std::string, std::vector<WrittenBytes>> files;  // every version of a file written
    ListExtent extent;

    bool HasFolder(const std::string& relative) const;
    bool HasFile(const std::string& relative, const WrittenBytes& bytes) const;
    // True when `bytes` are what an install wrote at `relative`.
    bool Wrote(const std::string& relative, const WrittenBytes& bytes) const { return HasFile(relative, bytes); }
};

std::string GameLine(const std::string& gameFolder);
std::string FolderLine(const std::string& relative);
std::string FileLine(const std::string& relative, const WrittenBytes& bytes);

// Reads the record at `path` into `record`; failed when it could not be read (to its limit).
sys::Status ReadWrittenRecord(const std::string& path, WrittenRecord& record);

// The size and SHA-256 of the file at `path`, read in blocks; failed when it cannot be read whole.
sys::Status BytesOfFile(const std::string& path, WrittenBytes& bytes);
