// ludax-payload-gen <repo-root>: writes every binary file of the two payload
// sets and the window logo's artwork. Output depends on nothing but this code,
// so a rerun reproduces the committed bytes.

#include "artwork.h"
#include "cs16_payload.h"
#include "css_payload.h"
#include "file_output.h"
#include "map_geometry.h"
#include "ppm_writer.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: ludax-payload-gen <repo-root>\n";
        return 2;
    }
    try {
        const std::string root = argv[1];
        ludaxgen::writeFile(root, "app/ludax_logo.ppm", ludaxgen::encodePpm(ludaxgen::windowLogo()));
        const ludaxgen::MapGeometry map = ludaxgen::buildMillGeometry();
        ludaxgen::writeCs16Binaries(root, map);
        ludaxgen::writeCssBinaries(root, map);
    } catch (const std::exception& e) {
        std::cerr << "ludax-payload-gen: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
