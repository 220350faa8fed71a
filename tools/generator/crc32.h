#pragma once

#include <cstddef>
#include <cstdint>

namespace ludaxgen {

// CRC-32 (IEEE 802.3, reflected, as zip uses it).
std::uint32_t crc32(const std::uint8_t* data, std::size_t size);

} // namespace ludaxgen
