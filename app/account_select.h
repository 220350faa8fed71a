#pragma once

#include <windows.h>

// The account chooser: a drop-down list with a sunken field whose closed height on screen is
// exactly the `height` asked for, whatever the font and frame make of it by default.
HWND CreateAccountSelect(HWND parent, int x, int width, int y, int height, int id);

// Moves the chooser to (x, y) at `width`, keeping its closed height and leaving its list room
// for several accounts; returns its new (closed) bottom.
int PlaceAccountSelect(HWND chooser, int x, int y, int width);
