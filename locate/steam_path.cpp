#include "steam_path.h"

SteamPath ReadSteamappsPath(const std::string& steamKey)
{
    SteamPath steam;
    std::string value;
    steam.read = sys::ReadUserRegistryString(steamKey, "SteamPath", value);
    if (steam.read == sys::RegistryRead::ok)
        steam.steamappsPath = value + "/steamapps/";
    return steam;
}
