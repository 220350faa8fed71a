#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "action_log.h"
#include "run_log.h"
#include "logo.h"
#include "steam_account.h"
#include "steam_path.h"

// The window's class: a second start finds the running window by it.
constexpr wchar_t ludaxWindowClass[] = L"Ludax";

// A game's two buttons: the layout's cs16Install and cs16Uninstall, or cssInstall and
// cssUninstall.
struct GameButtons {
    HWND install = nullptr;
    HWND uninstall = nullptr;
};

// The main window's controls: the account chooser and each game's buttons.
struct LudaxLayout {
    HWND accountSelect = nullptr;
    std::array<GameButtons, 2> buttons{};  // by GameId
    GameButtons& Buttons(GameId game) { return buttons[static_cast<std::size_t>(game)]; }
};

// The main window and the application: a borderless pop-up with the fading logo on top (which
// also serves as its title bar and holds the close box) and the account chooser and the four
// action buttons stacked below it. One window procedure serves it; its state is this object,
// which the native window holds in GWLP_USERDATA.
//   ludax.cpp     the window: creation, window procedure, painting, fade, hit-testing, close
//                 box, keyboard focus
//   controls.cpp  the controls: creation, the account chooser, the buttons' states
//   actions.cpp   the four buttons' actions: the questions before them, install and uninstall,
//                 and what their outcomes show
class Ludax final : public LudaxLayout {
public:
    // Builds and opens the window on `steam` (SteamForTheWindow) and the places found there,
    // `found` when the caller looked already; ends the process when the window cannot be made or
    // when Steam or a game cannot be found. What the buttons' installs and uninstalls do goes to
    // `log`, when given, and so does a fatal end.
    Ludax(const SteamPath& steam, std::optional<std::vector<SteamAccount>> found, RunLog* log);
    ~Ludax();
    Ludax(const Ludax&) = delete;
    Ludax& operator=(const Ludax&) = delete;

    // Turns the message loop until the window is closed.
    void Run();

private:
    // A control notification and what answers it.
    struct Connection {
        HWND control;
        WORD notification;
        std::function<void()> action;
    };

    // The window (ludax.cpp).
    int Scaled(int pixels) const;
    SIZE Band() const;
    void CreateNativeWindow();
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HitTest(LPARAM screenPoint);
    void LeftDown(POINT p);
    void Close();
    void Paint();
    void FadeStep();
    void Centre();
    void Activate(bool active);
    void Enable(HWND control, bool enabled);
    void KeepFocusUsable();

    // The controls (controls.cpp).
    void CreateControls();
    void FindGames(std::optional<std::vector<SteamAccount>> found);
    void SelectAccount();
    void ConnectButtons();
    void Command(WPARAM wParam, LPARAM lParam);
    LRESULT DefaultButton() const;

    // The actions (actions.cpp).
    SteamAccount* SelectedAccount();
    int ShowMessage(const std::string& text, const char* caption, UINT style);
    bool GameClosed(GameId game);
    void ShowInstalled(SteamAccount& place, GameId game, bool installed);
    void Install(GameId game);
    void Uninstall(GameId game);

    // Shows an ownerless message box (none without text), then ends the process with exit status
    // -1: the program's one way of stopping when it cannot go on. The log records the end as
    // `what` says it, as a command's log says the same event.
    [[noreturn]] void EndWithMessage(const std::string& text, const char* caption, UINT style, const std::string& what);

    HWND window = nullptr;
    int dpi = 96;          // the screen's pixels per inch; every size below is given at 96
    HWND focus = nullptr;  // the control that had the keyboard focus when the window lost it
    std::vector<Connection> connections;

    RunLog* log;
    ActionLog actions;  // what the buttons' installs and uninstalls do, for the log
    std::string steamappsPath;
    std::vector<SteamAccount> accounts;
    BgraImage logo;
    bool fadeUp = true;
    std::uint8_t fadeLevel = 0;
};

