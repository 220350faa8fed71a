#include "artwork.h"

#include "background_texture.h"
#include "close_box.h"

#include <stdexcept>

namespace ludaxgen {

RgbImage windowLogo()
{
    RgbImage image(kWindowLogoWidth, kWindowLogoHeight);
    LogoPlacement p;
    p.region = PixelRect{0, 0, kWindowLogoWidth, kWindowLogoHeight};
    p.scaleNum = 3;
    p.scaleDen = 2;
    p.captionDot = 2;
    const PixelRect word = logoWordBounds(p);
    p.wordLeft = (kWindowLogoWidth - word.w) / 2;
    p.wordTop = 34;
    drawLogo(image, p);
    // Columns 340-349, rows 0-10: the corner the window leaves to the close click.
    drawCloseBox(image, PixelRect{kWindowLogoWidth - 10, 0, 10, 11});
    return image;
}

bool isLogoCell(int row, int column)
{
    if (row == 3)
        return column >= 2 && column <= 4;
    if (row == 4)
        return column >= 2 && column <= 5;
    return false;
}

RgbImage menuBackground()
{
    RgbImage image(kMenuWidth, kMenuHeight);
    fillWithCarbon(image);
    const RgbImage plain = image;

    LogoPlacement p;
    p.region = PixelRect{kTileSize, 2 * kTileSize, 4 * kTileSize, 2 * kTileSize};
    p.scaleNum = 7;
    p.scaleDen = 2;
    p.wordLeft = 300;
    p.wordTop = 674;
    p.captionDot = 5;
    // The right stripe runs out into the crosshair, which sits on the stripe's line.
    p.crossRadius = 40;
    p.crossX = 1190;
    p.crossY = 852;
    const PixelRect word = logoWordBounds(p);
    p.stripeRightExtra = p.crossX - p.crossRadius * 13 / 10 - 12 - (word.x + word.w);
    drawLogo(image, p);

    // The plain cells reuse one tile, so the logo must not spill into them.
    for (int y = 0; y < kMenuHeight; ++y)
        for (int x = 0; x < kMenuWidth; ++x)
            if (!isLogoCell(y / kTileSize + 1, x / kTileSize + 1) && !(image.at(x, y) == plain.at(x, y)))
                throw std::logic_error("menu logo reaches a plain background cell");
    return image;
}

RgbImage consoleBackground()
{
    const int size = 1024;
    RgbImage image(size, size);
    fillWithCarbon(image);
    // Darken towards the corners so the logo sits in a soft spotlight.
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const long long dx = x - size / 2;
            const long long dy = y - size / 2;
            const long long d2 = dx * dx + dy * dy;
            const long long max2 = 2LL * (size / 2) * (size / 2);
            image.set(x, y, mix(image.at(x, y), Rgb{}, static_cast<int>(d2 * 200 / max2)));
        }
    }
    LogoPlacement p;
    p.region = PixelRect{0, 0, size, size};
    p.scaleNum = 4;
    p.scaleDen = 1;
    p.captionDot = 6;
    const PixelRect word = logoWordBounds(p);
    p.wordLeft = (size - word.w) / 2;
    p.wordTop = 400;
    drawLogo(image, p);
    return image;
}

} // namespace ludaxgen
