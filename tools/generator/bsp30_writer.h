#pragma once

#include "map_geometry.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// GoldSrc map, BSP version 30: version, 15 (offset, length) lump entries,
// then the lumps, each 4-byte aligned. Textures are named only (offsets 0),
// so the game takes their pixels from the WADs the worldspawn lists.
std::vector<std::uint8_t> encodeBsp30(const MapGeometry& map);

} // namespace ludaxgen
