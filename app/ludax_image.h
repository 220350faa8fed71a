#pragma once

#include "bgra_image.h"

// The program's image list: its one picture, the 350 x 150 window logo (fully opaque, with
// the close box drawn into its top-right corner), unpacked on first use and kept.
namespace LudaxImage {
const BgraImage& LudaxLogo();
}
