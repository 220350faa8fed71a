#include "bmp_writer.h"

#include "byte_writer.h"

#include <stdexcept>

namespace ludaxgen {

std::size_t dibStride(int width, int bitsPerPixel)
{
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel) + 31) / 32 * 4;
}

std::vector<std::uint8_t> encodeBmp8(int width, int height, const std::vector<std::uint8_t>& indices,
                                     const std::vector<Rgb>& palette)
{
    if (palette.size() != 256)
        throw std::invalid_argument("8-bit BMP needs 256 palette entries");
    if (indices.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
        throw std::invalid_argument("BMP index count does not match its size");
    const std::size_t stride = dibStride(width, 8);
    const std::size_t pixelOffset = 14 + 40 + 256 * 4;
    const std::size_t imageSize = stride * static_cast<std::size_t>(height);

    ByteWriter out;
    out.text("BM");
    out.u32(checkedU32(pixelOffset + imageSize, "BMP file size"));
    out.u16(0);
    out.u16(0);
    out.u32(checkedU32(pixelOffset, "BMP pixel offset"));

    out.u32(40);
    out.i32(width);
    out.i32(height);  // positive: bottom-up rows
    out.u16(1);
    out.u16(8);
    out.u32(0);  // BI_RGB
    out.u32(checkedU32(imageSize, "BMP image size"));
    out.i32(2835);  // 72 dpi
    out.i32(2835);
    out.u32(256);
    out.u32(0);

    writeDibPalette(out, palette);
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x)
            out.u8(indices[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)]);
        out.zeros(stride - static_cast<std::size_t>(width));
    }
    if (out.size() != pixelOffset + imageSize)
        throw std::logic_error("BMP size mismatch");
    return out.bytes();
}

void writeDibPalette(ByteWriter& out, const std::vector<Rgb>& palette)
{
    for (const Rgb& c : palette) {
        out.u8(c.b);
        out.u8(c.g);
        out.u8(c.r);
        out.u8(0);
    }
}

} // namespace ludaxgen
