#pragma once

#include <utility>
#include <vector>

namespace ludaxgen {

// The logo's bold letters, drawn on a grid 40 units tall with 10-unit strokes
// and chamfered corners. Points run x right, y down; holes are extra contours.
struct BlockGlyph {
    std::vector<std::vector<std::pair<int, int>>> contours;
    int advance = 0;
};

constexpr int kBlockCapHeight = 40;

// Throws for letters the logo never uses.
const BlockGlyph& blockGlyph(char letter);

// Width in design units of a word set with the given gap between letters.
int blockWordWidth(const char* word, int gap);

} // namespace ludaxgen
