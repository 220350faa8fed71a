#include "game_profile.h"

const GameProfile cs16Profile = {
    &SteamAccount::cs16Content, "/cs16ludax.bak", "/cs16ludax_1.bak", &SteamAccount::hasCs16Backup, &cs16Payload,
};

const GameProfile cssProfile = {
    &SteamAccount::cssContent, "/cssludax.bak", "/cssludax_1.bak", &SteamAccount::hasCssBackup, &cssPayload,
};
