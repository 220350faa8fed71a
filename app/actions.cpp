// The four buttons' actions: the reinstall question, the install and uninstall themselves, and
// what their outcomes show the player (the message boxes, the installed flags, the buttons).
#include "game_profile.h"
#include "install.h"
#include "ludax.h"
#include "texts.h"
#include "uninstall.h"

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

// The place the chooser shows; none before the chooser is filled.
SteamAccount* Ludax::SelectedAccount()
{
    const int index = static_cast<int>(SendMessageA(accountSelect, CB_GETCURSEL, 0, 0));
    if (index < 0 || static_cast<std::size_t>(index) >= accounts.size())
        return nullptr;
    return &accounts[index];
}

// A message box owned by the window; returns the button pressed.
int Ludax::ShowMessage(const std::string& text, const char* caption, UINT style)
{
    return MessageBoxA(window, text.c_str(), caption, style);
}

void Ludax::Install(const GameActions& game)
{
    SteamAccount* place = SelectedAccount();
    if (place == nullptr)
        return;
    if (place->*game.profile.installedFlag && ShowMessage(game.texts.reinstallQuestion, texts::questionCaption,
                                 MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    const InstallOutcome outcome = InstallConfig(game.profile, *place);
    switch (outcome.result) {
    case InstallOutcome::Result::installed:
        Enable(this->*game.uninstallButton, true);
        KeepFocusUsable();
        ShowMessage(game.texts.installed, texts::messageCaption, MB_ICONINFORMATION);
        return;
    case InstallOutcome::Result::backupFailed:
        EndWithMessage(texts::NotBackedUp(outcome.path), texts::hibaColonCaption, MB_OK);
    case InstallOutcome::Result::folderFailed:
        EndWithMessage(texts::FolderNotMade(outcome.path), texts::hibaColonCaption, MB_OK);
    }
}

void Ludax::Uninstall(const GameActions& game)
{
    SteamAccount* place = SelectedAccount();
    if (place == nullptr)
        return;
    const UninstallOutcome outcome = UninstallConfig(game.profile, *place);
    // While the archive stays, the way back stays offered.
    Enable(this->*game.uninstallButton, outcome.archiveKept);
    KeepFocusUsable();
    ShowMessage(outcome.archiveKept ? std::string(game.texts.uninstalled) + "\n" + texts::archiveKept
                                    : std::string(game.texts.uninstalled),
                texts::messageCaption, MB_ICONINFORMATION);
}

void Ludax::Cs16Install() { Install(cs16Actions); }

void Ludax::Cs16Uninstall() { Uninstall(cs16Actions); }

void Ludax::CssInstall() { Install(cssActions); }

void Ludax::CssUninstall() { Uninstall(cssActions); }
