#pragma once

#include "map_geometry.h"

#include <utility>
#include <vector>

namespace ludaxgen {

// Shared edges and the signed per-face edge lists ("surfedges") both map
// formats store. Edge 0 is a placeholder, since -0 cannot mark a reversed edge.
struct EdgeList {
    std::vector<std::pair<int, int>> edges;
    std::vector<int> surfedges;
    std::vector<int> firstSurfedge;  // per face; each face has 4
};

EdgeList buildEdges(const MapGeometry& map);

} // namespace ludaxgen
