#include "dxt1_encoder.h"

#include "byte_writer.h"

#include <array>

namespace ludaxgen {

namespace {

std::uint16_t to565(const Rgb& c)
{
    const int r = (c.r * 31 + 127) / 255;
    const int g = (c.g * 63 + 127) / 255;
    const int b = (c.b * 31 + 127) / 255;
    return static_cast<std::uint16_t>((r << 11) | (g << 5) | b);
}

Rgb from565(std::uint16_t v)
{
    const int r = (v >> 11) & 31;
    const int g = (v >> 5) & 63;
    const int b = v & 31;
    return Rgb{static_cast<std::uint8_t>((r << 3) | (r >> 2)), static_cast<std::uint8_t>((g << 2) | (g >> 4)),
               static_cast<std::uint8_t>((b << 3) | (b >> 2))};
}

long long distance2(const Rgb& a, const Rgb& b)
{
    const long long dr = a.r - b.r, dg = a.g - b.g, db = a.b - b.b;
    return dr * dr + dg * dg + db * db;
}

void encodeBlock(const std::array<Rgb, 16>& px, ByteWriter& out)
{
    // Colour axis: the bounding box diagonal, with green and blue flipped
    // when they fall as red rises (signs of the covariances).
    int lo[3] = {255, 255, 255}, hi[3] = {0, 0, 0};
    long long mean[3] = {0, 0, 0};
    for (const Rgb& c : px) {
        const int ch[3] = {c.r, c.g, c.b};
        for (int k = 0; k < 3; ++k) {
            lo[k] = ch[k] < lo[k] ? ch[k] : lo[k];
            hi[k] = ch[k] > hi[k] ? ch[k] : hi[k];
            mean[k] += ch[k];
        }
    }
    long long covRG = 0, covRB = 0;
    for (const Rgb& c : px) {
        const long long r = c.r * 16 - mean[0], g = c.g * 16 - mean[1], b = c.b * 16 - mean[2];
        covRG += r * g;
        covRB += r * b;
    }
    long long axis[3] = {hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]};
    if (covRG < 0)
        axis[1] = -axis[1];
    if (covRB < 0)
        axis[2] = -axis[2];
    std::size_t minAt = 0, maxAt = 0;
    long long minDot = 0, maxDot = 0;
    for (std::size_t i = 0; i < px.size(); ++i) {
        const long long d = px[i].r * axis[0] + px[i].g * axis[1] + px[i].b * axis[2];
        if (i == 0 || d < minDot) {
            minDot = d;
            minAt = i;
        }
        if (i == 0 || d > maxDot) {
            maxDot = d;
            maxAt = i;
        }
    }
    std::uint16_t c0 = to565(px[maxAt]);
    std::uint16_t c1 = to565(px[minAt]);
    if (c0 < c1) {
        const std::uint16_t t = c0;
        c0 = c1;
        c1 = t;
    }
    std::uint32_t indices = 0;
    if (c0 != c1) {
        const Rgb e0 = from565(c0), e1 = from565(c1);
        const Rgb palette[4] = {e0, e1, mix(e0, e1, 85), mix(e0, e1, 171)};
        for (std::size_t i = 0; i < px.size(); ++i) {
            std::uint32_t best = 0;
            for (std::uint32_t k = 1; k < 4; ++k)
                if (distance2(px[i], palette[k]) < distance2(px[i], palette[best]))
                    best = k;
            indices |= best << (2 * i);
        }
    }
    out.u16(c0);
    out.u16(c1);
    out.u32(indices);
}

} // namespace

std::size_t dxt1Size(int width, int height)
{
    const std::size_t bw = static_cast<std::size_t>((width + 3) / 4);
    const std::size_t bh = static_cast<std::size_t>((height + 3) / 4);
    return 8 * (bw > 0 ? bw : 1) * (bh > 0 ? bh : 1);
}

std::vector<std::uint8_t> encodeDxt1(const RgbImage& image)
{
    ByteWriter out;
    for (int by = 0; by < image.height(); by += 4) {
        for (int bx = 0; bx < image.width(); bx += 4) {
            std::array<Rgb, 16> px{};
            for (int y = 0; y < 4; ++y) {
                for (int x = 0; x < 4; ++x) {
                    // Mips smaller than a block repeat their edge pixels.
                    const int sx = bx + x < image.width() ? bx + x : image.width() - 1;
                    const int sy = by + y < image.height() ? by + y : image.height() - 1;
                    px[static_cast<std::size_t>(y * 4 + x)] = image.at(sx, sy);
                }
            }
            encodeBlock(px, out);
        }
    }
    return out.bytes();
}

} // namespace ludaxgen
