#include "ludax_image.h"

#include <zlib.h>

#include <cstddef>

#include "little_endian.h"

// The packed logo, linked in by logo_data.S: two little-endian 32-bit words (width, height)
// followed by the zlib stream of the pixels.
extern "C" const unsigned char ludaxLogoPacked[];
extern "C" const unsigned char ludaxLogoPackedEnd[];

namespace {

BgraImage Unpack(const unsigned char* data, std::size_t length)
{
    BgraImage image;
    std::uint32_t width = 0, height = 0;
    const char* fields = reinterpret_cast<const char*>(data);
    if (!ReadLittleEndian32(fields, length, 0, width) || !ReadLittleEndian32(fields, length, 4, height))
        return image;
    if (width == 0 || height == 0 || width > 4096 || height > 4096)
        return image;
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);
    // Opaque black until unpacked: the data is compiled in, so a failure is left as it is.
    image.bgra.assign(std::size_t{width} * height * 4, 0);
    for (std::size_t i = 3; i < image.bgra.size(); i += 4)
        image.bgra[i] = 255;
    uLongf size = image.bgra.size();
    std::vector<std::uint8_t> pixels(size);
    if (uncompress(pixels.data(), &size, data + 8, length - 8) == Z_OK && size == pixels.size())
        image.bgra.swap(pixels);
    return image;
}

}  // namespace

const BgraImage& LudaxImage::LudaxLogo()
{
    static const BgraImage logo =
        Unpack(ludaxLogoPacked, static_cast<std::size_t>(ludaxLogoPackedEnd - ludaxLogoPacked));
    return logo;
}
