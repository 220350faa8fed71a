#include "player_pc.h"

#include <windows.h>

#include <fstream>
#include <iterator>
#include <sstream>

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
    const std::string account = Account(name), config = "name \"" + name + "\"\r\n";
    MakeFolders(account);
    if (parts & cs16Game)
        WriteFile(account + "/counter-strike/cstrike/config.cfg", config);
    if (parts & cssGame)
        WriteFile(account + "/counter-strike source/cstrike/config.cfg", config);
    if (parts & cssBackup)
        WriteFile(account + "/cssludax.bak", archiveHeader);
}

// As Steam stores it: UTF-16, whatever the system's code page.
void SteamFolder::SetSteamPath(const std::string& value) { SetUserRegistryString(steamKey, "SteamPath", value); }

void SteamFolder::RemoveKey() { DeleteUserRegistryKey(steamKey); }

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
    // One name a line, lines ending in LF or CR LF, empty ones passed over: read here, not by
    // the packer whose work the tests check.
    std::vector<std::string> names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
            names.push_back(line);
    }
    return names;
}

std::string PayloadBytes(const std::string& game, const std::string& name)
{
    return ReadFile(PayloadFolder() + game + "/" + name);
}

