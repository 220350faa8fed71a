#pragma once

#include "rgb_image.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// DXT1 (BC1) without alpha: 8 bytes per 4x4 block, at least one block.
// Endpoints are the two pixels furthest apart along the block's colour axis;
// every pixel takes the nearest of the four interpolated colours.
std::vector<std::uint8_t> encodeDxt1(const RgbImage& image);

std::size_t dxt1Size(int width, int height);

} // namespace ludaxgen
