#include "game_profile.h"

const GameProfile cs16Profile = {cs16AtPlace, &cs16Payload, {"hl.exe"}};

const GameProfile cssProfile = {cssAtPlace, &cssPayload, {"hl2.exe", "cstrike.exe", "cstrike_win64.exe"}};
