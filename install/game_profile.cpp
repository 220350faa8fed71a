#include "game_profile.h"

const GameProfile cs16Profile = {
    "/counter-strike/cstrike/",
    "/cs16ludax.bak",
    "/cs16ludax_1.bak",
    &SteamAccount::hasCs16Backup,
    "Counter Strike LUDAX config already installed, do you want to reinstall?",
    "Counter Strike LUDAX config installed successfully!",
    "Counter Strike LUDAX config uninstalled!",
    &cs16Payload,
};

const GameProfile cssProfile = {
    "/counter-strike source/cstrike/",
    "/cssludax.bak",
    "/cssludax_1.bak",
    &SteamAccount::hasCssBackup,
    "Counter Strike Source LUDAX config already installed, do you want to reinstall?",
    "Counter Strike Source LUDAX config installed successfully!",
    "Counter Strike Source LUDAX config uninstalled!",
    &cssPayload,
};
