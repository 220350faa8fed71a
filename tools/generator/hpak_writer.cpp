#include "hpak_writer.h"

#include "byte_writer.h"
#include "md5.h"

namespace ludaxgen {

namespace {

constexpr std::int32_t kHpakVersion = 1;
constexpr std::int32_t kResourceDecal = 3;
constexpr std::uint8_t kResourceCustom = 4;

} // namespace

std::vector<std::uint8_t> encodeHpakDecal(const std::string& resourceName, const std::vector<std::uint8_t>& lump)
{
    ByteWriter out;
    out.text("HPAK");
    out.i32(kHpakVersion);
    const std::size_t directoryField = out.size();
    out.i32(0);
    const std::size_t lumpAt = out.size();
    out.raw(lump);
    out.patchI32(directoryField, checkedI32(static_cast<long long>(out.size()), "HPAK directory offset"));

    out.i32(1);
    out.fixedText(resourceName, 64);
    out.i32(kResourceDecal);
    out.i32(0);
    out.i32(checkedI32(static_cast<long long>(lump.size()), "decal size"));
    out.u8(kResourceCustom);
    for (std::uint8_t b : md5(lump))
        out.u8(b);
    out.u8(0);      // player number
    out.zeros(32);  // reserved
    out.zeros(2);   // record alignment
    out.u32(0);     // list links, meaningless on disk
    out.u32(0);
    out.i32(checkedI32(static_cast<long long>(lumpAt), "decal offset"));
    out.i32(checkedI32(static_cast<long long>(lump.size()), "decal length"));
    return out.bytes();
}

} // namespace ludaxgen
