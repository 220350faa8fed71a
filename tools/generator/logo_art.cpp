#include "logo_art.h"

#include "block_letters.h"
#include "pixel_font.h"
#include "sample_mask.h"

#include <stdexcept>
#include <string>

namespace ludaxgen {

namespace {

constexpr int kSupersample = 4;
constexpr int kLetterGap = 6;      // design units between letters
constexpr int kSlantDivisor = 5;   // letters lean one unit right per five up
constexpr const char* kWord = "LUDAX";
constexpr const char* kCaption = "LAN TOURNAMENT";

const Rgb kOrange{255, 102, 0};
const Rgb kOutline{28, 9, 0};
const Rgb kCaptionInk{236, 236, 236};
const Rgb kHighlight{255, 248, 200};
const Rgb kUnderside{196, 58, 0};

struct GradientStop {
    int at;  // 0..256 down the letters
    Rgb colour;
};

const GradientStop kFill[] = {
    {0, Rgb{255, 238, 120}},
    {96, Rgb{255, 204, 0}},
    {176, Rgb{255, 140, 0}},
    {256, Rgb{255, 96, 0}},
};

Rgb fillColour(int t)
{
    for (std::size_t i = 0; i + 1 < sizeof kFill / sizeof kFill[0]; ++i) {
        const GradientStop& a = kFill[i];
        const GradientStop& b = kFill[i + 1];
        if (t <= b.at)
            return mix(a.colour, b.colour, (t - a.at) * 256 / (b.at - a.at));
    }
    return kFill[sizeof kFill / sizeof kFill[0] - 1].colour;
}

// Maps design units of the word to fixed-point samples of the drawing region.
struct WordTransform {
    const LogoPlacement& p;

    long long x(long long ux, long long uy) const
    {
        const long long slanted = ux * kSlantDivisor + (kBlockCapHeight - uy);
        return static_cast<long long>(p.wordLeft - p.region.x) * kSupersample * kFixedOne +
               slanted * kSupersample * kFixedOne * p.scaleNum / (static_cast<long long>(p.scaleDen) * kSlantDivisor);
    }
    long long y(long long uy) const
    {
        return static_cast<long long>(p.wordTop - p.region.y) * kSupersample * kFixedOne +
               uy * kSupersample * kFixedOne * p.scaleNum / p.scaleDen;
    }
    // A length in design units as whole samples.
    long long samples(long long units) const { return units * kSupersample * p.scaleNum / p.scaleDen; }
};

SampleMask wordMask(const LogoPlacement& p, int w, int h)
{
    SampleMask mask(w, h);
    const WordTransform tf{p};
    int cursor = 0;
    for (const char* c = kWord; *c != '\0'; ++c) {
        const BlockGlyph& glyph = blockGlyph(*c);
        Shape shape;
        for (const auto& contour : glyph.contours) {
            Contour out;
            for (const auto& pt : contour)
                out.push_back(FixedPoint{tf.x(cursor + pt.first, pt.second), tf.y(pt.second)});
            shape.push_back(out);
        }
        mask.fillShape(shape);
        cursor += glyph.advance + kLetterGap;
    }
    return mask;
}

Contour box(long long x0, long long y0, long long x1, long long y1, long long lean)
{
    return Contour{{x0 + lean, y0}, {x1 + lean, y0}, {x1, y1}, {x0, y1}};
}

struct CaptionLayout {
    int left = 0;
    int top = 0;
    int dot = 0;
    int width = 0;
};

CaptionLayout captionLayout(const LogoPlacement& p)
{
    const PixelRect word = logoWordBounds(p);
    CaptionLayout c;
    c.dot = p.captionDot;
    c.width = pixelTextWidth(kCaption, 1) * c.dot;
    c.left = (word.x + word.x + word.w) / 2 - c.width / 2;
    c.top = word.y + word.h + 4 * c.dot;
    return c;
}

// The caption in the pixel font plus a slanted stripe on each side of it.
void addCaption(const LogoPlacement& p, SampleMask& caption, SampleMask& stripes)
{
    const CaptionLayout c = captionLayout(p);
    const long long s = kSupersample * kFixedOne;
    const long long ox = p.region.x;
    const long long oy = p.region.y;
    int col0 = 0;
    for (char ch : std::string(kCaption)) {
        for (int row = 0; row < kPixelGlyphHeight; ++row) {
            for (int col = 0; col < kPixelGlyphWidth; ++col) {
                if (!pixelGlyphInk(ch, col, row))
                    continue;
                const long long x0 = (c.left + (col0 + col) * c.dot - ox) * s;
                const long long y0 = (c.top + row * c.dot - oy) * s;
                caption.fillShape(Shape{box(x0, y0, x0 + c.dot * s, y0 + c.dot * s, 0)});
            }
        }
        col0 += kPixelAdvance + 1;
    }
    const PixelRect word = logoWordBounds(p);
    const long long y0 = (c.top + 2 * c.dot - oy) * s;
    const long long y1 = (c.top + 5 * c.dot - oy) * s;
    const long long lean = (y1 - y0) / kSlantDivisor;
    const long long gap = 3 * c.dot;
    stripes.fillShape(Shape{box((word.x - ox) * s, y0, (c.left - gap - ox) * s, y1, lean)});
    stripes.fillShape(Shape{box((c.left + c.width + gap - ox) * s, y0,
                                (word.x + word.w + p.stripeRightExtra - ox) * s, y1, lean)});
}

// Crosshair: a ring, four ticks crossing it and a centre dot.
bool crosshairInk(const LogoPlacement& p, long long sx, long long sy)
{
    if (p.crossRadius <= 0)
        return false;
    const long long r = static_cast<long long>(p.crossRadius) * kSupersample;
    const long long dx = sx - static_cast<long long>(p.crossX - p.region.x) * kSupersample;
    const long long dy = sy - static_cast<long long>(p.crossY - p.region.y) * kSupersample;
    const long long d2 = dx * dx + dy * dy;
    const long long ringIn = r * 76 / 100;
    if (d2 <= r * r && d2 >= ringIn * ringIn)
        return true;
    const long long halfWidth = r * 9 / 100;
    const long long tickIn = r * 45 / 100;
    const long long tickOut = r * 130 / 100;
    const long long ax = dx < 0 ? -dx : dx;
    const long long ay = dy < 0 ? -dy : dy;
    if (ay <= halfWidth && ax >= tickIn && ax <= tickOut)
        return true;
    if (ax <= halfWidth && ay >= tickIn && ay <= tickOut)
        return true;
    const long long dot = r * 11 / 100;
    return d2 <= dot * dot;
}

} // namespace

PixelRect logoWordBounds(const LogoPlacement& p)
{
    const int units = blockWordWidth(kWord, kLetterGap) + kBlockCapHeight / kSlantDivisor;
    PixelRect r;
    r.x = p.wordLeft;
    r.y = p.wordTop;
    r.w = units * p.scaleNum / p.scaleDen;
    r.h = kBlockCapHeight * p.scaleNum / p.scaleDen;
    return r;
}

void drawLogo(RgbImage& image, const LogoPlacement& p)
{
    const PixelRect& region = p.region;
    if (region.x < 0 || region.y < 0 || region.x + region.w > image.width() || region.y + region.h > image.height())
        throw std::out_of_range("logo region outside image");
    const int w = region.w * kSupersample;
    const int h = region.h * kSupersample;
    const WordTransform tf{p};

    const SampleMask word = wordMask(p, w, h);
    SampleMask caption(w, h);
    SampleMask stripes(w, h);
    if (p.captionDot > 0)
        addCaption(p, caption, stripes);
    const DistanceField distance(word);

    const long long outline = tf.samples(3) / 2;
    const long long rim = outline + tf.samples(3) / 4;
    const long long glow = rim + tf.samples(6);
    const long long bevel = tf.samples(1) > 0 ? tf.samples(1) : 1;
    const long long top = tf.y(0) / kFixedOne;
    const long long height = tf.y(kBlockCapHeight) / kFixedOne - top;

    const int n = kSupersample * kSupersample;
    for (int py = 0; py < region.h; ++py) {
        for (int px = 0; px < region.w; ++px) {
            const Rgb ground = image.at(region.x + px, region.y + py);
            int sumR = 0, sumG = 0, sumB = 0;
            for (int sy = py * kSupersample; sy < (py + 1) * kSupersample; ++sy) {
                for (int sx = px * kSupersample; sx < (px + 1) * kSupersample; ++sx) {
                    Rgb c = ground;
                    const long long d2 = distance.squaredAt(sx, sy);
                    if (word.at(sx, sy)) {
                        const int t = static_cast<int>((sy - top) * 256 / height);
                        c = fillColour(t);
                        if (!word.at(sx, sy - static_cast<int>(bevel)))
                            c = kHighlight;
                        else if (!word.at(sx, sy + static_cast<int>(bevel)))
                            c = kUnderside;
                    } else if (d2 <= outline * outline) {
                        c = kOutline;
                    } else if (d2 <= rim * rim) {
                        c = kOrange;
                    } else if (caption.at(sx, sy)) {
                        c = kCaptionInk;
                    } else if (stripes.at(sx, sy) || crosshairInk(p, sx, sy)) {
                        c = kOrange;
                    } else if (d2 <= glow * glow) {
                        const long long span = glow * glow - rim * rim;
                        c = mix(ground, kOrange, static_cast<int>((glow * glow - d2) * 72 / span));
                    }
                    sumR += c.r;
                    sumG += c.g;
                    sumB += c.b;
                }
            }
            image.set(region.x + px, region.y + py,
                      Rgb{static_cast<std::uint8_t>((sumR + n / 2) / n), static_cast<std::uint8_t>((sumG + n / 2) / n),
                          static_cast<std::uint8_t>((sumB + n / 2) / n)});
        }
    }
}

} // namespace ludaxgen
