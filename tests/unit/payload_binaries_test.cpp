// The binary payload files and the window logo artwork, checked by their own
// headers: a file whose declared sizes, counts or offsets disagree with its
// bytes would be written to the game folder as it is and break the game there.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes readSourceFile(const std::string& relative)
{
    const std::string path = std::string(LUDAX_SOURCE_DIR) + "/" + relative;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot open " + path);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Little-endian reads that throw instead of reading past the end, so a lying
// offset fails the test rather than the process.
class LeReader {
public:
    explicit LeReader(const Bytes& bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }

    std::uint8_t u8(std::size_t at) const
    {
        need(at, 1);
        return bytes_[at];
    }
    std::uint16_t u16(std::size_t at) const
    {
        need(at, 2);
        return static_cast<std::uint16_t>(bytes_[at] | (bytes_[at + 1] << 8));
    }
    std::uint32_t u32(std::size_t at) const
    {
        need(at, 4);
        return static_cast<std::uint32_t>(bytes_[at]) | (static_cast<std::uint32_t>(bytes_[at + 1]) << 8) |
               (static_cast<std::uint32_t>(bytes_[at + 2]) << 16) | (static_cast<std::uint32_t>(bytes_[at + 3]) << 24);
    }
    std::int16_t i16(std::size_t at) const { return static_cast<std::int16_t>(u16(at)); }
    std::int32_t i32(std::size_t at) const { return static_cast<std::int32_t>(u32(at)); }
    float f32(std::size_t at) const
    {
        const std::uint32_t bits = u32(at);
        float v = 0;
        std::memcpy(&v, &bits, sizeof v);
        return v;
    }
    std::string raw(std::size_t at, std::size_t count) const
    {
        need(at, count);
        return std::string(bytes_.begin() + static_cast<std::ptrdiff_t>(at), bytes_.begin() + static_cast<std::ptrdiff_t>(at + count));
    }
    // A NUL-terminated string that must end within `field` bytes.
    std::string cstr(std::size_t at, std::size_t field) const
    {
        const std::string s = raw(at, field);
        const std::size_t nul = s.find('\0');
        if (nul == std::string::npos)
            throw std::runtime_error("unterminated string field");
        return s.substr(0, nul);
    }

private:
    void need(std::size_t at, std::size_t count) const
    {
        if (at > bytes_.size() || count > bytes_.size() - at)
            throw std::out_of_range("read past end of file");
    }

    const Bytes& bytes_;
};

struct Lump {
    std::size_t offset = 0;
    std::size_t length = 0;
};

// Lumps lie inside the file after its header, start aligned and do not overlap.
void expectLumpsInsideAndDisjoint(const std::vector<Lump>& lumps, std::size_t headerEnd, std::size_t fileSize,
                                  std::size_t alignment = 4)
{
    std::vector<Lump> used;
    for (const Lump& l : lumps) {
        if (l.length == 0)
            continue;
        EXPECT_GE(l.offset, headerEnd);
        EXPECT_LE(l.offset + l.length, fileSize);
        EXPECT_EQ(l.offset % alignment, 0u) << "lump at " << l.offset;
        used.push_back(l);
    }
    std::sort(used.begin(), used.end(), [](const Lump& a, const Lump& b) { return a.offset < b.offset; });
    for (std::size_t i = 1; i < used.size(); ++i)
        EXPECT_LE(used[i - 1].offset + used[i - 1].length, used[i].offset) << "lumps overlap";
}

std::string entityText(const LeReader& r, const Lump& l)
{
    const std::string text = r.raw(l.offset, l.length);
    if (text.empty() || text.back() != '\0')
        throw std::runtime_error("entity lump is not NUL terminated");
    return text.substr(0, text.size() - 1);
}

long long floorDiv(long long a, long long b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0)) ? 1 : 0); }

// Luxel rectangle of a face from its vertices and texture axes (16 units a luxel).
struct Extent {
    long long minS = 0, maxS = 0, minT = 0, maxT = 0;
    long long luxelsS() const { return -floorDiv(-maxS, 16) - floorDiv(minS, 16) + 1; }
    long long luxelsT() const { return -floorDiv(-maxT, 16) - floorDiv(minT, 16) + 1; }
};

const std::string kBackground = "payload/cs16/resource/background/ludax_logo_black_swap_part";
const int kTileSide = 256;
const std::size_t kTgaSize = 18 + 256 * 256 * 3;

struct Tile {
    Bytes bytes;
    // Top-down RGB of pixel (x, y); the file stores rows bottom-up in BGR.
    std::uint32_t rgb(int x, int y) const
    {
        const std::size_t at = 18 + (static_cast<std::size_t>(kTileSide - 1 - y) * kTileSide + static_cast<std::size_t>(x)) * 3;
        return (static_cast<std::uint32_t>(bytes.at(at + 2)) << 16) | (static_cast<std::uint32_t>(bytes.at(at + 1)) << 8) | bytes.at(at);
    }
};

bool isOrange(std::uint32_t rgb)
{
    const int r = static_cast<int>(rgb >> 16), g = static_cast<int>((rgb >> 8) & 0xFF), b = static_cast<int>(rgb & 0xFF);
    return r >= 200 && g >= 60 && g <= 210 && b <= 80;
}

int maxChannel(std::uint32_t rgb)
{
    return static_cast<int>(std::max({rgb >> 16, (rgb >> 8) & 0xFF, rgb & 0xFF}));
}

TEST(PayloadBinaries, BackgroundTilesAreExactTgasAndTheLogoStaysInsideItsCells)
{
    const std::vector<std::pair<int, int>> cells = {{1, 1}, {3, 2}, {3, 3}, {3, 4}, {4, 2}, {4, 3}, {4, 4}, {4, 5}};
    std::vector<Tile> tiles;
    for (const auto& cell : cells) {
        const std::string name = kBackground + std::to_string(cell.first) + "x" + std::to_string(cell.second) + ".tga";
        SCOPED_TRACE(name);
        Tile t{readSourceFile(name)};
        const LeReader r(t.bytes);
        ASSERT_EQ(r.size(), kTgaSize);
        EXPECT_EQ(r.u8(0), 0) << "image ID length";
        EXPECT_EQ(r.u8(1), 0) << "colour map type";
        EXPECT_EQ(r.u8(2), 2) << "uncompressed true colour";
        EXPECT_EQ(r.raw(3, 5), std::string(5, '\0')) << "colour map fields";
        EXPECT_EQ(r.u16(8), 0);
        EXPECT_EQ(r.u16(10), 0);
        EXPECT_EQ(r.u16(12), 256);
        EXPECT_EQ(r.u16(14), 256);
        EXPECT_EQ(r.u8(16), 24);
        EXPECT_EQ(r.u8(17), 0) << "descriptor: bottom-left origin, no alpha";
        tiles.push_back(t);
    }
    const Tile& plain = tiles[0];

    // The plain tile fills twelve cells: it must be dark all over.
    int brightest = 0;
    for (int y = 0; y < kTileSide; ++y)
        for (int x = 0; x < kTileSide; ++x)
            brightest = std::max(brightest, maxChannel(plain.rgb(x, y)));
    EXPECT_LE(brightest, 48);

    // Each logo tile shows something the plain tile does not.
    int orange = 0;
    for (std::size_t i = 1; i < tiles.size(); ++i) {
        EXPECT_NE(tiles[i].bytes, plain.bytes) << "tile " << cells[i].first << "x" << cells[i].second;
        for (int y = 0; y < kTileSide; ++y)
            for (int x = 0; x < kTileSide; ++x)
                orange += isOrange(tiles[i].rgb(x, y)) ? 1 : 0;
    }
    EXPECT_GT(orange, 10000) << "the logo tiles carry the orange logo";

    // Where a logo tile meets a plain cell, its edge must equal the plain
    // tile's edge: the logo is not cut off there and no seam shows.
    enum Edge { kTop, kLeft, kRight };
    const struct {
        std::size_t tile;
        Edge edge;
    } borders[] = {{1, kTop}, {1, kLeft}, {2, kTop}, {3, kTop}, {3, kRight}, {4, kLeft}, {7, kTop}};
    for (const auto& b : borders) {
        SCOPED_TRACE("tile " + std::to_string(cells[b.tile].first) + "x" + std::to_string(cells[b.tile].second) + " edge " +
                     std::to_string(b.edge));
        int differing = 0;
        for (int i = 0; i < kTileSide; ++i) {
            const int x = b.edge == kTop ? i : (b.edge == kLeft ? 0 : kTileSide - 1);
            const int y = b.edge == kTop ? 0 : i;
            differing += tiles[b.tile].rgb(x, y) != plain.rgb(x, y) ? 1 : 0;
        }
        EXPECT_EQ(differing, 0);
    }
}

void expectPaletteBmp(const std::string& path, int width, int height)
{
    SCOPED_TRACE(path);
    const Bytes bytes = readSourceFile(path);
    const LeReader r(bytes);
    ASSERT_GE(r.size(), 54u);
    EXPECT_EQ(r.raw(0, 2), "BM");
    EXPECT_EQ(r.u32(2), r.size()) << "bfSize";
    EXPECT_EQ(r.u32(14), 40u) << "BITMAPINFOHEADER";
    EXPECT_EQ(r.i32(18), width);
    EXPECT_EQ(r.i32(22), height);
    EXPECT_EQ(r.u16(26), 1);
    EXPECT_EQ(r.u16(28), 8) << "bits per pixel";
    EXPECT_EQ(r.u32(30), 0u) << "uncompressed";
    const std::uint32_t colours = r.u32(46) == 0 ? 256 : r.u32(46);
    EXPECT_EQ(colours, 256u);
    const std::size_t stride = (static_cast<std::size_t>(width) + 3) / 4 * 4;
    EXPECT_EQ(r.u32(10), 14u + 40u + colours * 4) << "pixels follow the palette";
    EXPECT_EQ(static_cast<std::size_t>(r.u32(10)) + stride * static_cast<std::size_t>(height), r.size());
    const std::uint32_t sizeImage = r.u32(34);
    EXPECT_TRUE(sizeImage == 0 || sizeImage == stride * static_cast<std::size_t>(height));
    // More than one palette entry is in use: not a blank picture.
    std::set<std::uint8_t> used(bytes.begin() + r.u32(10), bytes.end());
    EXPECT_GT(used.size(), 4u);
}

TEST(PayloadBinaries, PaletteBitmapsDeclareTheirSizeDepthAndDimensions)
{
    expectPaletteBmp("payload/cs16/logos/remapped.bmp", 64, 64);
    expectPaletteBmp("payload/cs16/models/player/remapped.bmp", 164, 200);
}

TEST(PayloadBinaries, IconHoldsTwo16AndTwo32PixelImagesWithinTheFile)
{
    const Bytes bytes = readSourceFile("payload/cs16/game.ico");
    const LeReader r(bytes);
    EXPECT_EQ(r.u16(0), 0);
    EXPECT_EQ(r.u16(2), 1) << "icon, not cursor";
    ASSERT_EQ(r.u16(4), 4);
    std::multiset<int> sides;
    std::vector<Lump> images;
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE("image " + std::to_string(i));
        const std::size_t e = 6 + 16 * i;
        const int side = r.u8(e);
        sides.insert(side);
        EXPECT_EQ(r.u8(e + 1), side) << "square";
        const int bits = r.u16(e + 6);
        const std::size_t length = r.u32(e + 8);
        const std::size_t offset = r.u32(e + 12);
        images.push_back(Lump{offset, length});
        ASSERT_LE(offset + length, r.size());

        // The image is a DIB whose height counts the XOR and AND bitmaps.
        EXPECT_EQ(r.u32(offset), 40u);
        EXPECT_EQ(r.i32(offset + 4), side);
        EXPECT_EQ(r.i32(offset + 8), 2 * side);
        EXPECT_EQ(r.u16(offset + 12), 1);
        EXPECT_EQ(r.u16(offset + 14), bits);
        const std::size_t colours = bits <= 8 ? (r.u32(offset + 32) != 0 ? r.u32(offset + 32) : (1u << bits)) : 0;
        const std::size_t xorStride = (static_cast<std::size_t>(side) * static_cast<std::size_t>(bits) + 31) / 32 * 4;
        const std::size_t andStride = (static_cast<std::size_t>(side) + 31) / 32 * 4;
        EXPECT_EQ(length, 40 + colours * 4 + (xorStride + andStride) * static_cast<std::size_t>(side));
    }
    EXPECT_EQ(sides, (std::multiset<int>{16, 16, 32, 32}));
    expectLumpsInsideAndDisjoint(images, 6 + 16 * 4, r.size(), 1);
}

TEST(PayloadBinaries, SprayWadHoldsLogoMiptexAndTheHpakCachesTheSameBytes)
{
    const Bytes wad = readSourceFile("payload/cs16/tempdecal.wad");
    const LeReader w(wad);
    ASSERT_EQ(w.raw(0, 4), "WAD3");
    ASSERT_EQ(w.i32(4), 1) << "one lump";
    const std::size_t directory = static_cast<std::size_t>(w.i32(8));
    ASSERT_EQ(directory + 32, w.size()) << "the directory ends the file";
    const std::size_t lumpAt = static_cast<std::size_t>(w.i32(directory));
    const std::size_t diskSize = static_cast<std::size_t>(w.i32(directory + 4));
    EXPECT_EQ(static_cast<std::size_t>(w.i32(directory + 8)), diskSize) << "stored uncompressed";
    EXPECT_EQ(w.u8(directory + 12), 0x43) << "miptex lump";
    EXPECT_EQ(w.u8(directory + 13), 0) << "no compression";
    EXPECT_EQ(w.cstr(directory + 16, 16), "LOGO");
    ASSERT_LE(lumpAt + diskSize, directory);

    EXPECT_EQ(w.cstr(lumpAt, 16), "LOGO");
    EXPECT_EQ(w.u32(lumpAt + 16), 64u);
    EXPECT_EQ(w.u32(lumpAt + 20), 64u);
    std::size_t expected = 40;
    for (std::size_t mip = 0; mip < 4; ++mip) {
        EXPECT_EQ(w.u32(lumpAt + 24 + 4 * mip), expected) << "mip " << mip;
        expected += (64u >> mip) * (64u >> mip);
    }
    EXPECT_EQ(w.u16(lumpAt + expected), 256) << "palette colour count";
    EXPECT_EQ(expected + 2 + 256 * 3, diskSize) << "the palette ends the lump";

    const Bytes hpk = readSourceFile("payload/cs16/custom.hpk");
    const LeReader h(hpk);
    ASSERT_EQ(h.raw(0, 4), "HPAK");
    EXPECT_EQ(h.i32(4), 1) << "version";
    const std::size_t hpakDirectory = static_cast<std::size_t>(h.i32(8));
    ASSERT_LT(hpakDirectory, h.size());
    ASSERT_EQ(h.i32(hpakDirectory), 1) << "one entry";
    const std::size_t entry = hpakDirectory + 4;
    EXPECT_EQ(h.cstr(entry, 64), "tempdecal.wad");
    EXPECT_EQ(h.i32(entry + 64), 3) << "decal resource";
    const std::size_t offset = static_cast<std::size_t>(h.i32(entry + 136));
    const std::size_t length = static_cast<std::size_t>(h.i32(entry + 140));
    EXPECT_EQ(static_cast<std::size_t>(h.i32(entry + 72)), length) << "download size";
    EXPECT_EQ(entry + 144, h.size()) << "the directory ends the file";
    ASSERT_LE(offset + length, hpakDirectory);
    EXPECT_EQ(h.raw(offset, length), std::string(wad.begin(), wad.end())) << "the cache holds the spray WAD";
}

TEST(PayloadBinaries, GoldSrcMapHasConsistentLumpsEntitiesAndLightmaps)
{
    const Bytes bytes = readSourceFile("payload/cs16/maps/de_cpl_mill.bsp");
    const LeReader r(bytes);
    ASSERT_EQ(r.i32(0), 30) << "BSP version";
    std::vector<Lump> lumps;
    for (std::size_t i = 0; i < 15; ++i)
        lumps.push_back(Lump{r.u32(4 + 8 * i), r.u32(8 + 8 * i)});
    for (std::size_t i = 0; i < lumps.size(); ++i)
        EXPECT_GT(lumps[i].length, 0u) << "lump " << i << " present";
    expectLumpsInsideAndDisjoint(lumps, 4 + 15 * 8, r.size());

    const std::string entities = entityText(r, lumps[0]);
    EXPECT_NE(entities.find("\"classname\" \"worldspawn\""), std::string::npos);
    EXPECT_NE(entities.find("\"mapversion\" \"220\""), std::string::npos);
    EXPECT_NE(entities.find("\"message\" \"de_cpl_mill - LUDAX\""), std::string::npos);
    EXPECT_NE(entities.find("\"classname\" \"info_player_start\""), std::string::npos);
    EXPECT_NE(entities.find("\"classname\" \"info_player_deathmatch\""), std::string::npos);
    EXPECT_EQ(std::count(entities.begin(), entities.end(), '{'), std::count(entities.begin(), entities.end(), '}'));

    const struct {
        std::size_t lump;
        std::size_t record;
    } records[] = {{1, 20}, {3, 12}, {5, 24}, {6, 40}, {7, 20}, {9, 8}, {10, 28}, {11, 2}, {12, 4}, {13, 4}, {14, 64}};
    for (const auto& rec : records)
        EXPECT_EQ(lumps[rec.lump].length % rec.record, 0u) << "lump " << rec.lump;
    const std::size_t planes = lumps[1].length / 20, vertices = lumps[3].length / 12, nodes = lumps[5].length / 24;
    const std::size_t texinfos = lumps[6].length / 40, faces = lumps[7].length / 20, clipnodes = lumps[9].length / 8;
    const std::size_t leaves = lumps[10].length / 28, marks = lumps[11].length / 2, edges = lumps[12].length / 4;
    const std::size_t surfedges = lumps[13].length / 4;

    const std::size_t miptexCount = static_cast<std::size_t>(r.i32(lumps[2].offset));
    ASSERT_GT(miptexCount, 0u);
    ASSERT_LE(4 + 4 * miptexCount, lumps[2].length);
    for (std::size_t i = 0; i < miptexCount; ++i) {
        const std::int32_t at = r.i32(lumps[2].offset + 4 + 4 * i);
        EXPECT_LE(static_cast<std::size_t>(at) + 40, lumps[2].length) << "miptex " << i;
        EXPECT_FALSE(r.cstr(lumps[2].offset + static_cast<std::size_t>(at), 16).empty());
    }

    for (std::size_t i = 0; i < texinfos; ++i)
        EXPECT_LT(static_cast<std::size_t>(r.i32(lumps[6].offset + 40 * i + 32)), miptexCount) << "texinfo " << i;
    for (std::size_t i = 0; i < edges; ++i) {
        EXPECT_LT(r.u16(lumps[12].offset + 4 * i), vertices);
        EXPECT_LT(r.u16(lumps[12].offset + 4 * i + 2), vertices);
    }
    for (std::size_t i = 0; i < surfedges; ++i) {
        const std::int32_t e = r.i32(lumps[13].offset + 4 * i);
        EXPECT_LT(static_cast<std::size_t>(e < 0 ? -e : e), edges);
    }

    // Each lit face's lightmap, sized from its vertices and texture axes, fits the lighting lump.
    for (std::size_t i = 0; i < faces; ++i) {
        SCOPED_TRACE("face " + std::to_string(i));
        const std::size_t f = lumps[7].offset + 20 * i;
        ASSERT_LT(r.u16(f), planes);
        const std::size_t first = static_cast<std::size_t>(r.i32(f + 4));
        const std::size_t count = static_cast<std::size_t>(r.i16(f + 8));
        ASSERT_GE(count, 3u);
        ASSERT_LE(first + count, surfedges);
        const std::size_t texinfo = static_cast<std::size_t>(r.i16(f + 10));
        ASSERT_LT(texinfo, texinfos);
        const std::int32_t lightofs = r.i32(f + 16);
        if (lightofs < 0)
            continue;
        Extent ext;
        for (std::size_t k = 0; k < count; ++k) {
            const std::int32_t se = r.i32(lumps[13].offset + 4 * (first + k));
            const std::size_t edge = static_cast<std::size_t>(se < 0 ? -se : se);
            const std::size_t v = r.u16(lumps[12].offset + 4 * edge + (se < 0 ? 2 : 0));
            long long st[2];
            for (std::size_t axis = 0; axis < 2; ++axis) {
                const std::size_t vec = lumps[6].offset + 40 * texinfo + 16 * axis;
                double dot = r.f32(vec + 12);
                for (std::size_t c = 0; c < 3; ++c)
                    dot += static_cast<double>(r.f32(lumps[3].offset + 12 * v + 4 * c)) * r.f32(vec + 4 * c);
                st[axis] = static_cast<long long>(dot);
            }
            ext.minS = k == 0 ? st[0] : std::min(ext.minS, st[0]);
            ext.maxS = k == 0 ? st[0] : std::max(ext.maxS, st[0]);
            ext.minT = k == 0 ? st[1] : std::min(ext.minT, st[1]);
            ext.maxT = k == 0 ? st[1] : std::max(ext.maxT, st[1]);
        }
        EXPECT_LE((ext.maxS - ext.minS), 256) << "GoldSrc rejects faces wider than 256 units";
        EXPECT_LE((ext.maxT - ext.minT), 256);
        EXPECT_LE(static_cast<std::size_t>(lightofs) + static_cast<std::size_t>(ext.luxelsS() * ext.luxelsT() * 3), lumps[8].length);
    }

    for (std::size_t i = 0; i < nodes; ++i) {
        const std::size_t n = lumps[5].offset + 24 * i;
        EXPECT_LT(static_cast<std::size_t>(r.i32(n)), planes);
        for (std::size_t c = 0; c < 2; ++c) {
            const int child = r.i16(n + 4 + 2 * c);
            if (child >= 0) {
                EXPECT_LT(static_cast<std::size_t>(child), nodes);
            } else {
                EXPECT_LT(static_cast<std::size_t>(-(child + 1)), leaves);
            }
        }
    }
    for (std::size_t i = 0; i < clipnodes; ++i) {
        const std::size_t n = lumps[9].offset + 8 * i;
        EXPECT_LT(static_cast<std::size_t>(r.i32(n)), planes);
        for (std::size_t c = 0; c < 2; ++c) {
            const int child = r.i16(n + 4 + 2 * c);
            EXPECT_TRUE(child >= 0 ? static_cast<std::size_t>(child) < clipnodes : child >= -15) << "clipnode " << i;
        }
    }
    for (std::size_t i = 0; i < leaves; ++i) {
        const std::size_t l = lumps[10].offset + 28 * i;
        const std::int32_t visofs = r.i32(l + 4);
        EXPECT_TRUE(visofs == -1 || static_cast<std::size_t>(visofs) < lumps[4].length) << "leaf " << i;
        EXPECT_LE(static_cast<std::size_t>(r.u16(l + 20)) + r.u16(l + 22), marks) << "leaf " << i;
    }
    for (std::size_t i = 0; i < marks; ++i)
        EXPECT_LT(r.u16(lumps[11].offset + 2 * i), faces);

    const std::size_t world = lumps[14].offset;
    EXPECT_LT(static_cast<std::size_t>(r.i32(world + 36)), nodes) << "world head node";
    EXPECT_LE(static_cast<std::size_t>(r.i32(world + 56)) + static_cast<std::size_t>(r.i32(world + 60)), faces);
    EXPECT_LT(static_cast<std::size_t>(r.i32(world + 52)), leaves) << "visible leaves exclude the solid leaf";
}

TEST(PayloadBinaries, SourceMapHasConsistentLumpsEntitiesAndLightmaps)
{
    const Bytes bytes = readSourceFile("payload/css/maps/de_cpl_mill.bsp");
    const LeReader r(bytes);
    ASSERT_EQ(r.raw(0, 4), "VBSP");
    ASSERT_EQ(r.i32(4), 20) << "VBSP version";
    std::vector<Lump> lumps;
    for (std::size_t i = 0; i < 64; ++i)
        lumps.push_back(Lump{r.u32(8 + 16 * i), r.u32(12 + 16 * i)});
    expectLumpsInsideAndDisjoint(lumps, 8 + 64 * 16 + 4, r.size());

    const std::string entities = entityText(r, lumps[0]);
    EXPECT_NE(entities.find("\"classname\" \"worldspawn\""), std::string::npos);
    EXPECT_NE(entities.find("\"classname\" \"info_player_terrorist\""), std::string::npos);
    EXPECT_NE(entities.find("\"classname\" \"info_player_counterterrorist\""), std::string::npos);

    const struct {
        std::size_t lump;
        std::size_t record;
    } records[] = {{1, 20}, {2, 32}, {3, 12}, {5, 32}, {6, 72}, {7, 56}, {8, 4}, {10, 32}, {12, 4},
                   {13, 4}, {14, 48}, {16, 2}, {17, 2}, {18, 12}, {19, 8}, {44, 4}};
    for (const auto& rec : records) {
        EXPECT_GT(lumps[rec.lump].length, 0u) << "lump " << rec.lump;
        EXPECT_EQ(lumps[rec.lump].length % rec.record, 0u) << "lump " << rec.lump;
    }
    const std::size_t planes = lumps[1].length / 20, texdata = lumps[2].length / 32, vertices = lumps[3].length / 12;
    const std::size_t texinfos = lumps[6].length / 72, faces = lumps[7].length / 56, edges = lumps[12].length / 4;
    const std::size_t surfedges = lumps[13].length / 4, strings = lumps[44].length / 4;

    for (std::size_t i = 0; i < strings; ++i) {
        const std::size_t at = r.u32(lumps[44].offset + 4 * i);
        ASSERT_LT(at, lumps[43].length);
        EXPECT_FALSE(r.cstr(lumps[43].offset + at, lumps[43].length - at).empty()) << "material " << i;
    }
    for (std::size_t i = 0; i < texdata; ++i)
        EXPECT_LT(static_cast<std::size_t>(r.i32(lumps[2].offset + 32 * i + 12)), strings);
    for (std::size_t i = 0; i < texinfos; ++i)
        EXPECT_LT(static_cast<std::size_t>(r.i32(lumps[6].offset + 72 * i + 68)), texdata);
    for (std::size_t i = 0; i < edges; ++i) {
        EXPECT_LT(r.u16(lumps[12].offset + 4 * i), vertices);
        EXPECT_LT(r.u16(lumps[12].offset + 4 * i + 2), vertices);
    }
    for (std::size_t i = 0; i < faces; ++i) {
        SCOPED_TRACE("face " + std::to_string(i));
        const std::size_t f = lumps[7].offset + 56 * i;
        EXPECT_LT(r.u16(f), planes);
        const std::size_t first = static_cast<std::size_t>(r.i32(f + 4));
        EXPECT_LE(first + static_cast<std::size_t>(r.i16(f + 8)), surfedges);
        EXPECT_LT(static_cast<std::size_t>(r.i16(f + 10)), texinfos);
        const std::int32_t lightofs = r.i32(f + 20);
        if (lightofs >= 0) {
            const std::size_t luxels = static_cast<std::size_t>(r.i32(f + 36) + 1) * static_cast<std::size_t>(r.i32(f + 40) + 1);
            EXPECT_LE(static_cast<std::size_t>(lightofs) + 4 * luxels, lumps[8].length);
        }
    }
    const std::size_t world = lumps[14].offset;
    EXPECT_LE(static_cast<std::size_t>(r.i32(world + 40)) + static_cast<std::size_t>(r.i32(world + 44)), faces);
}

TEST(PayloadBinaries, NavMeshParsesToItsEndAndNamesItsMapSize)
{
    const Bytes bytes = readSourceFile("payload/css/maps/de_cpl_mill.nav");
    const LeReader r(bytes);
    EXPECT_EQ(r.u32(0), 0xFEEDFACEu);
    ASSERT_EQ(r.u32(4), 9u) << "version";
    EXPECT_EQ(r.u32(8), readSourceFile("payload/css/maps/de_cpl_mill.bsp").size()) << "recorded map size";

    std::size_t at = 12;
    const std::size_t places = r.u16(at);
    at += 2;
    for (std::size_t i = 0; i < places; ++i) {
        const std::size_t length = r.u16(at);
        EXPECT_FALSE(r.cstr(at + 2, length).empty());
        EXPECT_EQ(r.cstr(at + 2, length).size() + 1, length) << "place " << i;
        at += 2 + length;
    }

    const std::size_t areaCount = r.u32(at);
    at += 4;
    ASSERT_GT(areaCount, 0u);
    std::set<std::uint32_t> ids;
    std::vector<std::uint32_t> targets;
    for (std::size_t a = 0; a < areaCount; ++a) {
        const std::uint32_t id = r.u32(at);
        EXPECT_NE(id, 0u);
        EXPECT_TRUE(ids.insert(id).second) << "duplicate area id " << id;
        at += 4 + 2;  // id, attribute flags (16 bits since version 9)
        EXPECT_LE(r.f32(at), r.f32(at + 12)) << "extent x";
        EXPECT_LE(r.f32(at + 4), r.f32(at + 16)) << "extent y";
        at += 24 + 8;  // extent, corner heights
        for (int d = 0; d < 4; ++d) {
            const std::size_t n = r.u32(at);
            at += 4;
            for (std::size_t k = 0; k < n; ++k, at += 4)
                targets.push_back(r.u32(at));
        }
        at += 1 + static_cast<std::size_t>(r.u8(at)) * 17;  // hiding spots: id, position, flags
        at += 1 + static_cast<std::size_t>(r.u8(at)) * 14;  // approach areas
        const std::size_t encounters = r.u32(at);
        at += 4;
        for (std::size_t k = 0; k < encounters; ++k) {
            at += 10;
            at += 1 + static_cast<std::size_t>(r.u8(at)) * 5;
        }
        EXPECT_LE(r.u16(at), places) << "place index";
        at += 2;
        for (int dir = 0; dir < 2; ++dir)
            at += 4 + 4 * static_cast<std::size_t>(r.u32(at));
        at += 8;  // earliest occupy times
    }
    EXPECT_EQ(r.u32(at), 0u) << "ladder count";
    EXPECT_EQ(at + 4, r.size()) << "nothing after the ladders";
    for (std::uint32_t t : targets)
        EXPECT_EQ(ids.count(t), 1u) << "connection to missing area " << t;
}

std::size_t dxt1Bytes(std::size_t w, std::size_t h) { return 8 * std::max<std::size_t>(1, (w + 3) / 4) * std::max<std::size_t>(1, (h + 3) / 4); }

TEST(PayloadBinaries, ConsoleBackgroundIsVtf72Dxt1WithElevenMipsOfTheLogo)
{
    const Bytes bytes = readSourceFile("payload/css/materials/console/background01.vtf");
    const LeReader r(bytes);
    ASSERT_EQ(r.raw(0, 4), std::string("VTF", 4));
    EXPECT_EQ(r.u32(4), 7u);
    EXPECT_EQ(r.u32(8), 2u);
    const std::size_t header = r.u32(12);
    EXPECT_EQ(header, 80u);
    ASSERT_EQ(r.u16(16), 1024);
    ASSERT_EQ(r.u16(18), 1024);
    EXPECT_EQ(r.u16(24), 1) << "frames";
    EXPECT_EQ(r.u32(52), 13u) << "DXT1";
    ASSERT_EQ(r.u8(56), 11) << "mip levels";
    const std::uint32_t lowFormat = r.u32(57);
    const std::size_t lowW = r.u8(61), lowH = r.u8(62);
    EXPECT_EQ(r.u16(63), 1) << "depth";
    std::size_t expected = header;
    if (lowFormat != 0xFFFFFFFFu) {
        EXPECT_EQ(lowFormat, 13u);
        expected += dxt1Bytes(lowW, lowH);
    }
    for (std::size_t mip = 0; mip < 11; ++mip)
        expected += dxt1Bytes(1024 >> mip, 1024 >> mip);
    EXPECT_EQ(expected, r.size());

    // The largest mip comes last: its corners are dark, its middle carries the orange logo.
    const std::size_t top = r.size() - dxt1Bytes(1024, 1024);
    auto endpointRed = [&](std::size_t bx, std::size_t by) { return static_cast<unsigned>(r.u16(top + 8 * (by * 256 + bx)) >> 11); };
    EXPECT_LE(endpointRed(0, 0), 4u);
    EXPECT_LE(endpointRed(255, 255), 4u);
    int warm = 0;
    for (std::size_t by = 64; by < 192; ++by)
        for (std::size_t bx = 0; bx < 256; ++bx)
            warm += endpointRed(bx, by) >= 28 ? 1 : 0;
    EXPECT_GT(warm, 1000);
}

std::uint32_t crc32(const std::string& data)
{
    std::uint32_t crc = 0xFFFFFFFFu;
    for (unsigned char c : data) {
        crc ^= c;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

TEST(PayloadBinaries, RadialTableHeaderAgreesWithItsEntries)
{
    const Bytes bytes = readSourceFile("payload/cs16/radial.cdb");
    const LeReader r(bytes);
    ASSERT_EQ(r.raw(0, 4), "RCDB");
    EXPECT_EQ(r.u32(4), 1u);
    const std::size_t header = r.u32(8), entry = r.u32(12), capacity = r.u32(16), count = r.u32(20);
    ASSERT_EQ(entry, 64u);
    EXPECT_EQ(header + capacity * entry, r.size());
    ASSERT_LE(count, capacity);
    EXPECT_GT(count, 0u);
    EXPECT_EQ(r.u32(24), crc32(r.raw(header, capacity * entry))) << "entry area checksum";
    std::set<std::string> commands;
    for (std::size_t i = 0; i < capacity; ++i) {
        const std::size_t e = header + i * entry;
        if (i >= count) {
            EXPECT_EQ(r.raw(e, entry), std::string(entry, '\0')) << "unused entry " << i;
            continue;
        }
        EXPECT_GE(r.u8(e), 1) << "page";
        EXPECT_GE(r.u8(e + 1), 1) << "slot";
        EXPECT_NE(r.u32(e + 4) & 3u, 0u) << "some team may buy it";
        EXPECT_FALSE(r.cstr(e + 8, 24).empty());
        const std::string command = r.cstr(e + 32, 32);
        EXPECT_FALSE(command.empty());
        EXPECT_TRUE(commands.insert(command).second) << "duplicate " << command;
    }
}

TEST(PayloadBinaries, WindowLogoIs350x150MostlyBlackWithACloseBoxInTheCorner)
{
    const Bytes bytes = readSourceFile("app/logo/ludax_logo.ppm");
    const std::string head = "P6\n350 150\n255\n";
    ASSERT_GE(bytes.size(), head.size());
    ASSERT_EQ(std::string(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(head.size())), head);
    const int w = 350, h = 150;
    ASSERT_EQ(bytes.size(), head.size() + static_cast<std::size_t>(w * h * 3));
    auto px = [&](int x, int y) {
        const std::size_t at = head.size() + static_cast<std::size_t>((y * w + x) * 3);
        return (static_cast<std::uint32_t>(bytes[at]) << 16) | (static_cast<std::uint32_t>(bytes[at + 1]) << 8) | bytes[at + 2];
    };
    auto light = [&](int x, int y) { return maxChannel(px(x, y)) >= 128; };

    int dark = 0, orange = 0;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            dark += maxChannel(px(x, y)) < 32 ? 1 : 0;
            orange += isOrange(px(x, y)) ? 1 : 0;
        }
    }
    EXPECT_GT(dark, w * h / 2) << "mostly black";
    EXPECT_GT(orange, 2000) << "the orange logo is there";

    // Close box, columns 340-349 and rows 0-10: a light frame all round ...
    for (int x = 340; x <= 349; ++x) {
        EXPECT_TRUE(light(x, 0)) << "top frame at " << x;
        EXPECT_TRUE(light(x, 10)) << "bottom frame at " << x;
    }
    for (int y = 0; y <= 10; ++y) {
        EXPECT_TRUE(light(340, y)) << "left frame at " << y;
        EXPECT_TRUE(light(349, y)) << "right frame at " << y;
    }
    // ... with an X inside: its diagonals are lit, the middle of each side is not.
    EXPECT_TRUE(light(342, 2));
    EXPECT_TRUE(light(347, 2));
    EXPECT_TRUE(light(342, 8));
    EXPECT_TRUE(light(347, 8));
    EXPECT_TRUE(light(344, 5) || light(345, 5));
    EXPECT_FALSE(light(341, 5));
    EXPECT_FALSE(light(348, 5));
    EXPECT_FALSE(light(344, 1) && light(345, 1));
    // Nothing else lit next to it, so the box reads as a button.
    for (int y = 0; y <= 20; ++y)
        for (int x = 320; x < 350; ++x)
            if (x < 340 || y > 10) {
                EXPECT_LT(maxChannel(px(x, y)), 64) << "beside the close box at " << x << "," << y;
            }
}

} // namespace
