#include "cs16_payload.h"

#include "artwork.h"
#include "bmp_writer.h"
#include "bsp30_writer.h"
#include "emblem_art.h"
#include "file_output.h"
#include "hpak_writer.h"
#include "ico_writer.h"
#include "palette.h"
#include "radial_cdb_writer.h"
#include "remap_texture.h"
#include "tga_writer.h"
#include "wad3_writer.h"

#include <string>

namespace ludaxgen {

namespace {

const std::string kDir = "payload/cs16/";

void writeBackgroundTiles(const std::string& root)
{
    const RgbImage menu = menuBackground();
    const int cells[][2] = {{1, 1}, {3, 2}, {3, 3}, {3, 4}, {4, 2}, {4, 3}, {4, 4}, {4, 5}};
    for (const auto& cell : cells) {
        const int row = cell[0];
        const int column = cell[1];
        const RgbImage tile = menu.crop((column - 1) * kTileSize, (row - 1) * kTileSize, kTileSize, kTileSize);
        writeFile(root, kDir + "resource/background/ludax_logo_black_swap_part" + std::to_string(row) + "x" + std::to_string(column) + ".tga",
                  encodeTga(tile));
    }
}

IconImage iconImage(int size, int bitsPerPixel)
{
    Emblem e = renderEmblem(size);
    return IconImage{e.rgb, e.alpha, bitsPerPixel};
}

} // namespace

void writeCs16Binaries(const std::string& root, const MapGeometry& map)
{
    writeBackgroundTiles(root);

    const std::vector<Rgb> palette = asVector(ludaxPalette());
    const RgbImage logo = emblemOnBlack(64);
    writeFile(root, kDir + "logos/remapped.bmp", encodeBmp8(64, 64, quantize(logo, palette), palette));

    const int remapWidth = 164;
    const int remapHeight = 200;
    writeFile(root, kDir + "models/player/remapped.bmp",
              encodeBmp8(remapWidth, remapHeight, quantize(playerRemapTexture(remapWidth, remapHeight), palette), palette));

    writeFile(root, kDir + "game.ico", encodeIco({iconImage(16, 4), iconImage(16, 32), iconImage(32, 4), iconImage(32, 32)}));

    // The spray: the decal WAD, and the same bytes cached in the custom HPAK.
    const std::vector<std::uint8_t> decal = encodeWad3SingleMiptex("LOGO", logo, ludaxPalette());
    writeFile(root, kDir + "tempdecal.wad", decal);
    writeFile(root, kDir + "custom.hpk", encodeHpakDecal("tempdecal.wad", decal));

    writeFile(root, kDir + "maps/de_cpl_mill.bsp", encodeBsp30(map));
    writeFile(root, kDir + "radial.cdb", encodeRadialCdb());
}

} // namespace ludaxgen
