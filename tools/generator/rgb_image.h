#pragma once

#include <cstdint>
#include <vector>

namespace ludaxgen {

struct Rgb {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
};

bool operator==(const Rgb& a, const Rgb& b);

// Linear blend in 0..256 steps; integer only so every build yields the same bytes.
Rgb mix(const Rgb& from, const Rgb& to, int weight256);

// Top-down 8-bit RGB picture with bounds-checked pixel access.
class RgbImage {
public:
    RgbImage(int width, int height, Rgb fill = Rgb{});

    int width() const { return width_; }
    int height() const { return height_; }
    Rgb at(int x, int y) const;
    void set(int x, int y, const Rgb& c);

    RgbImage crop(int x, int y, int w, int h) const;
    // 2x2 box filter with rounding; both sides must be even (or 1).
    RgbImage halved() const;

private:
    std::size_t index(int x, int y) const;

    int width_;
    int height_;
    std::vector<Rgb> pixels_;
};

} // namespace ludaxgen
