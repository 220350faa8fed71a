#include "steam_folder.h"

#include <windows.h>

#include "text.h"

namespace {
const char steamKey[] = "Software\\Valve\\Steam";
const std::string emptyArchive("\x01\x00\x00\x00", 4);
}  // namespace

SteamFolder::SteamFolder() : steam(temp.Path() + "/Steam")
{
    MakeFolders(Steamapps());
}

void SteamFolder::AddAccount(const std::string& name, unsigned parts)
{
    std::string account = Account(name);
    MakeFolders(account);
    if (parts & cs16Game)
        WriteFile(account + "/counter-strike/cstrike/config.cfg", "name \"" + name + "\"\r\n");
    if (parts & cssGame)
        WriteFile(account + "/counter-strike source/cstrike/config.cfg", "name \"" + name + "\"\r\n");
    if (parts & cs16Backup)
        WriteFile(account + "/cs16ludax.bak", emptyArchive);
    if (parts & cssBackup)
        WriteFile(account + "/cssludax.bak", emptyArchive);
}

void SteamFolder::Register() const { SetSteamPath(steam); }

void SetSteamPath(const std::string& value)
{
    HKEY key;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, steamKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return;
    // As Steam stores it: UTF-16, whatever the system's code page.
    const std::wstring wide = Widen(value);
    RegSetValueExW(key, L"SteamPath", 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()),
                   static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
}

void CreateSteamKeyWithoutPath()
{
    RemoveSteamKey();
    HKEY key;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, steamKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                        nullptr) == ERROR_SUCCESS)
        RegCloseKey(key);
}

void RemoveSteamKey() { RegDeleteTreeA(HKEY_CURRENT_USER, steamKey); }
