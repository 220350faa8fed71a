#include "background_texture.h"

namespace ludaxgen {

Rgb carbonTexture(int x, int y)
{
    const int period = 8;
    const int half = period / 2;
    const int cx = ((x % period) + period) % period;
    const int cy = ((y % period) + period) % period;
    // Alternating 4x4 cells run horizontally or vertically, like woven fibre;
    // a soft ramp across each cell gives the fibres some sheen.
    const bool horizontalCell = ((cx / half) + (cy / half)) % 2 == 0;
    const int along = horizontalCell ? (cy % half) : (cx % half);
    static const int kRamp[4] = {7, 12, 15, 10};
    const int v = kRamp[along] + (horizontalCell ? 1 : 0);
    return Rgb{static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v + 2)};
}

void fillWithCarbon(RgbImage& image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.set(x, y, carbonTexture(x, y));
}

} // namespace ludaxgen
