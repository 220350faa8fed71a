#pragma once

#include "rgb_image.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// Binary PPM (P6), maxval 255.
std::vector<std::uint8_t> encodePpm(const RgbImage& image);

} // namespace ludaxgen
