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

HKEY Root(RegistryHive hive) { return hive == RegistryHive::user ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }

REGSAM View(RegistryHive hive)
{
    return hive == RegistryHive::machine32 ? KEY_WOW64_32KEY : hive == RegistryHive::machine64 ? KEY_WOW64_64KEY : 0;
}

}  // namespace

// As Steam stores its values: UTF-16.
void SetRegistryString(RegistryHive hive, const std::string& key, const std::string& value, const std::string& text)
{
    HKEY handle;
    RegCreateKeyExW(Root(hive), Wide(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE | View(hive), nullptr, &handle, nullptr);
    const std::wstring wide = Wide(text);
    RegSetValueExW(handle, Wide(value).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()),
                   static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(handle);
}

void DeleteRegistryKey(RegistryHive hive, const std::string& key)
{
    HKEY opened;
    if (RegOpenKeyExA(Root(hive), key.c_str(), 0, KEY_ALL_ACCESS | View(hive), &opened) != ERROR_SUCCESS)
        return;
    RegDeleteTreeA(opened, nullptr);
    RegCloseKey(opened);
    RegDeleteKeyExA(Root(hive), key.c_str(), View(hive), 0);
}

#else
#include <cstdlib>
#include <filesystem>

#include "test_files.h"

namespace {

std::string KeyFolder(RegistryHive hive, const std::string& key)
{
    const char* root = std::getenv("LUDAX_REGISTRY");
    std::string folder = std::string(root ? root : "") +
                         (hive == RegistryHive::user        ? "/HKEY_CURRENT_USER/"
                          : hive == RegistryHive::machine32 ? "/HKEY_LOCAL_MACHINE-32/"
                                                                 : "/HKEY_LOCAL_MACHINE-64/");
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

void SetRegistryString(RegistryHive hive, const std::string& key, const std::string& value, const std::string& text)
{
    RegistryRoot();
    WriteFile(KeyFolder(hive, key) + "/" + value, text);
}

void DeleteRegistryKey(RegistryHive hive, const std::string& key)
{
    RegistryRoot();
    std::error_code ignored;
    std::filesystem::remove_all(KeyFolder(hive, key), ignored);
}
#endif
