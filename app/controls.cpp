// The main window's controls: the account chooser and the four buttons stacked below the logo,
// the chooser's entries, and which buttons the chosen place enables.
#include <cstdint>
#include <cstdlib>

#include "button_states.h"
#include "find_games.h"
#include "ludax.h"
#include "texts.h"
#include "wide_text.h"

namespace {

// Control identifiers, in the layout's declaration order.
enum ControlId {
    accountSelectId = 101,
    cssUninstallId,
    cssInstallId,
    cs16InstallId,
    cs16UninstallId,
};

// Entries the chooser's open list shows before it scrolls.
constexpr int visibleEntries = 8;

HWND CreateControl(HWND parent, DWORD exStyle, const wchar_t* className, const char* label, DWORD style,
                   int x, int width, int y, int height, int id)
{
    HWND control = CreateWindowExW(exStyle, className, Wide(label).c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP | style,
                                   x, y, width, height, parent,
                                   reinterpret_cast<HMENU>(static_cast<std::intptr_t>(id)),
                                   GetModuleHandleW(nullptr), nullptr);
    if (control != nullptr)
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return control;
}

// The control's rectangle in its parent's client coordinates.
RECT RectInParent(HWND control)
{
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(HWND_DESKTOP, GetParent(control), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

int ClosedHeight(HWND chooser)
{
    RECT rect{};
    GetWindowRect(chooser, &rect);
    return rect.bottom - rect.top;
}

// A drop-down list's closed height follows its selection field's item height; how much the
// frame adds differs between Windows versions (and Wine), so measure and correct until the
// closed chooser is exactly `height` tall.
void SetClosedHeight(HWND chooser, int height)
{
    int field = static_cast<int>(SendMessageW(chooser, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    for (int attempt = 0; attempt < 4 && ClosedHeight(chooser) != height; ++attempt) {
        field -= ClosedHeight(chooser) - height;
        SendMessageW(chooser, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
    }
}

// The account chooser: a drop-down list with a sunken field, closed at `height`. Its window is
// as tall as its open list, which gets room for a few entries.
HWND CreateAccountSelect(HWND parent, int y, int width, int height)
{
    HWND chooser = CreateControl(parent, WS_EX_CLIENTEDGE, L"COMBOBOX", "", CBS_DROPDOWNLIST | WS_VSCROLL, 0,
                                 width, y, height, accountSelectId);
    if (chooser == nullptr)
        return nullptr;
    SetClosedHeight(chooser, height);
    const int entry = static_cast<int>(SendMessageW(chooser, CB_GETITEMHEIGHT, 0, 0));
    SetWindowPos(chooser, nullptr, 0, y, width, ClosedHeight(chooser) + visibleEntries * entry + 2,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return chooser;
}

HWND CreateButton(HWND parent, const char* label, int y, int width, int height, int id)
{
    return CreateControl(parent, 0, L"BUTTON", label, BS_PUSHBUTTON, 0, width, y, height, id);
}

}  // namespace

// The chooser and the four buttons, full width below the logo and 2 pixels apart, in the order
// of the screen (the tab order follows it): chooser, CS 1.6 install, CS 1.6 uninstall, CS:S
// install, CS:S uninstall. A window without its controls is no use: the program ends, as when
// the window itself cannot be made.
void Ludax::CreateControls()
{
    const SIZE band = Band();
    const int height = Scaled(24);
    const int gap = Scaled(2);
    int top = band.cy + gap;
    accountSelect = CreateAccountSelect(window, top, band.cx, height);
    top = (accountSelect ? RectInParent(accountSelect).bottom : top + height) + gap;
    for (GameId game : bothGames) {
        const bool css = game == GameId::css;
        Buttons(game).install =
            CreateButton(window, texts::Of(game).installButton, top, band.cx, height, css ? cssInstallId : cs16InstallId);
        top += height + gap;
        Buttons(game).uninstall = CreateButton(window, texts::Of(game).uninstallButton, top, band.cx, height,
                                               css ? cssUninstallId : cs16UninstallId);
        top += height + gap;
    }
    bool made = accountSelect != nullptr;
    for (const GameButtons& pair : buttons)
        made = made && pair.install != nullptr && pair.uninstall != nullptr;
    if (!made)
        EndWithMessage(std::string(), nullptr, 0, texts::summary::windowFailed);
}

// The window's client area becomes exactly the logo band's width by last button's bottom, centred on the
// desktop by plain integer halves of its right and bottom edges.
void Ludax::Centre()
{
    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    int width = Band().cx;
    int height = RectInParent(Buttons(GameId::css).uninstall).bottom;
    SetWindowPos(window, nullptr, (desktop.right - width) / 2, (desktop.bottom - height) / 2, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// The one place that fills the chooser: one entry per place that holds a game or a backup, in
// the places' order. Without any, the program has nothing to offer and ends.
void Ludax::FindGames(std::optional<std::vector<SteamAccount>> found)
{
    accounts = found ? std::move(*found) : ::FindGames(steamappsPath).places;
    if (accounts.empty())
        EndWithMessage(texts::nothingInstalled, texts::hibaColonCaption, MB_OK | MB_ICONERROR, texts::summary::noGame);
    connections.push_back({accountSelect, CBN_SELCHANGE, [this] { SelectAccount(); }});
    for (const SteamAccount& account : accounts)
        SendMessageW(accountSelect, CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(Wide(texts::ChooserLabel(account)).c_str()));
    // Selecting by message does not notify, so the change action does not run here.
    SendMessageW(accountSelect, CB_SETCURSEL, 0, 0);
    if (accounts.size() == 1)
        Enable(accountSelect, false);
}

void Ludax::SelectAccount()
{
    int index = static_cast<int>(SendMessageW(accountSelect, CB_GETCURSEL, 0, 0));
    const ButtonStates states = ::SelectAccount(accounts, index);
    for (GameId game : bothGames) {
        Enable(Buttons(game).install, states[static_cast<std::size_t>(game)].install);
        Enable(Buttons(game).uninstall, states[static_cast<std::size_t>(game)].uninstall);
    }
    KeepFocusUsable();
}

void Ludax::ConnectButtons()
{
    for (GameId game : bothGames) {
        connections.push_back({Buttons(game).install, BN_CLICKED, [this, game] { Install(game); }});
        connections.push_back({Buttons(game).uninstall, BN_CLICKED, [this, game] { Uninstall(game); }});
    }
}

// A control's action runs only while the control and the window are enabled. A disabled
// button still answers messages that ask it to click (BM_CLICK from automation and
// accessibility tools); its action must not run for an account that does not have its game,
// nor while a message box of a running action holds the window.
void Ludax::Command(WPARAM wParam, LPARAM lParam)
{
    HWND control = reinterpret_cast<HWND>(lParam);
    for (const Connection& connection : connections)
        if (connection.control == control && connection.notification == HIWORD(wParam)) {
            if (IsWindowEnabled(control) && IsWindowEnabled(window))
                connection.action();
            return;
        }
}

// Enter presses the focused button: the dialog manager asks the window for its default button.
LRESULT Ludax::DefaultButton() const
{
    HWND current = GetFocus();
    for (const GameButtons& pair : buttons)
        for (HWND button : {pair.install, pair.uninstall})
            if (current == button && IsWindowEnabled(button))
                return MAKELRESULT(GetDlgCtrlID(button), DC_HASDEFID);
    return 0;
}
