#pragma once

#include <cstdint>
#include <vector>

namespace ludaxgen {

// Sub-sample fixed point: one sample is kFixedOne units, so shapes can sit
// between sample centres without floating point.
constexpr long long kFixedOne = 256;

struct FixedPoint {
    long long x = 0;
    long long y = 0;
};

using Contour = std::vector<FixedPoint>;
// Filled with the even-odd rule, so inner contours cut holes.
using Shape = std::vector<Contour>;

// One bit per supersample: the anti-aliasing grid behind every drawn shape.
class SampleMask {
public:
    SampleMask(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }
    // Outside the grid reads as empty, which is what edge tests want.
    bool at(int x, int y) const;
    void set(int x, int y, bool on);

    // Adds the shape's interior, sampled at sample centres.
    void fillShape(const Shape& shape);
    void unite(const SampleMask& other);

private:
    int width_;
    int height_;
    std::vector<std::uint8_t> bits_;
};

// Exact squared Euclidean distance (in samples) to the nearest set sample,
// computed with Meijster's linear-time two-pass algorithm in integers.
class DistanceField {
public:
    explicit DistanceField(const SampleMask& mask);

    long long squaredAt(int x, int y) const;
    bool within(int x, int y, long long radius) const { return squaredAt(x, y) <= radius * radius; }

private:
    int width_;
    int height_;
    std::vector<long long> squared_;
};

} // namespace ludaxgen
