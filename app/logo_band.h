#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "bgra_image.h"

// The logo blended over the yellow background by its own alpha, as BGRA pixels of its size:
// each colour byte is (logo * alpha + yellow * (255 - alpha) + 127) / 255.
std::vector<std::uint8_t> ComposeOverYellow(const BgraImage& logo);

// Draws the logo band at the top-left of `dc`: the logo over yellow, composed off screen and
// copied in one piece, then the version label over its top-left corner.
void DrawLogoBand(HDC dc, const BgraImage& logo);
