#pragma once
// The CRC-32 that zip, gzip and PNG use (polynomial 0xEDB88320, reflected, inverted), as
// `ludax-pack list` shows it per record: the same figure any zip tool or `crc32` command gives.

#include <cstddef>
#include <cstdint>

std::uint32_t Crc32(const char* data, std::size_t size);
