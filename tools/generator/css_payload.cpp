#include "css_payload.h"

#include "artwork.h"
#include "file_output.h"
#include "nav_writer.h"
#include "vbsp_writer.h"
#include "vtf_writer.h"

namespace ludaxgen {

void writeCssBinaries(const std::string& root, const MapGeometry& map)
{
    const std::string dir = "payload/css/";
    const std::vector<std::uint8_t> bsp = encodeVbsp20(map);
    writeFile(root, dir + "maps/de_cpl_mill.bsp", bsp);
    // The game rebuilds a nav file whose recorded map size differs from the map's.
    writeFile(root, dir + "maps/de_cpl_mill.nav", encodeNav9(map, static_cast<std::uint32_t>(bsp.size())));
    writeFile(root, dir + "materials/console/background01.vtf", encodeVtf72Dxt1(consoleBackground()));
}

} // namespace ludaxgen
