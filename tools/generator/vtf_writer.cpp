#include "vtf_writer.h"

#include "byte_writer.h"
#include "dxt1_encoder.h"

#include <stdexcept>

namespace ludaxgen {

namespace {

constexpr std::uint32_t kHeaderSize = 80;
constexpr std::uint32_t kFormatDxt1 = 13;
constexpr std::uint32_t kFlagClampS = 0x4;
constexpr std::uint32_t kFlagClampT = 0x8;
constexpr std::uint32_t kFlagNoLod = 0x200;
constexpr int kThumbnail = 16;

bool powerOfTwo(int v) { return v > 0 && (v & (v - 1)) == 0; }

} // namespace

std::vector<std::uint8_t> encodeVtf72Dxt1(const RgbImage& image)
{
    if (!powerOfTwo(image.width()) || !powerOfTwo(image.height()) || image.width() < kThumbnail || image.height() < kThumbnail)
        throw std::invalid_argument("VTF sides must be powers of two of at least 16");

    std::vector<RgbImage> mips{image};
    while (mips.back().width() > 1 || mips.back().height() > 1)
        mips.push_back(mips.back().halved());
    const RgbImage* thumbnail = nullptr;
    for (const RgbImage& m : mips)
        if (m.width() == kThumbnail || m.height() == kThumbnail)
            if (thumbnail == nullptr)
                thumbnail = &m;

    // Reflectivity: mean colour, squared as a cheap gamma-to-linear step.
    double sum[3] = {0, 0, 0};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const Rgb c = image.at(x, y);
            sum[0] += c.r;
            sum[1] += c.g;
            sum[2] += c.b;
        }
    }
    const double pixels = static_cast<double>(image.width()) * image.height();

    ByteWriter out;
    out.text(std::string("VTF") + '\0');
    out.u32(7);
    out.u32(2);
    out.u32(kHeaderSize);
    out.u16(checkedU16(static_cast<std::size_t>(image.width()), "VTF width"));
    out.u16(checkedU16(static_cast<std::size_t>(image.height()), "VTF height"));
    out.u32(kFlagClampS | kFlagClampT | kFlagNoLod);
    out.u16(1);  // frames
    out.u16(0);  // first frame
    out.zeros(4);
    for (double s : sum) {
        const double mean = s / pixels / 255.0;
        out.f32(static_cast<float>(mean * mean));
    }
    out.zeros(4);
    out.f32(1.0f);  // bumpmap scale
    out.u32(kFormatDxt1);
    out.u8(static_cast<std::uint8_t>(mips.size()));
    out.u32(kFormatDxt1);
    out.u8(static_cast<std::uint8_t>(thumbnail->width()));
    out.u8(static_cast<std::uint8_t>(thumbnail->height()));
    out.u16(1);  // depth
    out.zeros(kHeaderSize - out.size());

    out.raw(encodeDxt1(*thumbnail));
    for (auto it = mips.rbegin(); it != mips.rend(); ++it)
        out.raw(encodeDxt1(*it));
    return out.bytes();
}

} // namespace ludaxgen
