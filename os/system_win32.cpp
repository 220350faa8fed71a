#include "system.h"

#include <windows.h>

#include <algorithm>

namespace sys {

namespace {

// Longer than the limit, or holding a NUL byte, after which the system would see a shorter
// path than the caller checked.
bool Unusable(const std::string& path)
{
    return path.size() > maxPathLength || path.find('\0') != std::string::npos;
}

HANDLE Native(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

// Opens `path` and keeps it only when it is a file on a disk: a device name (COM1, NUL) opens a
// device, which must never be read or written as if it were a player's file.
HANDLE OpenDiskFile(const std::string& path, DWORD access, DWORD sharing, DWORD disposition)
{
    if (Unusable(path))
        return INVALID_HANDLE_VALUE;
    HANDLE handle = CreateFileA(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
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
    HKEY handle;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_QUERY_VALUE, &handle) != ERROR_SUCCESS)
        return RegistryRead::keyMissing;
    char buffer[260];
    DWORD size = sizeof buffer;
    LONG result = RegQueryValueExA(handle, value.c_str(), nullptr, nullptr,
                                   reinterpret_cast<BYTE*>(buffer), &size);
    RegCloseKey(handle);
    if (result != ERROR_SUCCESS)
        return RegistryRead::valueUnreadable;
    std::size_t length = 0;
    while (length < size && buffer[length] != '\0')
        ++length;
    text.assign(buffer, length);
    return RegistryRead::ok;
}

std::vector<ListedEntry> ListFolder(const std::string& folder)
{
    std::vector<ListedEntry> names;
    if (Unusable(folder + "*.*"))
        return names;
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA((folder + "*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do
        names.push_back({entry.cFileName, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    while (FindNextFileA(search, &entry));
    FindClose(search);
    return names;
}

Entry LookUp(const std::string& path)
{
    Entry result;
    if (Unusable(path))
        return result;
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(path.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return result;
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

bool File::Close()
{
    if (!open)
        return false;
    open = false;
    return CloseHandle(Native(handle)) != 0;
}

bool MakeFolder(const std::string& path)
{
    return !Unusable(path) && CreateDirectoryA(path.c_str(), nullptr) != 0;
}

bool RemoveFolder(const std::string& path)
{
    return !Unusable(path) && RemoveDirectoryA(path.c_str()) != 0;
}

bool RemoveFile(const std::string& path)
{
    return !Unusable(path) && DeleteFileA(path.c_str()) != 0;
}

}  // namespace sys
