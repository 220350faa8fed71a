#pragma once

#include <array>
#include <string>
#include <vector>

namespace ludaxgen {

// de_cpl_mill as the map compilers see it: axis-aligned solid brushes, their
// visible faces cut on a 256-unit grid (the GoldSrc lightmap extent limit),
// deduplicated vertices and planes, and a small kd-tree over the play space.
// Both map writers serialise this one model in their own formats.

using Vec3i = std::array<int, 3>;

struct MapBrush {
    Vec3i mins;
    Vec3i maxs;
    int texture = 0;
};

struct MapPlane {
    int axis = 0;  // normal is +X, +Y or +Z
    int dist = 0;
};

struct MapFace {
    int plane = 0;          // index into planes; the plane's normal is +axis
    bool backSide = false;  // true when the face looks along -axis
    std::array<int, 4> vertices{};  // clockwise seen from the front
    int texture = 0;
    int brush = 0;
    // Lightmap rectangle in 16-unit luxels of the texture axes.
    int luxelMinS = 0;
    int luxelMinT = 0;
    int luxelsS = 0;
    int luxelsT = 0;
};

struct MapLight {
    Vec3i origin;
    int intensity = 0;  // 0..255 at the source
    int radius = 0;     // distance at which it has fallen to half
};

struct KdNode {
    int plane = 0;
    std::array<int, 2> children{};  // >= 0 node index; < 0 is -(leaf + 1)
    Vec3i mins;
    Vec3i maxs;
};

struct KdLeaf {
    Vec3i mins;
    Vec3i maxs;
    std::vector<int> faces;
    std::vector<int> brushes;
};

struct MapGeometry {
    std::vector<std::string> textures;
    std::vector<MapBrush> brushes;
    std::vector<Vec3i> vertices;
    std::vector<MapPlane> planes;
    std::vector<MapFace> faces;
    std::vector<MapLight> lights;
    std::vector<KdNode> nodes;
    std::vector<KdLeaf> leaves;
    Vec3i worldMins;  // the playable volume
    Vec3i worldMaxs;
};

MapGeometry buildMillGeometry();

// Texture axes of a face: unit world axes, as the compilers pick them for
// axial faces. s = sign * position[axis].
struct TextureAxis {
    int axis = 0;
    int sign = 1;
};
TextureAxis textureS(int planeAxis);
TextureAxis textureT(int planeAxis);

// Light reaching one luxel of a face, warm white, 0..255 per channel.
std::array<int, 3> luxelLight(const MapGeometry& map, const MapFace& face, int luxelS, int luxelT);

// Where players stand: terrorists in the south, counter-terrorists in the north.
std::vector<Vec3i> terroristSpawns();
std::vector<Vec3i> counterTerroristSpawns();
Vec3i bombsiteA();
Vec3i bombsiteB();

} // namespace ludaxgen
