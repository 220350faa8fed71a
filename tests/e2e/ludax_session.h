#pragma once
// Ludax.exe's window as a test drives it: started for one test and worked as a player works it,
// the boxes read and answered.

#include <functional>
#include <string>

#include "ludax_window.h"
#include "message_box_reader.h"

// A game's buttons and the texts of its boxes, as the player reads them.
struct Game {
    const char* payload;  // payload/<payload>.manifest and payload/<payload>/
    Button install, uninstall;
    const char* question;  // before installing over an install
    const char* installed;
    const char* uninstalled;
};
inline constexpr Game cs16{"cs16", cs16Install, cs16Uninstall,
                       "Counter Strike LUDAX config already installed, do you want to reinstall?",
                       "Counter Strike LUDAX config installed successfully!", "Counter Strike LUDAX config uninstalled!"};
inline constexpr Game css{"css", cssInstall, cssUninstall,
                      "Counter Strike Source LUDAX config already installed, do you want to reinstall?",
                      "Counter Strike Source LUDAX config installed successfully!",
                      "Counter Strike Source LUDAX config uninstalled!"};

// The window's information box and its question box.
Box Message(const std::string& text, HWND window);
Box Question(const std::string& text, HWND window);

class LudaxSession {
public:
    // Started with `arguments` (UTF-8; none by default); ended at the end of the test if it still runs.
    explicit LudaxSession(const std::string& arguments = std::string());

    // Waits for the program's next message box, reads it, runs `whileShown`, presses `answer` and
    // waits until the box is gone.
    Box Answer(int answer, const std::function<void()>& whileShown = {});
    // Clicks `button` (a posted BM_CLICK: a message box blocks the program) and answers its box.
    Box Click(Button button, int answer = IDOK, const std::function<void()>& whileShown = {});

    EnabledButtons Enabled() const { return EnabledButtonsOf(controls); }
    // Clicks the logo's close box and expects the program to end with status 0.
    void Close();

    LaunchedProcess process;
    HWND window = nullptr;  // the visible "Ludax" window, nullptr when none came
    std::string failure;    // why there is none
    LudaxControls controls;
};
