#include "steam_path.h"

SteamPath ReadSteamappsPath(const std::string& steamKey)
{
    const sys::RegistryString value = sys::ReadUserRegistryString(steamKey, "SteamPath");
    SteamPath steam{value.read, value.reason, std::string()};
    if (value.read == sys::RegistryRead::ok)
        steam.steamappsPath = value.text + "/steamapps/";
    return steam;
}
