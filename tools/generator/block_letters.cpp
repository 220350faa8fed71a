#include "block_letters.h"

#include <stdexcept>
#include <string>

namespace ludaxgen {

namespace {

const BlockGlyph kL{{{{0, 4}, {4, 0}, {10, 0}, {10, 30}, {32, 30}, {32, 40}, {4, 40}, {0, 36}}}, 32};

const BlockGlyph kU{{{{0, 0}, {10, 0}, {10, 30}, {22, 30}, {22, 0}, {32, 0}, {32, 32}, {24, 40}, {8, 40}, {0, 32}}}, 32};

const BlockGlyph kD{{{{0, 0}, {24, 0}, {32, 8}, {32, 32}, {24, 40}, {0, 40}},
                     {{10, 10}, {20, 10}, {22, 12}, {22, 28}, {20, 30}, {10, 30}}},
                    32};

const BlockGlyph kA{{{{0, 40}, {0, 10}, {10, 0}, {22, 0}, {32, 10}, {32, 40}, {22, 40}, {22, 31}, {10, 31}, {10, 40}},
                     {{10, 14}, {14, 10}, {18, 10}, {22, 14}, {22, 22}, {10, 22}}},
                    32};

const BlockGlyph kX{{{{0, 0}, {11, 0}, {16, 10}, {21, 0}, {32, 0}, {22, 20}, {32, 40}, {21, 40}, {16, 30}, {11, 40}, {0, 40}, {10, 20}}},
                    32};

} // namespace

const BlockGlyph& blockGlyph(char letter)
{
    switch (letter) {
    case 'L': return kL;
    case 'U': return kU;
    case 'D': return kD;
    case 'A': return kA;
    case 'X': return kX;
    default: throw std::invalid_argument(std::string("no block glyph for ") + letter);
    }
}

int blockWordWidth(const char* word, int gap)
{
    int width = 0;
    for (const char* p = word; *p != '\0'; ++p)
        width += blockGlyph(*p).advance + (p[1] != '\0' ? gap : 0);
    return width;
}

} // namespace ludaxgen
