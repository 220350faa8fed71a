#include "sample_mask.h"

#include <algorithm>
#include <stdexcept>

namespace ludaxgen {

namespace {

long long floorDiv(long long a, long long b)
{
    long long q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0)))
        --q;
    return q;
}

long long ceilDiv(long long a, long long b) { return -floorDiv(-a, b); }

} // namespace

SampleMask::SampleMask(int width, int height)
    : width_(width), height_(height)
{
    if (width <= 0 || height <= 0)
        throw std::invalid_argument("mask size must be positive");
    bits_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
}

bool SampleMask::at(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return false;
    return bits_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)] != 0;
}

void SampleMask::set(int x, int y, bool on)
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        throw std::out_of_range("sample outside mask");
    bits_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)] = on ? 1 : 0;
}

void SampleMask::fillShape(const Shape& shape)
{
    long long minY = 0, maxY = 0;
    bool any = false;
    for (const Contour& c : shape) {
        for (const FixedPoint& p : c) {
            minY = any ? std::min(minY, p.y) : p.y;
            maxY = any ? std::max(maxY, p.y) : p.y;
            any = true;
        }
    }
    if (!any)
        return;
    const long long firstRow = std::max(0LL, floorDiv(minY, kFixedOne) - 1);
    const long long lastRow = std::min<long long>(height_ - 1, ceilDiv(maxY, kFixedOne) + 1);
    std::vector<long long> crossings;
    for (long long row = firstRow; row <= lastRow; ++row) {
        const long long yc = row * kFixedOne + kFixedOne / 2;
        crossings.clear();
        for (const Contour& c : shape) {
            for (std::size_t i = 0; i < c.size(); ++i) {
                const FixedPoint& a = c[i];
                const FixedPoint& b = c[(i + 1) % c.size()];
                if ((a.y <= yc) == (b.y <= yc))
                    continue;
                crossings.push_back(a.x + (yc - a.y) * (b.x - a.x) / (b.y - a.y));
            }
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const long long first = std::max(0LL, ceilDiv(crossings[i] - kFixedOne / 2, kFixedOne));
            const long long last = std::min<long long>(width_ - 1, ceilDiv(crossings[i + 1] - kFixedOne / 2, kFixedOne) - 1);
            for (long long col = first; col <= last; ++col)
                set(static_cast<int>(col), static_cast<int>(row), true);
        }
    }
}

void SampleMask::unite(const SampleMask& other)
{
    if (other.width_ != width_ || other.height_ != height_)
        throw std::invalid_argument("mask sizes differ");
    for (std::size_t i = 0; i < bits_.size(); ++i)
        bits_[i] = static_cast<std::uint8_t>(bits_[i] | other.bits_[i]);
}

DistanceField::DistanceField(const SampleMask& mask)
    : width_(mask.width()), height_(mask.height())
{
    const long long inf = static_cast<long long>(width_) + height_;
    const std::size_t w = static_cast<std::size_t>(width_);
    std::vector<long long> g(w * static_cast<std::size_t>(height_));
    // Pass 1: distance to the nearest set sample in the same column.
    for (int x = 0; x < width_; ++x) {
        long long run = inf;
        for (int y = 0; y < height_; ++y) {
            run = mask.at(x, y) ? 0 : std::min(inf, run + 1);
            g[static_cast<std::size_t>(y) * w + static_cast<std::size_t>(x)] = run;
        }
        for (int y = height_ - 2; y >= 0; --y) {
            long long& here = g[static_cast<std::size_t>(y) * w + static_cast<std::size_t>(x)];
            const long long below = g[static_cast<std::size_t>(y + 1) * w + static_cast<std::size_t>(x)];
            if (below + 1 < here)
                here = below + 1;
        }
    }
    // Pass 2: lower envelope of the parabolas along each row.
    squared_.assign(g.size(), 0);
    std::vector<long long> s(w), t(w);
    for (int y = 0; y < height_; ++y) {
        const long long* row = &g[static_cast<std::size_t>(y) * w];
        auto f = [row](long long x, long long i) { return (x - i) * (x - i) + row[i] * row[i]; };
        auto sep = [row](long long i, long long u) {
            return floorDiv(u * u - i * i + row[u] * row[u] - row[i] * row[i], 2 * (u - i));
        };
        long long q = 0;
        s[0] = 0;
        t[0] = 0;
        for (long long u = 1; u < width_; ++u) {
            while (q >= 0 && f(t[static_cast<std::size_t>(q)], s[static_cast<std::size_t>(q)]) > f(t[static_cast<std::size_t>(q)], u))
                --q;
            if (q < 0) {
                q = 0;
                s[0] = u;
            } else {
                const long long next = 1 + sep(s[static_cast<std::size_t>(q)], u);
                if (next < width_) {
                    ++q;
                    s[static_cast<std::size_t>(q)] = u;
                    t[static_cast<std::size_t>(q)] = next;
                }
            }
        }
        for (long long u = width_ - 1; u >= 0; --u) {
            squared_[static_cast<std::size_t>(y) * w + static_cast<std::size_t>(u)] = f(u, s[static_cast<std::size_t>(q)]);
            if (u == t[static_cast<std::size_t>(q)])
                --q;
        }
    }
}

long long DistanceField::squaredAt(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        throw std::out_of_range("sample outside distance field");
    return squared_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
}

} // namespace ludaxgen
