#pragma once

#include "rgb_image.h"

namespace ludaxgen {

struct PixelRect {
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
};

// Where and how large the LUDAX logo goes. Sizes scale with the letters so
// the same artwork serves the 350 px window logo and the 1024 px backgrounds.
struct LogoPlacement {
    PixelRect region;          // all drawing stays inside; pixels outside are untouched
    int wordLeft = 0;          // pixel x of the word's bottom-left corner
    int wordTop = 0;           // pixel y of the top of the letters
    int scaleNum = 1;          // pixels per design unit = scaleNum / scaleDen
    int scaleDen = 1;
    int captionDot = 0;        // pixel size of one caption font cell; 0 leaves the caption out
    int stripeRightExtra = 0;  // how far the right stripe runs past the word, in pixels
    int crossX = 0;            // crosshair accent centre and radius, in pixels; radius 0 leaves it out
    int crossY = 0;
    int crossRadius = 0;
};

// Composes the logo over what the image already holds (4x4 supersampled).
void drawLogo(RgbImage& image, const LogoPlacement& placement);

// Pixel extent of the slanted word for a placement (left, top, right, bottom exclusive).
PixelRect logoWordBounds(const LogoPlacement& placement);

} // namespace ludaxgen
