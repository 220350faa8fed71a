#pragma once

#include "logo_art.h"
#include "rgb_image.h"

namespace ludaxgen {

constexpr int kWindowLogoWidth = 350;
constexpr int kWindowLogoHeight = 150;
constexpr int kMenuWidth = 1280;
constexpr int kMenuHeight = 1024;
constexpr int kTileSize = 256;

// The window's logo band, close box included.
RgbImage windowLogo();

// The whole 1280x1024 menu background before it is cut into tiles.
RgbImage menuBackground();

// True for the grid cells (row, column from 1) that carry a tile of their own;
// all other cells show the plain tile.
bool isLogoCell(int row, int column);

// The Source console background, 1024x1024.
RgbImage consoleBackground();

} // namespace ludaxgen
