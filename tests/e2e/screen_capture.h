#pragma once
// Pixels as the display shows them, and what to compare them with: an icon drawn here, and the
// logo artwork the window shows once its fade is over (the copy of app/ludax_logo.ppm that the
// build puts beside this program).

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

// `icon` drawn at `size` onto a plain `background`.
Pixels RenderIcon(HICON icon, int size, COLORREF background);

// True when each colour channel differs by at most `tolerance`.
bool Near(COLORREF a, COLORREF b, int tolerance);

// The 350x150 logo; empty Pixels when the file is missing or not such a binary PPM.
Pixels LoadLogoReference();

// The top-left corner where the version label is drawn over the logo.
inline bool InVersionLabelCorner(int x, int y) { return x < 96 && y < 24; }

// How many logo pixels outside the version label's corner `band` (as captured from the
// screen) shows differently from `logo`; every pixel when the sizes differ.
int LogoMismatches(const Pixels& band, const Pixels& logo);

// The fade level (0 = plain yellow, 255 = opaque artwork) at which `band` shows the logo
// blended over yellow, judged on a grid of points outside the label's corner; -1 when the
// band shows something else (not painted yet, or not this logo).
int ShownFadeLevel(const Pixels& band, const Pixels& logo);
