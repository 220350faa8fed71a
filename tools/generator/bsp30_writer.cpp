#include "bsp30_writer.h"

#include "byte_writer.h"
#include "edge_list.h"
#include "entity_text.h"
#include "lump_table.h"

#include <algorithm>
#include <map>

namespace ludaxgen {

namespace {

enum Lump {
    kEntities, kPlanes, kTextures, kVertexes, kVisibility, kNodes, kTexinfo, kFaces,
    kLighting, kClipnodes, kLeaves, kMarksurfaces, kEdges, kSurfedges, kModels, kLumpCount
};

constexpr std::int32_t kContentsEmpty = -1;
constexpr std::int32_t kContentsSolid = -2;
constexpr std::int32_t kTexUnlit = 1;  // sky and liquids: no lightmap, not subdivided
constexpr int kHulls = 4;

std::string goldSrcEntities(const MapGeometry& map)
{
    std::vector<Entity> e;
    e.push_back({{"wad", "\\half-life\\valve\\halflife.wad;\\half-life\\cstrike\\cstrike.wad"},
                 {"mapversion", "220"},
                 {"message", "de_cpl_mill - LUDAX"},
                 {"skyname", "des"},
                 {"MaxRange", "4096"},
                 {"sounds", "1"},
                 {"classname", "worldspawn"}});
    e.push_back({{"buying", "0"}, {"bombradius", "500"}, {"classname", "info_map_parameters"}});
    for (const Vec3i& s : counterTerroristSpawns())
        e.push_back({{"origin", originText(s)}, {"angles", "0 270 0"}, {"classname", "info_player_start"}});
    for (const Vec3i& s : terroristSpawns())
        e.push_back({{"origin", originText(s)}, {"angles", "0 90 0"}, {"classname", "info_player_deathmatch"}});
    e.push_back({{"origin", originText(bombsiteA())}, {"classname", "info_bomb_target"}});
    e.push_back({{"origin", originText(bombsiteB())}, {"classname", "info_bomb_target"}});
    for (const MapLight& l : map.lights)
        e.push_back({{"origin", originText(l.origin)}, {"_light", "255 232 196 " + std::to_string(l.intensity)}, {"classname", "light"}});
    return entityText(e);
}

void writeAxis(ByteWriter& w, const TextureAxis& axis)
{
    for (int a = 0; a < 3; ++a)
        w.f32(a == axis.axis ? static_cast<float>(axis.sign) : 0.0f);
    w.f32(0.0f);
}

} // namespace

std::vector<std::uint8_t> encodeBsp30(const MapGeometry& map)
{
    ByteWriter file;
    file.i32(30);
    file.zeros(kLumpCount * 8);
    const LumpTable table(4, 8);

    ByteWriter entities;
    entities.text(goldSrcEntities(map));
    entities.u8(0);

    ByteWriter planes;
    for (const MapPlane& p : map.planes) {
        for (int a = 0; a < 3; ++a)
            planes.f32(a == p.axis ? 1.0f : 0.0f);
        planes.f32(static_cast<float>(p.dist));
        planes.i32(p.axis);  // PLANE_X, PLANE_Y, PLANE_Z
    }

    ByteWriter textures;
    textures.i32(checkedI32(static_cast<long long>(map.textures.size()), "texture count"));
    const std::size_t headerBytes = 4 + 4 * map.textures.size();
    for (std::size_t i = 0; i < map.textures.size(); ++i)
        textures.i32(checkedI32(static_cast<long long>(headerBytes + 40 * i), "miptex offset"));
    for (const std::string& name : map.textures) {
        textures.fixedText(name, 16);
        const std::uint32_t side = name == "LUDAX_GROUND" ? 256 : 128;
        textures.u32(side);
        textures.u32(side);
        textures.zeros(16);  // pixels live in the WAD
    }

    ByteWriter vertexes;
    for (const Vec3i& v : map.vertices)
        for (int c : v)
            vertexes.f32(static_cast<float>(c));

    // Every leaf sees every other: one all-ones byte row per leaf (8 leaves).
    const std::size_t rowBytes = (map.leaves.size() + 7) / 8;
    ByteWriter visibility;
    std::vector<std::size_t> visOffset;
    for (std::size_t leaf = 0; leaf < map.leaves.size(); ++leaf) {
        visOffset.push_back(visibility.size());
        for (std::size_t b = 0; b < rowBytes; ++b) {
            const std::size_t bitsHere = map.leaves.size() - b * 8 < 8 ? map.leaves.size() - b * 8 : 8;
            visibility.u8(static_cast<std::uint8_t>((1u << bitsHere) - 1u));
        }
    }
    visibility.alignTo(4);

    auto fileChild = [](int child) { return child >= 0 ? child : child - 1; };  // leaf 0 is the solid leaf
    ByteWriter nodes;
    for (const KdNode& n : map.nodes) {
        nodes.i32(n.plane);
        nodes.i16(checkedI16(fileChild(n.children[0]), "node child"));
        nodes.i16(checkedI16(fileChild(n.children[1]), "node child"));
        writeBounds16(nodes, n.mins, n.maxs);
        nodes.u16(0);
        nodes.u16(0);
    }

    std::map<std::pair<int, int>, int> texinfoIndex;
    ByteWriter texinfo;
    std::vector<int> faceTexinfo;
    for (const MapFace& f : map.faces) {
        const int axis = map.planes[static_cast<std::size_t>(f.plane)].axis;
        const auto key = std::make_pair(axis, f.texture);
        auto it = texinfoIndex.find(key);
        if (it == texinfoIndex.end()) {
            it = texinfoIndex.emplace(key, static_cast<int>(texinfoIndex.size())).first;
            writeAxis(texinfo, textureS(axis));
            writeAxis(texinfo, textureT(axis));
            texinfo.i32(f.texture);
            texinfo.i32(map.textures[static_cast<std::size_t>(f.texture)] == "sky" ? kTexUnlit : 0);
        }
        faceTexinfo.push_back(it->second);
    }

    const EdgeList edgeList = buildEdges(map);
    ByteWriter faces;
    ByteWriter lighting;
    for (std::size_t i = 0; i < map.faces.size(); ++i) {
        const MapFace& f = map.faces[i];
        const bool sky = map.textures[static_cast<std::size_t>(f.texture)] == "sky";
        faces.u16(checkedU16(static_cast<std::size_t>(f.plane), "face plane"));
        faces.u16(f.backSide ? 1 : 0);
        faces.i32(edgeList.firstSurfedge[i]);
        faces.i16(4);
        faces.i16(checkedI16(faceTexinfo[i], "face texinfo"));
        faces.u8(0);
        faces.u8(255);
        faces.u8(255);
        faces.u8(255);
        faces.i32(sky ? -1 : checkedI32(static_cast<long long>(lighting.size()), "light offset"));
        if (sky)
            continue;
        for (int t = 0; t < f.luxelsT; ++t) {
            for (int s = 0; s < f.luxelsS; ++s) {
                const auto rgb = luxelLight(map, f, f.luxelMinS + s, f.luxelMinT + t);
                for (int c : rgb)
                    lighting.u8(static_cast<std::uint8_t>(c));
            }
        }
    }
    lighting.alignTo(4);

    // Hulls 1-3 (player sizes) reuse the node splits; their leaves are open space.
    ByteWriter clipnodes;
    const int perHull = static_cast<int>(map.nodes.size());
    for (int hull = 1; hull < kHulls; ++hull) {
        for (const KdNode& n : map.nodes) {
            clipnodes.i32(n.plane);
            for (int child : n.children)
                clipnodes.i16(checkedI16(child >= 0 ? (hull - 1) * perHull + child : kContentsEmpty, "clip child"));
        }
    }

    ByteWriter leaves;
    ByteWriter marksurfaces;
    leaves.i32(kContentsSolid);
    leaves.i32(-1);
    leaves.zeros(12 + 4 + 4);
    for (std::size_t i = 0; i < map.leaves.size(); ++i) {
        const KdLeaf& leaf = map.leaves[i];
        leaves.i32(kContentsEmpty);
        leaves.i32(checkedI32(static_cast<long long>(visOffset[i]), "vis offset"));
        writeBounds16(leaves, leaf.mins, leaf.maxs);
        leaves.u16(checkedU16(marksurfaces.size() / 2, "first marksurface"));
        leaves.u16(checkedU16(leaf.faces.size(), "marksurface count"));
        leaves.zeros(4);  // ambient sound levels
        for (int f : leaf.faces)
            marksurfaces.u16(checkedU16(static_cast<std::size_t>(f), "marksurface"));
    }
    marksurfaces.alignTo(4);

    ByteWriter edges;
    for (const auto& e : edgeList.edges) {
        edges.u16(checkedU16(static_cast<std::size_t>(e.first), "edge vertex"));
        edges.u16(checkedU16(static_cast<std::size_t>(e.second), "edge vertex"));
    }
    ByteWriter surfedges;
    for (int s : edgeList.surfedges)
        surfedges.i32(s);

    ByteWriter models;
    Vec3i mins = map.worldMins, maxs = map.worldMaxs;
    for (const MapBrush& b : map.brushes) {
        for (std::size_t a = 0; a < 3; ++a) {
            mins[a] = std::min(mins[a], b.mins[a]);
            maxs[a] = std::max(maxs[a], b.maxs[a]);
        }
    }
    for (int c : mins)
        models.f32(static_cast<float>(c));
    for (int c : maxs)
        models.f32(static_cast<float>(c));
    models.zeros(12);  // origin
    models.i32(0);
    for (int hull = 1; hull < kHulls; ++hull)
        models.i32((hull - 1) * perHull);
    models.i32(checkedI32(static_cast<long long>(map.leaves.size()), "vis leaves"));
    models.i32(0);
    models.i32(checkedI32(static_cast<long long>(map.faces.size()), "face count"));

    const ByteWriter* lumps[kLumpCount] = {&entities, &planes,    &textures, &vertexes,     &visibility,
                                           &nodes,    &texinfo,   &faces,    &lighting,     &clipnodes,
                                           &leaves,   &marksurfaces, &edges, &surfedges,    &models};
    for (std::size_t i = 0; i < kLumpCount; ++i)
        table.append(file, i, *lumps[i]);
    file.alignTo(4);
    return file.bytes();
}

} // namespace ludaxgen
