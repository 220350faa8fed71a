#pragma once

#include "rgb_image.h"

namespace ludaxgen {

// Dark carbon-weave texture. Its period (8 px) divides the 256 px tile size,
// so plain tiles repeat seamlessly and logo tiles continue the same weave.
Rgb carbonTexture(int x, int y);

void fillWithCarbon(RgbImage& image);

} // namespace ludaxgen
