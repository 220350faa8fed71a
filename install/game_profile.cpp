#include "game_profile.h"

const GameProfile cs16Profile = {
    &SteamAccount::cs16Game, &SteamAccount::cs16Content, "/cs16ludax.bak", "/cs16ludax_1.bak",
    &SteamAccount::hasCs16Backup, &cs16Payload, {"hl.exe"},
};

const GameProfile cssProfile = {
    &SteamAccount::cssGame, &SteamAccount::cssContent, "/cssludax.bak", "/cssludax_1.bak",
    &SteamAccount::hasCssBackup, &cssPayload, {"hl2.exe", "cstrike.exe", "cstrike_win64.exe"},
};
