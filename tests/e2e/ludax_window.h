#pragma once
// The program's main window as a test sees it from outside: its controls, their states, and
// the messages a person's actions produce.

#include <windows.h>

#include <array>
#include <string>
#include <vector>

// The window's child controls, top to bottom on the screen.
std::vector<HWND> ChildrenTopToBottom(HWND window);

// A child's rectangle in its parent's client coordinates.
RECT RectInParent(HWND child);

// The four buttons, top to bottom.
enum Button { cs16Install, cs16Uninstall, cssInstall, cssUninstall };
using EnabledButtons = std::array<bool, 4>;

struct LudaxControls {
    HWND chooser = nullptr;
    std::array<HWND, 4> buttons{};  // by Button; nullptr for one not found
};

// Finds the chooser by its class and the buttons by their labels.
LudaxControls FindControls(HWND window);
EnabledButtons EnabledButtonsOf(const LudaxControls& controls);

// The chooser's entries as UTF-8, and which one is chosen.
std::vector<std::string> ChooserEntries(HWND chooser);
int ChooserSelection(HWND chooser);

// Picks entry `index` as a person's choice does: the selection moves and the parent hears
// CBN_SELCHANGE.
void ChooseEntry(HWND chooser, int index);

// A left click at client point (x, y) of the window, posted as the mouse produces it.
void ClickClient(HWND window, int x, int y);

// The control that has the keyboard focus in the window's thread (nullptr: none).
HWND FocusOf(HWND window);

// Brings `window` to the front and types one key on the keyboard (SendInput, as a person's key
// press arrives), with Shift or Alt held down around it when asked.
enum class Held { nothing, shift, alt };
void TypeKey(HWND window, WORD key, Held held = Held::nothing);
