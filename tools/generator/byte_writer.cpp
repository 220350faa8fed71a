#include "byte_writer.h"

#include <cstring>
#include <stdexcept>

namespace ludaxgen {

void ByteWriter::u8(std::uint8_t v) { bytes_.push_back(v); }

void ByteWriter::u16(std::uint16_t v)
{
    bytes_.push_back(static_cast<std::uint8_t>(v & 0xFF));
    bytes_.push_back(static_cast<std::uint8_t>(v >> 8));
}

void ByteWriter::u32(std::uint32_t v)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes_.push_back(static_cast<std::uint8_t>((v >> shift) & 0xFF));
}

void ByteWriter::i16(std::int16_t v) { u16(static_cast<std::uint16_t>(v)); }

void ByteWriter::i32(std::int32_t v) { u32(static_cast<std::uint32_t>(v)); }

void ByteWriter::f32(float v)
{
    static_assert(sizeof(float) == 4, "IEEE single precision expected");
    std::uint32_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    u32(bits);
}

void ByteWriter::raw(const std::vector<std::uint8_t>& data)
{
    bytes_.insert(bytes_.end(), data.begin(), data.end());
}

void ByteWriter::text(const std::string& s)
{
    bytes_.insert(bytes_.end(), s.begin(), s.end());
}

void ByteWriter::fixedText(const std::string& s, std::size_t width)
{
    if (s.size() >= width)
        throw std::length_error("name too long for fixed field: " + s);
    text(s);
    zeros(width - s.size());
}

void ByteWriter::zeros(std::size_t count) { bytes_.insert(bytes_.end(), count, 0); }

void ByteWriter::alignTo(std::size_t alignment)
{
    while (bytes_.size() % alignment != 0)
        bytes_.push_back(0);
}

void ByteWriter::checkRange(std::size_t at, std::size_t count) const
{
    if (at > bytes_.size() || count > bytes_.size() - at)
        throw std::out_of_range("patch outside written bytes");
}

void ByteWriter::patchU16(std::size_t at, std::uint16_t v)
{
    checkRange(at, 2);
    bytes_[at] = static_cast<std::uint8_t>(v & 0xFF);
    bytes_[at + 1] = static_cast<std::uint8_t>(v >> 8);
}

void ByteWriter::patchU32(std::size_t at, std::uint32_t v)
{
    checkRange(at, 4);
    for (int i = 0; i < 4; ++i)
        bytes_[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>((v >> (8 * i)) & 0xFF);
}

void ByteWriter::patchI32(std::size_t at, std::int32_t v) { patchU32(at, static_cast<std::uint32_t>(v)); }

std::uint16_t checkedU16(std::size_t v, const char* what)
{
    if (v > 0xFFFFu)
        throw std::overflow_error(std::string(what) + " does not fit 16 bits");
    return static_cast<std::uint16_t>(v);
}

std::int16_t checkedI16(long long v, const char* what)
{
    if (v < -32768 || v > 32767)
        throw std::overflow_error(std::string(what) + " does not fit signed 16 bits");
    return static_cast<std::int16_t>(v);
}

std::uint32_t checkedU32(std::size_t v, const char* what)
{
    if (v > 0xFFFFFFFFull)
        throw std::overflow_error(std::string(what) + " does not fit 32 bits");
    return static_cast<std::uint32_t>(v);
}

std::int32_t checkedI32(long long v, const char* what)
{
    if (v < -2147483647LL - 1 || v > 2147483647LL)
        throw std::overflow_error(std::string(what) + " does not fit signed 32 bits");
    return static_cast<std::int32_t>(v);
}

} // namespace ludaxgen
