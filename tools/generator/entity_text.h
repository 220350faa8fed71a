#pragma once

#include "map_geometry.h"

#include <string>
#include <utility>
#include <vector>

namespace ludaxgen {

// One map entity: its key/value pairs in file order.
using Entity = std::vector<std::pair<std::string, std::string>>;

// The entity lump text: brace blocks of "key" "value" lines, NUL excluded.
std::string entityText(const std::vector<Entity>& entities);

std::string originText(const Vec3i& v);

} // namespace ludaxgen
