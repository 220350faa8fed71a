#include "vbsp_writer.h"

#include "byte_writer.h"
#include "edge_list.h"
#include "entity_text.h"
#include "lump_table.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace ludaxgen {

namespace {

enum Lump {
    kEntities = 0, kPlanes = 1, kTexdata = 2, kVertexes = 3, kVisibility = 4, kNodes = 5, kTexinfo = 6,
    kFaces = 7, kLighting = 8, kLeafs = 10, kEdges = 12, kSurfedges = 13, kModels = 14, kLeafFaces = 16,
    kLeafBrushes = 17, kBrushes = 18, kBrushSides = 19, kGameLump = 35, kPakfile = 40,
    kTexdataStringData = 43, kTexdataStringTable = 44, kLumpCount = 64
};

constexpr std::size_t kHeaderSlots = 8;
constexpr std::size_t kSlotStride = 16;
constexpr std::int32_t kContentsSolid = 1;
constexpr std::int32_t kSurfSky = 0x4;
constexpr std::int32_t kSurfNoLight = 0x400;
constexpr std::int32_t kMapRevision = 1;

std::string sourceEntities(const MapGeometry& map)
{
    std::vector<Entity> e;
    e.push_back({{"world_mins", "-1568 -1568 -32"},
                 {"world_maxs", "1568 1568 480"},
                 {"skyname", "sky_day01_01"},
                 {"maxpropscreenwidth", "-1"},
                 {"detailvbsp", "detail.vbsp"},
                 {"detailmaterial", "detail/detailsprites"},
                 {"mapversion", "1"},
                 {"message", "de_cpl_mill - LUDAX"},
                 {"classname", "worldspawn"}});
    e.push_back({{"bombradius", "500"}, {"classname", "info_map_parameters"}});
    e.push_back({{"pitch", "-60"}, {"angles", "0 45 0"}, {"_light", "255 232 196 200"}, {"_ambient", "96 104 120 40"},
                 {"classname", "light_environment"}});
    for (const Vec3i& s : terroristSpawns())
        e.push_back({{"origin", originText(s)}, {"angles", "0 90 0"}, {"classname", "info_player_terrorist"}});
    for (const Vec3i& s : counterTerroristSpawns())
        e.push_back({{"origin", originText(s)}, {"angles", "0 270 0"}, {"classname", "info_player_counterterrorist"}});
    for (const MapLight& l : map.lights)
        e.push_back({{"origin", originText(l.origin)}, {"_light", "255 232 196 " + std::to_string(l.intensity)}, {"classname", "light"}});
    return entityText(e);
}

std::string materialName(const std::string& texture)
{
    if (texture == "sky")
        return "TOOLS/TOOLSSKYBOX";
    std::string lower = texture;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); });
    return "ludax/" + lower;
}

void writeVector(ByteWriter& w, const TextureAxis& axis, float scale)
{
    for (int a = 0; a < 3; ++a)
        w.f32(a == axis.axis ? scale * static_cast<float>(axis.sign) : 0.0f);
    w.f32(0.0f);
}

// Source keeps every plane next to its flipped twin: 2k faces +axis, 2k+1 faces -axis.
struct PlanePairs {
    std::vector<MapPlane> planes;
    std::map<std::pair<int, int>, int> index;

    explicit PlanePairs(const MapGeometry& map) : planes(map.planes)
    {
        for (std::size_t i = 0; i < planes.size(); ++i)
            index.emplace(std::make_pair(planes[i].axis, planes[i].dist), static_cast<int>(i));
    }
    int pair(int axis, int dist)
    {
        auto it = index.find({axis, dist});
        if (it != index.end())
            return it->second;
        planes.push_back(MapPlane{axis, dist});
        const int k = static_cast<int>(planes.size()) - 1;
        index.emplace(std::make_pair(axis, dist), k);
        return k;
    }
};

} // namespace

std::vector<std::uint8_t> encodeVbsp20(const MapGeometry& map)
{
    ByteWriter file;
    file.text("VBSP");
    file.i32(20);
    for (std::size_t i = 0; i < kLumpCount; ++i) {
        file.i32(0);
        file.i32(0);
        file.i32(i == kFaces || i == kLeafs || i == kLighting ? 1 : 0);
        file.zeros(4);  // fourCC: lumps are stored uncompressed
    }
    file.i32(kMapRevision);
    const LumpTable table(kHeaderSlots, kSlotStride);
    std::vector<ByteWriter> lumps(kLumpCount);

    lumps[kEntities].text(sourceEntities(map));
    lumps[kEntities].u8(0);

    PlanePairs planePairs(map);
    ByteWriter& brushes = lumps[kBrushes];
    ByteWriter& brushSides = lumps[kBrushSides];
    for (const MapBrush& b : map.brushes) {
        brushes.i32(checkedI32(static_cast<long long>(brushSides.size() / 8), "first brush side"));
        brushes.i32(6);
        brushes.i32(kContentsSolid);
        for (int a = 0; a < 3; ++a) {
            brushSides.u16(checkedU16(static_cast<std::size_t>(2 * planePairs.pair(a, b.maxs[static_cast<std::size_t>(a)])), "side plane"));
            brushSides.i16(-1);
            brushSides.i16(0);
            brushSides.i16(0);
            brushSides.u16(checkedU16(static_cast<std::size_t>(2 * planePairs.pair(a, b.mins[static_cast<std::size_t>(a)]) + 1), "side plane"));
            brushSides.i16(-1);
            brushSides.i16(0);
            brushSides.i16(0);
        }
    }
    for (const MapPlane& p : planePairs.planes) {
        for (int sign = 1; sign >= -1; sign -= 2) {
            for (int a = 0; a < 3; ++a)
                lumps[kPlanes].f32(a == p.axis ? static_cast<float>(sign) : 0.0f);
            lumps[kPlanes].f32(static_cast<float>(sign * p.dist));
            lumps[kPlanes].i32(p.axis);
        }
    }

    for (std::size_t i = 0; i < map.textures.size(); ++i) {
        lumps[kTexdataStringTable].i32(checkedI32(static_cast<long long>(lumps[kTexdataStringData].size()), "string offset"));
        lumps[kTexdataStringData].text(materialName(map.textures[i]));
        lumps[kTexdataStringData].u8(0);
        const float tone = map.textures[i] == "sky" ? 0.6f : 0.25f;
        lumps[kTexdata].f32(tone + 0.1f);
        lumps[kTexdata].f32(tone);
        lumps[kTexdata].f32(tone - 0.05f);
        lumps[kTexdata].i32(static_cast<std::int32_t>(i));
        const std::int32_t side = map.textures[i] == "LUDAX_GROUND" ? 512 : 256;
        for (int k = 0; k < 4; ++k)
            lumps[kTexdata].i32(side);
    }

    for (const Vec3i& v : map.vertices)
        for (int c : v)
            lumps[kVertexes].f32(static_cast<float>(c));

    // One cluster per leaf, each seeing all others; PVS and PAS share the rows.
    ByteWriter& vis = lumps[kVisibility];
    const std::size_t clusters = map.leaves.size();
    const std::size_t rowBytes = (clusters + 7) / 8;
    vis.i32(checkedI32(static_cast<long long>(clusters), "cluster count"));
    const std::size_t rowsAt = 4 + clusters * 8;
    for (std::size_t c = 0; c < clusters; ++c) {
        vis.i32(checkedI32(static_cast<long long>(rowsAt + c * rowBytes), "pvs offset"));
        vis.i32(checkedI32(static_cast<long long>(rowsAt + c * rowBytes), "pas offset"));
    }
    for (std::size_t c = 0; c < clusters; ++c) {
        for (std::size_t b = 0; b < rowBytes; ++b) {
            const std::size_t bitsHere = clusters - b * 8 < 8 ? clusters - b * 8 : 8;
            vis.u8(static_cast<std::uint8_t>((1u << bitsHere) - 1u));
        }
    }

    for (const KdNode& n : map.nodes) {
        lumps[kNodes].i32(2 * n.plane);
        for (int child : n.children)
            lumps[kNodes].i32(child >= 0 ? child : child - 1);  // leaf 0 is the solid leaf
        writeBounds16(lumps[kNodes], n.mins, n.maxs);
        lumps[kNodes].u16(0);
        lumps[kNodes].u16(0);
        lumps[kNodes].i16(0);
        lumps[kNodes].i16(0);
    }

    std::map<std::pair<int, int>, int> texinfoIndex;
    std::vector<int> faceTexinfo;
    for (const MapFace& f : map.faces) {
        const int axis = map.planes[static_cast<std::size_t>(f.plane)].axis;
        const auto key = std::make_pair(axis, f.texture);
        auto it = texinfoIndex.find(key);
        if (it == texinfoIndex.end()) {
            it = texinfoIndex.emplace(key, static_cast<int>(texinfoIndex.size())).first;
            ByteWriter& ti = lumps[kTexinfo];
            writeVector(ti, textureS(axis), 0.5f);
            writeVector(ti, textureT(axis), 0.5f);
            writeVector(ti, textureS(axis), 1.0f / 16.0f);
            writeVector(ti, textureT(axis), 1.0f / 16.0f);
            ti.i32(map.textures[static_cast<std::size_t>(f.texture)] == "sky" ? (kSurfSky | kSurfNoLight) : 0);
            ti.i32(f.texture);
        }
        faceTexinfo.push_back(it->second);
    }

    const EdgeList edgeList = buildEdges(map);
    ByteWriter& faces = lumps[kFaces];
    ByteWriter& lighting = lumps[kLighting];
    for (std::size_t i = 0; i < map.faces.size(); ++i) {
        const MapFace& f = map.faces[i];
        const bool sky = map.textures[static_cast<std::size_t>(f.texture)] == "sky";
        const MapPlane& plane = map.planes[static_cast<std::size_t>(f.plane)];
        const Vec3i& a = map.vertices[static_cast<std::size_t>(f.vertices[0])];
        const Vec3i& c = map.vertices[static_cast<std::size_t>(f.vertices[2])];
        long long area = 1;
        for (int k = 0; k < 3; ++k)
            if (k != plane.axis)
                area *= std::abs(c[static_cast<std::size_t>(k)] - a[static_cast<std::size_t>(k)]);
        faces.u16(checkedU16(static_cast<std::size_t>(2 * f.plane + (f.backSide ? 1 : 0)), "face plane"));
        faces.u8(0);
        faces.u8(0);
        faces.i32(edgeList.firstSurfedge[i]);
        faces.i16(4);
        faces.i16(checkedI16(faceTexinfo[i], "face texinfo"));
        faces.i16(-1);  // no displacement
        faces.i16(-1);  // no fog volume
        faces.u8(0);
        faces.u8(255);
        faces.u8(255);
        faces.u8(255);
        faces.i32(sky ? -1 : checkedI32(static_cast<long long>(lighting.size()), "light offset"));
        faces.f32(static_cast<float>(area));
        faces.i32(f.luxelMinS);
        faces.i32(f.luxelMinT);
        faces.i32(f.luxelsS - 1);
        faces.i32(f.luxelsT - 1);
        faces.i32(checkedI32(static_cast<long long>(i), "original face"));
        faces.u16(0);
        faces.u16(0);
        faces.u32(0);
        if (sky)
            continue;
        for (int t = 0; t < f.luxelsT; ++t) {
            for (int s = 0; s < f.luxelsS; ++s) {
                for (int channel : luxelLight(map, f, f.luxelMinS + s, f.luxelMinT + t))
                    lighting.u8(static_cast<std::uint8_t>(channel));
                lighting.u8(0);  // exponent
            }
        }
    }

    ByteWriter& leafs = lumps[kLeafs];
    leafs.i32(kContentsSolid);
    leafs.i16(-1);
    leafs.i16(0);
    leafs.zeros(12 + 8);
    leafs.i16(-1);
    leafs.i16(0);
    for (std::size_t i = 0; i < map.leaves.size(); ++i) {
        const KdLeaf& leaf = map.leaves[i];
        leafs.i32(0);
        leafs.i16(checkedI16(static_cast<long long>(i), "cluster"));
        leafs.i16(1);  // area 1, no flags
        writeBounds16(leafs, leaf.mins, leaf.maxs);
        leafs.u16(checkedU16(lumps[kLeafFaces].size() / 2, "first leaf face"));
        leafs.u16(checkedU16(leaf.faces.size(), "leaf faces"));
        leafs.u16(checkedU16(lumps[kLeafBrushes].size() / 2, "first leaf brush"));
        leafs.u16(checkedU16(leaf.brushes.size(), "leaf brushes"));
        leafs.i16(-1);
        leafs.i16(0);
        for (int f : leaf.faces)
            lumps[kLeafFaces].u16(checkedU16(static_cast<std::size_t>(f), "leaf face"));
        for (int b : leaf.brushes)
            lumps[kLeafBrushes].u16(checkedU16(static_cast<std::size_t>(b), "leaf brush"));
    }

    for (const auto& e : edgeList.edges) {
        lumps[kEdges].u16(checkedU16(static_cast<std::size_t>(e.first), "edge vertex"));
        lumps[kEdges].u16(checkedU16(static_cast<std::size_t>(e.second), "edge vertex"));
    }
    for (int s : edgeList.surfedges)
        lumps[kSurfedges].i32(s);

    ByteWriter& models = lumps[kModels];
    for (int v : {-1568, -1568, -32, 1568, 1568, 480})
        models.f32(static_cast<float>(v));
    models.zeros(12);
    models.i32(0);
    models.i32(0);
    models.i32(checkedI32(static_cast<long long>(map.faces.size()), "face count"));

    lumps[kGameLump].i32(0);  // no static props or detail lumps

    // An empty zip archive: just the end-of-central-directory record.
    lumps[kPakfile].u32(0x06054b50);
    lumps[kPakfile].zeros(18);

    for (std::size_t i = 0; i < kLumpCount; ++i)
        table.append(file, i, lumps[i]);
    file.alignTo(4);
    return file.bytes();
}

} // namespace ludaxgen
