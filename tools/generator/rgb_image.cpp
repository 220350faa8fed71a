#include "rgb_image.h"

#include <stdexcept>

namespace ludaxgen {

bool operator==(const Rgb& a, const Rgb& b) { return a.r == b.r && a.g == b.g && a.b == b.b; }

Rgb mix(const Rgb& from, const Rgb& to, int weight256)
{
    if (weight256 < 0)
        weight256 = 0;
    if (weight256 > 256)
        weight256 = 256;
    auto channel = [weight256](int a, int b) {
        return static_cast<std::uint8_t>((a * (256 - weight256) + b * weight256 + 128) >> 8);
    };
    return Rgb{channel(from.r, to.r), channel(from.g, to.g), channel(from.b, to.b)};
}

RgbImage::RgbImage(int width, int height, Rgb fill)
    : width_(width), height_(height)
{
    if (width <= 0 || height <= 0)
        throw std::invalid_argument("image size must be positive");
    pixels_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill);
}

std::size_t RgbImage::index(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        throw std::out_of_range("pixel outside image");
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
}

Rgb RgbImage::at(int x, int y) const { return pixels_[index(x, y)]; }

void RgbImage::set(int x, int y, const Rgb& c) { pixels_[index(x, y)] = c; }

RgbImage RgbImage::crop(int x, int y, int w, int h) const
{
    RgbImage out(w, h);
    for (int row = 0; row < h; ++row)
        for (int col = 0; col < w; ++col)
            out.set(col, row, at(x + col, y + row));
    return out;
}

RgbImage RgbImage::halved() const
{
    const int w = width_ > 1 ? width_ / 2 : 1;
    const int h = height_ > 1 ? height_ / 2 : 1;
    const int sx = width_ > 1 ? 2 : 1;
    const int sy = height_ > 1 ? 2 : 1;
    RgbImage out(w, h);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            int r = 0, g = 0, b = 0, n = 0;
            for (int dy = 0; dy < sy; ++dy) {
                for (int dx = 0; dx < sx; ++dx) {
                    const Rgb c = at(x * sx + dx, y * sy + dy);
                    r += c.r;
                    g += c.g;
                    b += c.b;
                    ++n;
                }
            }
            out.set(x, y, Rgb{static_cast<std::uint8_t>((r + n / 2) / n), static_cast<std::uint8_t>((g + n / 2) / n),
                              static_cast<std::uint8_t>((b + n / 2) / n)});
        }
    }
    return out;
}

} // namespace ludaxgen
