#pragma once

#include <string>

namespace ludaxgen {

// A 5x7 bitmap font for the logo's small captions; one blank column between letters.
constexpr int kPixelGlyphWidth = 5;
constexpr int kPixelGlyphHeight = 7;
constexpr int kPixelAdvance = 6;

// True when the glyph's cell (col, row) is ink. Throws for a character the font lacks.
bool pixelGlyphInk(char c, int col, int row);

int pixelTextWidth(const std::string& text, int letterSpacing);

} // namespace ludaxgen
