#include "screen_capture.h"

#include <cstdlib>
#include <cstring>

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
