#pragma once
// The few operating-system calls the installer makes, behind one thin layer with a
// Win32 body (the real product) and a POSIX body (fast native tests).

#include <cstddef>
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

enum class EntryKind { none, file, folder };
EntryKind FindEntry(const std::string& path);

// True when a file or folder of exactly that path exists.
inline bool PathExists(const std::string& path) { return FindEntry(path) != EntryKind::none; }

// At most `limit` bytes from the start of the file; false when it cannot be opened.
bool ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes);

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
