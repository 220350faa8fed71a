#include "icon.h"

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "little_endian.h"

namespace {

// The close box drawn into the artwork's top-right corner belongs to the window, not the icon.
constexpr int closeBoxWidth = 10;
constexpr int closeBoxHeight = 11;
// A pixel counts as lit above this level in any channel; the rest is the black background.
constexpr int litLevel = 40;

struct Box {
    int left, top, right, bottom;  // right and bottom exclusive
};

int Channel(const RgbImage& image, int x, int y, int channel)
{
    if (x < 0 || y < 0 || x >= image.width || y >= image.height)
        return 0;  // black around the artwork
    return image.rgb[(static_cast<std::size_t>(y) * image.width + x) * 3 + channel];
}

Box LitBox(const RgbImage& artwork)
{
    Box box{artwork.width, artwork.height, 0, 0};
    for (int y = 0; y < artwork.height; ++y)
        for (int x = 0; x < artwork.width; ++x) {
            if (x >= artwork.width - closeBoxWidth && y < closeBoxHeight)
                continue;
            int level = std::max({Channel(artwork, x, y, 0), Channel(artwork, x, y, 1), Channel(artwork, x, y, 2)});
            if (level > litLevel) {
                box.left = std::min(box.left, x);
                box.top = std::min(box.top, y);
                box.right = std::max(box.right, x + 1);
                box.bottom = std::max(box.bottom, y + 1);
            }
        }
    if (box.right <= box.left)  // nothing lit: the whole artwork
        box = Box{0, 0, artwork.width, artwork.height};
    return box;
}

// How much of source pixel `pixel` lies within [from, to).
double Overlap(int pixel, double from, double to)
{
    return std::max(0.0, std::min<double>(pixel + 1, to) - std::max<double>(pixel, from));
}

void PutBigEndian32(std::vector<unsigned char>& out, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<unsigned char>(value >> shift));
}

void PutPngChunk(std::vector<unsigned char>& out, const char* type, const std::vector<unsigned char>& data)
{
    PutBigEndian32(out, static_cast<std::uint32_t>(data.size()));
    std::size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    out.insert(out.end(), data.begin(), data.end());
    PutBigEndian32(out, static_cast<std::uint32_t>(crc32(0, out.data() + start, static_cast<uInt>(out.size() - start))));
}

std::vector<unsigned char> Png(const std::vector<unsigned char>& bgra, int size)
{
    // Each row: filter 2 (each byte less the one above it: of the filters, the one that packs
    // the artwork smallest), then red, green, blue, alpha (RGBA, as Windows reads an icon's PNG).
    std::vector<unsigned char> rows;
    for (int y = 0; y < size; ++y) {
        rows.push_back(2);
        for (int x = 0; x < size; ++x) {
            const unsigned char* pixel = &bgra[(static_cast<std::size_t>(y) * size + x) * 4];
            const unsigned char* above = y > 0 ? pixel - static_cast<std::size_t>(size) * 4 : nullptr;
            for (int c : {2, 1, 0, 3})
                rows.push_back(static_cast<unsigned char>(pixel[c] - (above ? above[c] : 0)));
        }
    }
    uLongf packedSize = compressBound(rows.size());
    std::vector<unsigned char> packed(packedSize);
    compress2(packed.data(), &packedSize, rows.data(), rows.size(), Z_BEST_COMPRESSION);
    packed.resize(packedSize);

    std::vector<unsigned char> header;
    PutBigEndian32(header, static_cast<std::uint32_t>(size));
    PutBigEndian32(header, static_cast<std::uint32_t>(size));
    header.insert(header.end(), {8, 6, 0, 0, 0});  // 8 bits, RGBA, deflate, adaptive filters, no interlace
    std::vector<unsigned char> png{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    PutPngChunk(png, "IHDR", header);
    PutPngChunk(png, "IDAT", packed);
    PutPngChunk(png, "IEND", {});
    return png;
}

// An icon bitmap: header with the doubled height of colour plus mask, the colour rows bottom
// up, then the 1-bit transparency mask (rows padded to 32 bits), all opaque here.
std::vector<unsigned char> IconBitmap(const std::vector<unsigned char>& bgra, int size)
{
    std::vector<unsigned char> out;
    AppendLittleEndian32(out, 40);
    AppendLittleEndian32(out, static_cast<std::uint32_t>(size));
    AppendLittleEndian32(out, static_cast<std::uint32_t>(size * 2));
    AppendLittleEndian16(out, 1);   // planes
    AppendLittleEndian16(out, 32);  // bits per pixel
    for (int i = 0; i < 6; ++i)
        AppendLittleEndian32(out, 0);  // no compression; sizes and palette left to the reader
    for (int y = size - 1; y >= 0; --y)
        out.insert(out.end(), bgra.begin() + static_cast<std::ptrdiff_t>(y) * size * 4,
                   bgra.begin() + static_cast<std::ptrdiff_t>(y + 1) * size * 4);
    std::size_t maskRow = (static_cast<std::size_t>(size) + 31) / 32 * 4;
    out.insert(out.end(), maskRow * size, 0);
    return out;
}

}  // namespace

std::vector<unsigned char> IconPicture(const RgbImage& artwork, int size)
{
    Box lit = LitBox(artwork);
    // The source square: the lit box's longer side plus a small margin, centred on the box.
    double side = std::max(lit.right - lit.left, lit.bottom - lit.top) * 1.06;
    double left = (lit.left + lit.right) / 2.0 - side / 2;
    double top = (lit.top + lit.bottom) / 2.0 - side / 2;
    double step = side / size;

    std::vector<unsigned char> bgra(static_cast<std::size_t>(size) * size * 4);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            // Each icon pixel is the area-weighted mean of the artwork pixels it covers.
            double x0 = left + x * step, x1 = x0 + step, y0 = top + y * step, y1 = y0 + step;
            double sum[3] = {0, 0, 0}, weight = 0;
            for (int sy = static_cast<int>(std::floor(y0)); sy < y1; ++sy)
                for (int sx = static_cast<int>(std::floor(x0)); sx < x1; ++sx) {
                    double w = Overlap(sx, x0, x1) * Overlap(sy, y0, y1);
                    for (int c = 0; c < 3; ++c)
                        sum[c] += w * Channel(artwork, sx, sy, c);
                    weight += w;
                }
            unsigned char* pixel = &bgra[(static_cast<std::size_t>(y) * size + x) * 4];
            for (int c = 0; c < 3; ++c)
                pixel[2 - c] = static_cast<unsigned char>(std::lround(weight > 0 ? sum[c] / weight : 0));
            pixel[3] = 255;
        }
    return bgra;
}

std::vector<unsigned char> IcoFile(const RgbImage& artwork, const std::vector<int>& sizes)
{
    std::vector<std::vector<unsigned char>> images;
    for (int size : sizes) {
        std::vector<unsigned char> picture = IconPicture(artwork, size);
        // The smallest as a bitmap, which every part of Windows reads; the rest as PNG (Vista on).
        images.push_back(size >= 32 ? Png(picture, size) : IconBitmap(picture, size));
    }
    std::vector<unsigned char> out;
    AppendLittleEndian16(out, 0);
    AppendLittleEndian16(out, 1);  // an icon, not a cursor
    AppendLittleEndian16(out, static_cast<std::uint16_t>(sizes.size()));
    std::size_t offset = 6 + 16 * sizes.size();
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        out.push_back(static_cast<unsigned char>(sizes[i] >= 256 ? 0 : sizes[i]));  // 0 stands for 256
        out.push_back(static_cast<unsigned char>(sizes[i] >= 256 ? 0 : sizes[i]));
        out.push_back(0);  // no palette
        out.push_back(0);
        AppendLittleEndian16(out, 1);   // planes
        AppendLittleEndian16(out, 32);  // bits per pixel
        AppendLittleEndian32(out, static_cast<std::uint32_t>(images[i].size()));
        AppendLittleEndian32(out, static_cast<std::uint32_t>(offset));
        offset += images[i].size();
    }
    for (const std::vector<unsigned char>& image : images)
        out.insert(out.end(), image.begin(), image.end());
    return out;
}
