#pragma once

#include "map_geometry.h"

#include <string>

namespace ludaxgen {

// Writes the Counter-Strike 1.6 binary payload files below root/payload/cs16/.
void writeCs16Binaries(const std::string& root, const MapGeometry& map);

} // namespace ludaxgen
