#include "screen_capture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// Draws through `paint` into a fresh 32-bit top-down bitmap and returns its pixels.
template <typename Paint>
Pixels DrawOffScreen(int width, int height, Paint paint)
{
    Pixels result;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap && bits) {
        HGDIOBJ previous = SelectObject(memory, bitmap);
        paint(memory, screen);
        GdiFlush();
        result.width = width;
        result.height = height;
        result.colours.resize(static_cast<std::size_t>(width) * height);
        const auto* bgra = static_cast<const unsigned char*>(bits);
        for (std::size_t i = 0; i < result.colours.size(); ++i)
            result.colours[i] = RGB(bgra[4 * i + 2], bgra[4 * i + 1], bgra[4 * i]);
        SelectObject(memory, previous);
        DeleteObject(bitmap);
    }
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return result;
}

}  // namespace

Pixels CaptureScreen(const RECT& area)
{
    int width = area.right - area.left;
    int height = area.bottom - area.top;
    return DrawOffScreen(width, height, [&](HDC memory, HDC screen) {
        BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY | CAPTUREBLT);
    });
}

Pixels RenderIcon(HICON icon, int size, COLORREF background)
{
    return DrawOffScreen(size, size, [&](HDC memory, HDC) {
        HBRUSH brush = CreateSolidBrush(background);
        RECT all{0, 0, size, size};
        FillRect(memory, &all, brush);
        DeleteObject(brush);
        DrawIconEx(memory, 0, 0, icon, size, size, 0, nullptr, DI_NORMAL);
    });
}

bool Near(COLORREF a, COLORREF b, int tolerance)
{
    return std::abs(GetRValue(a) - GetRValue(b)) <= tolerance &&
           std::abs(GetGValue(a) - GetGValue(b)) <= tolerance &&
           std::abs(GetBValue(a) - GetBValue(b)) <= tolerance;
}

Pixels LoadLogoReference()
{
    std::vector<wchar_t> self(32768);
    std::wstring path(self.data(), GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size())));
    std::ifstream file(std::filesystem::path(path.substr(0, path.find_last_of(L"\\/") + 1) + L"ludax_logo.ppm"),
                       std::ios::binary);
    Pixels logo;
    std::string magic;
    int maximum = 0;
    file >> magic >> logo.width >> logo.height >> maximum;
    file.get();  // the one whitespace byte before the samples
    if (magic != "P6" || logo.width != 350 || logo.height != 150 || maximum != 255)
        return {};
    for (unsigned char rgb[3]; logo.colours.size() < 350 * 150 && file.read(reinterpret_cast<char*>(rgb), 3);)
        logo.colours.push_back(RGB(rgb[0], rgb[1], rgb[2]));
    return logo.colours.size() == 350 * 150 ? logo : Pixels{};
}

int LogoMismatches(const Pixels& band, const Pixels& logo)
{
    if (band.width != logo.width || band.height != logo.height)
        return logo.width * logo.height;
    int mismatches = 0;
    for (int y = 0; y < logo.height; ++y)
        for (int x = 0; x < logo.width; ++x)
            if (!InVersionLabelCorner(x, y) && !Near(band.At(x, y), logo.At(x, y), 8))
                ++mismatches;
    return mismatches;
}

int ShownFadeLevel(const Pixels& band, const Pixels& logo)
{
    if (band.width != logo.width || band.height != logo.height || logo.At(5, 140) != RGB(0, 0, 0))
        return -1;
    // Over a black artwork point the blend reads 255 - level in red and green.
    int level = 255 - GetRValue(band.At(5, 140));
    auto blend = [level](int art, int yellow) { return (art * level + yellow * (255 - level)) / 255; };
    for (int y = 0; y < logo.height; y += 3)
        for (int x = 0; x < logo.width; x += 3) {
            if (InVersionLabelCorner(x, y))
                continue;
            COLORREF art = logo.At(x, y);
            COLORREF expected = RGB(blend(GetRValue(art), 255), blend(GetGValue(art), 255),
                                    blend(GetBValue(art), 0));
            if (!Near(band.At(x, y), expected, 6))
                return -1;
        }
    return level;
}
