#pragma once

#include "rgb_image.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// VTF 7.2 texture: 80-byte header, a 16x16 DXT1 thumbnail, then the full mip
// chain in DXT1 from the smallest level to the largest. Sides must be powers of two.
std::vector<std::uint8_t> encodeVtf72Dxt1(const RgbImage& image);

} // namespace ludaxgen
