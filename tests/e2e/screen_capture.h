#pragma once
// Pixels as the display shows them, and reference renderings to compare them with.

#include <windows.h>

#include <vector>

struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> colours;  // row by row, top row first

    COLORREF At(int x, int y) const { return colours[static_cast<std::size_t>(y) * width + x]; }
};

// The screen rectangle `area` (screen coordinates) read back from the display.
Pixels CaptureScreen(const RECT& area);

// `icon` drawn at its own size onto a plain `background`.
Pixels RenderIcon(HICON icon, int size, COLORREF background);

// True when each colour channel differs by at most `tolerance`.
bool Near(COLORREF a, COLORREF b, int tolerance);
