#pragma once

#include "rgb_image.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

struct IconImage {
    RgbImage rgb;
    std::vector<std::uint8_t> alpha;  // row-major, top-down; below 128 counts as transparent
    int bitsPerPixel = 32;            // 4 (16-colour palette) or 32 (BGRA)
};

// Windows .ico: ICONDIR, one ICONDIRENTRY per image, then each image as a DIB
// (BITMAPINFOHEADER with doubled height, palette if any, XOR bitmap, AND mask).
std::vector<std::uint8_t> encodeIco(const std::vector<IconImage>& images);

} // namespace ludaxgen
