#pragma once

#include "rgb_image.h"

namespace ludaxgen {

// The player model's remap texture: a dark jacket weave with an orange chest
// band carrying "LUDAX" in the caption font.
RgbImage playerRemapTexture(int width, int height);

// Emblem flattened onto black for formats without transparency.
RgbImage emblemOnBlack(int size);

} // namespace ludaxgen
