#pragma once

#include "palette.h"
#include "rgb_image.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ludaxgen {

// WAD3 texture archive holding one miptex lump (type 0x43): the picture and
// three halvings, each quantized to the palette stored after them.
std::vector<std::uint8_t> encodeWad3SingleMiptex(const std::string& name, const RgbImage& image, const Palette& palette);

} // namespace ludaxgen
