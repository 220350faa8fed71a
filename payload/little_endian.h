#pragma once
// 32-bit little-endian integers: the only integer encoding of the payload containers and the
// backup archive. Every reader, writer and test of those formats goes through these.

#include <cstddef>
#include <cstdint>

// The value of the four bytes at `bytes`, lowest first.
inline std::uint32_t DecodeLittleEndian32(const char* bytes)
{
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

// Reads the value at `position` of a buffer of `size` bytes; false, with `value` untouched, when
// the four bytes do not all lie inside it.
inline bool ReadLittleEndian32(const char* bytes, std::size_t size, std::size_t position,
                               std::uint32_t& value)
{
    if (position > size || size - position < 4)
        return false;
    value = DecodeLittleEndian32(bytes + position);
    return true;
}

// Appends the value's two bytes, lowest first (the 16-bit fields of the icon format).
template <class Bytes>
void AppendLittleEndian16(Bytes& out, std::uint16_t value)
{
    out.push_back(static_cast<char>(value & 0xFF));
    out.push_back(static_cast<char>(value >> 8));
}

// Appends the value's four bytes, lowest first, to any container of char (std::string,
// std::vector<char>).
template <class Bytes>
void AppendLittleEndian32(Bytes& out, std::uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>(value >> shift & 0xFF));
}
