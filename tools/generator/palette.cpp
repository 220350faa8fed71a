#include "palette.h"

namespace ludaxgen {

namespace {

Palette buildPalette()
{
    Palette p{};
    // 0..127: the logo ramp through its key colours.
    const Rgb stops[] = {{0, 0, 0}, {60, 20, 0}, {255, 102, 0}, {255, 204, 0}, {255, 250, 210}};
    const int segments = 4;
    for (int i = 0; i < 128; ++i) {
        const int pos = i * segments * 256 / 127;
        const int seg = pos / 256 < segments ? pos / 256 : segments - 1;
        p[static_cast<std::size_t>(i)] = mix(stops[seg], stops[seg + 1], pos - seg * 256);
    }
    // 128..159: greys.
    for (int i = 0; i < 32; ++i) {
        const auto v = static_cast<std::uint8_t>(i * 255 / 31);
        p[static_cast<std::size_t>(128 + i)] = Rgb{v, v, v};
    }
    // 160..255: a 4x6x4 colour cube.
    int k = 160;
    for (int r = 0; r < 4; ++r)
        for (int g = 0; g < 6; ++g)
            for (int b = 0; b < 4; ++b)
                p[static_cast<std::size_t>(k++)] = Rgb{static_cast<std::uint8_t>(r * 85), static_cast<std::uint8_t>(g * 51),
                                                       static_cast<std::uint8_t>(b * 85)};
    return p;
}

} // namespace

const Palette& ludaxPalette()
{
    static const Palette palette = buildPalette();
    return palette;
}

std::vector<Rgb> iconPalette16()
{
    return {{0, 0, 0},       {20, 20, 24},    {28, 9, 0},      {60, 20, 0},     {128, 128, 128}, {192, 192, 192},
            {255, 255, 255}, {196, 58, 0},    {255, 96, 0},    {255, 102, 0},   {255, 130, 0},   {255, 160, 0},
            {255, 190, 0},   {255, 210, 30},  {255, 230, 80},  {255, 246, 170}};
}

std::uint8_t nearestIndex(const Rgb& c, const std::vector<Rgb>& palette)
{
    std::size_t best = 0;
    long long bestDistance = -1;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const long long dr = c.r - palette[i].r;
        const long long dg = c.g - palette[i].g;
        const long long db = c.b - palette[i].b;
        const long long d = dr * dr + dg * dg + db * db;
        if (bestDistance < 0 || d < bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    return static_cast<std::uint8_t>(best);
}

std::vector<Rgb> asVector(const Palette& palette) { return std::vector<Rgb>(palette.begin(), palette.end()); }

std::vector<std::uint8_t> quantize(const RgbImage& image, const std::vector<Rgb>& palette)
{
    std::vector<std::uint8_t> out;
    out.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            out.push_back(nearestIndex(image.at(x, y), palette));
    return out;
}

} // namespace ludaxgen
