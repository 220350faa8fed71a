#include "test_registry.h"

#ifdef _WIN32
#include <windows.h>

namespace {

std::wstring Wide(const std::string& utf8)
{
    std::wstring wide(utf8.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

}  // namespace

// As Steam stores its values: UTF-16.
void SetUserRegistryString(const std::string& key, const std::string& value, const std::string& text)
{
    HKEY handle;
    RegCreateKeyExW(HKEY_CURRENT_USER, Wide(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &handle, nullptr);
    const std::wstring wide = Wide(text);
    RegSetValueExW(handle, Wide(value).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()),
                   static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(handle);
}

void DeleteUserRegistryKey(const std::string& key) { RegDeleteTreeA(HKEY_CURRENT_USER, key.c_str()); }

#else
#include <cstdlib>
#include <filesystem>

#include "test_files.h"

namespace {

std::string KeyFolder(const std::string& key)
{
    const char* root = std::getenv("LUDAX_REGISTRY");
    std::string folder = std::string(root ? root : "") + "/HKEY_CURRENT_USER/";
    for (char c : key)
        folder += c == '\\' ? '/' : c;
    return folder;
}

// Points the POSIX registry at a folder of the test run's own, removed when the run ends.
void RegistryRoot()
{
    static const TempFolder root;
    setenv("LUDAX_REGISTRY", root.Path().c_str(), 1);
}

}  // namespace

void SetUserRegistryString(const std::string& key, const std::string& value, const std::string& text)
{
    RegistryRoot();
    WriteFile(KeyFolder(key) + "/" + value, text);
}

void DeleteUserRegistryKey(const std::string& key)
{
    RegistryRoot();
    std::error_code ignored;
    std::filesystem::remove_all(KeyFolder(key), ignored);
}
#endif
