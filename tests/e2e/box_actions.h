#pragma once
// A player's clicks that bring up a message box, the answer given to it, and what the box said.

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "message_box_reader.h"
#include "running_ludax.h"

// Clicks `button`, reads the box it brings up, runs `whileShown`, presses `answer` and waits
// until the box is gone.
MessageBoxContent ClickAndAnswer(RunningLudax& ludax, HWND button, int answer,
                                 const std::function<void()>& whileShown = {});

void ExpectBox(const MessageBoxContent& box, const std::wstring& text, const std::wstring& caption,
               std::vector<int> buttons, BoxIcon icon, HWND owner);

// Clicks an install button of a game already installed: expects the reinstall `question`,
// answers Yes, then expects the `installed` message and presses OK.
void ReinstallAnsweringYes(RunningLudax& ludax, HWND install, const std::wstring& question,
                           const std::wstring& installed);

// Clicks the logo's close box and expects the program to end with status 0.
void CloseThroughCloseCorner(RunningLudax& ludax);
