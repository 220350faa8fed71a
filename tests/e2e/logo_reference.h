#pragma once
// The logo artwork as the window should show it once the fade is over, read from the copy of
// app/ludax_logo.ppm that the build puts beside this program.

#include "screen_capture.h"

// Empty Pixels when the file is missing or not a 350x150 binary PPM.
Pixels LoadLogoReference();

// The top-left corner where the version label is drawn over the logo.
inline bool InVersionLabelCorner(int x, int y) { return x < 96 && y < 24; }

// How many logo pixels outside the version label's corner `band` (350x150, as captured from
// the screen) shows differently from `logo`; every pixel when the sizes differ.
int LogoMismatches(const Pixels& band, const Pixels& logo);

// The fade level (0 = plain yellow, 255 = opaque artwork) at which `band` shows the logo
// blended over yellow, judged on a grid of points outside the label's corner; -1 when the
// band shows something else (not painted yet, or not this logo).
int ShownFadeLevel(const Pixels& band, const Pixels& logo);
