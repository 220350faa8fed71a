#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "bgra_image.h"
#include "install.h"
#include "ludax_layout.h"
#include "steam_account.h"

// The main window and the application: a borderless pop-up with the fading logo on top (which
// also serves as its title bar and holds the close box) and the account chooser and the four
// action buttons stacked below it.
class Ludax final : public LudaxLayout, public InstallWindow {
public:
    // Builds and opens the window; ends the process when Steam or a game cannot be found.
    Ludax();
    ~Ludax();
    Ludax(const Ludax&) = delete;
    Ludax& operator=(const Ludax&) = delete;

    // Turns the message loop until the window is closed.
    void Run();

    int ShowMessage(const std::string& text, const std::string& caption, unsigned style) override;
    void EnableUninstall(const GameProfile& game, bool enabled) override;

private:
    // A control notification and the member that answers it.
    struct Connection {
        HWND control;
        WORD notification;
        void (Ludax::*action)();
    };

    // The fade's periodic timer: 10 ms, id 1.
    static constexpr UINT_PTR fadeTimerId = 1;
    static constexpr UINT fadeInterval = 10;

    void CreateNativeWindow();
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HitTest(LPARAM screenPoint);
    void LeftDown(POINT p);
    void Command(WPARAM wParam, LPARAM lParam);

    void Paint();
    void FadeStep();

    void StackControls();
    void Centre();
    void FindGames();
    void SelectAccount();
    void ConnectButtons();

    // Runs an install or uninstall for the chosen account.
    using Procedure = void (*)(const GameProfile&, SteamAccount&, InstallWindow&);
    void RunForSelectedAccount(Procedure procedure, const GameProfile& game);

    void Cs16Install();
    void Cs16Uninstall();
    void CssInstall();
    void CssUninstall();

    HWND window = nullptr;
    std::vector<Connection> connections;

    std::string steamappsPath;
    std::vector<SteamAccount> accounts;
    BgraImage logo;
    bool fadeUp = true;
    std::uint8_t fadeLevel = 0;
};
