#include "emblem_art.h"

#include "block_letters.h"
#include "sample_mask.h"

namespace ludaxgen {

namespace {

constexpr int kSupersample = 4;
const Rgb kBadge{20, 20, 24};
const Rgb kRing{255, 102, 0};
const Rgb kOutline{28, 9, 0};
const Rgb kTop{255, 230, 80};
const Rgb kBottom{255, 96, 0};

// Rounded square test in samples; corner radius r.
bool inRoundedSquare(long long x, long long y, long long size, long long inset, long long r)
{
    const long long lo = inset;
    const long long hi = size - inset;
    if (x < lo || y < lo || x >= hi || y >= hi)
        return false;
    const long long cx = x < lo + r ? lo + r : (x >= hi - r ? hi - r - 1 : x);
    const long long cy = y < lo + r ? lo + r : (y >= hi - r ? hi - r - 1 : y);
    return (x - cx) * (x - cx) + (y - cy) * (y - cy) <= r * r;
}

} // namespace

Emblem renderEmblem(int size)
{
    const int s = size * kSupersample;
    // The letter fills the middle 60% of the badge, nudged right because it leans.
    SampleMask letter(s, s);
    const BlockGlyph& glyph = blockGlyph('L');
    const long long unit = static_cast<long long>(s) * kFixedOne * 6 / (10 * kBlockCapHeight);
    const long long ox = static_cast<long long>(s) * kFixedOne / 5 + unit * 2;
    const long long oy = static_cast<long long>(s) * kFixedOne / 5;
    Shape shape;
    for (const auto& contour : glyph.contours) {
        Contour out;
        for (const auto& pt : contour)
            out.push_back(FixedPoint{ox + (pt.first * 5 + (kBlockCapHeight - pt.second)) * unit / 5, oy + pt.second * unit});
        shape.push_back(out);
    }
    letter.fillShape(shape);
    const DistanceField distance(letter);
    const long long outline = s / 24 > 0 ? s / 24 : 1;
    const long long ringWidth = s / 14 > 0 ? s / 14 : 1;
    const long long corner = s / 6;

    Emblem e{RgbImage(size, size), std::vector<std::uint8_t>(static_cast<std::size_t>(size) * static_cast<std::size_t>(size))};
    const int n = kSupersample * kSupersample;
    for (int py = 0; py < size; ++py) {
        for (int px = 0; px < size; ++px) {
            int r = 0, g = 0, b = 0, covered = 0;
            for (int sy = py * kSupersample; sy < (py + 1) * kSupersample; ++sy) {
                for (int sx = px * kSupersample; sx < (px + 1) * kSupersample; ++sx) {
                    if (!inRoundedSquare(sx, sy, s, 0, corner))
                        continue;
                    Rgb c = kBadge;
                    if (letter.at(sx, sy))
                        c = mix(kTop, kBottom, sy * 256 / s);
                    else if (distance.within(sx, sy, outline))
                        c = kOutline;
                    else if (!inRoundedSquare(sx, sy, s, ringWidth, corner - ringWidth))
                        c = kRing;
                    r += c.r;
                    g += c.g;
                    b += c.b;
                    ++covered;
                }
            }
            // Colour is averaged over covered samples only; coverage becomes alpha.
            const int d = covered > 0 ? covered : 1;
            e.rgb.set(px, py, Rgb{static_cast<std::uint8_t>((r + d / 2) / d), static_cast<std::uint8_t>((g + d / 2) / d),
                                  static_cast<std::uint8_t>((b + d / 2) / d)});
            e.alpha[static_cast<std::size_t>(py) * static_cast<std::size_t>(size) + static_cast<std::size_t>(px)] =
                static_cast<std::uint8_t>((covered * 255 + n / 2) / n);
        }
    }
    return e;
}

} // namespace ludaxgen
