#pragma once

#include "rgb_image.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ludaxgen {

using Palette = std::array<Rgb, 256>;

// 256 colours biased to the logo: a black-orange-yellow-white ramp, greys and
// a coarse colour cube for everything else.
const Palette& ludaxPalette();

// The 16-colour palette of the 4-bit icon images.
std::vector<Rgb> iconPalette16();

// Nearest palette entry by squared RGB distance; ties go to the lower index.
std::uint8_t nearestIndex(const Rgb& c, const std::vector<Rgb>& palette);

std::vector<Rgb> asVector(const Palette& palette);

// Row-major, top-down palette indices of an image.
std::vector<std::uint8_t> quantize(const RgbImage& image, const std::vector<Rgb>& palette);

} // namespace ludaxgen
