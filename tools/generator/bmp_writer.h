#pragma once

#include "rgb_image.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

class ByteWriter;

// A DIB colour table: one blue, green, red, zero quad per colour.
void writeDibPalette(ByteWriter& out, const std::vector<Rgb>& palette);

// 8-bit palette BMP: BITMAPFILEHEADER, BITMAPINFOHEADER, 256 palette entries,
// rows bottom-up padded to 4 bytes. indices are row-major, top-down.
std::vector<std::uint8_t> encodeBmp8(int width, int height, const std::vector<std::uint8_t>& indices,
                                     const std::vector<Rgb>& palette);

// Bytes per stored row of a DIB with the given width and bit depth.
std::size_t dibStride(int width, int bitsPerPixel);

} // namespace ludaxgen
