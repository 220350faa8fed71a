#include "system.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>

namespace sys {

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

EntryKind FindEntry(const std::string& path)
{
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(path.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return EntryKind::none;
    FindClose(search);
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ? EntryKind::folder : EntryKind::file;
}

bool ReadFileStart(const std::string& path, std::size_t limit, std::string& bytes)
{
    bytes.clear();
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

bool MakeFolder(const std::string& path) { return CreateDirectoryA(path.c_str(), nullptr) != 0; }

void RemoveFolder(const std::string& path) { RemoveDirectoryA(path.c_str()); }

void RemoveFile(const std::string& path) { DeleteFileA(path.c_str()); }

void ExitWithMessage(const std::string& text, const std::string& caption, unsigned style)
{
    MessageBoxA(nullptr, text.c_str(), caption.c_str(), style);
    std::exit(-1);
}

}  // namespace sys
