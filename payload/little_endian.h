#pragma once
// Little-endian integers: the only integer encoding of the payload containers and the backup
// archive, and that of the Windows program's headers, where ludax-pack finds the containers a
// built Ludax.exe carries. Every reader, writer and test of those formats goes through these.

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

// Reads the unsigned integer of `value`'s width (2, 4 or 8 bytes) at `position` of a buffer of
// `size` bytes; false, with `value` untouched, when its bytes do not all lie inside the buffer.
template <class Unsigned>
bool ReadLittleEndian(const char* bytes, std::size_t size, std::size_t position, Unsigned& value)
{
    if (position > size || size - position < sizeof(Unsigned))
        return false;
    Unsigned read = 0;
    for (std::size_t i = sizeof(Unsigned); i-- > 0;)
        read = static_cast<Unsigned>(read << 8 | static_cast<unsigned char>(bytes[position + i]));
    value = read;
    return true;
}

inline bool ReadLittleEndian32(const char* bytes, std::size_t size, std::size_t position,
                               std::uint32_t& value)
{
    return ReadLittleEndian(bytes, size, position, value);
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
