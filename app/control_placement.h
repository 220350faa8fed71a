#pragma once

#include <windows.h>

// A visible child control in the system GUI font; a control that cannot be made stays null.
HWND CreateChildControl(HWND parent, DWORD exStyle, const char* className, const char* label,
                        DWORD style, int x, int y, int width, int height, int id);

// The control's rectangle in its parent's client coordinates.
RECT ClientRectOf(HWND control);

// Moves the control to (x, y) at `width`, keeping its current height; returns its new bottom.
int PlaceControl(HWND control, int x, int y, int width);
