#include "remap_texture.h"

#include "emblem_art.h"
#include "pixel_font.h"

#include <string>

namespace ludaxgen {

RgbImage playerRemapTexture(int width, int height)
{
    RgbImage image(width, height);
    const int bandTop = height * 3 / 10;
    const int bandBottom = bandTop + height / 8;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            // Twill: diagonal ribs every 4 px, lit from the top.
            const int rib = ((x + y) % 4 == 0) ? 10 : 0;
            const int shade = 70 - y * 40 / height + rib;
            Rgb c{static_cast<std::uint8_t>(shade), static_cast<std::uint8_t>(shade + 4), static_cast<std::uint8_t>(shade + 10)};
            if (y >= bandTop && y < bandBottom)
                c = mix(Rgb{255, 140, 0}, Rgb{220, 80, 0}, (y - bandTop) * 256 / (bandBottom - bandTop));
            image.set(x, y, c);
        }
    }
    const std::string word = "LUDAX";
    const int dot = 2;
    const int left = (width - pixelTextWidth(word, 1) * dot) / 2;
    const int top = (bandTop + bandBottom) / 2 - kPixelGlyphHeight * dot / 2;
    for (std::size_t i = 0; i < word.size(); ++i)
        for (int row = 0; row < kPixelGlyphHeight; ++row)
            for (int col = 0; col < kPixelGlyphWidth; ++col)
                if (pixelGlyphInk(word[i], col, row))
                    for (int dy = 0; dy < dot; ++dy)
                        for (int dx = 0; dx < dot; ++dx)
                            image.set(left + (static_cast<int>(i) * (kPixelAdvance + 1) + col) * dot + dx, top + row * dot + dy,
                                      Rgb{24, 16, 10});
    return image;
}

RgbImage emblemOnBlack(int size)
{
    const Emblem e = renderEmblem(size);
    RgbImage out(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            out.set(x, y, mix(Rgb{}, e.rgb.at(x, y), e.alpha[static_cast<std::size_t>(y * size + x)] * 256 / 255));
    return out;
}

} // namespace ludaxgen
