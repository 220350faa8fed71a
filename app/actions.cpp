// The four buttons' actions: the questions before them (the game left open, the reinstall),
// the install and uninstall themselves, and what their outcomes show the player.
#include "find_games.h"
#include "game_profile.h"
#include "install.h"
#include "ludax.h"
#include "running_game.h"
#include "system.h"
#include "texts.h"
#include "uninstall.h"
#include "wide_text.h"

namespace {

const GameProfile& ProfileOf(GameId game) { return game == GameId::css ? cssProfile : cs16Profile; }

}  // namespace

// The place the chooser shows, looked at afresh: another copy of the program, or an earlier one
// stopped part-way, may have changed what stands there.
SteamAccount* Ludax::SelectedAccount()
{
    const int index = static_cast<int>(SendMessageW(accountSelect, CB_GETCURSEL, 0, 0));
    if (index < 0 || static_cast<std::size_t>(index) >= accounts.size())
        return nullptr;
    SteamAccount& place = accounts[static_cast<std::size_t>(index)];
    sys::Failure unknown;
    LookAt(place, unknown);
    return &place;
}

// A message box owned by the window; returns the button pressed.
int Ludax::ShowMessage(const std::string& text, const char* caption, UINT style)
{
    return MessageBoxW(window, Wide(text).c_str(), Wide(caption).c_str(), style);
}

// True once the game is closed; false when the player gave up waiting.
bool Ludax::GameClosed(GameId game)
{
    while (GameIsRunning(ProfileOf(game)))
        if (ShowMessage(texts::Of(game).running, texts::messageCaption, MB_RETRYCANCEL | MB_ICONWARNING) != IDRETRY)
            return false;
    return true;
}

// What an install or uninstall left: while the backup archive is there, the way back is offered.
void Ludax::ShowInstalled(SteamAccount& place, GameId game, bool installed)
{
    place.Game(game).installed = installed;
    Enable(Buttons(game).uninstall, installed);
    KeepFocusUsable();
}

void Ludax::Install(GameId game)
{
    SteamAccount* place = SelectedAccount();
    if (place == nullptr || !GameClosed(game))
        return;
    const texts::Game& said = texts::Of(game);
    if (place->Game(game).installed &&
        ShowMessage(said.reinstallQuestion, texts::questionCaption, MB_YESNO | MB_ICONQUESTION) != IDYES) {
        ShowInstalled(*place, game, place->Game(game).installed);
        return;
    }
    const InstallOutcome outcome = InstallConfig(ProfileOf(game), *place, actions, accounts);
    if (outcome.result == InstallOutcome::Result::elsewhere) {
        ShowMessage(texts::InstallStopped(outcome), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
        return;
    }
    if (outcome.result != InstallOutcome::Result::installed)
        EndWithMessage(texts::InstallStopped(outcome), texts::hibaColonCaption, MB_OK,
                       texts::summary::InstallStopped(outcome));
    ShowInstalled(*place, game, outcome.installed);
    ShowMessage(said.installed, texts::messageCaption, MB_ICONINFORMATION);
}

void Ludax::Uninstall(GameId game)
{
    SteamAccount* place = SelectedAccount();
    if (place == nullptr || !GameClosed(game))
        return;
    const UninstallOutcome outcome = UninstallConfig(ProfileOf(game), *place, actions, accounts);
    ShowInstalled(*place, game, outcome.installed);
    if (outcome.gameAway)
        ShowMessage(texts::GameAway(outcome.firstFailure.path), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
    else if (outcome.elsewhere)
        ShowMessage(texts::BelongsElsewhere(outcome.firstFailure.path), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
    else if (outcome.backupKept)
        ShowMessage(texts::Uninstalled(texts::Of(game), outcome), texts::hibaColonCaption, MB_OK | MB_ICONWARNING);
    else
        ShowMessage(texts::Uninstalled(texts::Of(game), outcome), texts::messageCaption, MB_ICONINFORMATION);
}
