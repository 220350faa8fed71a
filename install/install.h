#pragma once

#include <string>

#include "game_profile.h"
#include "steam_account.h"

// What the install and uninstall need from the main window.
class InstallWindow {
public:
    // A message box owned by the main window; returns the button pressed.
    virtual int ShowMessage(const std::string& text, const std::string& caption, unsigned style) = 0;
    virtual void EnableUninstall(const GameProfile& game, bool enabled) = 0;

protected:
    ~InstallWindow() = default;
};

// Writes the game's payload into the account's content folder; a first install keeps the
// overwritten files in the backup archive and lists what it creates in the removal list.
void InstallConfig(const GameProfile& game, SteamAccount& account, InstallWindow& window);

// Deletes what the first install created and puts the player's files back.
void UninstallConfig(const GameProfile& game, SteamAccount& account, InstallWindow& window);
