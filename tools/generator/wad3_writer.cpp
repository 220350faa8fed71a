#include "wad3_writer.h"

#include "byte_writer.h"

#include <stdexcept>

namespace ludaxgen {

namespace {

constexpr std::uint8_t kMiptexType = 0x43;
constexpr std::size_t kNameLength = 16;
constexpr int kMipLevels = 4;

} // namespace

std::vector<std::uint8_t> encodeWad3SingleMiptex(const std::string& name, const RgbImage& image, const Palette& palette)
{
    if (image.width() % 16 != 0 || image.height() % 16 != 0)
        throw std::invalid_argument("miptex sides must be multiples of 16");
    const std::vector<Rgb> colours = asVector(palette);

    ByteWriter lump;
    lump.fixedText(name, kNameLength);
    lump.u32(static_cast<std::uint32_t>(image.width()));
    lump.u32(static_cast<std::uint32_t>(image.height()));
    const std::size_t offsetsAt = lump.size();
    lump.zeros(4 * kMipLevels);
    RgbImage level = image;
    for (int mip = 0; mip < kMipLevels; ++mip) {
        lump.patchU32(offsetsAt + static_cast<std::size_t>(mip) * 4, checkedU32(lump.size(), "mip offset"));
        for (std::uint8_t index : quantize(level, colours))
            lump.u8(index);
        if (mip + 1 < kMipLevels)
            level = level.halved();
    }
    lump.u16(256);
    for (const Rgb& c : palette) {
        lump.u8(c.r);
        lump.u8(c.g);
        lump.u8(c.b);
    }

    ByteWriter out;
    out.text("WAD3");
    out.i32(1);
    const std::size_t directoryAt = out.size();
    out.i32(0);
    const std::size_t lumpAt = out.size();
    out.raw(lump.bytes());
    out.alignTo(4);
    out.patchI32(directoryAt, checkedI32(static_cast<long long>(out.size()), "WAD directory offset"));
    out.i32(checkedI32(static_cast<long long>(lumpAt), "lump offset"));
    out.i32(checkedI32(static_cast<long long>(lump.size()), "lump disk size"));
    out.i32(checkedI32(static_cast<long long>(lump.size()), "lump size"));
    out.u8(kMiptexType);
    out.u8(0);  // not compressed
    out.u16(0);
    out.fixedText(name, kNameLength);
    return out.bytes();
}

} // namespace ludaxgen
