#include "system.h"

#include <windows.h>
#include <tlhelp32.h>

#include <algorithm>

#include "long_paths.h"
#include "text_encoding.h"

namespace sys {

namespace {

// UTF-8 as UTF-16 for the W calls (wchar_t is UTF-16 on Windows); false for bytes that are not
// UTF-8, which name nothing.
bool Wide(const std::string& utf8, std::wstring& wide)
{
    std::u16string utf16;
    const bool converted = ToUtf16(utf8, utf16);
    wide.assign(utf16.begin(), utf16.end());
    return converted;
}

std::string Utf8(const wchar_t* wide, std::size_t length)
{
    return ToUtf8(reinterpret_cast<const char16_t*>(wide), length);
}

std::string Utf8(const wchar_t* wide) { return Utf8(wide, wcslen(wide)); }

// The longest path plain calls take, and plain CreateDirectory (room for an 8.3 name).
constexpr std::size_t plainPathLimit = MAX_PATH - 1;
constexpr std::size_t plainFolderLimit = MAX_PATH - 13;

// The path as a call takes it: UTF-16, in its extended-length form when it is longer than the
// call's `limit`. Empty when no call can take it: a NUL byte (after which the system would see a
// shorter path than the caller checked), bytes that are not UTF-8, more than Windows' longest.
std::wstring SystemPath(const std::string& path, std::size_t limit = plainPathLimit)
{
    std::wstring wide;
    if (path.empty() || path.find('\0') != std::string::npos ||
        !Wide(Utf16Length(path) > limit ? ExtendedLengthPath(path) : path, wide) || wide.size() > maxPathUnits)
        return std::wstring();
    return wide;
}

HANDLE Native(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

// The errors that mean nothing stands at the path: a missing file or folder on the way, a name
// no entry can have, a file where a folder is needed, a drive or share that is not there.
bool Missing(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return true;
    default:
        return false;
    }
}

// Opens `path` and keeps it only when it is a file on a disk: a device name (COM1, NUL) opens a
// device, which must never be read or written as if it were a player's file.
HANDLE OpenDiskFile(const std::string& path, DWORD access, DWORD sharing, DWORD disposition)
{
    const std::wstring wide = SystemPath(path);
    if (wide.empty())
        return INVALID_HANDLE_VALUE;
    HANDLE handle = CreateFileW(wide.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_DISK) {
        CloseHandle(handle);
        return INVALID_HANDLE_VALUE;
    }
    return handle;
}

// ReadFile and WriteFile take at most a DWORD; larger transfers go in slices.
constexpr std::size_t sliceSize = 1u << 30;

// Repeats `transfer` (ReadFile or WriteFile) in slices until all `size` bytes have moved;
// false when a call fails or moves nothing.
template <class Bytes, class Transfer>
bool TransferAll(Bytes* bytes, std::size_t size, Transfer transfer)
{
    while (size > 0) {
        DWORD moved = 0;
        if (!transfer(bytes, static_cast<DWORD>(std::min(size, sliceSize)), &moved) || moved == 0)
            return false;
        bytes += moved;
        size -= moved;
    }
    return true;
}

}  // namespace

RegistryRead ReadUserRegistryString(const std::string& key, const std::string& value,
                                    std::string& text)
{
    std::wstring wideKey, wideValue;
    HKEY handle;
    if (!Wide(key, wideKey) || !Wide(value, wideValue) ||
        RegOpenKeyExW(HKEY_CURRENT_USER, wideKey.c_str(), 0, KEY_QUERY_VALUE, &handle) != ERROR_SUCCESS)
        return RegistryRead::keyMissing;
    // 260 characters: a longer value, with its NUL, does not fit and is unreadable.
    wchar_t buffer[260];
    DWORD size = sizeof buffer;
    LONG result = RegQueryValueExW(handle, wideValue.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(buffer), &size);
    RegCloseKey(handle);
    if (result != ERROR_SUCCESS)
        return RegistryRead::valueUnreadable;
    std::size_t length = 0;
    while (length < size / sizeof(wchar_t) && buffer[length] != L'\0')
        ++length;
    text = Utf8(buffer, length);
    return RegistryRead::ok;
}

std::vector<ListedEntry> ListFolder(const std::string& folder)
{
    std::vector<ListedEntry> names;
    const std::wstring pattern = SystemPath(folder + "*.*");
    WIN32_FIND_DATAW entry;
    HANDLE search = pattern.empty() ? INVALID_HANDLE_VALUE : FindFirstFileW(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do
        names.push_back({Utf8(entry.cFileName), (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
}

Entry LookUp(const std::string& path)
{
    Entry result;
    const std::wstring wide = SystemPath(path);
    if (wide.empty())
        return result;
    WIN32_FIND_DATAW entry;
    HANDLE search = FindFirstFileW(wide.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        result.kind = Missing(GetLastError()) ? EntryKind::none : EntryKind::unknown;
        return result;
    }
    FindClose(search);
    result.kind = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ? EntryKind::folder : EntryKind::file;
    result.link = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return result;
}

bool ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes)
{
    bytes.clear();
    HANDLE file = OpenDiskFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    char block[65536];
    while (bytes.size() < limit) {
        DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(sizeof block, limit - bytes.size()));
        DWORD got = 0;
        if (!ReadFile(file, block, wanted, &got, nullptr) || got == 0)
            break;
        bytes.append(block, got);
    }
    CloseHandle(file);
    return true;
}

File File::OpenForReading(const std::string& path)
{
    HANDLE handle = OpenDiskFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    if (handle == INVALID_HANDLE_VALUE)
        return File();
    LARGE_INTEGER length;
    if (!GetFileSizeEx(handle, &length) || length.QuadPart < 0) {
        CloseHandle(handle);
        return File();
    }
    return File(reinterpret_cast<std::intptr_t>(handle), static_cast<std::uint64_t>(length.QuadPart));
}

File File::Create(const std::string& path)
{
    HANDLE handle = OpenDiskFile(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
    return handle == INVALID_HANDLE_VALUE ? File() : File(reinterpret_cast<std::intptr_t>(handle), 0);
}

File File::OpenForAppending(const std::string& path)
{
    HANDLE handle = OpenDiskFile(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING);
    if (handle == INVALID_HANDLE_VALUE)
        return File();
    LARGE_INTEGER length, end;
    LARGE_INTEGER zero{};
    if (!GetFileSizeEx(handle, &length) || length.QuadPart < 0 || !SetFilePointerEx(handle, zero, &end, FILE_END)) {
        CloseHandle(handle);
        return File();
    }
    return File(reinterpret_cast<std::intptr_t>(handle), static_cast<std::uint64_t>(length.QuadPart));
}

bool File::Read(char* bytes, std::size_t count)
{
    return open && TransferAll(bytes, count, [&](char* at, DWORD part, DWORD* moved) {
               return ReadFile(Native(handle), at, part, moved, nullptr);
           });
}

bool File::Write(const char* bytes, std::size_t count)
{
    return open && TransferAll(bytes, count, [&](const char* at, DWORD part, DWORD* moved) {
               return WriteFile(Native(handle), at, part, moved, nullptr);
           });
}

bool File::Skip(std::uint64_t count)
{
    LARGE_INTEGER distance;
    distance.QuadPart = static_cast<LONGLONG>(count);
    return open && count <= 0x7FFFFFFFFFFFFFFFull && SetFilePointerEx(Native(handle), distance, nullptr, FILE_CURRENT);
}

bool File::Truncate(std::uint64_t size)
{
    LARGE_INTEGER position;
    position.QuadPart = static_cast<LONGLONG>(size);
    return open && size <= 0x7FFFFFFFFFFFFFFFull && SetFilePointerEx(Native(handle), position, nullptr, FILE_BEGIN) &&
           SetEndOfFile(Native(handle));
}

bool File::Close()
{
    if (!open)
        return false;
    open = false;
    return CloseHandle(Native(handle)) != 0;
}

bool MakeFolder(const std::string& path)
{
    const std::wstring wide = SystemPath(path, plainFolderLimit);
    return !wide.empty() && CreateDirectoryW(wide.c_str(), nullptr) != 0;
}

bool RemoveFolder(const std::string& path)
{
    const std::wstring wide = SystemPath(path);
    return !wide.empty() && RemoveDirectoryW(wide.c_str()) != 0;
}

bool RemoveFile(const std::string& path)
{
    const std::wstring wide = SystemPath(path);
    return !wide.empty() && DeleteFileW(wide.c_str()) != 0;
}

bool MoveOver(const std::string& from, const std::string& to)
{
    const std::wstring wideFrom = SystemPath(from), wideTo = SystemPath(to);
    return !wideFrom.empty() && !wideTo.empty() &&
           MoveFileExW(wideFrom.c_str(), wideTo.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

std::vector<std::string> RunningProgramNames()
{
    std::vector<std::string> names;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return names;
    PROCESSENTRY32W process{};
    process.dwSize = sizeof process;
    for (BOOL more = Process32FirstW(snapshot, &process); more; more = Process32NextW(snapshot, &process))
        names.push_back(Utf8(process.szExeFile));
    CloseHandle(snapshot);
    return names;
}

std::string AnsiToUtf8(const std::string& ansi)
{
    if (ansi.empty())
        return std::string();
    const int length = MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(std::max(length, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), wide.data(), length);
    return Utf8(wide.data(), wide.size());
}

}  // namespace sys
