#pragma once

#include "rgb_image.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// A square badge with the logo's block "L": the small-size mark used for the
// icon, the spray decal and the logo bitmap.
struct Emblem {
    RgbImage rgb;
    std::vector<std::uint8_t> alpha;  // coverage of the badge, row-major, top-down
};

Emblem renderEmblem(int size);

} // namespace ludaxgen
