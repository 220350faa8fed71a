#include "ico_writer.h"

#include "bmp_writer.h"
#include "byte_writer.h"
#include "palette.h"

#include <stdexcept>

namespace ludaxgen {

namespace {

bool opaque(const IconImage& icon, int x, int y)
{
    return icon.alpha[static_cast<std::size_t>(y) * static_cast<std::size_t>(icon.rgb.width()) + static_cast<std::size_t>(x)] >= 128;
}

std::vector<std::uint8_t> encodeDib(const IconImage& icon)
{
    const int w = icon.rgb.width();
    const int h = icon.rgb.height();
    if (icon.alpha.size() != static_cast<std::size_t>(w) * static_cast<std::size_t>(h))
        throw std::invalid_argument("icon alpha size mismatch");
    if (icon.bitsPerPixel != 4 && icon.bitsPerPixel != 32)
        throw std::invalid_argument("icon depth must be 4 or 32");
    const std::size_t xorStride = dibStride(w, icon.bitsPerPixel);
    const std::size_t andStride = dibStride(w, 1);
    const std::vector<Rgb> palette = icon.bitsPerPixel == 4 ? iconPalette16() : std::vector<Rgb>{};

    ByteWriter out;
    out.u32(40);
    out.i32(w);
    out.i32(2 * h);  // XOR and AND bitmaps stacked
    out.u16(1);
    out.u16(static_cast<std::uint16_t>(icon.bitsPerPixel));
    out.u32(0);
    out.u32(checkedU32((xorStride + andStride) * static_cast<std::size_t>(h), "icon image size"));
    out.i32(0);
    out.i32(0);
    out.u32(checkedU32(palette.size(), "icon palette size"));
    out.u32(0);
    writeDibPalette(out, palette);
    for (int y = h - 1; y >= 0; --y) {
        const std::size_t rowStart = out.size();
        if (icon.bitsPerPixel == 32) {
            for (int x = 0; x < w; ++x) {
                const Rgb c = icon.rgb.at(x, y);
                out.u8(c.b);
                out.u8(c.g);
                out.u8(c.r);
                out.u8(icon.alpha[static_cast<std::size_t>(y) * static_cast<std::size_t>(w) + static_cast<std::size_t>(x)]);
            }
        } else {
            // Transparent pixels are black in the XOR bitmap so the AND mask clears them.
            for (int x = 0; x < w; x += 2) {
                const std::uint8_t hi = opaque(icon, x, y) ? nearestIndex(icon.rgb.at(x, y), palette) : 0;
                const std::uint8_t lo = (x + 1 < w && opaque(icon, x + 1, y)) ? nearestIndex(icon.rgb.at(x + 1, y), palette) : 0;
                out.u8(static_cast<std::uint8_t>((hi << 4) | lo));
            }
        }
        out.zeros(xorStride - (out.size() - rowStart));
    }
    for (int y = h - 1; y >= 0; --y) {
        for (std::size_t byte = 0; byte < andStride; ++byte) {
            std::uint8_t bits = 0;
            for (int bit = 0; bit < 8; ++bit) {
                const int x = static_cast<int>(byte) * 8 + bit;
                if (x < w && !opaque(icon, x, y))
                    bits = static_cast<std::uint8_t>(bits | (0x80 >> bit));
            }
            out.u8(bits);
        }
    }
    return out.bytes();
}

} // namespace

std::vector<std::uint8_t> encodeIco(const std::vector<IconImage>& images)
{
    ByteWriter out;
    out.u16(0);
    out.u16(1);  // icon, not cursor
    out.u16(checkedU16(images.size(), "icon count"));
    std::vector<std::vector<std::uint8_t>> dibs;
    for (const IconImage& icon : images)
        dibs.push_back(encodeDib(icon));
    std::size_t offset = 6 + 16 * images.size();
    for (std::size_t i = 0; i < images.size(); ++i) {
        const IconImage& icon = images[i];
        if (icon.rgb.width() > 255 || icon.rgb.height() > 255)
            throw std::invalid_argument("icon image too large for its directory entry");
        out.u8(static_cast<std::uint8_t>(icon.rgb.width()));
        out.u8(static_cast<std::uint8_t>(icon.rgb.height()));
        out.u8(icon.bitsPerPixel == 4 ? 16 : 0);
        out.u8(0);
        out.u16(1);
        out.u16(static_cast<std::uint16_t>(icon.bitsPerPixel));
        out.u32(checkedU32(dibs[i].size(), "icon image bytes"));
        out.u32(checkedU32(offset, "icon image offset"));
        offset += dibs[i].size();
    }
    for (const auto& dib : dibs)
        out.raw(dib);
    return out.bytes();
}

} // namespace ludaxgen
