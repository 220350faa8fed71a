#include "steam_path.h"

namespace {

SteamPath Read(sys::RegistryHive hive, const std::string& key, const std::string& value)
{
    const sys::RegistryString read = sys::ReadRegistryString(hive, key, value);
    SteamPath steam{read.read, read.reason, std::string(), std::string()};
    if (read.read == sys::RegistryRead::ok)
        steam.steamappsPath = read.text + "/steamapps/";
    return steam;
}

}  // namespace

SteamPath ReadSteamappsPath(const std::string& steamKey)
{
    return Read(sys::RegistryHive::user, steamKey, "SteamPath");
}

// The window keeps its rule: the folder named is used as it is, whatever stands there.
SteamPath SteamForTheWindow(const std::string& named)
{
    return named.empty() ? ReadSteamappsPath() : SteamPath{sys::RegistryRead::ok, sys::Reason(), named + "/steamapps/", {}};
}

SteamPath FindSteam(const std::string& named)
{
    if (!named.empty()) {
        const std::string folder = sys::FullPath(named);
        if (sys::ReachFolder(folder))
            return {sys::RegistryRead::ok, sys::Reason(), folder + "/steamapps/", {}};
        return {sys::RegistryRead::keyMissing, sys::Reason(), {}, folder};
    }
    SteamPath steam = ReadSteamappsPath();
    std::string notThere;
    for (const sys::RegistryHive view : {sys::RegistryHive::user, sys::RegistryHive::machine32, sys::RegistryHive::machine64}) {
        if (view != sys::RegistryHive::user)
            steam = Read(view, "SOFTWARE\\Valve\\Steam", "InstallPath");
        if (steam.read != sys::RegistryRead::ok)
            continue;
        const std::string folder = steam.steamappsPath.substr(0, steam.steamappsPath.size() - std::string("/steamapps/").size());
        if (sys::ReachFolder(folder))
            return steam;
        if (notThere.empty())
            notThere = folder;
        steam = SteamPath{sys::RegistryRead::keyMissing, sys::Reason(), {}, {}};
    }
    steam.folderNotThere = notThere;
    return steam;
}
