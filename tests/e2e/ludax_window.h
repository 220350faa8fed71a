#pragma once
// The program's main window as a test sees it from outside: its controls, their states, and
// the messages a person's actions produce.

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

// The window's child controls, top to bottom on the screen.
std::vector<HWND> ChildrenTopToBottom(HWND window);

// A child's rectangle in its parent's client coordinates.
RECT RectInParent(HWND child);

struct LudaxControls {
    HWND chooser = nullptr;
    HWND cs16Install = nullptr;
    HWND cs16Uninstall = nullptr;
    HWND cssInstall = nullptr;
    HWND cssUninstall = nullptr;
};

// Finds the chooser by class and the buttons by their labels (nullptr for a missing one).
LudaxControls FindControls(HWND window);

struct EnabledButtons {
    bool cs16Install, cs16Uninstall, cssInstall, cssUninstall;
    bool operator==(const EnabledButtons& other) const;
};
std::ostream& operator<<(std::ostream& out, const EnabledButtons& buttons);
EnabledButtons EnabledButtonsOf(const LudaxControls& controls);

std::vector<std::wstring> ChooserEntries(HWND chooser);
int ChooserSelection(HWND chooser);
// What the closed chooser shows (asked of the control itself: another process's GetWindowText
// does not reach a combo box's edit text).
std::wstring ChooserText(HWND chooser);

// Picks entry `index` as a person's choice does: the selection moves and the parent hears
// CBN_SELCHANGE.
void ChooseEntry(HWND chooser, int index);

// A left click at client point (x, y) of the window, posted as the mouse produces it.
void ClickClient(HWND window, int x, int y);

// Clicks a button without waiting for what it starts (message boxes block the program).
void PostButtonClick(HWND button);

// The control that has the keyboard focus in the window's thread (nullptr: none).
HWND FocusOf(HWND window);

// Brings `window` to the front and types one key on the keyboard (SendInput, as a person's key
// press arrives), with Shift or Alt held down around it when asked.
enum class Held { nothing, shift, alt };
void TypeKey(HWND window, WORD key, Held held = Held::nothing);
