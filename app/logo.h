#pragma once
// The logo band: the logo picture the program carries, its fade, and its drawing with the
// version label over the window's yellow background.

#include <windows.h>

#include <cstdint>
#include <vector>

// The window's two colours: the background behind and around the logo, and the version label.
constexpr COLORREF backgroundYellow = RGB(255, 255, 0);
constexpr COLORREF versionOrange = RGB(245, 116, 32);

// A picture as 32-bit pixels, blue, green, red, alpha bytes, rows top to bottom.
struct BgraImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bgra;
};

// The program's image list: its one picture, the 350 x 150 window logo (fully opaque, with
// the close box drawn into its top-right corner), unpacked on first use and kept.
namespace LudaxImage {
const BgraImage& LudaxLogo();
}

// Gives every pixel the same alpha, leaving the colours as they are.
void SetAlpha(BgraImage& image, std::uint8_t alpha);

// The logo blended over the yellow background by its own alpha, as BGRA pixels of its size:
// each colour byte is (logo * alpha + yellow * (255 - alpha) + 127) / 255.
std::vector<std::uint8_t> ComposeOverYellow(const BgraImage& logo);

// Draws the logo band at the top-left of `dc` at `size`: the logo over yellow, composed off
// screen and copied in one piece (stretched smoothly when the screen is set larger than 100 %),
// then the version label over its top-left corner.
void DrawLogoBand(HDC dc, const BgraImage& logo, SIZE size);
