#pragma once
// The program's icon, made from the logo artwork: the artwork's lit part (the LUDAX wordmark,
// without the close box of its top-right corner) centred on a black square, in an .ico file.

#include <vector>

// A picture as red, green, blue bytes, rows top to bottom.
struct RgbImage {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> rgb;
};

// The square picture of `size` pixels as blue, green, red, alpha bytes, rows top to bottom.
std::vector<unsigned char> IconPicture(const RgbImage& artwork, int size);

// An .ico file holding the picture at each of `sizes` (at most 256): the 256-pixel one as PNG,
// the smaller ones as 32-bit bitmaps, which every Windows version reads.
std::vector<unsigned char> IcoFile(const RgbImage& artwork, const std::vector<int>& sizes);
