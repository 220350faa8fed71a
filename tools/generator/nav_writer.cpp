#include "nav_writer.h"

#include "byte_writer.h"

#include <cstdlib>
#include <string>

namespace ludaxgen {

namespace {

constexpr std::uint32_t kMagic = 0xFEEDFACE;
constexpr std::uint32_t kVersion = 9;
constexpr int kCell = 64;
constexpr int kPlayerHeight = 72;
constexpr std::uint8_t kHidingInCover = 0x01;
constexpr int kRunSpeed = 250;  // units per second, for the earliest-occupy estimates

const char* const kPlaces[] = {"BombsiteA", "BombsiteB", "CTSpawn", "TSpawn", "Middle"};

struct Grid {
    int columns = 0;
    int rows = 0;
    Vec3i origin{};
    std::vector<int> id;  // 0 where a brush blocks the cell

    int at(int col, int row) const
    {
        if (col < 0 || row < 0 || col >= columns || row >= rows)
            return 0;
        return id[static_cast<std::size_t>(row * columns + col)];
    }
};

bool blocked(const MapGeometry& map, int x0, int y0, int x1, int y1)
{
    for (const MapBrush& b : map.brushes) {
        if (b.maxs[2] <= 0 || b.mins[2] >= kPlayerHeight)
            continue;
        if (b.mins[0] < x1 && b.maxs[0] > x0 && b.mins[1] < y1 && b.maxs[1] > y0)
            return true;
    }
    return false;
}

Grid buildGrid(const MapGeometry& map)
{
    Grid g;
    g.origin = map.worldMins;
    g.columns = (map.worldMaxs[0] - map.worldMins[0]) / kCell;
    g.rows = (map.worldMaxs[1] - map.worldMins[1]) / kCell;
    g.id.assign(static_cast<std::size_t>(g.columns * g.rows), 0);
    int next = 1;
    for (int row = 0; row < g.rows; ++row) {
        for (int col = 0; col < g.columns; ++col) {
            const int x0 = g.origin[0] + col * kCell;
            const int y0 = g.origin[1] + row * kCell;
            if (!blocked(map, x0, y0, x0 + kCell, y0 + kCell))
                g.id[static_cast<std::size_t>(row * g.columns + col)] = next++;
        }
    }
    return g;
}

bool near(int x, int y, const Vec3i& p, int range) { return std::abs(x - p[0]) <= range && std::abs(y - p[1]) <= range; }

std::uint16_t placeOf(int x, int y)
{
    if (near(x, y, bombsiteA(), 384))
        return 1;
    if (near(x, y, bombsiteB(), 384))
        return 2;
    if (y > 1152 && std::abs(x) < 640)
        return 3;
    if (y < -1216 && std::abs(x) < 640)
        return 4;
    if (std::abs(x) < 640 && std::abs(y) < 576)
        return 5;
    return 0;
}

float secondsFrom(const Vec3i& spawn, int x, int y)
{
    return static_cast<float>(std::abs(x - spawn[0]) + std::abs(y - spawn[1])) / static_cast<float>(kRunSpeed);
}

} // namespace

std::vector<std::uint8_t> encodeNav9(const MapGeometry& map, std::uint32_t bspFileSize)
{
    const Grid grid = buildGrid(map);
    ByteWriter out;
    out.u32(kMagic);
    out.u32(kVersion);
    out.u32(bspFileSize);
    out.u16(static_cast<std::uint16_t>(sizeof kPlaces / sizeof kPlaces[0]));
    for (const char* place : kPlaces) {
        const std::string name(place);
        out.u16(checkedU16(name.size() + 1, "place name"));
        out.text(name);
        out.u8(0);
    }

    std::size_t areaCount = 0;
    for (int id : grid.id)
        areaCount += id != 0 ? 1 : 0;
    out.u32(checkedU32(areaCount, "area count"));

    const Vec3i tSpawn = terroristSpawns().front();
    const Vec3i ctSpawn = counterTerroristSpawns().front();
    // North is -Y, then east +X, south +Y, west -X: the mesh's direction order.
    const int stepCol[4] = {0, 1, 0, -1};
    const int stepRow[4] = {-1, 0, 1, 0};
    std::uint32_t nextSpot = 1;
    for (int row = 0; row < grid.rows; ++row) {
        for (int col = 0; col < grid.columns; ++col) {
            const int id = grid.at(col, row);
            if (id == 0)
                continue;
            const int x0 = grid.origin[0] + col * kCell;
            const int y0 = grid.origin[1] + row * kCell;
            out.u32(static_cast<std::uint32_t>(id));
            out.u16(0);  // attribute flags
            out.f32(static_cast<float>(x0));
            out.f32(static_cast<float>(y0));
            out.f32(0.0f);
            out.f32(static_cast<float>(x0 + kCell));
            out.f32(static_cast<float>(y0 + kCell));
            out.f32(0.0f);
            out.f32(0.0f);  // north-east corner height
            out.f32(0.0f);  // south-west corner height
            bool besideCover = false;
            for (int d = 0; d < 4; ++d) {
                const int c = col + stepCol[d];
                const int r = row + stepRow[d];
                const int neighbour = grid.at(c, r);
                const bool inside = c >= 0 && r >= 0 && c < grid.columns && r < grid.rows;
                besideCover = besideCover || (inside && neighbour == 0);
                out.u32(neighbour != 0 ? 1 : 0);
                if (neighbour != 0)
                    out.u32(static_cast<std::uint32_t>(neighbour));
            }
            // Cells against a crate or wall inside the yard offer cover.
            out.u8(besideCover ? 1 : 0);
            if (besideCover) {
                out.u32(nextSpot++);
                out.f32(static_cast<float>(x0 + kCell / 2));
                out.f32(static_cast<float>(y0 + kCell / 2));
                out.f32(0.0f);
                out.u8(kHidingInCover);
            }
            out.u8(0);   // approach areas
            out.u32(0);  // encounter paths
            out.u16(placeOf(x0 + kCell / 2, y0 + kCell / 2));
            out.u32(0);  // ladders going up
            out.u32(0);  // ladders going down
            out.f32(secondsFrom(tSpawn, x0, y0));
            out.f32(secondsFrom(ctSpawn, x0, y0));
        }
    }
    out.u32(0);  // no ladders
    return out.bytes();
}

} // namespace ludaxgen
