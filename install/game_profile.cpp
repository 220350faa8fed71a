#include "game_profile.h"

const GameProfile cs16Profile = {GameId::cs16, &cs16Payload, {"hl.exe"}};

const GameProfile cssProfile = {GameId::css, &cssPayload, {"hl2.exe", "cstrike.exe", "cstrike_win64.exe"}};
