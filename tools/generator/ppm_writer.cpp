#include "ppm_writer.h"

#include "byte_writer.h"

#include <string>

namespace ludaxgen {

std::vector<std::uint8_t> encodePpm(const RgbImage& image)
{
    ByteWriter out;
    out.text("P6\n" + std::to_string(image.width()) + " " + std::to_string(image.height()) + "\n255\n");
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const Rgb c = image.at(x, y);
            out.u8(c.r);
            out.u8(c.g);
            out.u8(c.b);
        }
    }
    return out.bytes();
}

} // namespace ludaxgen
