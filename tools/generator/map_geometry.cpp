#include "map_geometry.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace ludaxgen {

namespace {

constexpr int kChunk = 256;   // GoldSrc refuses lightmaps wider than 256 units
constexpr int kLuxel = 16;
constexpr int kTreeDepth = 3;

int floorDiv(int a, int b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0)) ? 1 : 0); }
int ceilDiv(int a, int b) { return -floorDiv(-a, b); }

enum Texture { kGround, kBrick, kSky, kWood, kCrate, kMetal };

MapBrush brush(int x0, int y0, int z0, int x1, int y1, int z1, int texture)
{
    return MapBrush{Vec3i{x0, y0, z0}, Vec3i{x1, y1, z1}, texture};
}

std::vector<MapBrush> millBrushes()
{
    std::vector<MapBrush> b;
    // Shell: ground, sky and four walls around a 3072 x 3072 x 448 yard.
    b.push_back(brush(-1536, -1536, -32, 1536, 1536, 0, kGround));
    b.push_back(brush(-1536, -1536, 448, 1536, 1536, 480, kSky));
    b.push_back(brush(-1568, -1568, -32, -1536, 1568, 480, kBrick));
    b.push_back(brush(1536, -1568, -32, 1568, 1568, 480, kBrick));
    b.push_back(brush(-1536, -1568, -32, 1536, -1536, 480, kBrick));
    b.push_back(brush(-1536, 1536, -32, 1536, 1568, 480, kBrick));
    // The mill: a hall in the middle of the north half with a tower on top.
    b.push_back(brush(-384, 256, 0, 384, 896, 320, kWood));
    b.push_back(brush(-128, 512, 320, 128, 768, 448, kBrick));
    // Half walls splitting the yard into lanes.
    b.push_back(brush(-1536, -256, 0, -768, -192, 256, kBrick));
    b.push_back(brush(768, -256, 0, 1536, -192, 256, kBrick));
    b.push_back(brush(-192, -704, 0, 192, -640, 192, kMetal));
    // Bombsite A (north-west) crates.
    b.push_back(brush(-1344, 832, 0, -1216, 960, 128, kCrate));
    b.push_back(brush(-1216, 832, 0, -1152, 896, 64, kCrate));
    b.push_back(brush(-960, 1152, 0, -832, 1280, 128, kCrate));
    b.push_back(brush(-960, 1152, 128, -896, 1216, 192, kCrate));
    // Bombsite B (south-east) crates.
    b.push_back(brush(832, -1216, 0, 960, -1088, 128, kCrate));
    b.push_back(brush(960, -1216, 0, 1024, -1152, 64, kCrate));
    b.push_back(brush(1152, -896, 0, 1280, -768, 128, kCrate));
    // Mid cover.
    b.push_back(brush(-64, 0, 0, 64, 128, 96, kCrate));
    b.push_back(brush(448, -320, 0, 512, -256, 64, kCrate));
    b.push_back(brush(-576, 64, 0, -512, 128, 64, kCrate));
    return b;
}

struct Builder {
    MapGeometry map;
    std::map<Vec3i, int> vertexIndex;
    std::map<std::pair<int, int>, int> planeIndex;

    int vertex(const Vec3i& v)
    {
        auto it = vertexIndex.find(v);
        if (it != vertexIndex.end())
            return it->second;
        const int index = static_cast<int>(map.vertices.size());
        map.vertices.push_back(v);
        vertexIndex.emplace(v, index);
        return index;
    }

    int plane(int axis, int dist)
    {
        const auto key = std::make_pair(axis, dist);
        auto it = planeIndex.find(key);
        if (it != planeIndex.end())
            return it->second;
        const int index = static_cast<int>(map.planes.size());
        map.planes.push_back(MapPlane{axis, dist});
        planeIndex.emplace(key, index);
        return index;
    }

    // A face is kept when the point just in front of its centre is open space.
    bool faceSeesOpenSpace(const Vec3i& doubledPoint) const
    {
        for (int a = 0; a < 3; ++a)
            if (doubledPoint[a] <= 2 * map.worldMins[a] || doubledPoint[a] >= 2 * map.worldMaxs[a])
                return false;
        for (const MapBrush& b : map.brushes) {
            bool inside = true;
            for (int a = 0; a < 3; ++a)
                inside = inside && doubledPoint[a] > 2 * b.mins[a] && doubledPoint[a] < 2 * b.maxs[a];
            if (inside)
                return false;
        }
        return true;
    }

    void addBrushFaces(int brushIndex)
    {
        const MapBrush& b = map.brushes[static_cast<std::size_t>(brushIndex)];
        for (int a = 0; a < 3; ++a) {
            const int u = (a + 1) % 3;
            const int v = (a + 2) % 3;
            for (int side = 0; side < 2; ++side) {
                const bool positive = side == 1;
                const int coord = positive ? b.maxs[a] : b.mins[a];
                for (int u0 = b.mins[u]; u0 < b.maxs[u]; u0 = std::min(b.maxs[u], (floorDiv(u0, kChunk) + 1) * kChunk)) {
                    const int u1 = std::min(b.maxs[u], (floorDiv(u0, kChunk) + 1) * kChunk);
                    for (int v0 = b.mins[v]; v0 < b.maxs[v]; v0 = std::min(b.maxs[v], (floorDiv(v0, kChunk) + 1) * kChunk)) {
                        const int v1 = std::min(b.maxs[v], (floorDiv(v0, kChunk) + 1) * kChunk);
                        Vec3i probe{};
                        probe[a] = 2 * coord + (positive ? 1 : -1);
                        probe[u] = u0 + u1;
                        probe[v] = v0 + v1;
                        if (!faceSeesOpenSpace(probe))
                            continue;
                        addFace(brushIndex, a, positive, coord, u0, u1, v0, v1);
                    }
                }
            }
        }
    }

    void addFace(int brushIndex, int a, bool positive, int coord, int u0, int u1, int v0, int v1)
    {
        const int u = (a + 1) % 3;
        const int v = (a + 2) % 3;
        auto corner = [&](int cu, int cv) {
            Vec3i p{};
            p[a] = coord;
            p[u] = cu;
            p[v] = cv;
            return p;
        };
        // u x v points along +a, so (u0,v0) (u0,v1) (u1,v1) (u1,v0) turns clockwise seen from +a.
        std::array<Vec3i, 4> corners = positive ? std::array<Vec3i, 4>{corner(u0, v0), corner(u0, v1), corner(u1, v1), corner(u1, v0)}
                                                : std::array<Vec3i, 4>{corner(u0, v0), corner(u1, v0), corner(u1, v1), corner(u0, v1)};
        MapFace face;
        face.plane = plane(a, coord);
        face.backSide = !positive;
        face.texture = map.brushes[static_cast<std::size_t>(brushIndex)].texture;
        face.brush = brushIndex;
        for (std::size_t i = 0; i < 4; ++i)
            face.vertices[i] = vertex(corners[i]);
        const TextureAxis s = textureS(a);
        const TextureAxis t = textureT(a);
        int sMin = 0, sMax = 0, tMin = 0, tMax = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const int sv = s.sign * corners[i][static_cast<std::size_t>(s.axis)];
            const int tv = t.sign * corners[i][static_cast<std::size_t>(t.axis)];
            sMin = i == 0 ? sv : std::min(sMin, sv);
            sMax = i == 0 ? sv : std::max(sMax, sv);
            tMin = i == 0 ? tv : std::min(tMin, tv);
            tMax = i == 0 ? tv : std::max(tMax, tv);
        }
        face.luxelMinS = floorDiv(sMin, kLuxel);
        face.luxelMinT = floorDiv(tMin, kLuxel);
        face.luxelsS = ceilDiv(sMax, kLuxel) - face.luxelMinS + 1;
        face.luxelsT = ceilDiv(tMax, kLuxel) - face.luxelMinT + 1;
        map.faces.push_back(face);
    }

    bool faceTouches(const MapFace& face, const Vec3i& mins, const Vec3i& maxs) const
    {
        for (int a = 0; a < 3; ++a) {
            int lo = 0, hi = 0;
            for (std::size_t i = 0; i < 4; ++i) {
                const int c = map.vertices[static_cast<std::size_t>(face.vertices[i])][static_cast<std::size_t>(a)];
                lo = i == 0 ? c : std::min(lo, c);
                hi = i == 0 ? c : std::max(hi, c);
            }
            if (hi < mins[a] || lo > maxs[a])
                return false;
        }
        return true;
    }

    int buildTree(const Vec3i& mins, const Vec3i& maxs, int depth)
    {
        if (depth == kTreeDepth) {
            KdLeaf leaf{mins, maxs, {}, {}};
            for (std::size_t f = 0; f < map.faces.size(); ++f)
                if (faceTouches(map.faces[f], mins, maxs))
                    leaf.faces.push_back(static_cast<int>(f));
            for (std::size_t i = 0; i < map.brushes.size(); ++i) {
                const MapBrush& b = map.brushes[i];
                bool overlaps = true;
                for (int a = 0; a < 3; ++a)
                    overlaps = overlaps && b.mins[a] < maxs[a] && b.maxs[a] > mins[a];
                if (overlaps)
                    leaf.brushes.push_back(static_cast<int>(i));
            }
            map.leaves.push_back(leaf);
            return -static_cast<int>(map.leaves.size());
        }
        const int axis = depth % 2;
        const int mid = (mins[axis] + maxs[axis]) / 2;
        const int index = static_cast<int>(map.nodes.size());
        map.nodes.push_back(KdNode{plane(axis, mid), {0, 0}, mins, maxs});
        Vec3i frontMins = mins;
        frontMins[axis] = mid;
        Vec3i backMaxs = maxs;
        backMaxs[axis] = mid;
        const int front = buildTree(frontMins, maxs, depth + 1);
        const int back = buildTree(mins, backMaxs, depth + 1);
        map.nodes[static_cast<std::size_t>(index)].children = {front, back};
        return index;
    }
};

} // namespace

TextureAxis textureS(int planeAxis) { return planeAxis == 0 ? TextureAxis{1, 1} : TextureAxis{0, 1}; }

TextureAxis textureT(int planeAxis) { return planeAxis == 2 ? TextureAxis{1, -1} : TextureAxis{2, -1}; }

MapGeometry buildMillGeometry()
{
    Builder b;
    b.map.textures = {"LUDAX_GROUND", "LUDAX_BRICK", "sky", "LUDAX_WOOD", "CRATE_LUDAX", "LUDAX_METAL"};
    b.map.worldMins = Vec3i{-1536, -1536, 0};
    b.map.worldMaxs = Vec3i{1536, 1536, 448};
    b.map.brushes = millBrushes();
    for (std::size_t i = 0; i < b.map.brushes.size(); ++i)
        b.addBrushFaces(static_cast<int>(i));
    b.map.lights = {
        {{-1100, 1000, 300}, 200, 420}, {{1050, -1000, 300}, 200, 420}, {{0, -1300, 320}, 150, 520},
        {{0, 1250, 320}, 150, 520},     {{-900, -900, 360}, 120, 600},  {{900, 900, 360}, 120, 600},
        {{0, 160, 380}, 170, 380},
    };
    const int root = b.buildTree(b.map.worldMins, b.map.worldMaxs, 0);
    if (root != 0)
        throw std::logic_error("kd-tree root must be node 0");
    return b.map;
}

std::array<int, 3> luxelLight(const MapGeometry& map, const MapFace& face, int luxelS, int luxelT)
{
    const MapPlane& plane = map.planes[static_cast<std::size_t>(face.plane)];
    const TextureAxis s = textureS(plane.axis);
    const TextureAxis t = textureT(plane.axis);
    Vec3i p{};
    p[static_cast<std::size_t>(plane.axis)] = plane.dist;
    p[static_cast<std::size_t>(s.axis)] = s.sign * luxelS * kLuxel;
    p[static_cast<std::size_t>(t.axis)] = t.sign * luxelT * kLuxel;
    const int facing = face.backSide ? -1 : 1;

    // Sky light from above plus the point lights, each falling off as R^2 / (R^2 + d^2).
    long long level = plane.axis == 2 ? (facing > 0 ? 52 : 18) : 30;
    for (const MapLight& light : map.lights) {
        long long d2 = 0;
        for (std::size_t a = 0; a < 3; ++a) {
            const long long d = light.origin[a] - p[a];
            d2 += d * d;
        }
        const long long toward = static_cast<long long>(light.origin[static_cast<std::size_t>(plane.axis)] - plane.dist) * facing;
        if (toward <= 0)
            continue;
        const long long r2 = static_cast<long long>(light.radius) * light.radius;
        level += light.intensity * r2 / (r2 + d2);
    }
    const int v = static_cast<int>(std::min<long long>(255, level));
    return {v, v * 232 / 255, v * 196 / 255};
}

std::vector<Vec3i> terroristSpawns()
{
    std::vector<Vec3i> spawns;
    for (int row = 0; row < 2; ++row)
        for (int col = 0; col < 5; ++col)
            spawns.push_back(Vec3i{-256 + col * 128, -1408 + row * 96, 36});
    return spawns;
}

std::vector<Vec3i> counterTerroristSpawns()
{
    std::vector<Vec3i> spawns;
    for (int row = 0; row < 2; ++row)
        for (int col = 0; col < 5; ++col)
            spawns.push_back(Vec3i{-256 + col * 128, 1312 + row * 96, 36});
    return spawns;
}

Vec3i bombsiteA() { return Vec3i{-1088, 1024, 16}; }

Vec3i bombsiteB() { return Vec3i{1056, -992, 16}; }

} // namespace ludaxgen
