#include "system.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>

namespace sys {

namespace {

// Longer than the limit, or holding a NUL byte, after which the system would see a shorter
// path than the caller checked.
bool Unusable(const std::string& path)
{
    return path.size() > maxPathLength || path.find('\0') != std::string::npos;
}

HANDLE Native(FileHandle file) { return reinterpret_cast<HANDLE>(file.handle); }

// Only a file on a disk: a device name (COM1, NUL) opens a device, which must never be read
// or written as if it were a player's file.
bool KeepIfDiskFile(HANDLE handle, FileHandle& file)
{
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    if (GetFileType(handle) != FILE_TYPE_DISK) {
        CloseHandle(handle);
        return false;
    }
    file = FileHandle{reinterpret_cast<std::intptr_t>(handle), true};
    return true;
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

std::vector<std::string> ListFolder(const std::string& folder)
{
    std::vector<std::string> names;
    if (Unusable(folder + "*.*"))
        return names;
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA((folder + "*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do
        names.push_back(entry.cFileName);
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
    if (Unusable(path))
        return false;
    HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
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

bool OpenForReading(const std::string& path, FileHandle& file, std::uint64_t& size)
{
    file = FileHandle{};
    if (Unusable(path))
        return false;
    HANDLE handle = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!KeepIfDiskFile(handle, file))
        return false;
    LARGE_INTEGER length;
    if (!GetFileSizeEx(handle, &length) || length.QuadPart < 0) {
        CloseFile(file);
        return false;
    }
    size = static_cast<std::uint64_t>(length.QuadPart);
    return true;
}

bool OpenForWriting(const std::string& path, FileHandle& file)
{
    file = FileHandle{};
    if (Unusable(path))
        return false;
    HANDLE handle = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    return KeepIfDiskFile(handle, file);
}

bool ReadExactly(FileHandle file, char* bytes, std::size_t size)
{
    return TransferAll(bytes, size, [&](char* at, DWORD count, DWORD* moved) {
        return ReadFile(Native(file), at, count, moved, nullptr);
    });
}

bool WriteExactly(FileHandle file, const char* bytes, std::size_t size)
{
    return TransferAll(bytes, size, [&](const char* at, DWORD count, DWORD* moved) {
        return WriteFile(Native(file), at, count, moved, nullptr);
    });
}

bool Skip(FileHandle file, std::uint64_t count)
{
    LARGE_INTEGER distance;
    distance.QuadPart = static_cast<LONGLONG>(count);
    return count <= 0x7FFFFFFFFFFFFFFFull && SetFilePointerEx(Native(file), distance, nullptr, FILE_CURRENT);
}

bool CloseFile(FileHandle& file)
{
    bool closed = file.open && CloseHandle(Native(file));
    file = FileHandle{};
    return closed;
}

bool MakeFolder(const std::string& path)
{
    return !Unusable(path) && CreateDirectoryA(path.c_str(), nullptr) != 0;
}

void RemoveFolder(const std::string& path)
{
    if (!Unusable(path))
        RemoveDirectoryA(path.c_str());
}

void RemoveFile(const std::string& path)
{
    if (!Unusable(path))
        DeleteFileA(path.c_str());
}

void ExitWithMessage(const std::string& text, const std::string& caption, unsigned style)
{
    MessageBoxA(nullptr, text.c_str(), caption.c_str(), style);
    std::exit(-1);
}

}  // namespace sys
