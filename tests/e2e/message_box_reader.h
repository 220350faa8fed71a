#pragma once
// Reads a message box that another process shows (dialog class #32770) and answers it.

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

#include "window_finder.h"

enum class BoxIcon { none, error, question, warning, information, unrecognised };

// What a message box shows, as a person reads it.
struct Box {
    std::string caption;       // UTF-8
    std::string text;          // UTF-8
    std::vector<int> buttons;  // control ids of the visible buttons (IDOK, IDYES, ...), ascending
    BoxIcon icon = BoxIcon::unrecognised;
    HWND owner = nullptr;

    bool operator==(const Box& other) const;
};
std::ostream& operator<<(std::ostream& out, const Box& box);

HWND WaitForMessageBox(const LaunchedProcess& process, DWORD timeoutMs = defaultTimeoutMs);

// Which system icon the box shows is recognised by its pixels on the screen, compared with the
// system's own icons.
Box ReadMessageBox(HWND box);

// Presses the box's button `id` as a click does (posted, so a box that closes and a process
// that ends at once cannot block the caller). False when the box has no such button.
bool PressButton(HWND box, int id);
