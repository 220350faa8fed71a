#pragma once

#include "map_geometry.h"

#include <string>

namespace ludaxgen {

// Writes the Counter-Strike: Source binary payload files below root/payload/css/.
void writeCssBinaries(const std::string& root, const MapGeometry& map);

} // namespace ludaxgen
