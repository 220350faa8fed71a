#include "player_pc.h"

#include <windows.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "manifest.h"
#include "test_registry.h"
#include "text.h"

namespace {
const char steamKey[] = "Software\\Valve\\Steam";

// The source tree as this program sees it; under Wine a POSIX path is reached through Z:.
std::string PayloadFolder()
{
    const std::string folder = LUDAX_SOURCE_DIR;
    return (!folder.empty() && folder[0] == '/' ? "Z:" + folder : folder) + "/payload/";
}
}  // namespace

SteamFolder::SteamFolder() : steam(temp.Path() + "/Steam") { MakeFolders(Steamapps()); }

void SteamFolder::AddAccount(const std::string& name, unsigned parts)
{
    const std::string account = Account(name), config = "name \"" + name + "\"\r\n", emptyArchive("\x01\0\0\0", 4);
    MakeFolders(account);
    if (parts & cs16Game)
        WriteFile(account + "/counter-strike/cstrike/config.cfg", config);
    if (parts & cssGame)
        WriteFile(account + "/counter-strike source/cstrike/config.cfg", config);
    if (parts & cs16Backup)
        WriteFile(account + "/cs16ludax.bak", emptyArchive);
    if (parts & cssBackup)
        WriteFile(account + "/cssludax.bak", emptyArchive);
}

// As Steam stores it: UTF-16, whatever the system's code page.
void SteamFolder::SetSteamPath(const std::string& value) { SetUserRegistryString(steamKey, "SteamPath", value); }

void SteamFolder::RemoveKey() { DeleteUserRegistryKey(steamKey); }

std::string Backslashed(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string LibraryList(const std::vector<std::string>& libraries)
{
    std::string list = "\"libraryfolders\"\r\n{\r\n";
    for (std::size_t i = 0; i < libraries.size(); ++i) {
        std::string escaped;
        for (char c : Backslashed(libraries[i]))
            escaped += c == '\\' ? std::string("\\\\") : std::string(1, c);
        list += "\t\"" + std::to_string(i) + "\"\r\n\t{\r\n\t\t\"path\"\t\t\"" + escaped + "\"\r\n\t}\r\n";
    }
    return list + "}\r\n";
}

RunningGame::RunningGame(const std::string& name)
{
    const std::wstring path = Widen(folder.Path() + "/" + name);
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    if (CopyFileW(self, path.c_str(), FALSE))
        game.emplace(path);
}

std::vector<std::string> ManifestNames(const std::string& game)
{
    std::ifstream manifest(PayloadFolder() + game + ".manifest", std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(manifest)), std::istreambuf_iterator<char>());
    std::vector<std::string> names;
    for (const ManifestLine& line : ParseManifest(text))
        names.push_back(line.name);
    return names;
}

std::string PayloadBytes(const std::string& game, const std::string& name)
{
    return ReadFile(PayloadFolder() + game + "/" + name);
}
