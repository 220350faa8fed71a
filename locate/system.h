#pragma once
// The few operating-system calls the installer makes, behind one thin layer with a
// Win32 body (the real product) and a POSIX body (fast native tests).

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sys {

enum class RegistryRead { ok, keyMissing, valueUnreadable };

// Reads a string value of a key under HKEY_CURRENT_USER through a 260-byte buffer; a value
// that does not fit (with its NUL) is unreadable. `text` gets the bytes up to the first NUL.
RegistryRead ReadUserRegistryString(const std::string& key, const std::string& value,
                                    std::string& text);

// Every entry of `folder` (which ends with '/'), files and folders alike, "." and ".."
// included, in the order the file system returns them.
std::vector<std::string> ListFolder(const std::string& folder);

// The longest path any call below takes: Windows' MAX_PATH less its terminating NUL. Each
// call treats a longer path, or one holding a NUL byte, as missing or refuses it, so that the
// existence test, the reads and the writes all see the same set of paths: a file the test
// cannot see is never written.
constexpr std::size_t maxPathLength = 259;

enum class EntryKind { none, file, folder };

// The entry itself, never what a link points to. `link` is set for a symbolic link, junction
// or other reparse point (Win32: FILE_ATTRIBUTE_REPARSE_POINT from FindFirstFileA; POSIX:
// lstat). A link's kind is that of its target, and a link whose target is gone is a file.
struct Entry {
    EntryKind kind = EntryKind::none;
    bool link = false;
};
Entry LookUp(const std::string& path);

inline EntryKind FindEntry(const std::string& path) { return LookUp(path).kind; }

// True when a file or folder of exactly that path exists.
inline bool PathExists(const std::string& path) { return FindEntry(path) != EntryKind::none; }

// At most `limit` bytes from the start of the file; false when it cannot be opened.
bool ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes);

// An open file of the calls below; `handle` is meaningless while `open` is false.
struct FileHandle {
    std::intptr_t handle = 0;
    bool open = false;
};

// Opens an existing plain file for reading (folders, devices and pipes are refused) and gives
// its size. Others may keep reading and writing it meanwhile.
bool OpenForReading(const std::string& path, FileHandle& file, std::uint64_t& size);
// Creates or truncates a plain file for writing; refuses folders and devices.
bool OpenForWriting(const std::string& path, FileHandle& file);
// True when exactly `size` bytes were read, or written.
bool ReadExactly(FileHandle file, char* bytes, std::size_t size);
bool WriteExactly(FileHandle file, const char* bytes, std::size_t size);
// Moves the read position `count` bytes on.
bool Skip(FileHandle file, std::uint64_t count);
// True when the file closed without an error (one the system kept from an earlier write
// included). The handle is closed in any case.
bool CloseFile(FileHandle& file);

bool MakeFolder(const std::string& path);
void RemoveFolder(const std::string& path);  // only an empty folder goes; failures ignored
void RemoveFile(const std::string& path);    // failures ignored

// Message box styles used by the installer's message boxes.
constexpr unsigned mbOk = 0x00;
constexpr unsigned mbIconError = 0x10;
constexpr unsigned mbYesNoQuestion = 0x24;
constexpr unsigned mbIconInformation = 0x40;
constexpr int idYes = 6;

// Shows an ownerless message box, then ends the process with exit status -1.
[[noreturn]] void ExitWithMessage(const std::string& text, const std::string& caption,
                                  unsigned style);

}  // namespace sys
