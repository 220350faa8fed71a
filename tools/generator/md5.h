#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace ludaxgen {

// MD5 digest (RFC 1321); the game keys its custom-decal cache by it.
std::array<std::uint8_t, 16> md5(const std::vector<std::uint8_t>& data);

} // namespace ludaxgen
