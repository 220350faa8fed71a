#include "close_box.h"

namespace ludaxgen {

namespace {

const Rgb kFrame{208, 208, 208};
const Rgb kCross{240, 240, 240};

// Bresenham line, both ends included.
void drawLine(RgbImage& image, int x0, int y0, int x1, int y1, const Rgb& c)
{
    const int dx = x1 > x0 ? x1 - x0 : x0 - x1;
    const int dy = y1 > y0 ? y0 - y1 : y1 - y0;
    const int stepX = x0 < x1 ? 1 : -1;
    const int stepY = y0 < y1 ? 1 : -1;
    int err = dx + dy;
    for (;;) {
        image.set(x0, y0, c);
        if (x0 == x1 && y0 == y1)
            break;
        const int e2 = 2 * err;
        if (e2 >= dy) {
            err += dy;
            x0 += stepX;
        }
        if (e2 <= dx) {
            err += dx;
            y0 += stepY;
        }
    }
}

} // namespace

void drawCloseBox(RgbImage& image, const PixelRect& box)
{
    const int right = box.x + box.w - 1;
    const int bottom = box.y + box.h - 1;
    for (int y = box.y; y <= bottom; ++y)
        for (int x = box.x; x <= right; ++x)
            image.set(x, y, Rgb{});
    for (int x = box.x; x <= right; ++x) {
        image.set(x, box.y, kFrame);
        image.set(x, bottom, kFrame);
    }
    for (int y = box.y; y <= bottom; ++y) {
        image.set(box.x, y, kFrame);
        image.set(right, y, kFrame);
    }
    // One clear pixel between frame and cross keeps the X readable at this size.
    drawLine(image, box.x + 2, box.y + 2, right - 2, bottom - 2, kCross);
    drawLine(image, right - 2, box.y + 2, box.x + 2, bottom - 2, kCross);
}

} // namespace ludaxgen
