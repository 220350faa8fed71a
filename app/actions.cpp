// The four buttons' actions: the questions before them (the game left open, the reinstall),
// the install and uninstall themselves, and what their outcomes show the player.
#include "game_profile.h"
#include "install.h"
#include "ludax.h"
#include "running_game.h"
#include "system.h"
#include "texts.h"
#include "uninstall.h"
#include "wide_text.h"

// One game's profile, texts and buttons.
struct GameActions {
    const GameProfile& profile;
    const texts::Game& texts;
    HWND LudaxLayout::*uninstallButton;
};

namespace {

const GameActions cs16Actions{cs16Profile, texts::cs16, &LudaxLayout::cs16Uninstall};
const GameActions cssActions{cssProfile, texts::css, &LudaxLayout::cssUninstall};

}  // namespace

// The place the chooser shows, with its installed flags read afresh from the disk: another
// copy of the program, or an earlier one stopped part-way, may have changed them.
SteamAccount* Ludax::SelectedAccount()
{
    const int index = static_cast<int>(SendMessageW(accountSelect, CB_GETCURSEL, 0, 0));
    if (index < 0 || static_cast<std::size_t>(index) >= accounts.size())
        return nullptr;
    SteamAccount& place = accounts[index];
    for (const GameProfile* game : {&cs16Profile, &cssProfile})
        place.*game->installedFlag = sys::PathExists(BackupFilesOf(*game, place).archive);
    return &place;
}

// A message box owned by the window; returns the button pressed.
int Ludax::ShowMessage(const std::string& text, const char* caption, UINT style)
{
    return MessageBoxW(window, Wide(text).c_str(), Wide(caption).c_str(), style);
}

// True once the game is closed; false when the player gave up waiting.
bool Ludax::GameClosed(const GameActions& game)
{
    while (GameIsRunning(game.profile))
        if (ShowMessage(game.texts.running, texts::messageCaption, MB_RETRYCANCEL | MB_ICONWARNING) != IDRETRY)
            return false;
    return true;
}

// The uninstall button follows the archive: while it is there, the way back is offered.
void Ludax::ShowInstalled(const GameActions& game, const SteamAccount& place)
{
    Enable(this->*game.uninstallButton, place.*game.profile.installedFlag);
    KeepFocusUsable();
}

void Ludax::Install(const GameActions& game)
{
    SteamAccount* place = SelectedAccount();
    if (place == nullptr || !GameClosed(game))
        return;
    if (place->*game.profile.installedFlag && ShowMessage(game.texts.reinstallQuestion, texts::questionCaption,
                                                          MB_YESNO | MB_ICONQUESTION) != IDYES) {
        ShowInstalled(game, *place);
        return;
    }
    const InstallOutcome outcome = InstallConfig(game.profile, *place, actions, accounts);
    if (outcome.result == InstallOutcome::Result::elsewhere) {
        ShowMessage(texts::InstallStopped(outcome), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
        return;
    }
    if (outcome.result != InstallOutcome::Result::installed)
        EndWithMessage(texts::InstallStopped(outcome), texts::hibaColonCaption, MB_OK);
    ShowInstalled(game, *place);
    ShowMessage(game.texts.installed, texts::messageCaption, MB_ICONINFORMATION);
}

void Ludax::Uninstall(const GameActions& game)
{
    SteamAccount* place = SelectedAccount();
    if (place == nullptr || !GameClosed(game))
        return;
    const UninstallOutcome outcome = UninstallConfig(game.profile, *place, actions, accounts);
    ShowInstalled(game, *place);
    if (outcome.gameAway)
        ShowMessage(texts::GameAway(outcome.firstFailure.path), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
    else if (outcome.elsewhere)
        ShowMessage(texts::BelongsElsewhere(outcome.firstFailure.path), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
    else if (outcome.backupKept)
        ShowMessage(texts::Uninstalled(game.texts, outcome), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
    else
        ShowMessage(texts::Uninstalled(game.texts, outcome), texts::messageCaption, MB_ICONINFORMATION);
}

void Ludax::Cs16Install() { Install(cs16Actions); }

void Ludax::Cs16Uninstall() { Uninstall(cs16Actions); }

void Ludax::CssInstall() { Install(cssActions); }

void Ludax::CssUninstall() { Uninstall(cssActions); }
