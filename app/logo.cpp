#include "logo.h"

#include <zlib.h>

#include <cstddef>

#include "little_endian.h"
#include "resources.h"
#include "texts.h"
#include "wide_text.h"

namespace {

// The packed logo (ludax-logo-pack): two little-endian 32-bit words, width and height,
// followed by the zlib stream of the pixels.
BgraImage Unpack(const unsigned char* data, std::size_t length)
{
    BgraImage image;
    std::uint32_t width = 0, height = 0;
    const char* fields = reinterpret_cast<const char*>(data);
    if (data == nullptr || !ReadLittleEndian32(fields, length, 0, width) ||
        !ReadLittleEndian32(fields, length, 4, height))
        return image;
    if (width == 0 || height == 0 || width > 4096 || height > 4096)
        return image;
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);
    // Opaque black until unpacked: the data is built in, so a failure is left as it is.
    image.bgra.assign(std::size_t{width} * height * 4, 0);
    SetAlpha(image, 255);
    uLongf size = image.bgra.size();
    std::vector<std::uint8_t> pixels(size);
    if (uncompress(pixels.data(), &size, data + 8, length - 8) == Z_OK && size == pixels.size())
        image.bgra.swap(pixels);
    return image;
}

BgraImage LoadLogo()
{
    HMODULE module = GetModuleHandleW(nullptr);
    HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(LUDAX_LOGO), RT_RCDATA);
    HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const void* data = loaded ? LockResource(loaded) : nullptr;
    return Unpack(static_cast<const unsigned char*>(data), found ? SizeofResource(module, found) : 0);
}

}  // namespace

const BgraImage& LudaxImage::LudaxLogo()
{
    static const BgraImage logo = LoadLogo();
    return logo;
}

void SetAlpha(BgraImage& image, std::uint8_t alpha)
{
    for (std::size_t i = 3; i < image.bgra.size(); i += 4)
        image.bgra[i] = alpha;
}

std::vector<std::uint8_t> ComposeOverYellow(const BgraImage& logo)
{
    const unsigned yellow[3] = {GetBValue(backgroundYellow), GetGValue(backgroundYellow),
                                GetRValue(backgroundYellow)};
    std::vector<std::uint8_t> band(logo.bgra.size());
    for (std::size_t pixel = 0; pixel + 3 < band.size(); pixel += 4) {
        unsigned alpha = logo.bgra[pixel + 3];
        for (std::size_t channel = 0; channel < 3; ++channel)
            band[pixel + channel] = static_cast<std::uint8_t>(
                (logo.bgra[pixel + channel] * alpha + yellow[channel] * (255 - alpha) + 127) / 255);
        band[pixel + 3] = 255;
    }
    return band;
}

void DrawLogoBand(HDC dc, const BgraImage& logo, SIZE size)
{
    std::vector<std::uint8_t> band = ComposeOverYellow(logo);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = logo.width;
    info.bmiHeader.biHeight = -logo.height;  // rows top to bottom
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    if (size.cx == logo.width && size.cy == logo.height) {
        SetDIBitsToDevice(dc, 0, 0, logo.width, logo.height, 0, 0, 0, logo.height, band.data(), &info,
                          DIB_RGB_COLORS);
    } else {
        int oldMode = SetStretchBltMode(dc, HALFTONE);
        SetBrushOrgEx(dc, 0, 0, nullptr);
        StretchDIBits(dc, 0, 0, size.cx, size.cy, 0, 0, logo.width, logo.height, band.data(), &info,
                      DIB_RGB_COLORS, SRCCOPY);
        SetStretchBltMode(dc, oldMode);
    }

    HGDIOBJ oldFont = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    SetTextColor(dc, versionOrange);
    SetBkMode(dc, TRANSPARENT);
    const std::wstring label = Wide(texts::versionLabel);
    TextOutW(dc, 0, 0, label.c_str(), static_cast<int>(label.size()));
    SelectObject(dc, oldFont);
}
