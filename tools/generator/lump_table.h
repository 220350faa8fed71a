#pragma once

#include "byte_writer.h"
#include "map_geometry.h"

#include <cstddef>

namespace ludaxgen {

// Records where each lump of a map file went: the header slots are reserved
// first, then every lump is appended 4-byte aligned and its slot patched.
class LumpTable {
public:
    // slotOffset(i) gives the byte offset of lump i's (offset, length) pair.
    LumpTable(std::size_t firstSlot, std::size_t slotStride) : firstSlot_(firstSlot), slotStride_(slotStride) {}

    void append(ByteWriter& file, std::size_t lump, const ByteWriter& data) const;

private:
    std::size_t firstSlot_;
    std::size_t slotStride_;
};

// A box as two corners of signed 16-bit coordinates, as both map formats store it.
void writeBounds16(ByteWriter& w, const Vec3i& mins, const Vec3i& maxs);

} // namespace ludaxgen
