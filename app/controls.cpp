// The main window's controls: the layout (the account chooser and the four buttons), their
// stacking below the logo, the chooser's entries and the buttons' actions.
#include <cstdint>
#include <cstdlib>

#include "discovery.h"
#include "game_profile.h"
#include "ludax.h"

namespace {

// Control identifiers, in the layout's declaration order.
enum ControlId {
    accountSelectId = 101,
    cssUninstallId,
    cssInstallId,
    cs16InstallId,
    cs16UninstallId,
};

// The size the layout was designed at; the window takes it until it is re-placed and centred.
constexpr int designWidth = 1000;
constexpr int designHeight = 636;

// Entries the chooser's open list shows before it scrolls.
constexpr int visibleEntries = 8;

HWND CreateControl(HWND parent, DWORD exStyle, const char* className, const char* label, DWORD style,
                   int x, int width, int y, int height, int id)
{
    HWND control = CreateWindowExA(exStyle, className, label, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style,
                                   x, y, width, height, parent,
                                   reinterpret_cast<HMENU>(static_cast<std::intptr_t>(id)),
                                   GetModuleHandleA(nullptr), nullptr);
    if (control != nullptr)
        SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return control;
}

HWND CreateButton(HWND parent, const char* label, int x, int width, int y, int height, int id)
{
    return CreateControl(parent, 0, "BUTTON", label, BS_PUSHBUTTON, x, width, y, height, id);
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
    int field = static_cast<int>(SendMessageA(chooser, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    for (int attempt = 0; attempt < 4 && ClosedHeight(chooser) != height; ++attempt) {
        field -= ClosedHeight(chooser) - height;
        SendMessageA(chooser, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
    }
}

// The account chooser: a drop-down list with a sunken field, its closed height as designed.
HWND CreateAccountSelect(HWND parent, int x, int width, int y, int height, int id)
{
    HWND chooser = CreateControl(parent, WS_EX_CLIENTEDGE, "COMBOBOX", "", CBS_DROPDOWNLIST | WS_VSCROLL,
                                 x, width, y, height, id);
    if (chooser != nullptr)
        SetClosedHeight(chooser, height);
    return chooser;
}

// Moves the control to (x, y) at `width`, keeping its height, and puts it after `previous` in
// the tab order (nullptr: first); returns its new bottom. A drop-down list's window height is
// that of its open list, so the chooser keeps its closed height and gets room for a few entries.
int PlaceControl(HWND control, HWND previous, int x, int y, int width)
{
    RECT rect = RectInParent(control);
    int height = rect.bottom - rect.top;
    char className[16] = "";
    GetClassNameA(control, className, sizeof className);
    if (lstrcmpiA(className, "ComboBox") == 0) {
        int entry = static_cast<int>(SendMessageA(control, CB_GETITEMHEIGHT, 0, 0));
        height = ClosedHeight(control) + visibleEntries * entry + 2;
    }
    SetWindowPos(control, previous != nullptr ? previous : HWND_TOP, x, y, width, height, SWP_NOACTIVATE);
    return RectInParent(control).bottom;
}

}  // namespace

// The layout's items, created in declaration order at their design positions; only their
// heights survive, since StackControls re-places them. The window takes the design size.
void Ludax::CreateLayout()
{
    const int height = Scaled(24);
    accountSelect = CreateAccountSelect(window, Scaled(60), Scaled(300), Scaled(208), height, accountSelectId);
    cssUninstall = CreateButton(window, "Counter Strike Source LuDAX config uninstall", Scaled(124), Scaled(216),
                                Scaled(376), height, cssUninstallId);
    cssInstall = CreateButton(window, "Counter Strike Source LuDAX config install", Scaled(132), Scaled(216),
                              Scaled(284), height, cssInstallId);
    cs16Install = CreateButton(window, "Counter Strike LuDAX config install", Scaled(124), Scaled(216),
                               Scaled(328), height, cs16InstallId);
    cs16Uninstall = CreateButton(window, "Counter Strike LuDAX config uninstall", Scaled(132), Scaled(216),
                                 Scaled(252), height, cs16UninstallId);
    for (HWND control : {accountSelect, cssUninstall, cssInstall, cs16Install, cs16Uninstall})
        if (control == nullptr)
            std::exit(-1);  // a window without its controls is no use; as for the window itself
    SetWindowPos(window, nullptr, 0, 0, Scaled(designWidth), Scaled(designHeight), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Full width below the logo, 2 pixels apart, each keeping its height. The on-screen order is
// not the layout's declaration order; the tab order follows the screen, top to bottom.
void Ludax::StackControls()
{
    SIZE band = Band();
    const int gap = Scaled(2);
    int bottom = PlaceControl(accountSelect, nullptr, 0, band.cy + gap, band.cx);
    bottom = PlaceControl(cs16Install, accountSelect, 0, bottom + gap, band.cx);
    bottom = PlaceControl(cs16Uninstall, cs16Install, 0, bottom + gap, band.cx);
    bottom = PlaceControl(cssInstall, cs16Uninstall, 0, bottom + gap, band.cx);
    PlaceControl(cssUninstall, cssInstall, 0, bottom + gap, band.cx);
}

// The window's client area becomes exactly the logo band's width by last button's bottom, centred on the
// desktop by plain integer halves of its right and bottom edges.
void Ludax::Centre()
{
    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    int width = Band().cx;
    int height = RectInParent(cssUninstall).bottom;
    SetWindowPos(window, nullptr, (desktop.right - width) / 2, (desktop.bottom - height) / 2, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// The one place that fills the chooser: one entry per qualifying account, in the accounts' order.
void Ludax::FindGames()
{
    accounts = ::FindGames(steamappsPath);
    connections.push_back({accountSelect, CBN_SELCHANGE, &Ludax::SelectAccount});
    for (const SteamAccount& account : accounts)
        SendMessageA(accountSelect, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(account.name.c_str()));
    // Selecting by message does not notify, so the change action does not run here.
    SendMessageA(accountSelect, CB_SETCURSEL, 0, 0);
    if (accounts.size() == 1)
        Enable(accountSelect, false);
}

void Ludax::SelectAccount()
{
    int index = static_cast<int>(SendMessageA(accountSelect, CB_GETCURSEL, 0, 0));
    ButtonStates states = ::SelectAccount(accounts, index);
    Enable(cs16Install, states.cs16Install);
    Enable(cs16Uninstall, states.cs16Uninstall);
    Enable(cssInstall, states.cssInstall);
    Enable(cssUninstall, states.cssUninstall);
    KeepFocusUsable();
}

void Ludax::ConnectButtons()
{
    connections.push_back({cs16Install, BN_CLICKED, &Ludax::Cs16Install});
    connections.push_back({cs16Uninstall, BN_CLICKED, &Ludax::Cs16Uninstall});
    connections.push_back({cssInstall, BN_CLICKED, &Ludax::CssInstall});
    connections.push_back({cssUninstall, BN_CLICKED, &Ludax::CssUninstall});
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
                (this->*connection.action)();
            return;
        }
}

// Enter presses the focused button: the dialog manager asks the window for its default button.
LRESULT Ludax::DefaultButton() const
{
    HWND current = GetFocus();
    for (HWND button : {cs16Install, cs16Uninstall, cssInstall, cssUninstall})
        if (current == button && IsWindowEnabled(button))
            return MAKELRESULT(GetDlgCtrlID(button), DC_HASDEFID);
    return 0;
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
        Enable(cs16Uninstall, enabled);
    else if (&game == &cssProfile)
        Enable(cssUninstall, enabled);
    KeepFocusUsable();
}
