#pragma once
// Reads a message box that another process shows (dialog class #32770) and answers it.

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

#include "launched_process.h"

enum class BoxIcon { none, error, question, warning, information, unrecognised };
std::ostream& operator<<(std::ostream& out, BoxIcon icon);

struct MessageBoxContent {
    std::wstring caption;
    std::wstring text;
    HWND owner = nullptr;
    std::vector<int> buttons;  // control ids of the visible buttons (IDOK, IDYES, ...), ascending
    BoxIcon icon = BoxIcon::unrecognised;
};

HWND WaitForMessageBox(const LaunchedProcess& process, DWORD timeoutMs = 10000);

// Caption, message text, owner, buttons and which system icon it shows (recognised by its
// pixels on the screen, compared with the system's own icons).
MessageBoxContent ReadMessageBox(HWND box);

// Presses the box's button `id` as a click does (posted, so a box that closes and a process
// that ends at once cannot block the caller). False when the box has no such button.
bool PressButton(HWND box, int id);
