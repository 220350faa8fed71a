#include "logo_band.h"

#include "colours.h"
#include "version.h"

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

void DrawLogoBand(HDC dc, const BgraImage& logo)
{
    std::vector<std::uint8_t> band = ComposeOverYellow(logo);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = logo.width;
    info.bmiHeader.biHeight = -logo.height;  // rows top to bottom
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(dc, 0, 0, logo.width, logo.height, 0, 0, 0, logo.height, band.data(), &info,
                      DIB_RGB_COLORS);

    HGDIOBJ oldFont = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    SetTextColor(dc, versionOrange);
    SetBkMode(dc, TRANSPARENT);
    TextOutA(dc, 0, 0, versionLabel.c_str(), static_cast<int>(versionLabel.size()));
    SelectObject(dc, oldFont);
}
