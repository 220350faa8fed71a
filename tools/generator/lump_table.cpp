#include "lump_table.h"

namespace ludaxgen {

void LumpTable::append(ByteWriter& file, std::size_t lump, const ByteWriter& data) const
{
    file.alignTo(4);
    const std::size_t slot = firstSlot_ + lump * slotStride_;
    file.patchI32(slot, checkedI32(static_cast<long long>(data.size() == 0 ? 0 : file.size()), "lump offset"));
    file.patchI32(slot + 4, checkedI32(static_cast<long long>(data.size()), "lump length"));
    file.raw(data.bytes());
}

void writeBounds16(ByteWriter& w, const Vec3i& mins, const Vec3i& maxs)
{
    for (int v : mins)
        w.i16(checkedI16(v, "bounds"));
    for (int v : maxs)
        w.i16(checkedI16(v, "bounds"));
}

} // namespace ludaxgen
