#pragma once

#include <cstdint>
#include <vector>

namespace ludaxgen {

// radial.cdb: the radial buy menu's table, 6144 bytes.
// Header (64 bytes): "RCDB", version 1, header size 64, entry size 64,
// capacity 95, entry count, CRC-32 of the whole entry area, page count,
// title[32]. Entries (64 bytes): page, slot, price (u16), team mask (u32:
// 1 terrorists, 2 counter-terrorists), label[24], command[32]; unused slots are zero.
std::vector<std::uint8_t> encodeRadialCdb();

} // namespace ludaxgen
