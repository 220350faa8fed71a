#include "ludax.h"

#include "account_select.h"
#include "control_placement.h"
#include "discovery.h"
#include "game_profile.h"
#include "ludax_image.h"

Ludax::Ludax()
{
    CreateNativeWindow();
    CreateLudaxLayout(*this, window);
    steamappsPath = ReadSteamappsPath();
    logo = LudaxImage::LudaxLogo();  // a private copy: the fade rewrites its alpha
    SetAlpha(logo, fadeLevel);       // invisible until the fade brings it in
    SetWindowPos(window, nullptr, 0, 0, ludaxDesignWidth, ludaxDesignHeight,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowTextA(window, "Ludax config.");
    StackControls();
    FindGames();
    SelectAccount();
    Centre();
    ConnectButtons();
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    SetTimer(window, fadeTimerId, fadeInterval, nullptr);
}

Ludax::~Ludax()
{
    if (window != nullptr)
        DestroyWindow(window);
    while (!accounts.empty())
        accounts.pop_back();  // last first
}

void Ludax::Run()
{
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

// Full width below the logo, 2 pixels apart, each keeping its height; the on-screen order is
// not the layout's declaration order.
void Ludax::StackControls()
{
    int bottom = PlaceAccountSelect(accountSelect, 0, logo.height + 2, logo.width);
    bottom = PlaceControl(cs16Install, 0, bottom + 2, logo.width);
    bottom = PlaceControl(cs16Uninstall, 0, bottom + 2, logo.width);
    bottom = PlaceControl(cssInstall, 0, bottom + 2, logo.width);
    PlaceControl(cssUninstall, 0, bottom + 2, logo.width);
}

// The window's client area becomes exactly logo width by last button's bottom, centred on the
// desktop by plain integer halves of its right and bottom edges.
void Ludax::Centre()
{
    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    int width = logo.width;
    int height = ClientRectOf(cssUninstall).bottom;
    SetWindowPos(window, nullptr, (desktop.right - width) / 2, (desktop.bottom - height) / 2, width,
                 height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Ludax::FindGames()
{
    accounts = ::FindGames(steamappsPath);
    connections.push_back({accountSelect, CBN_SELCHANGE, &Ludax::SelectAccount});
    for (const SteamAccount& account : accounts)
        SendMessageA(accountSelect, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(account.name.c_str()));
    // Selecting by message does not notify, so the change action does not run here.
    SendMessageA(accountSelect, CB_SETCURSEL, 0, 0);
    if (accounts.size() == 1)
        EnableWindow(accountSelect, FALSE);
}

void Ludax::SelectAccount()
{
    int index = static_cast<int>(SendMessageA(accountSelect, CB_GETCURSEL, 0, 0));
    ButtonStates states = ::SelectAccount(accounts, index);
    EnableWindow(cs16Install, states.cs16Install);
    EnableWindow(cs16Uninstall, states.cs16Uninstall);
    EnableWindow(cssInstall, states.cssInstall);
    EnableWindow(cssUninstall, states.cssUninstall);
}

void Ludax::ConnectButtons()
{
    connections.push_back({cs16Install, BN_CLICKED, &Ludax::Cs16Install});
    connections.push_back({cs16Uninstall, BN_CLICKED, &Ludax::Cs16Uninstall});
    connections.push_back({cssInstall, BN_CLICKED, &Ludax::CssInstall});
    connections.push_back({cssUninstall, BN_CLICKED, &Ludax::CssUninstall});
}

void Ludax::RunForSelectedAccount(Procedure procedure, const GameProfile& game)
{
    int index = static_cast<int>(SendMessageA(accountSelect, CB_GETCURSEL, 0, 0));
    if (index < 0 || static_cast<std::size_t>(index) >= accounts.size())
        return;
    procedure(game, accounts[index], *this);
}

void Ludax::Cs16Install() { RunForSelectedAccount(InstallConfig, cs16Profile); }

void Ludax::Cs16Uninstall() { RunForSelectedAccount(UninstallConfig, cs16Profile); }

void Ludax::CssInstall() { RunForSelectedAccount(InstallConfig, cssProfile); }

void Ludax::CssUninstall() { RunForSelectedAccount(UninstallConfig, cssProfile); }

int Ludax::ShowMessage(const std::string& text, const std::string& caption, unsigned style)
{
    return MessageBoxA(window, text.c_str(), caption.c_str(), style);
}

void Ludax::EnableUninstall(const GameProfile& game, bool enabled)
{
    if (&game == &cs16Profile)
        EnableWindow(cs16Uninstall, enabled);
    else if (&game == &cssProfile)
        EnableWindow(cssUninstall, enabled);
}
