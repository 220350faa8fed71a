#include "bgra_image.h"

void SetAlpha(BgraImage& image, std::uint8_t alpha)
{
    for (std::size_t i = 3; i < image.bgra.size(); i += 4)
        image.bgra[i] = alpha;
}
