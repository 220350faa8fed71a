#pragma once

#include <cstdint>
#include <vector>

// A picture as 32-bit pixels, blue, green, red, alpha bytes, rows top to bottom.
struct BgraImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bgra;
};

// Gives every pixel the same alpha, leaving the colours as they are.
void SetAlpha(BgraImage& image, std::uint8_t alpha);
