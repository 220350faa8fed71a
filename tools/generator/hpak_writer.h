#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ludaxgen {

// HPAK version 1 holding one custom decal: "HPAK", version, directory offset;
// the lump data; then the directory: entry count and, per entry, the 136-byte
// resource record (name[64], type, index, download size, flags, MD5[16],
// player, reserved[32], alignment, two link fields) followed by offset and length.
std::vector<std::uint8_t> encodeHpakDecal(const std::string& resourceName, const std::vector<std::uint8_t>& lump);

} // namespace ludaxgen
