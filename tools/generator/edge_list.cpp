#include "edge_list.h"

#include <map>

namespace ludaxgen {

EdgeList buildEdges(const MapGeometry& map)
{
    EdgeList list;
    list.edges.push_back({0, 0});
    std::map<std::pair<int, int>, int> index;
    for (const MapFace& face : map.faces) {
        list.firstSurfedge.push_back(static_cast<int>(list.surfedges.size()));
        for (std::size_t i = 0; i < face.vertices.size(); ++i) {
            const int a = face.vertices[i];
            const int b = face.vertices[(i + 1) % face.vertices.size()];
            auto reversed = index.find({b, a});
            if (reversed != index.end()) {
                list.surfedges.push_back(-reversed->second);
                continue;
            }
            auto same = index.find({a, b});
            if (same != index.end()) {
                list.surfedges.push_back(same->second);
                continue;
            }
            const int e = static_cast<int>(list.edges.size());
            list.edges.push_back({a, b});
            index.emplace(std::make_pair(a, b), e);
            list.surfedges.push_back(e);
        }
    }
    return list;
}

} // namespace ludaxgen
