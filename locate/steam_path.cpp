#include "steam_path.h"

namespace {

SteamPath Read(sys::RegistryHive hive, const std::string& key, const std::string& value)
{
    const sys::RegistryString read = sys::ReadRegistryString(hive, key, value);
    SteamPath steam{read.read, read.reason, std::string()};
    if (read.read == sys::RegistryRead::ok)
        steam.steamappsPath = read.text + "/steamapps/";
    return steam;
}

}  // namespace

SteamPath ReadSteamappsPath(const std::string& steamKey)
{
    return Read(sys::RegistryHive::user, steamKey, "SteamPath");
}

SteamPath SteamForTheWindow(const std::string& named) { return named.empty() ? ReadSteamappsPath() : FindSteam(named); }

SteamPath FindSteam(const std::string& named)
{
    if (!named.empty())
        return {sys::RegistryRead::ok, sys::Reason(), named + "/steamapps/"};
    SteamPath steam = ReadSteamappsPath();
    for (const sys::RegistryHive view : {sys::RegistryHive::machine32, sys::RegistryHive::machine64})
        if (steam.read != sys::RegistryRead::ok)
            steam = Read(view, "SOFTWARE\\Valve\\Steam", "InstallPath");
    return steam;
}
