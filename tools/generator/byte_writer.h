#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ludaxgen {

// Growing little-endian byte buffer. Patching past the end throws, so a wrong
// header offset stops the generator instead of writing a broken file.
class ByteWriter {
public:
    std::size_t size() const { return bytes_.size(); }
    const std::vector<std::uint8_t>& bytes() const { return bytes_; }

    void u8(std::uint8_t v);
    void u16(std::uint16_t v);
    void u32(std::uint32_t v);
    void i16(std::int16_t v);
    void i32(std::int32_t v);
    void f32(float v);
    void raw(const std::vector<std::uint8_t>& data);
    void text(const std::string& s);
    // s followed by NULs up to width; s must leave room for at least one NUL.
    void fixedText(const std::string& s, std::size_t width);
    void zeros(std::size_t count);
    void alignTo(std::size_t alignment);

    void patchU16(std::size_t at, std::uint16_t v);
    void patchU32(std::size_t at, std::uint32_t v);
    void patchI32(std::size_t at, std::int32_t v);

private:
    void checkRange(std::size_t at, std::size_t count) const;

    std::vector<std::uint8_t> bytes_;
};

// Narrowing with a range check: sizes and counts written into fixed-width
// fields must fit, or the file would silently lie about itself.
std::uint16_t checkedU16(std::size_t v, const char* what);
std::int16_t checkedI16(long long v, const char* what);
std::uint32_t checkedU32(std::size_t v, const char* what);
std::int32_t checkedI32(long long v, const char* what);

} // namespace ludaxgen
