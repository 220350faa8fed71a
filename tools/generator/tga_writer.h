#pragma once

#include "rgb_image.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// Uncompressed true-colour TGA (type 2, 24 bpp, origin bottom-left, no ID,
// no colour map, no footer): 18 header bytes then BGR rows bottom-up.
std::vector<std::uint8_t> encodeTga(const RgbImage& image);

} // namespace ludaxgen
