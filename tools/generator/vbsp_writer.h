#pragma once

#include "map_geometry.h"

#include <cstdint>
#include <vector>

namespace ludaxgen {

// Source map, "VBSP" version 20: ident, version, 64 lump entries (offset,
// length, version, fourCC), map revision, then the lumps 4-byte aligned.
// Lumps the map has no use for stay empty (offset 0, length 0).
std::vector<std::uint8_t> encodeVbsp20(const MapGeometry& map);

} // namespace ludaxgen
