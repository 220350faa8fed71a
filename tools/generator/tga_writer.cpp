#include "tga_writer.h"

#include "byte_writer.h"

namespace ludaxgen {

std::vector<std::uint8_t> encodeTga(const RgbImage& image)
{
    ByteWriter out;
    out.u8(0);  // no image ID
    out.u8(0);  // no colour map
    out.u8(2);  // uncompressed true colour
    out.zeros(5);  // colour map fields (unused)
    out.u16(0);  // x origin
    out.u16(0);  // y origin
    out.u16(checkedU16(static_cast<std::size_t>(image.width()), "TGA width"));
    out.u16(checkedU16(static_cast<std::size_t>(image.height()), "TGA height"));
    out.u8(24);
    out.u8(0);  // descriptor: no alpha bits, rows stored bottom-up
    for (int y = image.height() - 1; y >= 0; --y) {
        for (int x = 0; x < image.width(); ++x) {
            const Rgb c = image.at(x, y);
            out.u8(c.b);
            out.u8(c.g);
            out.u8(c.r);
        }
    }
    return out.bytes();
}

} // namespace ludaxgen
