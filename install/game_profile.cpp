#include "game_profile.h"

const GameProfile cs16Profile = {
    &SteamAccount::cs16Content,
    "/cs16ludax.bak",
    "/cs16ludax_1.bak",
    &SteamAccount::hasCs16Backup,
    "Counter Strike LUDAX config already installed, do you want to reinstall?",
    "Counter Strike LUDAX config installed successfully!",
    "Counter Strike LUDAX config uninstalled!",
    &cs16Payload,
};

const GameProfile cssProfile = {
    &SteamAccount::cssContent,
    "/cssludax.bak",
    "/cssludax_1.bak",
    &SteamAccount::hasCssBackup,
    "Counter Strike Source LUDAX config already installed, do you want to reinstall?",
    "Counter Strike Source LUDAX config installed successfully!",
    "Counter Strike Source LUDAX config uninstalled!",
    &cssPayload,
};
