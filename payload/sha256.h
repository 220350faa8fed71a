#pragma once
// SHA-256 (FIPS 180-4): what tells the bytes this program wrote from anyone else's, and names a
// build's file sets. One portable implementation for the program, its tests and its tools.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

class Sha256 {
public:
    using Digest = std::array<std::uint8_t, 32>;

    void Add(const char* bytes, std::size_t size);
    void Add(const std::string& bytes) { Add(bytes.data(), bytes.size()); }
    // The digest of everything added; the object is spent.
    Digest Finish();

private:
    void Block(const std::uint8_t* block);

    std::uint32_t state[8] = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::uint8_t pending[64] = {};
    std::size_t pendingSize = 0;
    std::uint64_t total = 0;  // bytes added
};

// The digest of `size` bytes, and its 64 lower-case hex digits.
Sha256::Digest Sha256Of(const char* bytes, std::size_t size);
std::string HexDigest(const Sha256::Digest& digest);
