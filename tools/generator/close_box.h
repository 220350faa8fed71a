#pragma once

#include "logo_art.h"
#include "rgb_image.h"

namespace ludaxgen {

// The window's close button painted into the logo: a 1-px light frame
// filling the rectangle, with an X inside it.
void drawCloseBox(RgbImage& image, const PixelRect& box);

} // namespace ludaxgen
