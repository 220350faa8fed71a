#pragma once

#include "map_geometry.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// Navigation mesh, version 9: magic 0xFEEDFACE, version, the size of the map
// file it was built for, the place-name directory, the areas (a 64-unit grid
// over the open ground) and the ladder count.
std::vector<std::uint8_t> encodeNav9(const MapGeometry& map, std::uint32_t bspFileSize);

} // namespace ludaxgen
